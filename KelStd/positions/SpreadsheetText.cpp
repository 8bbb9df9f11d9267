#include <KelStd/positions/SpreadsheetText.h>

#include <algorithm>

namespace KelStd::positions {

namespace {

constexpr QChar quote = QLatin1Char('"');
constexpr int maxFormulaText = 8000; // a formula has at most 8,192 characters
constexpr int maxTextPart = 250;     // a text in a formula has at most 255

/// True and false, as spreadsheets of several languages write them.
const QStringList &truthValues()
{
    static const QStringList words{
        QStringLiteral("true"),
        QStringLiteral("false"),
        QStringLiteral("wahr"),
        QStringLiteral("falsch"),
        QStringLiteral("vrai"),
        QStringLiteral("faux"),
        QStringLiteral("vero"),
        QStringLiteral("falso"),
        QStringLiteral("verdadero"),
        QStringLiteral("verdadeiro"),
        QStringLiteral("waar"),
        QStringLiteral("onwaar"),
        QStringLiteral("sand"),
        QStringLiteral("falsk"),
        QStringLiteral("sant"),
        QStringLiteral("usann"),
        QStringLiteral("tosi"),
        QStringLiteral("ep\u00E4tosi"),
        QStringLiteral("prawda"),
        QStringLiteral("fa\u0142sz"),
        QStringLiteral("pravda"),
        QStringLiteral("nepravda"),
        QStringLiteral("igaz"),
        QStringLiteral("hamis"),
        QStringLiteral("do\u011Fru"),
        QStringLiteral("yanl\u0131\u015F"),
        QStringLiteral("\u0438\u0441\u0442\u0438\u043D\u0430"),
        QStringLiteral("\u043B\u043E\u0436\u044C"),
    };
    return words;
}

bool isTruthValue(const QString &text)
{
    const auto &words = truthValues();
    return std::any_of(words.cbegin(), words.cend(), [&](const QString &word) {
        return text.compare(word, Qt::CaseInsensitive) == 0;
    });
}

/// Scripts in which no numerals or words of a calendar stand beside digits.
bool hasPlainScript(QChar c)
{
    return c.script() == QChar::Script_Latin || c.script() == QChar::Script_Greek
           || c.script() == QChar::Script_Cyrillic;
}

bool isSwiss(const QLocale &locale)
{
    return locale.country() == QLocale::Switzerland || locale.country() == QLocale::Liechtenstein;
}

bool isPlainInteger(const QString &text)
{
    constexpr int maxDigits = 11; // a cell shows more with an exponent, and so saves them
    return !text.isEmpty() && text.size() <= maxDigits
           && std::all_of(text.cbegin(), text.cend(),
                          [](QChar c) { return c >= QLatin1Char('0') && c <= QLatin1Char('9'); })
           && (text.size() == 1 || text.front() != QLatin1Char('0'));
}

} // namespace

SpreadsheetDialect::SpreadsheetDialect(const QLocale &locale)
    : m_separator(locale.decimalPoint() == QLatin1Char(',') || isSwiss(locale) ? ';' : ','),
      m_decimalPoint(locale.decimalPoint() == QLatin1Char(',') ? ',' : '.'),
      m_hasEras(locale.language() == QLocale::Japanese)
{
    constexpr int months = 12;
    for (int month = 1; month <= months; ++month) {
        for (const QLocale &each : {QLocale::c(), locale}) {
            for (const auto format : {QLocale::LongFormat, QLocale::ShortFormat}) {
                m_months += each.monthName(month, format);
                m_months += each.standaloneMonthName(month, format);
            }
        }
    }
    for (QString &month : m_months) {
        while (month.endsWith(QLatin1Char('.')))
            month.chop(1);
    }
    m_months.removeDuplicates();
}

bool SpreadsheetDialect::isMonth(const QString &word) const
{
    constexpr int fewestLetters = 3;
    return std::any_of(m_months.cbegin(), m_months.cend(), [&](const QString &month) {
        return word.compare(month, Qt::CaseInsensitive) == 0
               || (word.size() >= fewestLetters && month.startsWith(word, Qt::CaseInsensitive));
    });
}

bool SpreadsheetDialect::keeps(const QString &text) const
{
    if (text.isEmpty())
        return true;
    const auto isDigit = [](QChar c) { return c.isNumber(); };
    const auto digit = std::find_if(text.cbegin(), text.cend(), isDigit);
    if (digit == text.cend())
        return text.front().isLetter() && !isTruthValue(text);
    if (!hasPlainScript(text.front()))
        return false;
    const auto letters = std::find_if(text.cbegin(), digit, [](QChar c) { return !c.isLetter(); });
    const QString word(text.constData(), static_cast<int>(letters - text.cbegin()));
    return !isMonth(word) && !(m_hasEras && word.size() == 1 && letters == digit);
}

bool SpreadsheetDialect::keepsName(const QString &text) const
{
    return isPlainInteger(text) || keeps(text);
}

QString asSpreadsheetText(const QString &text)
{
    if (text.size() > maxFormulaText)
        return QLatin1Char('\'') + text;
    QStringList parts;
    for (int from = 0; from < text.size() || parts.isEmpty(); from += maxTextPart) {
        const QString part = text.mid(from, maxTextPart);
        parts += quote + QString(part).replace(quote, QStringLiteral("\"\"")) + quote;
    }
    return QLatin1Char('=') + parts.join(QLatin1Char('&'));
}

QString fromSpreadsheetText(const QString &field)
{
    if (!field.startsWith(QLatin1String("=\"")))
        return field;
    QString text;
    auto i = field.indexOf(quote); // behind the sign
    while (i < field.size() && field.at(i) == quote) {
        ++i;
        for (;;) {
            const auto end = field.indexOf(quote, i);
            if (end < 0)
                return field;
            text.append(field.constData() + i, end - i);
            i = end + 1;
            if (i == field.size() || field.at(i) != quote)
                break;
            text += quote;
            ++i;
        }
        if (i == field.size())
            return text;
        if (field.at(i) != QLatin1Char('&'))
            return field;
        ++i;
    }
    return field;
}

} // namespace KelStd::positions
