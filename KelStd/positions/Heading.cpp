#include <KelStd/positions/Heading.h>

#include <KelStd/positions/Columns.h>
#include <KelStd/positions/ForeignHeadings.h>
#include <KelStd/text/AngleSigns.h>

#include <QtCore/QRegularExpression>
#include <QtCore/QStringList>
#include <QtCore/QVector>

namespace KelStd::positions {

namespace {

constexpr QChar underscore = QLatin1Char('_');

/// The words of headings that are long enough to be found at the beginning of another word.
const QStringList &longWords()
{
    static const QStringList words = [] {
        QStringList all;
        for (const Column &column : columns()) {
            for (const QString &word :
                 QString::fromLatin1(column.headerWords).split(QLatin1Char(' '))) {
                if (word.size() > 2)
                    all += word;
            }
        }
        return all;
    }();
    return words;
}

/// Takes the unit from the end of "northing_us_ft", "northing_in_us_ft" and "northingft".
const NamedUnit *takeUnit(QString &words)
{
    constexpr int maxWords = 3; // "us survey feet"
    QVector<int> starts;
    for (auto i = words.size() - 1; i > 0 && starts.size() < maxWords; --i) {
        if (words.at(i) == underscore)
            starts.prepend(static_cast<int>(i));
    }
    for (const int position : starts) {
        const NamedUnit *unit = unitNamed(words.mid(position + 1));
        if (unit == nullptr)
            continue;
        words.truncate(position);
        if (words.endsWith(QLatin1String("_in")))
            words.chop(3);
        return unit;
    }
    for (const QString &word : longWords()) {
        if (!words.startsWith(word) || words.size() == word.size() + 1)
            continue;
        if (const NamedUnit *unit = unitNamed(words.mid(word.size()))) {
            words = word;
            return unit;
        }
    }
    return nullptr;
}

/// The unit of "lat (')" and "h [\u2033]". Beside a degree sign it stands for how an angle is
/// typed, and a heading may stand between two of them.
const NamedUnit *unitBySign(const QString &text)
{
    static const QRegularExpression sign(
        QStringLiteral("([%1%2]{1,2})\\s*[\\])]?\\s*\\z")
            .arg(angleSigns(AngleSign::Minute), angleSigns(AngleSign::Second)));
    const QRegularExpressionMatch match = sign.match(text);
    if (!match.hasMatch() || text.contains(QChar(0xB0)) || text.contains(QChar(0xBA)))
        return nullptr;
    const QString found = match.captured(1);
    return text.size() > found.size() && text.startsWith(found) ? nullptr : unitNamed(found);
}

/// "Easting (X)" without the letter: the word says which axis it is, whatever it is called there.
QString withoutLetter(const QString &text)
{
    static const QRegularExpression letter(
        QStringLiteral("\\A\\s*(east(?:ing)?(?=%1[xye])|north(?:ing)?(?=%1[xyn])|"
                       "(?:height|elev(?:ation)?)(?=%1[zh]))%1[a-z]\\s*[\\])](.*)\\z")
            .arg(QStringLiteral("\\s*[\\[(]\\s*")),
        QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch match = letter.match(text);
    return match.hasMatch() ? match.captured(1) + QLatin1Char(' ') + match.captured(2) : text;
}

/// Takes "wgs84" or "local" from either end of "wgs84_latitude" and "latitude_wgs84".
QString takeFrame(QString &words)
{
    words.replace(QLatin1String("wgs_84"), QLatin1String("wgs84"));
    for (const char *name : {"wgs84", "local"}) {
        QString frame = QString::fromLatin1(name);
        if (words.startsWith(frame + underscore)) {
            words.remove(0, frame.size() + 1);
            return frame;
        }
        if (words.endsWith(underscore + frame)) {
            words.chop(frame.size() + 1);
            return frame;
        }
    }
    return {};
}

} // namespace

QString normalisedHeading(const QString &heading)
{
    QString word;
    for (const QChar c : heading.toLower()) {
        constexpr char16_t dotAbove = u'\u0307'; // of a Turkish capital I in small letters
        if (c == QChar(dotAbove))
            continue;
        if (c.isLetterOrNumber())
            word += c;
        else if (!word.isEmpty() && !word.endsWith(underscore))
            word += underscore;
    }
    if (word.endsWith(underscore))
        word.chop(1);
    return word;
}

QString withWordsApart(QString text)
{
    static const QRegularExpression border(QStringLiteral("(?<=[a-z])(?=[A-Z])"));
    return text.replace(border, QStringLiteral("_"));
}

Heading headingOf(const QString &text)
{
    constexpr int maxCharacters = 80; // longer ones name nothing
    Heading heading;
    heading.text = text;
    if (text.size() > maxCharacters)
        return heading;
    heading.whole = normalisedHeading(withoutLetter(text));
    heading.unit = takeUnit(heading.whole);
    if (heading.unit == nullptr)
        heading.unit = unitBySign(text);
    heading.word = heading.whole;
    heading.frame = takeFrame(heading.word);
    heading.word = englishHeading(heading.word);
    return heading;
}

} // namespace KelStd::positions
