#include <KelStd/io/OverrulingParameter.h>

#include <KelStd/text/Translation.h>

#include <algorithm>
#include <iterator>

namespace KelStd::io {

namespace {

bool never(const QString & /*value*/)
{
    return false;
}

bool isMetre(const QString &value)
{
    return value == QLatin1String("m");
}

bool isOne(const QString &value)
{
    bool isNumber = false;
    return value.toDouble(&isNumber) == 1.0 && isNumber;
}

/// False for axes that exchange easting and northing, or count heights downwards.
bool areEastNorthUp(const QString &axes)
{
    return axes.size() == 3 && QStringLiteral("ew").contains(axes.at(0))
           && QStringLiteral("ns").contains(axes.at(1)) && axes.at(2) == QLatin1Char('u');
}

bool isFalse(const QString &value)
{
    return value.startsWith(QLatin1Char('f'), Qt::CaseInsensitive);
}

struct OverrulingRow
{
    const char *name;
    bool (*overrulesNothing)(const QString &value);
    const char *overruled;
};

// Of the general parameters in PROJ's documentation ("Cartographic projection"), those that change
// the numbers of a system whose other records stay the same.
constexpr OverrulingRow overrulingRows[] = {
    {"geoidgrids", never,
     QT_TRANSLATE_NOOP("QObject", "the geoid model: heights would be above this grid")},
    {"geoid_crs", never,
     QT_TRANSLATE_NOOP("QObject", "the geoid model: heights would be above a grid")},
    {"vunits", isMetre, QT_TRANSLATE_NOOP("QObject", "the metre of heights")},
    {"vto_meter", isOne, QT_TRANSLATE_NOOP("QObject", "the metre of all heights")},
    {"units", isMetre, QT_TRANSLATE_NOOP("QObject", "the metre of northings and eastings")},
    {"axis", areEastNorthUp,
     QT_TRANSLATE_NOOP("QObject", "the order of easting, northing, height")},
    {"towgs84", never, QT_TRANSLATE_NOOP("QObject", "the datum shift")},
    {"nadgrids", never,
     QT_TRANSLATE_NOOP("QObject", "the datum shift: this grid would stand in its place")},
    // PROJ 9.1 leaves the datum shift out of a system with geocentric latitudes.
    {"geoc", isFalse, QT_TRANSLATE_NOOP("QObject", "the datum shift: there would be none")},
};

} // namespace

QString whatIsOverruled(const QString &projName, const QString &value)
{
    const auto row = std::find_if(
        std::begin(overrulingRows), std::end(overrulingRows),
        [&projName](const OverrulingRow &r) { return projName == QLatin1String(r.name); });
    return row == std::end(overrulingRows) || row->overrulesNothing(value.trimmed())
               ? QString()
               : translated(row->overruled);
}

} // namespace KelStd::io
