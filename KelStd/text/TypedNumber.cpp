#include <KelStd/text/TypedNumber.h>

#include <cmath>

namespace KelStd {

namespace {

constexpr QChar comma = QLatin1Char(',');
constexpr QChar point = QLatin1Char('.');

bool isNumber(const QString &field)
{
    bool ok = false;
    field.toDouble(&ok);
    return ok;
}

/// What a person may have meant by a text that is no number.
QString hintOn(const QString &field)
{
    QString changed = field;
    if (isNumber(changed.replace(comma, point)))
        return QStringLiteral(" (write a decimal point, not a comma)");
    return {};
}

} // namespace

QString quoted(const QString &field)
{
    constexpr int maxCharacters = 40;
    return QLatin1Char('"')
           + (field.size() > maxCharacters ? field.left(maxCharacters) + QLatin1String("...")
                                           : field)
           + QLatin1Char('"');
}

QString withDecimalPoint(const QString &text, DecimalMark mark)
{
    QString changed = text;
    if (mark == DecimalMark::Comma && text.count(comma) == 1 && !text.contains(point))
        changed.replace(comma, point);
    return changed;
}

std::optional<double> readNumber(const QString &field, DecimalMark mark, TypedValueFailure &failure)
{
    failure = {};
    if (field.isEmpty()) {
        failure = {TypedValueFault::Missing, QStringLiteral("is missing")};
        return std::nullopt;
    }
    bool ok = false;
    const double value = withDecimalPoint(field, mark).toDouble(&ok);
    if (ok && std::isfinite(value))
        return value;
    // A number too large for a double reads as an infinity.
    if (ok || std::isinf(value)) {
        failure = {TypedValueFault::NotFinite,
                   QStringLiteral("%1 is not a finite number").arg(quoted(field))};
    } else {
        failure = {TypedValueFault::NotANumber,
                   QStringLiteral("%1 is not a number%2").arg(quoted(field), hintOn(field))};
    }
    return std::nullopt;
}

} // namespace KelStd
