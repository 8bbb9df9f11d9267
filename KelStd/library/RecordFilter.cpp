#include <KelStd/library/RecordFilter.h>

#include <QtCore/QHash>

#include <algorithm>
#include <utility>

namespace KelStd::library {

namespace {

/// A letter without its accents. Of some the accent is no mark of its own to Unicode.
QString plainLetter(QChar c)
{
    static const QHash<QChar, QString> others = {
        {QChar(0x00DF), QStringLiteral("ss")}, {QChar(0x00E6), QStringLiteral("ae")},
        {QChar(0x00F0), QStringLiteral("d")},  {QChar(0x00F8), QStringLiteral("o")},
        {QChar(0x00FE), QStringLiteral("th")}, {QChar(0x0111), QStringLiteral("d")},
        {QChar(0x0131), QStringLiteral("i")},  {QChar(0x0142), QStringLiteral("l")},
        {QChar(0x0153), QStringLiteral("oe")},
    };
    return others.value(c, QString(c));
}

/// The words of a text, without case and accents.
QStringList wordsOf(const QString &text)
{
    QStringList words;
    QString word;
    for (const QChar c : text.normalized(QString::NormalizationForm_KD).toCaseFolded()) {
        if (c.isLetterOrNumber())
            word += plainLetter(c);
        else if (!c.isMark() && !word.isEmpty())
            words += std::exchange(word, QString());
    }
    if (!word.isEmpty())
        words += word;
    return words;
}

} // namespace

RecordFilter::RecordFilter(const QStringList &words)
    : m_words(wordsOf(words.join(QLatin1Char(' '))))
{}

bool RecordFilter::matches(RecordKind kind, const QString &name) const
{
    if (m_words.isEmpty())
        return true;
    const SystemOrigin origin = originOf(kind, name);
    const QStringList own =
        wordsOf((QStringList{name, origin.fullCode(), origin.areaName} + origin.countries)
                    .join(QLatin1Char(' ')));
    return std::all_of(m_words.begin(), m_words.end(), [&own](const QString &word) {
        return std::any_of(own.begin(), own.end(),
                           [&word](const QString &each) { return each.startsWith(word); });
    });
}

} // namespace KelStd::library
