#include <KelStd/text/AngleScanner.h>

#include <KelStd/text/AngleSigns.h>
#include <KelStd/text/DoubtfulZeros.h>

#include <QtCore/QVector>

#include <algorithm>
#include <cmath>

namespace KelStd::typed {

namespace {

constexpr QChar blank = QLatin1Char(' ');
constexpr int unitsPerPart = 60; // minutes in a degree, seconds in a minute

using Fault = TypedValueFault;
using Sign = AngleSign;

/// Why a text is no angle, without its quotation.
using Mistake = TypedValueFailure;

Sign signOf(QChar c)
{
    return angleSignOf(c.unicode());
}

struct LetterRow
{
    char letter;
    AngleSense sense;
    bool isNegative;
};

constexpr LetterRow letterRows[] = {
    {'N', AngleSense::Latitude, false},
    {'S', AngleSense::Latitude, true},
    {'E', AngleSense::Longitude, false},
    {'W', AngleSense::Longitude, true},
};

const LetterRow *letterOf(QChar c)
{
    constexpr int caseDifference = 'a' - 'A';
    for (const LetterRow &row : letterRows) {
        if (c == QLatin1Char(row.letter) || c == QChar(row.letter + caseDifference))
            return &row;
    }
    return nullptr;
}

struct Part
{
    QString number;
    Sign sign;
};

/// Takes an angle apart. Every step gives no mistake, or why the text is no angle.
class AngleScanner
{
public:
    AngleScanner(QString text, AngleSense sense) : m_rest(std::move(text)), m_sense(sense) {}

    Mistake scan()
    {
        Mistake mistake = takeLetter();
        if (!mistake)
            mistake = takeMinus();
        if (!mistake)
            mistake = takeParts();
        if (!mistake)
            mistake = checkSigns();
        return mistake ? mistake : checkNumbers();
    }

    double degrees() const
    {
        const double value = magnitude().toDouble();
        return m_isNegative ? -value : value;
    }

private:
    Mistake takeLetter()
    {
        const LetterRow *leading = letterOf(m_rest.at(0));
        const LetterRow *trailing = letterOf(m_rest.at(m_rest.size() - 1));
        const int minutes =
            static_cast<int>(m_rest.indexOf(QLatin1Char('m'), 0, Qt::CaseInsensitive));
        if (trailing != nullptr && minutes > 0
            && m_rest.endsWith(QLatin1Char('s'), Qt::CaseInsensitive))
            return strangerAt(minutes); // "5d15m00s"
        if (leading != nullptr && trailing != nullptr)
            return {Fault::WrongLetter, QStringLiteral("has two hemisphere letters")};
        m_letter = leading != nullptr ? leading : trailing;
        if (m_letter == nullptr)
            return {};
        if (m_sense == AngleSense::Plain || m_letter->sense != m_sense)
            return wrongLetter();
        m_isNegative = m_letter->isNegative;
        m_rest.remove(leading != nullptr ? 0 : m_rest.size() - 1, 1);
        m_rest = m_rest.trimmed();
        return {};
    }

    Mistake wrongLetter() const
    {
        if (m_sense == AngleSense::Plain) {
            return {Fault::WrongLetter, QStringLiteral("has a hemisphere letter, which only "
                                                       "longitudes and latitudes have")};
        }
        const QString text =
            m_sense == AngleSense::Longitude
                ? QStringLiteral("has the letter %1 of a latitude; a longitude has E or W")
                : QStringLiteral("has the letter %1 of a longitude; a latitude has N or S");
        return {Fault::WrongLetter, text.arg(QLatin1Char(m_letter->letter))};
    }

    Mistake takeMinus()
    {
        const bool isMinus = m_rest.startsWith(QLatin1Char('-'));
        if (!isMinus && !m_rest.startsWith(QLatin1Char('+')))
            return {};
        if (m_letter != nullptr) {
            return {Fault::WrongLetter,
                    QStringLiteral("has a sign and a hemisphere letter; write one of them")};
        }
        m_isNegative = isMinus;
        m_rest.remove(0, 1);
        return {};
    }

