#include <KelStd/positions/Headings.h>

#include <KelStd/positions/ForeignHeadings.h>
#include <KelStd/positions/ReadComponents.h>
#include <KelStd/text/AngleSigns.h>
#include <KelStd/text/TypedNumber.h>
#include <KelStd/text/UnitNames.h>
#include <KelStd/text/UnitWords.h>

#include <QtCore/QHash>
#include <QtCore/QRegularExpression>
#include <QtCore/QSet>
#include <QtCore/QVector>

#include <algorithm>

namespace KelStd::positions {

namespace {

constexpr QChar underscore = QLatin1Char('_');

QStringList wordsIn(const QString &words)
{
    return words.split(QLatin1Char(' '));
}

QStringList wordsIn(const char *words)
{
    return wordsIn(QString::fromLatin1(words));
}

/// The words of headings that are long enough to be found at the beginning of another word.
const QStringList &longWords()
{
    static const QStringList words = [] {
        QStringList all;
        for (const Column &column : columns()) {
            for (const QString &word : wordsIn(column.headerWords)) {
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

bool isNameOfAColumn(const QString &name)
{
    const auto isNamed = [&name](const Column &column) {
        return QLatin1String(column.csvName) == name;
    };
    return std::any_of(columns().begin(), columns().end(), isNamed)
           || std::any_of(siteColumns().begin(), siteColumns().end(), isNamed);
}

/// Whether "wgs84_..." or "local_..." may name the component. Of the local heights there are two,
/// and a height above the geoid is not one in WGS84.
bool isOfFrame(const InputForm &form, int component, const QString &frame)
{
    if (frame.isEmpty())
        return true;
    const bool isHeight = component == componentsPerFrame - 1;
    const bool hasOneHeight =
        frame == QLatin1String("wgs84") && form.height != InputHeight::AboveGeoid;
    return form.frameName().startsWith(frame + QLatin1Char('-')) && (!isHeight || hasOneHeight);
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

Heading headingOf(const QString &text)
{
    constexpr int maxCharacters = 80; // longer ones name nothing
    Heading heading;
    heading.text = text;
    if (text.size() > maxCharacters)
        return heading;
    heading.whole = normalisedHeading(text);
    heading.unit = takeUnit(heading.whole);
    if (heading.unit == nullptr)
        heading.unit = unitBySign(text);
    heading.word = heading.whole;
    heading.frame = takeFrame(heading.word);
    heading.word = englishHeading(heading.word);
    return heading;
}

bool isPartOfAngleBefore(const Heading &heading)
{
    static const QStringList parts =
        wordsIn("m s min mins minute minutes minuten minuta minuto minutos minuti arcmin arcminute "
                "arcminutes sec secs second seconds sek sekunde sekunden seg segundo segundos "
                "seconde secondes secondi arcsec arcsecond arcseconds mm ss");
    static const QStringList angles = wordsIn("lat latitude lon long lng longitude of");
    const QStringList words = normalisedHeading(heading.text).split(underscore, Qt::SkipEmptyParts);
    if (words.isEmpty())
        return heading.unit != nullptr && heading.unit->isPartOfDegree;
    const auto isIn = [](const QStringList &list) {
        return [&list](const QString &word) { return list.contains(word); };
    };
    return std::any_of(words.begin(), words.end(), isIn(parts))
           && std::all_of(words.begin(), words.end(), [&](const QString &word) {
                  return isIn(parts)(word) || isIn(angles)(word);
              });
}

QString partOfAngleMistake(const Heading &heading)
{
    return QStringLiteral("%1 is the heading of minutes or seconds, which are not read in a column "
                          "of their own; write each angle in one field")
        .arg(quoted(heading.text));
}

bool isKnown(const Heading &heading)
{
    static const QSet<QString> words = [] {
        QSet<QString> all;
        for (const FrameRow &row : frames()) {
            for (const InputHeight height : {InputHeight::OfFrame, InputHeight::AboveGeoid}) {
                for (int i = 0; i < componentsPerFrame; ++i) {
                    for (const QString &word : wordsFor({row.frame, height}, i))
                        all.insert(word);
                }
            }
        }
        for (const Column &column : siteColumns())
            all.insert(QString::fromLatin1(column.csvName));
        return all;
    }();
    return words.contains(heading.word) || words.contains(heading.whole);
}

bool isOfOutput(const Heading &heading)
{
    static const QStringList others = wordsIn("local_height_reference geoid_separation "
                                              "height_above_geoid");
    return isNameOfAColumn(heading.whole) || others.contains(heading.whole);
}

bool isOfLocations(const Heading &heading)
{
    return isNameOfAColumn(heading.whole) || heading.whole == QLatin1String(heightReferenceName);
}

bool speaksOfHeight(const Heading &heading)
{
    static const QRegularExpression camelCase(QStringLiteral("(?<=[a-z])(?=[A-Z])"));
    QString text = heading.text;
    return speaksOfHeight(normalisedHeading(text.replace(camelCase, QStringLiteral("_"))));
}

bool isNamedBy(const InputForm &form, int component, const Heading &heading)
{
    const Column column = inputColumn(form, component);
    if (heading.whole == QLatin1String(column.csvName))
        return true;
    return !isNameOfAColumn(heading.whole) && isOfFrame(form, component, heading.frame)
           && wordsIn(column.headerWords).contains(heading.word);
}

bool isInputUnit(const InputForm &form, int component, const NamedUnit &unit)
{
    // Its symbol is one of the words for it, and of none other.
    return unitNamed(normalisedHeading(form.unitText(component))) == &unit;
}

bool hasInputUnit(const InputForm &form, int component, const Heading &heading)
{
    return heading.unit == nullptr || isInputUnit(form, component, *heading.unit);
}

QString lengthUnitHint(const InputForm &form, const NamedUnit &unit)
{
    const QString symbol = unitSymbol(unit.unit);
    // Programs need not offer the millimetre, in which nobody measures a plane.
    const bool isOffered = !symbol.isEmpty() && unit.unit != Unit_MilliMeter;
    return form.height == InputHeight::OfFrame && isOffered
               ? QStringLiteral("; %1 %2 reads and prints lengths in it")
                     .arg(form.words.lengthUnit, symbol)
               : QString();
}

QString unitMistake(const InputForm &form, int component, const Heading &heading,
                    const QString &readUnit)
{
    const bool isLength = !isAngle(columnOf(form.frame, component));
    // The option would read with the foot that nearly surely is not meant.
    if (isLength && heading.unit->unit == Unit_Foot && readUnit.endsWith(QLatin1String("-ft"))) {
        return QStringLiteral("%1 is in ft, but %2 is read in %3, which is nearly surely meant: "
                              "write the heading with %3, or without a unit, or with intl_ft for "
                              "the international foot")
            .arg(quoted(heading.text), QLatin1String(columnOf(form.frame, component).label),
                 readUnit);
    }
    return QStringLiteral("%1 is in %2, but %3 is read in %4%5")
        .arg(quoted(heading.text), QLatin1String(heading.unit->symbol),
             QLatin1String(columnOf(form.frame, component).label), readUnit,
             isLength ? lengthUnitHint(form, *heading.unit) : QString());
}

QStringList wordsFor(const InputForm &form, int component)
{
    const Column column = inputColumn(form, component);
    return wordsIn(column.headerWords) + QStringList(QString::fromLatin1(column.csvName));
}

int componentHeaded(const InputForm &form, const Heading &heading)
{
    for (int i = 0; i < componentsPerFrame; ++i) {
        if (isNamedBy(form, i, heading))
            return i;
    }
    return -1;
}

QString directionIn(const Heading &heading)
{
    static const QHash<QString, QString> labels = {
        {QStringLiteral("latitude"), QStringLiteral("latitude")},
        {QStringLiteral("lat"), QStringLiteral("latitude")},
        {QStringLiteral("longitude"), QStringLiteral("longitude")},
        {QStringLiteral("lon"), QStringLiteral("longitude")},
        {QStringLiteral("long"), QStringLiteral("longitude")},
        {QStringLiteral("lng"), QStringLiteral("longitude")},
        {QStringLiteral("northing"), QStringLiteral("northing")},
        {QStringLiteral("north"), QStringLiteral("north")},
        {QStringLiteral("easting"), QStringLiteral("easting")},
        {QStringLiteral("east"), QStringLiteral("east")}};
    static const QHash<QString, QString> letters = {{QStringLiteral("n"), QStringLiteral("north")},
                                                    {QStringLiteral("e"), QStringLiteral("east")}};
    static const QRegularExpression camelCase(QStringLiteral("(?<=[a-z])(?=[A-Z])"));
    QString text = heading.text;
    const QStringList words = normalisedHeading(text.replace(camelCase, QStringLiteral("_")))
                                  .split(underscore, Qt::SkipEmptyParts);
    QSet<QString> found;
    for (const QString &word : words) {
        if (labels.contains(word))
            found.insert(labels.value(word));
    }
    // "lon (deg E)": a longer word says more than a letter.
    if (found.isEmpty() && words.size() == 2) {
        for (const QString &word : words) {
            if (letters.contains(word))
                found.insert(letters.value(word));
        }
    }
    return found.size() == 1 ? *found.begin() : QString();
}

QString otherMeaning(const InputForm &form, const Heading &heading)
{
    QString label;
    QStringList frameNames;
    for (const FrameRow &row : frames()) {
        const bool isItsOwn = row.frame == form.frame && !form.isAtSite;
        const int component = isItsOwn ? -1 : componentHeaded(row.frame, heading);
        if (component < 0)
            continue;
        label = QString::fromLatin1(columnOf(row.frame, component).label);
        frameNames += QString::fromLatin1(row.option);
    }
    // All words but the names of its columns are those of the plane.
    if (frameNames.isEmpty() && !form.isAtSite) {
        const int component = componentHeaded(InputForm::atSite(), heading);
        if (component >= 0) {
            label = QString::fromLatin1(columnOf(Frame::LocalProjected, component).label);
            frameNames += QString::fromLatin1(siteFrameName);
        }
    }
    if (frameNames.isEmpty()) {
        const InputForm aboveGeoid(Frame::Wgs84Geographic, InputHeight::AboveGeoid);
        const bool isOther = form.frame != Frame::LocalProjected
                             && form.height != InputHeight::AboveGeoid
                             && isNamedBy(aboveGeoid, componentsPerFrame - 1, heading);
        return isOther ? QStringLiteral("the height above the geoid") : QString();
    }
    return QStringLiteral("the %1 of %2").arg(label, frameNames.join(QLatin1String(" and ")));
}

} // namespace KelStd::positions
