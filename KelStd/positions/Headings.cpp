#include <KelStd/positions/Headings.h>

#include <KelStd/positions/ForeignHeadings.h>
#include <KelStd/positions/ReadComponents.h>
#include <KelStd/text/TypedNumber.h>
#include <KelStd/text/UnitWords.h>

#include <QtCore/QHash>
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
    return speaksOfHeight(normalisedHeading(withWordsApart(heading.text)));
}

bool speaksOfGeoid(const Heading &heading)
{
    static const QStringList parts =
        wordsIn("geoid ortho orthometric orthom msl amsl sea nn nhn nap navd88 ngvd29");
    const QStringList words = normalisedHeading(heading.text).split(underscore);
    return std::any_of(words.begin(), words.end(),
                       [](const QString &word) { return parts.contains(word); });
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
    const QStringList words =
        normalisedHeading(withWordsApart(heading.text)).split(underscore, Qt::SkipEmptyParts);
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
