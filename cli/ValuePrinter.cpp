#include <cli/ValuePrinter.h>

#include <KelStd/coord/Param.h>
#include <KelStd/text/CoordStringHelper.h>

#include <QtCore/QLocale>

#include <algorithm>
#include <cmath>

namespace KelStd::cli {

namespace {

/// The same meridian between -180 and 180 degrees, which is all that the library shows. Exact: the
/// difference of two doubles of which neither is more than twice the other is one, too.
double within180(double longitude)
{
    constexpr double halfCircle = 180.0;
    constexpr double fullCircle = 360.0;
    const double rest = std::fmod(longitude, fullCircle);
    if (rest > halfCircle)
        return rest - fullCircle;
    return rest < -halfCircle ? rest + fullCircle : rest;
}

QString exactText(double value)
{
    return withoutSignOfZero(QString::number(value, 'f', QLocale::FloatingPointShortest));
}

/// How many characters a number of so many decimals has from its decimal point on.
int fractionWidth(int decimals)
{
    return decimals > 0 ? decimals + 1 : 0;
}

constexpr int exactWidth = 22; // -0.0034675300121307373

} // namespace

ValuePrinter::ValuePrinter(const DisplayOptions &options, Output output)
    : m_form(options.form == DisplayOptions::Form::Exact ? Form::Exact : Form::Configured),
      m_angleStyle(options.angleStyle != nullptr ? *options.angleStyle : defaultAngleStyle()),
      m_lengthUnit(options.lengthUnit != nullptr ? *options.lengthUnit : defaultLengthUnit())
{
    const bool isNumbers =
        output == Output::Csv && !options.form.has_value() && options.angleStyle == nullptr;
    if (isNumbers)
        m_form = Form::Numbers;
    m_lengthDecimals =
        options.lengthDecimals.value_or(isNumbers ? csvLengthDecimals : m_config.distancePrecision);
    m_angleDecimals =
        options.angleDecimals.value_or(isNumbers ? csvAngleDecimals : m_angleStyle.decimals);

    m_config.latLongFormat = m_angleStyle.format;
    m_config.latLongPrecision = static_cast<unsigned char>(m_angleDecimals);
    m_config.distanceUnit = m_config.xyUnit = m_config.earthHeightUnit =
        m_config.elevationHeightUnit = m_lengthUnit.unit;
    m_config.distancePrecision = m_config.xyPrecision = m_config.earthHeightPrecision =
        m_config.elevationHeightPrecision = static_cast<unsigned char>(m_lengthDecimals);
    // Who asks for a number of decimals gets them.
    if (options.lengthDecimals) {
        m_config.distanceKeepZero = m_config.xyKeepZero = m_config.earthHeightKeepZero =
            m_config.elevationHeightKeepZero = true;
    }
}

QString ValuePrinter::text(const Column &column, const Location &location) const
{
    const double value = (location.*column.value)();
    switch (m_form) {
    case Form::Exact: return exactText(value);
    case Form::Configured: return configuredText(column, value);
    case Form::Numbers: break;
    }
    return numberText(isAngle(column) ? value
                                      : CoordStringHelper::ConvertUnit_Length(value, Unit_Meter,
                                                                              m_lengthUnit.unit),
                      decimalsOf(column));
}

QString ValuePrinter::configuredText(const Column &column, double value) const
{
    const EValueType type = valueTypeOf(column);
    const double shown = type == ValueType_Longitude ? within180(value) : value;
    const QString text =
        m_config.getParamValueString({type, isAngle(column) ? Unit_Degree : Unit_Meter, shown});
    return isAngle(column) ? text : withoutSignOfZero(text);
}

QString ValuePrinter::cell(const Column &column, const Location &location) const
{
    const QString shown = text(column, location);
    if (m_form != Form::Configured || isAngle(column))
        return shown;
    const int point = shown.indexOf(QLatin1Char('.'));
    const int fraction = point < 0 ? 0 : shown.size() - point;
    return shown + QString(fractionWidth(m_lengthDecimals) - fraction, QLatin1Char(' '));
}

QString ValuePrinter::unit(const Column &column) const
{
    if (!isAngle(column))
        return QString::fromLatin1(m_lengthUnit.option);
    return QString::fromLatin1(m_form == Form::Configured ? m_angleStyle.unit
                                                          : column.quantity->unit);
}

QString ValuePrinter::csvName(const Column &column) const
{
    return csvNameOf(column, unit(column).replace(QLatin1Char('-'), QLatin1Char('_')));
}

int ValuePrinter::decimalsOf(const Column &column) const
{
    return isAngle(column) ? m_angleDecimals : m_lengthDecimals;
}

int ValuePrinter::angleWidth(const Column &column) const
{
    const int fraction = fractionWidth(m_angleDecimals);
    const int degreeDigits = valueTypeOf(column) == ValueType_Longitude ? 3 : 2;
    constexpr int symbolAndLetter = 2;
    switch (static_cast<int>(m_angleStyle.format)) {
    case Format_Degree: return degreeDigits + fraction + symbolAndLetter;
    case Format_Second: return 6 + fraction + symbolAndLetter;
    case Format_Radian: return 1 + fraction + 1;
    default: return degreeDigits + 1 + 2 + 1 + 2 + fraction + symbolAndLetter;
    }
}

int ValuePrinter::width(const Column &column) const
{
    const bool isMetre = m_lengthUnit.unit == Unit_Meter;
    int width = exactWidth;
    if (m_form != Form::Exact) {
        width = isAngle(column)
                    ? angleWidth(column)
                    : column.integerWidth + fractionWidth(m_lengthDecimals) + (isMetre ? 0 : 1);
    }
    return std::max({width, static_cast<int>(qstrlen(column.label)), unit(column).size()});
}

} // namespace KelStd::cli
