#include <KelStd/proj/Definition.h>

#include <KelStd/platform/Toolkits.h>
#include <KelStd/proj/ConfiguredAxis.h>
#include <KelStd/text/CoordStringHelper.h>

#include <QtCore/QStringList>

namespace KelStd::proj {

namespace {

/// Digits after the point that the inverse flattening is given at most.
constexpr int reciprocalDecimals = 17;

constexpr int threeParameterDecimals = 6;
constexpr int sevenParameterDecimals = 12;

/// Indexed by `EEllipsoidDirection`.
constexpr const char *axisWords[] = {"enu", "wsu", "esu", "wnu"};

QString axisFragment(EEllipsoidDirection direction)
{
    const auto index = static_cast<qint64>(direction);
    if (index < 0 || index >= static_cast<qint64>(std::size(axisWords)))
        return {};
    return QLatin1String(" +axis=") + QLatin1String(axisWords[index]);
}

QString semiMajorAxis(const Param &axis)
{
    QString text = CoordStringHelper::GetFormatString(axis);
    if (axis.unit != Unit_Meter)
        text += CoordStringHelper::Unit_to_Proj4String(axis.unit);
    warnOfConfiguredAxis(axis);
    return text;
}

QString fixedDecimals(double value, int decimals)
{
    QString text = QString::number(value, 'f', decimals);
    tk::Toolkits::EraseTailZero(text);
    return text;
}

QString metres(const Param &param, EUnit unit, double sign, int decimals)
{
    return fixedDecimals(
        CoordStringHelper::ConvertUnit_Length(param.value.toDouble() * sign, unit, Unit_Meter),
        decimals);
}

QString arcSeconds(const Param &param)
{
    return fixedDecimals(
        CoordStringHelper::ConvertUnit_Angle(param.value.toDouble(), param.unit, Unit_Second),
        sevenParameterDecimals);
}

} // namespace

QString wgs84Geographic()
{
    return QStringLiteral("+proj=longlat +datum=WGS84 +axis=enu");
}

QString wgs84Cartesian()
{
    return QStringLiteral("+proj=cart +ellps=GRS80 +towgs84=0,0,0 +axis=enu +units=m");
}

QString projectionFragment(const QString &name)
{
    return QLatin1String("+proj=") + name;
}

QString ellipsoidFragment(const Ellipsoid &ellipsoid)
{
    const QString name = ellipsoid.proj4EllpsName.trimmed();
    const QString shape =
        name.isEmpty()
            ? QLatin1String(" +a=") + semiMajorAxis(ellipsoid.biggerHalfAxle)
                  + QLatin1String(" +rf=")
                  + tk::Toolkits::DoubleToString(ellipsoid.reciprocal, reciprocalDecimals)
            : QLatin1String(" +ellps=") + name;
    return shape + axisFragment(ellipsoid.positiveDir);
}

QString parameterFragment(const Projection &projection)
{
    QString fragment;
    const auto &names = projection.paramProj4;
    for (auto entry = names.constBegin(); entry != names.constEnd(); ++entry) {
        const Param param = projection.param.value(entry.key());
        if (param.valType != ValueType_Proj4_Param_Bool) {
            fragment += QLatin1String(" +") + entry.value() + QLatin1Char('=')
                        + CoordStringHelper::GetNoFormatString(param);
        } else if (param.value.toBool()) {
            fragment += QLatin1String(" +") + entry.value();
        }
    }
    return fragment;
}

QString unitFragment(const Projection &projection)
{
    return QLatin1String(" +units=")
           + CoordStringHelper::Unit_to_Proj4String(projection.loc_or_height_unit);
}

QString datumFragment(const stEllipsoinTransform &transform, DatumSigns signs)
{
    const stEllipsoinTransform &t = transform;
    QStringList values;
    switch (t.fuction) {
    case EllipsoinTransformFunction_Three: {
        constexpr int decimals = threeParameterDecimals;
        values << metres(t.x_translate, t.x_translate.unit, signs.translations, decimals)
               << metres(t.y_translate, t.y_translate.unit, signs.translations, decimals)
               // z in the unit of y, deliberately: existing systems depend on it.
               << metres(t.z_translate, t.y_translate.unit, signs.translations, decimals);
        break;
    }
    case EllipsoinTransformFunction_Seven: {
        for (const Param *translation : {&t.x_translate, &t.y_translate, &t.z_translate}) {
            values << metres(*translation, translation->unit, signs.translations,
                             sevenParameterDecimals);
        }
        for (const Param *rotation : {&t.x_rotate, &t.y_rotate, &t.z_rotate})
            values << arcSeconds(*rotation);
        values << fixedDecimals(t.ratio_ppm.value.toDouble() * signs.scale, sevenParameterDecimals);
        break;
    }
    case EllipsoinTransformFunction_None:
    default: values << QStringLiteral("0,0,0");
    }
    return QLatin1String(" +towgs84=") + values.join(QLatin1Char(','));
}

} // namespace KelStd::proj
