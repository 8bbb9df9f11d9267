#include <KelStd/coord/OverrulingKeys.h>

#include <QtCore/QObject>

#include <algorithm>
#include <iterator>

namespace KelStd {

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

// Of the general parameters in PROJ's documentation ("Cartographic projection"), those that change
// the numbers of a system whose other records stay the same. "to_meter" is not here: PROJ takes
// "units", which every definition has, before it wherever it stands. Neither is "f", which comes
// after what every system has of an ellipsoid. The last rows are a projection's own affair: many
// published definitions name an ellipsoid or a prime meridian.
constexpr OverrulingKey overrulingKeys[] = {
    {"units", QT_TRANSLATE_NOOP("QObject", "the metre of all northings and eastings"), isMetre},
    {"vunits", QT_TRANSLATE_NOOP("QObject", "the metre of all heights"), isMetre},
    {"vto_meter", QT_TRANSLATE_NOOP("QObject", "the metre of all heights"), isOne},
    {"geoidgrids",
     QT_TRANSLATE_NOOP("QObject", "the geoid model: heights are those above this grid"), never},
    {"geoid_crs", QT_TRANSLATE_NOOP("QObject", "the geoid model: heights may be above a grid"),
     never},
    {"axis", QT_TRANSLATE_NOOP("QObject", "the directions and the order of the axes"),
     areEastNorthUp},
    {"towgs84", QT_TRANSLATE_NOOP("QObject", "the datum shift"), never},
    {"nadgrids", QT_TRANSLATE_NOOP("QObject", "the datum shift: this grid takes its place"), never},
    // PROJ 9.1 leaves the datum shift out of a system with geocentric latitudes.
    {"geoc", QT_TRANSLATE_NOOP("QObject", "the datum shift: there is none with it"), isFalse},
    {"datum", QT_TRANSLATE_NOOP("QObject", "the ellipsoid and the datum shift"), nullptr},
    {"ellps", QT_TRANSLATE_NOOP("QObject", "the ellipsoid"), nullptr},
    {"a", QT_TRANSLATE_NOOP("QObject", "the semi-major axis"), nullptr},
    {"b", QT_TRANSLATE_NOOP("QObject", "the flattening"), nullptr, true},
    {"rf", QT_TRANSLATE_NOOP("QObject", "the flattening"), nullptr},
    {"R", QT_TRANSLATE_NOOP("QObject", "the ellipsoid"), nullptr},
    {"pm", QT_TRANSLATE_NOOP("QObject", "the prime meridian of Greenwich"), nullptr},
};

} // namespace

const OverrulingKey *findOverrulingKey(const QString &name)
{
    const auto row =
        std::find_if(std::begin(overrulingKeys), std::end(overrulingKeys),
                     [&name](const OverrulingKey &key) { return name == QLatin1String(key.name); });
    return row != std::end(overrulingKeys) ? row : nullptr;
}

} // namespace KelStd
