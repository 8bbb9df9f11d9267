#include <KelStd/positions/OtherHeadings.h>

#include <KelStd/positions/Headings.h>
#include <KelStd/positions/LineShape.h>

#include <QtCore/QRegularExpression>
#include <QtCore/QSet>

#include <algorithm>

namespace KelStd::positions {

namespace {

/// Words that head coordinates, as `normalisedHeading` writes them.
const QSet<QString> &wordsOfAnyLanguage()
{
    static const QSet<QString> words = [] {
        const QString all = QString::fromUtf16(
            u"x y z n e h lat latitude lon long lng longitude north northing east easting height "
            u"alt altitude elev elevation "
            u"rechts rechtswert hoch hochwert ost ostwert nord nordwert breite "
            u"l\u00E4nge laenge h\u00F6he hoehe "
            u"est hauteur latitud longitud este norte altura cota elevaci\u00F3n elevacion "
            u"latitudine longitudine quota oost noord breedte lengte hoogte leste "
            u"szeroko\u015B\u0107 d\u0142ugo\u015B\u0107 wysoko\u015B\u0107 "
            u"\u00F6st h\u00F6jd syd nordlig \u00F8st h\u00F8yde");
        const QStringList list = all.split(QLatin1Char(' '));
        return QSet<QString>(list.cbegin(), list.cend());
    }();
    return words;
}

/// A heading of one word, before its unit if it has one: "Hoch-Wert", "Nr.", "H [m]".
bool isSingleWord(const QString &field)
{
    static const QRegularExpression word(QStringLiteral("\\A[^\\s\\[(]+(\\s*[\\[(].*)?\\z"));
    return word.match(field).hasMatch()
           && std::any_of(field.cbegin(), field.cend(), [](QChar c) { return c.isLetter(); });
}

} // namespace

bool standInPlaceOfComponents(const SplitLine &line, const FieldOrder &order)
{
    if (line.fields.size() != order.fields)
        return false;
    QStringList words;
    for (const int field : order.componentFields()) {
        const QString word = line.fields.at(field).toLower();
        bool isNumber = false; // "nan" and "inf"
        word.toDouble(&isNumber);
        const bool hasLetter =
            std::any_of(word.cbegin(), word.cend(), [](QChar c) { return c.isLetter(); });
        const bool hasDigit =
            std::any_of(word.cbegin(), word.cend(), [](QChar c) { return c.isDigit(); });
        if (isNumber || !hasLetter || hasDigit || words.contains(word))
            return false;
        words += word;
    }
    return true;
}

bool areHeadingsOfAnyLanguage(const SplitLine &line)
{
    QSet<QString> known;
    int others = 0;
    for (const QString &field : line.byBlanks ? joinUnits(line.fields) : line.fields) {
        if (field.isEmpty())
            continue;
        if (isValue(field) || !isSingleWord(field))
            return false;
        const QString word = headingOf(field).word;
        if (wordsOfAnyLanguage().contains(word))
            known.insert(word);
        else
            ++others;
    }
    if (line.byBlanks)
        return known.size() >= componentsPerFrame && known.size() > others;
    return line.fields.size() >= componentsPerFrame && known.size() >= 2;
}

bool isRemarkOfOtherHeadings(const QString &remark, const SplitLine &line, const FieldOrder &order)
{
    const bool hasBlank =
        std::any_of(remark.cbegin(), remark.cend(), [](QChar c) { return c == QLatin1Char(' '); });
    return areHeadingsOfAnyLanguage(line)
           || (!hasBlank && !line.byBlanks && standInPlaceOfComponents(line, order));
}

} // namespace KelStd::positions
