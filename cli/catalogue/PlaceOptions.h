#pragma once

#include <KelStd/catalogue/SystemArea.h>

#include <QtCore/QString>

#include <optional>

namespace KelStd::cli {

class CommandLine;

/// Adds the option --at with the words of its help.
void addPlaceOption(CommandLine &line, const QString &help);

/// Reads --at into `place`, which stays empty without it; false with the mistake.
bool takePlace(const CommandLine &line, std::optional<catalogue::GroundPoint> &place,
               QString &mistake);

/// Adds the option --bbox.
void addBoxOption(CommandLine &line);

/// Reads --bbox into `box`, as above.
bool takeBox(const CommandLine &line, std::optional<catalogue::SystemArea> &box, QString &mistake);

} // namespace KelStd::cli