    Mistake takeParts()
    {
        int position = 0;
        const auto skipBlanks = [&] {
            while (position < m_rest.size() && m_rest.at(position) == blank)
                ++position;
        };
        while (position < m_rest.size()) {
            Part part{{}, Sign::None};
            while (position < m_rest.size() && isNumberCharacter(m_rest.at(position)))
                part.number += m_rest.at(position++);
            skipBlanks();
            if (part.number.isEmpty())
                return strangerAt(position);
            if (position < m_rest.size())
                part.sign = takeSign(position);
            m_parts += part;
            skipBlanks();
            const bool isTorn = part.sign == Sign::None && position < m_rest.size();
            if (isTorn)
                return isNumberCharacter(m_rest.at(position)) ? signMissing(part)
                                                              : strangerAt(position);
        }
        return {};
    }

    /// The sign at `position`, which moves behind it.
    Sign takeSign(int &position) const
    {
        const QChar c = m_rest.at(position);
        const Sign sign = signOf(c);
        if (sign == Sign::None)
            return sign;
        ++position;
        if (sign != Sign::Minute || position >= m_rest.size() || m_rest.at(position) != c)
            return sign;
        ++position; // two apostrophes or primes
        return Sign::Second;
    }

    /// The character at `position`, or the end of the text, is nothing that may stand there.
    Mistake strangerAt(int position) const
    {
        const QChar c = position < m_rest.size() ? m_rest.at(position) : QChar();
        if (c.toLower() == QLatin1Char('m') || c.toLower() == QLatin1Char('s')) {
            // "s" could be south as well.
            return {
                Fault::NotAnAngle,
                QStringLiteral("has the letter %1 in it; write ' for minutes and \" for seconds")
                    .arg(c)};
        }
        if (signOf(c) != Sign::None)
            return {Fault::MissingSign, QStringLiteral("lacks a number before %1").arg(c)};
        return {Fault::NotAnAngle,
                c.isNull() || !c.isPrint()
                    ? QStringLiteral("is not an angle")
                    : QStringLiteral("is not an angle: %1 has no place in it").arg(c)};
    }

    static Mistake signMissing(const Part &part)
    {
        return {Fault::MissingSign,
                QStringLiteral("lacks a sign behind %1; write \u00B0 or d for degrees, ' for "
                               "minutes, \" for seconds")
                    .arg(part.number.left(maxShown))};
    }

    /// The order of the signs.
    Mistake checkSigns() const
    {
        if (m_parts.isEmpty())
            return {Fault::NotAnAngle, QStringLiteral("holds no number")};
        const int colons =
            static_cast<int>(std::count_if(m_parts.cbegin(), m_parts.cend(), [](const Part &part) {
                return part.sign == Sign::Colon;
            }));
        if (colons > 0)
            return checkColons(colons);
        if (m_parts.size() == 1 && m_parts.first().sign == Sign::None)
            return zerosDoubt(m_parts.first().number);
        constexpr Sign order[] = {Sign::Degree, Sign::Minute, Sign::Second};
        constexpr const char *names[] = {"degrees", "minutes", "seconds"};
        constexpr int places = 3;
        for (int i = 0; i < m_parts.size(); ++i) {
            const Sign sign = m_parts.at(i).sign;
            if (sign == Sign::None)
                return signMissing(m_parts.at(i));
            if (i < places && sign == order[i])
                continue;
            const bool isLater = i < places && order[i] < sign;
            return {Fault::WrongOrder,
                    isLater ? QStringLiteral("has no %1").arg(QLatin1String(names[i]))
                            : QStringLiteral("is not an angle: the order is degrees, minutes, "
                                             "seconds, each once")};
        }
        return {};
    }

