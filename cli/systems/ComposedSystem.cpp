#include <cli/systems/ComposedSystem.h>

#include <cli/geoids/GeoidModel.h>

#include <KelStd/io/ProjEllipsoid.h>
#include <KelStd/io/ProjFlags.h>
#include <KelStd/library/LibraryRecord.h>
#include <KelStd/platform/Toolkits.h>
#include <KelStd/text/TypedAngle.h>

#include <algorithm>
#include <array>

namespace KelStd::cli {

namespace {

/// How a parameter of PROJ's projections is read; all others are plain numbers.
struct ParameterRow
{
    const char *name;
    EValueType valType;
    EUnit unit;
    AngleSense sense;
};

constexpr ParameterRow parameterRows[] = {
    {"lon_0", ValueType_Longitude, Unit_Degree, AngleSense::Longitude},
    {"lon_1", ValueType_Longitude, Unit_Degree, AngleSense::Longitude},
    {"lon_2", ValueType_Longitude, Unit_Degree, AngleSense::Longitude},
    {"lonc", ValueType_Longitude, Unit_Degree, AngleSense::Longitude},
    {"lat_0", ValueType_Latitude, Unit_Degree, AngleSense::Latitude},
    {"lat_1", ValueType_Latitude, Unit_Degree, AngleSense::Latitude},
    {"lat_2", ValueType_Latitude, Unit_Degree, AngleSense::Latitude},
    {"lat_ts", ValueType_Latitude, Unit_Degree, AngleSense::Latitude},
    {"alpha", ValueType_Angle, Unit_Degree, AngleSense::Plain},
    {"gamma", ValueType_Angle, Unit_Degree, AngleSense::Plain},
    {"x_0", ValueType_Distance, Unit_Meter, AngleSense::Plain},
    {"y_0", ValueType_Distance, Unit_Meter, AngleSense::Plain},
};

const ParameterRow *findParameter(const QString &projName)
{
    for (const ParameterRow &row : parameterRows) {
        if (projName == QLatin1String(row.name))
            return &row;
    }
    return nullptr;
}

/// Parameters that would change the ellipsoid beside its record.
constexpr const char *ellipsoidParameters[] = {"a",     "b",     "rf",      "f",      "es",  "e",
                                               "R",     "R_A",   "R_V",     "R_a",    "R_g", "R_h",
                                               "ellps", "datum", "R_lat_a", "R_lat_g"};

/// What PROJ calls so has no northings and eastings.
constexpr const char *noProjections[] = {"longlat", "latlong", "latlon", "lonlat",
                                         "geocent", "cart",    "noop",   "pipeline"};

template <std::size_t count>
bool isAmong(const QString &text, const char *const (&words)[count])
{
    return std::any_of(std::begin(words), std::end(words),
                       [&text](const char *word) { return text == QLatin1String(word); });
}

/// PROJ's names of one parameter.
bool areOneName(const QString &left, const QString &right)
{
    const auto plain = [](const QString &name) {
        return name == QLatin1String("k_0") ? QStringLiteral("k") : name;
    };
    return plain(left) == plain(right);
}

/// The numbers of a list with commas; nothing with the mistake.
std::optional<QList<double>> readNumbers(const QString &text, QString &mistake)
{
    QList<double> numbers;
    for (const QString &field : text.split(QLatin1Char(','))) {
        TypedValueFailure failure;
        const auto number = readNumber(field.trimmed(), failure);
        if (!number) {
            mistake = failure.text;
            return std::nullopt;
        }
        numbers += *number;
    }
    return numbers;
}

std::optional<Ellipsoid> ellipsoidOf(const QString &text, QString &mistake)
{
    if (const auto known = io::ellipsoidOfProj(text.trimmed()))
        return known;
    if (const auto record = library::find(RecordKind::Ellipsoid, text))
        return std::get<Ellipsoid>(*record);
    const bool isNumbers = text.contains(QLatin1Char(','));
    QString reason;
    const auto numbers = isNumbers ? readNumbers(text, reason) : std::nullopt;
    if (numbers && numbers->size() == 2) {
        Ellipsoid ellipsoid;
        ellipsoid.ellipsoid_name = text.simplified();
        ellipsoid.biggerHalfAxle = Param(ValueType_Distance, Unit_Meter, numbers->at(0));
        ellipsoid.reciprocal = numbers->at(1);
        return ellipsoid;
    }
    mistake = QStringLiteral("--ellipsoid %1 ").arg(quoted(text));
    if (isNumbers && !reason.isEmpty()) {
        mistake += QStringLiteral("is no axis and inverse flattening: ") + reason;
    } else {
        mistake += QStringLiteral("is neither a PROJ name (%1, ...), nor an ellipsoid of the "
                                  "library, nor an axis [m] and an inverse flattening with a comma "
                                  "between them")
                       .arg(io::ellipsoidNamesOfProj().mid(2, 4).join(QStringLiteral(", ")));
    }
    return std::nullopt;
}

Projection projectionOf(const QString &text)
{
    if (const auto record = library::find(RecordKind::Projection, text))
        return std::get<Projection>(*record);
    Projection projection;
    projection.projection_name = text.trimmed();
    projection.proj4Projection = text.trimmed();
    return projection;
}

/// The key under which the record has a parameter of PROJ; the PROJ name itself where it has none.
QString keyOf(const Projection &projection, const QString &projName)
{
    const auto &names = projection.paramProj4;
    for (auto entry = names.constBegin(); entry != names.constEnd(); ++entry) {
        if (areOneName(entry.value(), projName))
            return entry.key();
    }
    return projName;
}

/// The value of a parameter; nothing with the mistake.
std::optional<Param> readValue(const QString &projName, const QString &text, QString &mistake)
{
    const ParameterRow *const row = findParameter(projName);
    const bool isAngle = row != nullptr && row->unit == Unit_Degree;
    TypedValueFailure failure;
    const auto value = isAngle ? readTypedAngle(text, row->sense, DecimalMark::Point, failure)
                               : readNumber(text, failure);
    if (!value) {
        mistake = QStringLiteral("%1 %2").arg(projName, failure.text);
        return std::nullopt;
    }
    return row != nullptr ? Param(row->valType, row->unit, *value)
                          : Param(ValueType_Double, Unit_None, *value);
}

/// Sets "lon_0=15", or "south", which PROJ takes without a value; false with the mistake.
bool set(const QString &setting, QStringList &seen, Projection &projection, QString &mistake)
{
    const QString projName = setting.section(QLatin1Char('='), 0, 0).trimmed();
    const QString text = setting.section(QLatin1Char('='), 1).trimmed();
    const bool isFlag = io::isProjFlag(projName);
    const bool hasValue = setting.contains(QLatin1Char('='));
    if (isFlag && hasValue) {
        mistake = QStringLiteral("--set %1: %2 has no value, '--set %2' sets it")
                      .arg(quoted(setting), projName);
        return false;
    }
    if (projName.isEmpty() || !(isFlag || hasValue)) {
        mistake = QStringLiteral("--set %1 is no PARAMETER=VALUE").arg(quoted(setting));
        return false;
    }
    if (isAmong(projName, ellipsoidParameters)) {
        mistake =
            QStringLiteral("--set %1: the ellipsoid is that of --ellipsoid").arg(quoted(setting));
        return false;
    }
    const bool isRepeated = std::any_of(seen.cbegin(), seen.cend(), [&](const QString &name) {
        return areOneName(name, projName);
    });
    if (isRepeated) {
        mistake = QStringLiteral("--set %1: %2 is set twice").arg(quoted(setting), projName);
        return false;
    }
    seen += projName;
    QString reason;
    const auto param = isFlag ? std::optional(Param(ValueType_Proj4_Param_Bool, Unit_None, true))
                              : readValue(projName, text, reason);
    if (!param) {
        mistake = QStringLiteral("--set %1: %2").arg(quoted(setting), reason);
        return false;
    }
    const QString key = keyOf(projection, projName);
    projection.param.insert(key, *param);
    projection.paramProj4.insert(key, projName);
    return true;
}

/// From PROJ's convention: the records have the way from WGS 84, of which the definitions reverse
/// translations and scale and leave rotations.
bool setShift(const QString &text, stEllipsoinTransform &shift, QString &mistake)
{
    QString reason;
    const auto numbers = readNumbers(text, reason);
    constexpr int three = 3;
    constexpr int seven = 7;
    if (!numbers || (numbers->size() != three && numbers->size() != seven)) {
        mistake =
            QStringLiteral("--shift-parameters %1: %2")
                .arg(quoted(text), numbers ? QStringLiteral("three or seven numbers with commas "
                                                            "between them are needed")
                                           : reason);
        return false;
    }
    const bool isSeven = numbers->size() == seven;
    shift.fuction = isSeven ? EllipsoinTransformFunction_Seven : EllipsoinTransformFunction_Three;
    const std::array<Param *, seven> params = {
        &shift.x_translate, &shift.y_translate, &shift.z_translate, &shift.x_rotate,
        &shift.y_rotate,    &shift.z_rotate,    &shift.ratio_ppm};
    for (int i = 0; i < numbers->size(); ++i) {
        const bool isRotation = i >= three && i < seven - 1;
        const double number = numbers->at(i);
        // Not the negative zero, which would be printed so.
        params[static_cast<std::size_t>(i)]->value = isRotation || number == 0.0 ? number : -number;
    }
    return true;
}

} // namespace

std::optional<Coord> composedSystem(const SystemPieces &pieces, QString &mistake)
{
    Coord coord;
    Coord::CreateDefaultTMercCoordination(coord);
    coord.ellipsoidTransform.clear();
    const auto ellipsoid = ellipsoidOf(pieces.ellipsoid, mistake);
    if (!ellipsoid)
        return std::nullopt;
    coord.ellipsoid = *ellipsoid;
    coord.projection = projectionOf(pieces.projection);
    if (isAmong(coord.projection.proj4Projection.trimmed().toLower(), noProjections)) {
        mistake = QStringLiteral("--projection %1 is no projection").arg(quoted(pieces.projection));
        return std::nullopt;
    }
    QStringList seen;
    for (const QString &setting : pieces.settings) {
        if (!set(setting, seen, coord.projection, mistake))
            return std::nullopt;
    }
    if (!pieces.shift.isEmpty() && !setShift(pieces.shift, coord.ellipsoidTransform, mistake))
        return std::nullopt;
    if (!pieces.geoid.isEmpty()) {
        QString reason;
        if (!findGeoidModel(pieces.geoid, reason)) {
            mistake = QStringLiteral("--geoid %1: %2").arg(quoted(pieces.geoid), reason);
            return std::nullopt;
        }
        coord.geoidModel.modelFileName = pieces.geoid;
    }
    coord.coord_name = pieces.name.isEmpty() ? QStringLiteral("%1 / %2").arg(
                           coord.ellipsoid.ellipsoid_name, coord.projection.projection_name)
                                             : pieces.name;
    return coord;
}

QStringList broughtParameters(const SystemPieces &pieces, const Coord &coord)
{
    QStringList brought;
    const Projection &projection = coord.projection;
    const auto &names = projection.paramProj4;
    for (auto entry = names.constBegin(); entry != names.constEnd(); ++entry) {
        const bool isSet = std::any_of(
            pieces.settings.cbegin(), pieces.settings.cend(), [&](const QString &setting) {
                return areOneName(setting.section(QLatin1Char('='), 0, 0).trimmed(), entry.value());
            });
        if (!isSet) {
            constexpr int decimals = 12;
            const Param param = projection.param.value(entry.key());
            if (param.valType == ValueType_Proj4_Param_Bool) {
                if (param.value.toBool())
                    brought += entry.value();
                continue;
            }
            const double value = param.value.toDouble();
            brought += QStringLiteral("%1=%2").arg(entry.value(),
                                                   tk::Toolkits::DoubleToString(value, decimals));
        }
    }
    return brought;
}

} // namespace KelStd::cli
