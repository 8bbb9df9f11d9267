#include <KelStd/text/TypedAngle.h>

#include <KelStd/text/AngleScanner.h>
#include <KelStd/text/AngleSigns.h>

#include <algorithm>

namespace KelStd {

namespace {

constexpr QChar blank = QLatin1Char(' ');

/// "5 12 13": numbers with blanks between them and nothing else.
bool isBlankSeparated(const QString &text)
{
    return text.contains(blank) && std::all_of(text.cbegin(), text.cend(), [](QChar c) {
               return typed::isNumberCharacter(c) || c == blank || c == QLatin1Char('-');
           });
}

/// "5E1", which is 50, or 5 degrees east and something behind it. With a sign, "5E+1" is an
/// exponent alone.
bool hasDoubtfulExponent(const QString &text, AngleSense sense)
{
    if (sense == AngleSense::Plain)
        return false;
    const auto position = text.indexOf(QLatin1Char('e'), 0, Qt::CaseInsensitive);
    return position > 0 && position + 1 < text.size()
           && typed::isNumberCharacter(text.at(position - 1))
           && typed::isDigit(text.at(position + 1));
}

TypedValueFailure exponentDoubt()
{
    return {TypedValueFault::Doubtful,
            QStringLiteral("may have an exponent or an E for east; write the "
                           "number without the E, or the E behind it")};
}

/// Why a plain number may not be the angle that was meant.
TypedValueFailure doubtOf(const QString &number, AngleSense sense)
{
    if (hasDoubtfulExponent(number, sense))
        return exponentDoubt();
    const bool isSigned =
        number.startsWith(QLatin1Char('-')) || number.startsWith(QLatin1Char('+'));
    return typed::zerosDoubt(isSigned ? number.mid(1) : number);
}

} // namespace

bool hasAngleSigns(const QString &text)
{
    const bool hasDigit = std::any_of(text.cbegin(), text.cend(), typed::isDigit);
    return hasDigit && std::any_of(text.cbegin(), text.cend(), [](QChar c) {
               // The ordinal indicator is a letter to Qt, and a sign here.
               const bool isWordLetter = c == QLatin1Char('d') || c == QLatin1Char('D');
               return !isWordLetter && angleSignOf(c.unicode()) != AngleSign::None;
           });
}

std::optional<double> readTypedAngle(const QString &text, AngleSense sense, DecimalMark mark,
                                     TypedValueFailure &failure)
{
    const QString trimmed = withDecimalPoint(text.trimmed(), mark);
    const auto refuse = [&](const TypedValueFailure &mistake) {
        failure = {mistake.kind, quoted(text.trimmed()) + blank + mistake.text};
        return std::nullopt;
    };
    if (const auto number = readNumber(trimmed, failure)) {
        const TypedValueFailure doubt = doubtOf(trimmed, sense);
        return doubt ? refuse(doubt) : number;
    }
    if (trimmed.isEmpty() || !typed::looksLikeAngle(trimmed)) {
        readNumber(text.trimmed(), mark, failure); // for the text as it was typed
        if (isBlankSeparated(trimmed))
            failure.text += QStringLiteral(" (write an angle as 5\u00B012'13\" or 5:12:13)");
        return std::nullopt;
    }
    failure = {};
    double degrees = 0.0;
    const TypedValueFailure mistake = typed::scanAngle(trimmed, sense, degrees);
    if (!mistake)
        return degrees;
    refuse(mistake);
    if (mark == DecimalMark::Point && trimmed.contains(QLatin1Char(',')))
        failure.text += QStringLiteral(" (write a decimal point, not a comma)");
    return std::nullopt;
}

} // namespace KelStd
