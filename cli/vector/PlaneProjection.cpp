#include <cli/vector/PlaneProjection.h>

#include <QtCore/QStringList>

#include <algorithm>
#include <cmath>
#include <set>

namespace KelStd::cli::vector {

namespace {

/// Keys of the datum, the unit and the string itself.
const QStringList &otherKeys()
{
    static const QStringList keys = {"datum",     "ellps",      "a",        "b",      "rf",
                                     "R",         "towgs84",    "nadgrids", "units",  "to_meter",
                                     "pm",        "no_defs",    "type",     "wktext", "vunits",
                                     "vto_meter", "geoidgrids", "axis",     "over"};
    return keys;
}

/// Parameters that are left out where they have these values.
const std::map<QString, double> &usualValues()
{
    static const std::map<QString, double> values = {
        {"lat_0", 0.0}, {"lon_0", 0.0}, {"k_0", 1.0}, {"x_0", 0.0}, {"y_0", 0.0}};
    return values;
}

// A degree is some 111 km: both are about a tenth of a millimetre on the ground.
constexpr double angleTolerance = 1e-9;  ///< [deg]
constexpr double lengthTolerance = 1e-4; ///< [m]
constexpr double scaleTolerance = 1e-11;

double toleranceOf(const QString &key)
{
    if (key == QLatin1String("x_0") || key == QLatin1String("y_0") || key == QLatin1String("h"))
        return lengthTolerance;
    return key.startsWith(QLatin1Char('k')) ? scaleTolerance : angleTolerance;
}

/// The transverse Mercator projection that a zone of UTM stands for.
void writeOutZone(PlaneProjection &projection)
{
    const double zone = projection.numbers[QStringLiteral("zone")];
    const bool isSouth = projection.words.count(QStringLiteral("south")) > 0;
    projection.name = QStringLiteral("tmerc");
    projection.words.erase(QStringLiteral("south"));
    projection.numbers = {{"lon_0", zone * 6.0 - 183.0},
                          {"k_0", 0.9996},
                          {"x_0", 500000.0},
                          {"y_0", isSouth ? 10000000.0 : 0.0}};
}

} // namespace

PlaneProjection PlaneProjection::from(const std::string &projString)
{
    PlaneProjection projection;
    const QStringList parts =
        QString::fromStdString(projString).split(QLatin1Char(' '), Qt::SkipEmptyParts);
    for (const QString &part : parts) {
        const QString text = part.startsWith(QLatin1Char('+')) ? part.mid(1) : part;
        QString key = text.section(QLatin1Char('='), 0, 0);
        const QString value = text.section(QLatin1Char('='), 1);
        if (key == QLatin1String("proj")) {
            projection.name = value;
            continue;
        }
        if (otherKeys().contains(key))
            continue;
        if (key == QLatin1String("k"))
            key = QStringLiteral("k_0");
        bool ok = false;
        const double number = value.toDouble(&ok);
        if (ok)
            projection.numbers[key] = number;
        else
            projection.words[key] = value;
    }
    if (projection.name == QLatin1String("utm"))
        writeOutZone(projection);
    const auto first = projection.numbers.find(QStringLiteral("lat_1"));
    const auto second = projection.numbers.find(QStringLiteral("lat_2"));
    // Two standard parallels may stand in either order.
    if (first != projection.numbers.end() && second != projection.numbers.end()
        && first->second < second->second)
        std::swap(first->second, second->second);
    for (const auto &[key, value] : usualValues())
        projection.numbers.emplace(key, value);
    return projection;
}

QString PlaneProjection::differenceTo(const PlaneProjection &own) const
{
    if (name != own.name) {
        return QStringLiteral("the projection is %1 there and %2 here").arg(name, own.name);
    }
    std::set<QString> keys;
    for (const auto *const each : {&numbers, &own.numbers}) {
        for (const auto &[key, value] : *each)
            keys.insert(key);
    }
    const auto shown = [](const std::map<QString, double> &values, const QString &key) {
        const auto found = values.find(key);
        return found == values.end() ? QStringLiteral("not given")
                                     : QString::number(found->second, 'g', 12);
    };
    for (const QString &key : keys) {
        const auto there = numbers.find(key);
        const auto here = own.numbers.find(key);
        const bool isSame = there != numbers.end() && here != own.numbers.end()
                            && std::abs(there->second - here->second) <= toleranceOf(key);
        if (!isSame) {
            return QStringLiteral("%1 is %2 there and %3 here")
                .arg(key, shown(numbers, key), shown(own.numbers, key));
        }
    }
    if (words != own.words)
        return QStringLiteral("the projection %1 has other options there").arg(name);
    return {};
}

} // namespace KelStd::cli::vector