    Mistake checkColons(int colons) const
    {
        const bool isMixed = colons != m_parts.size() - 1 || m_parts.last().sign != Sign::None;
        if (isMixed && m_parts.last().sign == Sign::Colon) {
            return {Fault::MissingSign, QStringLiteral("lacks a number behind its last colon")};
        }
        if (isMixed)
            return {Fault::NotAnAngle, QStringLiteral("mixes colons with other signs")};
        if (colons > 2)
            return {Fault::WrongOrder, QStringLiteral("has more than degrees:minutes:seconds")};
        return {};
    }

    Mistake checkNumbers() const
    {
        for (int i = 0; i < m_parts.size(); ++i) {
            const QString number = m_parts.at(i).number;
            const auto points = number.count(QLatin1Char('.'));
            if (points > 0 && i + 1 < m_parts.size()) {
                return {Fault::NotAnAngle,
                        QStringLiteral("has decimals in a part that is not its last")};
            }
            if (points > 1 || !isDigit(number.at(0)) || !isDigit(number.at(number.size() - 1))) {
                return {Fault::NotAnAngle, QStringLiteral("is not an angle: \"%1\" is not a number")
                                               .arg(number.left(maxShown))};
            }
            const double value = partValue(i);
            if (!std::isfinite(value))
                return {Fault::NotFinite, QStringLiteral("is not a finite number")};
            if (i > 0 && !(value >= 0 && value < unitsPerPart)) {
                return {Fault::TooLarge,
                        QStringLiteral("has %1 %2; they are below 60")
                            .arg(number.left(maxShown),
                                 i == 1 ? QStringLiteral("minutes") : QStringLiteral("seconds"))};
            }
        }
        return {};
    }

    double partValue(int index) const { return m_parts.at(index).number.toDouble(); }

    /// The decimal degrees, with so many digits that the nearest double of this text is that of the
    /// angle: minutes and seconds are divided on paper, as sums of doubles would round them twice.
    QString magnitude() const
    {
        QString whole = m_parts.first().number;
        if (m_parts.size() == 1)
            return whole;
        const QString last = m_parts.last().number;
        const auto point = last.indexOf(QLatin1Char('.'));
        const QString fraction = point < 0 ? QString() : last.mid(point + 1);
        int divisor = unitsPerPart;
        int rest = static_cast<int>(partValue(1));
        if (m_parts.size() > 2) {
            divisor *= unitsPerPart;
            rest = rest * unitsPerPart + static_cast<int>(partValue(2));
        }

        constexpr int moreDigits = 120; // no angle is so near to the middle between two doubles
        QString text = whole + QLatin1Char('.');
        for (int i = 0; i < fraction.size() + moreDigits; ++i) {
            rest = rest * 10 + (i < fraction.size() ? fraction.at(i).digitValue() : 0);
            text += QLatin1Char(static_cast<char>('0' + rest / divisor));
            rest %= divisor;
        }
        return text;
    }

    static constexpr int maxShown = 20;

    QString m_rest; ///< what is not yet understood
    AngleSense m_sense;
    const LetterRow *m_letter = nullptr;
    bool m_isNegative = false;
    QVector<Part> m_parts;
};

} // namespace

bool looksLikeAngle(const QString &text)
{
    const bool hasDigit = std::any_of(text.cbegin(), text.cend(), isDigit);
    const bool hasSign =
        std::any_of(text.cbegin(), text.cend(), [](QChar c) { return signOf(c) != Sign::None; });
    return hasDigit
           && (hasSign || letterOf(text.at(0)) != nullptr
               || letterOf(text.at(text.size() - 1)) != nullptr);
}

TypedValueFailure zerosDoubt(const QString &number)
{
    if (!hasDoubtfulZeros(number.toStdString()))
        return {};
    return {Fault::Doubtful,
            QStringLiteral("may be degrees, or degrees and minutes in one; write degrees with at "
                           "most three digits before the point, and minutes as in 0\u00B030.25'")};
}

TypedValueFailure scanAngle(const QString &text, AngleSense sense, double &degrees)
{
    AngleScanner scanner(text, sense);
    Mistake mistake = scanner.scan();
    if (!mistake)
        degrees = scanner.degrees();
    return mistake;
}

} // namespace KelStd::typed
