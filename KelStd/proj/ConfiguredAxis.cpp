#include <KelStd/proj/ConfiguredAxis.h>

#include <KelStd/display/ConfiguredStyle.h>
#include <KelStd/proj/TransformationResult.h>
#include <KelStd/text/CoordStringHelper.h>
#include <KelStd/text/EnumerationTables.h>

#include <QtCore/QObject>

#include <atomic>

namespace KelStd::proj {

namespace {

/// Half a millimetre of six thousand kilometres.
constexpr unsigned char minDecimals = 3;

bool isLength(EUnit unit)
{
    const UnitRow *row = findRow(unitRows, unit);
    return row != nullptr && row->metresPerUnit != 0.0;
}

bool isHarmless(const display::ConfiguredStyle &style)
{
    return style.unit.value_or(Unit_Meter) == Unit_Meter && style.precision >= minDecimals;
}

/// A number for each setting; 0 for none.
quint64 numberOf(const display::ConfiguredStyle &style)
{
    const auto unit = static_cast<quint32>(style.unit.value_or(Unit_Meter));
    return (quint64{1} << 40) + (quint64{unit} << 8) + style.precision;
}

QString unitText(const display::ConfiguredStyle &style)
{
    const EUnit unit = style.unit.value_or(Unit_Meter);
    const QString word = CoordStringHelper::Unit_to_DescriptionString(unit);
    return word.isEmpty() ? QString::number(unit) : word;
}

} // namespace

QString axisProblem(const Ellipsoid &ellipsoid)
{
    if (!ellipsoid.proj4EllpsName.trimmed().isEmpty())
        return {};
    const Param &axis = ellipsoid.biggerHalfAxle;
    const auto style = display::configuredStyle(axis.valType);
    // A unit that is shown in itself is not converted.
    if (!style || !style->unit || *style->unit == axis.unit || isLength(*style->unit))
        return {};
    return QObject::tr(
        "The semi-major axis of the ellipsoid cannot be written for PROJ: the display "
        "configuration shows it in a unit that is no length.");
}

void warnOfConfiguredAxis(const Param &axis)
{
    static std::atomic<quint64> lastTold{0};
    const auto style = display::configuredStyle(axis.valType);
    if (!style || isHarmless(*style))
        return;
    const quint64 setting = numberOf(*style);
    if (lastTold.exchange(setting, std::memory_order_relaxed) == setting)
        return;
    logFailure(
        QObject::tr("The semi-major axis of an ellipsoid is written for PROJ as the display "
                    "configuration shows it (unit: %1, decimals: %2), but PROJ reads metres. "
                    "Positions are wrong unless it is shown in metres with at least 3 "
                    "decimals.")
            .arg(unitText(*style))
            .arg(style->precision),
        LogType_Warning);
}

} // namespace KelStd::proj
