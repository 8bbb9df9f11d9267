#include <KelStd/positions/AnglesInUnits.h>

#include <KelStd/text/AngleSigns.h>
#include <KelStd/text/TypedNumber.h>

namespace KelStd::positions {

namespace {

bool isDegreesWithMinutes(const NamedUnit &unit)
{
    return unit.kind == UnitKind::TypedAngle && !unit.isPartOfDegree;
}

/// Takes a letter of the sense from either end: -1 for W and S, 1 for E and N, 0 where there is
/// none.
int takeLetter(QString &text, AngleSense sense)
{
    const QString letters =
        sense == AngleSense::Longitude ? QStringLiteral("WE") : QStringLiteral("SN");
    const auto signOf = [&letters](QChar c) { return letters.indexOf(c.toUpper()) * 2 - 1; };
    if (text.isEmpty())
        return 0;
    const bool isBehind = letters.contains(text.back().toUpper());
    if (!isBehind && !letters.contains(text.front().toUpper()))
        return 0;
    const int sign = static_cast<int>(signOf(isBehind ? text.back() : text.front()));
    text = (isBehind ? text.left(text.size() - 1) : text.mid(1)).trimmed();
    return sign;
}

void takeSecondSign(QString &text)
{
    const QString signs = angleSigns(AngleSign::Second);
    if (!text.isEmpty() && signs.contains(text.back()))
        text.chop(1);
}

} // namespace

std::optional<double> readAngleInUnit(const QString &field, AngleSense sense, DecimalMark mark,
                                      const NamedUnit &unit, TypedValueFailure &failure)
{
    if (isDegreesWithMinutes(unit)) {
        if (hasAngleSigns(field) || field.trimmed().isEmpty())
            return readTypedAngle(field, sense, mark, failure);
        failure.kind = TypedValueFault::MissingSign;
        failure.text = QStringLiteral("%1 has no signs of degrees and minutes, which its heading "
                                      "announces; write 52\u00B030' or 52:30")
                           .arg(quoted(field));
        return std::nullopt;
    }
    QString text = field.trimmed();
    const int sign = takeLetter(text, sense);
    if (unit.isPartOfDegree)
        takeSecondSign(text);
    const bool hasTwoSigns =
        sign != 0 && (text.startsWith(QLatin1Char('-')) || text.startsWith(QLatin1Char('+')));
    const auto number = hasTwoSigns ? std::nullopt : readNumber(text, mark, failure);
    if (!number) {
        if (failure.kind != TypedValueFault::Missing)
            failure.text = QStringLiteral("%1 is not a number of %2")
                               .arg(quoted(field), QLatin1String(unit.symbol));
        return std::nullopt;
    }
    return sign < 0 ? -*number : *number;
}

} // namespace KelStd::positions
