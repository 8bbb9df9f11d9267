#pragma once

#include <KelStd/Export.h>

#include <QtCore/QString>
#include <QtCore/QStringList>

/// What somebody may have meant who gave a name that there is not. Everything here may be called on
/// any thread and raises nothing.
///
///     nearNames("WGS84 / utm 32n", systems); // {"WGS 84 / UTM zone 32N", ...}
///     nearNames("Amersfort", systems);       // {"Amersfoort / RD New"}
///     hintAt({"dms", "degree"});             // "did you mean dms or degree?"
namespace KelStd {

/// The most names that are worth reading.
inline constexpr int maxNearNames = 3;

/// Those of `known` that `given` is near to, best first and at most `max`; none for a name that is
/// like no other.
///
/// Case, accents, blanks and punctuation do not matter. Where there are names of the same letters
/// and digits, they are the only ones. First come those that have all of the given words, in any
/// order and the beginning of a word for a word, then those that a few letters added, removed,
/// changed or exchanged would make: one in four. Numbers are given in full and never mistyped:
/// another zone is another system. Of names that are equally near the earlier of `known` comes
/// first.
KELSTD_EXPORT QStringList nearNames(const QString &given, const QStringList &known,
                                    int max = maxNearNames);

/// "did you mean a, b or c?"; empty for no names, which stand in the text as they are.
KELSTD_EXPORT QString hintAt(const QStringList &names);

} // namespace KelStd
