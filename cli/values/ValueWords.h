#pragma once

#include <KelStd/coord/Enumerations.h>

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <optional>

/// The library's words for kinds of values and units, as its files have them, on the command line.
namespace KelStd::cli {

class CommandLine;

/// The words of all kinds, and of all units.
QStringList valueTypeWords();
QStringList unitWords();

/// The kind of that word, or nothing; exact and case-sensitive.
std::optional<EValueType> findValueType(const QString &word);

/// The unit of that word, or nothing; exact and case-sensitive.
std::optional<EUnit> findUnit(const QString &word);

/// The unit that an option names. Nothing when the option is not given, and with a `mistake` when
/// it names none.
std::optional<EUnit> unitFrom(const CommandLine &line, const QString &option, QString &mistake);

/// The kind of --type; nothing as above.
std::optional<EValueType> valueTypeFrom(const CommandLine &line, QString &mistake);

/// Degrees, metres, bars or degrees Celsius; no unit for kinds that have none.
EUnit usualUnitOf(EValueType type);

/// Whether values of the kind can be converted from and to the unit.
bool isUnitOf(EValueType type, EUnit unit);

bool isAngleType(EValueType type);
bool isLengthType(EValueType type);

/// The words of all kinds and all units, in lines of a help text.
QString valueTypeAndUnitHelp();

} // namespace KelStd::cli
