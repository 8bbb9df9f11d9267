#include <cli/vector/FieldNames.h>

#include <KelStd/positions/Columns.h>
#include <KelStd/positions/PlaneUnit.h>
#include <KelStd/text/CoordStringHelper.h>
#include <KelStd/text/UnitWords.h>

#include <QtCore/QByteArray>
#include <QtCore/QChar>
#include <QtCore/QRegularExpression>

#include <algorithm>
#include <iterator>

namespace KelStd::cli::vector {

namespace {

constexpr int maxBytes = 10;

struct ShortName
{
    const char *column; ///< without its unit
    const char *name;   ///< leaves room for a unit of two letters where it can
};

constexpr ShortName shortNames[] = {
    {"wgs84_longitude", "wgs84_lon"},
    {"wgs84_latitude", "wgs84_lat"},
    {"wgs84_height", "wgs84_h"},
    {"wgs84_x", "wgs84_x"},
    {"wgs84_y", "wgs84_y"},
    {"wgs84_z", "wgs84_z"},
    {"local_longitude", "local_lon"},
    {"local_latitude", "local_lat"},
    {"local_ellipsoidal_height", "local_h"},
    {"local_northing", "northing"},
    {"local_easting", "easting"},
    {positions::heightReferenceName, "height_ref"},
    {"local_height", "height"},
    {"site_northing", "site_north"},
    {"site_easting", "site_east"},
    {"site_height", "site_h"},
    {"point_scale", "pt_scale"},
    {"elevation_factor", "elev_fact"},
    {"combined_factor", "comb_fact"},
    {"convergence", "converg"},
};

const QString shortHeightReference = QStringLiteral("height_ref");

/// At most so many bytes of UTF-8, without half a character.
QString cut(const QString &text, int bytes)
{
    QString result = text;
    while (result.toUtf8().size() > bytes)
        result.chop(result.size() > 1 && result.at(result.size() - 1).isLowSurrogate() ? 2 : 1);
    return result;
}

QString shortened(const QString &name)
{
    if (name.toUtf8().size() <= maxBytes)
        return name;
    for (const ShortName &row : shortNames) {
        const QLatin1String column(row.column);
        if (name == column || name.startsWith(column + QLatin1Char('_')))
            return QString::fromLatin1(row.name);
    }
    return cut(name, maxBytes);
}

/// The endings of columns for the units in which the program prints.
const QStringList &unitEndings()
{
    static const QStringList endings = [] {
        QStringList symbols{QStringLiteral("deg")};
        for (const LengthUnit &unit : lengthUnits())
            symbols += QString::fromLatin1(unit.symbol);
        for (const positions::PlaneUnit &unit : positions::planeUnits())
            symbols += unit.symbol;
        for (const AngleStyle &style : angleStyles())
            symbols += QString::fromLatin1(style.unit);
        symbols.replaceInStrings(QStringLiteral("-"), QStringLiteral("_"));
        symbols.replaceInStrings(QRegularExpression(QStringLiteral("^")), QStringLiteral("_"));
        return symbols;
    }();
    return endings;
}

/// Whether it is the name of a coordinate as the program prints it, in any unit.
bool isOwnColumn(const QString &name)
{
    const auto isCalled = [&name](const QString &column) {
        return name == column
               || (name.startsWith(column) && unitEndings().contains(name.mid(column.size())));
    };
    const auto isOf = [&isCalled](const positions::Column &column) {
        return isCalled(QString::fromLatin1(column.csvName));
    };
    const auto &columns = positions::columns();
    const auto &atSite = positions::siteColumns();
    return name == QLatin1String(positions::heightReferenceName)
           || std::any_of(columns.begin(), columns.end(), isOf)
           || std::any_of(atSite.begin(), atSite.end(), isOf);
}

bool isShortOfOwn(const QString &name)
{
    return std::any_of(std::begin(shortNames), std::end(shortNames), [&name](const ShortName &row) {
        const bool isCoordinate = isOwnColumn(QString::fromLatin1(row.column));
        const QString shortName = QString::fromLatin1(row.name);
        return isCoordinate && (name == shortName || name == shortName + QLatin1String("_m"));
    });
}

/// Whether it is of a frame whose shortened names are all among `names`: any one of them, as
/// "height", may be another program's.
bool isOfShortFrame(const QString &name, const QStringList &names)
{
    static const QStringList frames[] = {
        {QStringLiteral("northing"), QStringLiteral("easting"), QStringLiteral("height"),
         shortHeightReference},
        {QStringLiteral("wgs84_lon"), QStringLiteral("wgs84_lat"), QStringLiteral("wgs84_h")},
        {QStringLiteral("local_lon"), QStringLiteral("local_lat"), QStringLiteral("local_h")},
        {QStringLiteral("site_north"), QStringLiteral("site_east"), QStringLiteral("site_h")},
    };
    return std::any_of(std::begin(frames), std::end(frames), [&](const QStringList &frame) {
        return frame.contains(name)
               && std::all_of(frame.begin(), frame.end(),
                              [&names](const QString &each) { return names.contains(each); });
    });
}

/// Whether a layer has the program's columns with the names of a Shapefile.
bool isShortenedAmong(const QStringList &names)
{
    return names.contains(QLatin1String("wgs84_lon")) && names.contains(shortHeightReference);
}

} // namespace

QStringList fieldNames(const Layer &layer)
{
    QStringList names;
    for (const Field &field : layer.fields)
        names += QString::fromStdString(field.name);
    return names;
}

QStringList shapefileNames(const QStringList &names)
{
    QStringList result;
    for (const QString &name : names) {
        const QString plain = shortened(name);
        QString unique = plain;
        for (int number = 2; result.contains(unique, Qt::CaseInsensitive); ++number) {
            const QString ending = QStringLiteral("_%1").arg(number);
            unique = cut(plain, maxBytes - static_cast<int>(ending.size())) + ending;
        }
        result += unique;
    }
    return result;
}

std::vector<bool> ownCoordinates(const QStringList &names)
{
    const bool isShortened = isShortenedAmong(names);
    std::vector<bool> own;
    for (const QString &name : names) {
        const bool isLong = isOwnColumn(name);
        own.push_back(isLong || (isShortened && isShortOfOwn(name)) || isOfShortFrame(name, names));
    }
    return own;
}

std::optional<StatedUnit> statedHeightUnit(const QStringList &names)
{
    std::optional<StatedUnit> stated;
    // A Shapefile has no room for the longest unit, which is the one that then is not there.
    const bool isShortened = isShortenedAmong(names);
    for (const positions::Column &column : positions::columns()) {
        if (positions::isAngle(column) || positions::isPlane(column))
            continue;
        for (const LengthUnit &unit : lengthUnits()) {
            const QString full = positions::csvNameOf(column, QString::fromLatin1(unit.symbol));
            const QString brief = shortened(full);
            const bool isBrief = isShortened && brief == QLatin1String(column.csvName);
            if (!names.contains(full) && !(isBrief && names.contains(brief)))
                continue;
            const double metres = CoordStringHelper::LengthRatio_otherToMeter(unit.unit);
            if (stated && stated->metres != metres)
                return std::nullopt;
            stated = StatedUnit{names.contains(full) ? full : brief, metres};
        }
    }
    return stated;
}

int heightReferenceAmong(const QStringList &names)
{
    const auto full = names.indexOf(QLatin1String(positions::heightReferenceName));
    return static_cast<int>(full >= 0 ? full : names.indexOf(shortHeightReference));
}

QString changedNames(const QStringList &names, const QStringList &changed)
{
    QStringList pairs;
    for (int i = 0; i < names.size() && i < changed.size(); ++i) {
        if (names.at(i) != changed.at(i))
            pairs += QStringLiteral("%1 as %2").arg(names.at(i), changed.at(i));
    }
    return pairs.join(QLatin1String(", "));
}

} // namespace KelStd::cli::vector
