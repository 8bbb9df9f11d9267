#pragma once

#include <KelStd/text/TypedAngle.h>
#include <KelStd/text/UnitNames.h>

#include <QtCore/QString>

#include <optional>

namespace KelStd::positions {

/// Reads an angle below a heading that names another unit than decimal degrees: in that unit, but
/// degrees for those with minutes. Where degrees stand with minutes and seconds, an angle has its
/// signs: without them 52.3 may be 52 degrees and 30 minutes. Elsewhere it is a number, with a
/// hemisphere letter perhaps, and with the sign of seconds where it is one of seconds.
std::optional<double> readAngleInUnit(const QString &field, AngleSense sense, DecimalMark mark,
                                      const NamedUnit &unit, TypedValueFailure &failure);

} // namespace KelStd::positions
