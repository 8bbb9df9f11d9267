#include <KelStd/positions/ValuePrinter.h>

#include <KelStd/coord/Param.h>
#include <KelStd/positions/PlainNumbers.h>
#include <KelStd/text/CoordStringHelper.h>

#include <QtCore/QLocale>

#include <algorithm>
#include <cmath>

namespace KelStd::positions {

namespace {

QString exactText(double value)
{
    return withoutSignOfZero(QString::number(value, 'f', QLocale::FloatingPointShortest));
}

/// How many characters a number of so many decimals has from its decimal point on.
int fractionWidth(int decimals)
{
    return decimals > 0 ? decimals + 1 : 0;
}

/// The settings of one kind of lengths.
struct LengthRow
{
    EValueType type;
    EUnit stShowConfig::*unit;
    unsigned char stShowConfig::*precision;
    bool stShowConfig::*keepZero;
};

constexpr LengthRow lengthRows[] = {
    {ValueType_Distance, &stShowConfig::distanceUnit, &stShowConfig::distancePrecision,
     &stShowConfig::distanceKeepZero},
    {ValueType_X, &stShowConfig::xyUnit, &stShowConfig::xyPrecision, &stShowConfig::xyKeepZero},
    {ValueType_EarthHeight, &stShowConfig::earthHeightUnit, &stShowConfig::earthHeightPrecision,
     &stShowConfig::earthHeightKeepZero},
    {ValueType_ElevationHeight, &stShowConfig::elevationHeightUnit,
     &stShowConfig::elevationHeightPrecision, &stShowConfig::elevationHeightKeepZero},
};

const LengthRow &rowOf(const Column &column)
{
    const EValueType type = column.valueType == ValueType_Y ? ValueType_X : column.valueType;
    return *std::find_if(std::begin(lengthRows), std::end(lengthRows),
                         [type](const LengthRow &row) { return row.type == type; });
}

std::size_t indexOf(const Column &column)
{
    return static_cast<std::size_t>(static_cast<int>(column.frame) * componentsPerFrame
                                    + column.component);
}

/// The nearest number of decimals that can be asked for.
unsigned char withinDecimals(int decimals)
{
    return static_cast<unsigned char>(std::clamp(decimals, 0, int{PrintOptions::maxDecimals}));
}

constexpr int exactWidth = 22; // -0.0034675300121307373

} // namespace

double within180(double longitude)
{
    // Exact: the difference of two doubles of which neither is more than twice the other is one,
    // too.
    constexpr double halfCircle = 180.0;
    constexpr double fullCircle = 360.0;
    const double rest = std::fmod(longitude, fullCircle);
    if (rest > halfCircle)
        return rest - fullCircle;
    return rest < -halfCircle ? rest + fullCircle : rest;
}

ValuePrinter::ValuePrinter(const PrintOptions &options, Output output)
    : m_form(options.form == PrintOptions::Form::Exact ? Form::Exact : Form::Configured),
      m_localAxes(options.localAxes)
{
    const bool isNumbers =
        output == Output::Csv && !options.form.has_value() && options.angleStyle == nullptr;
    if (isNumbers)
        m_form = Form::Numbers;
    // A style of angles alone does not make other programs' lengths follow the user's taste.
    const bool isAskedFor = output == Output::Table || options.form.has_value();
    if (m_form == Form::Configured && isAskedFor && options.configured) {
        m_config = *options.configured;
        if (const AngleStyle *style = findAngleStyle(m_config.latLongFormat))
            m_angleStyle = style;
    } else {
        m_config.latLongPrecision = static_cast<unsigned char>(m_angleStyle->decimals);
        for (const LengthRow &row : lengthRows) {
            m_config.*row.unit = defaultLengthUnit().unit;
            m_config.*row.precision = m_config.distancePrecision;
        }
    }
    take(options, isNumbers);
    planNumbers();
}

/// What options say goes before what is configured.
void ValuePrinter::take(const PrintOptions &options, bool isNumbers)
{
    if (options.angleStyle != nullptr) {
        if (m_angleStyle->format != options.angleStyle->format)
            m_config.latLongPrecision = static_cast<unsigned char>(options.angleStyle->decimals);
        m_angleStyle = options.angleStyle;
    }
    m_config.latLongFormat = m_angleStyle->format;
    if (isNumbers)
        m_config.latLongPrecision = csvAngleDecimals;
    for (const LengthRow &row : lengthRows) {
        if (options.lengthUnit != nullptr)
            m_config.*row.unit = options.lengthUnit->unit;
        if (isNumbers)
            m_config.*row.precision = csvLengthDecimals;
        // Who asks for a number of decimals gets them.
        if (options.lengthDecimals) {
            m_config.*row.precision = withinDecimals(*options.lengthDecimals);
            m_config.*row.keepZero = true;
        }
    }
    if (options.angleDecimals)
        m_config.latLongPrecision = withinDecimals(*options.angleDecimals);
    else if (options.lengthDecimals)
        m_config.latLongPrecision = followingDecimals(withinDecimals(*options.lengthDecimals));
}

/// The decimals of angles beside lengths of so many, in the smallest of their units.
unsigned char ValuePrinter::followingDecimals(int lengthDecimals) const
{
    double metres = 1.0;
    for (const LengthRow &row : lengthRows) {
        metres = std::min(
            metres, CoordStringHelper::ConvertUnit_Length(1.0, m_config.*row.unit, Unit_Meter));
    }
    const AngleStyle &style =
        m_form == Form::Numbers ? *findAngleStyle(Format_Degree) : *m_angleStyle;
    return withinDecimals(angleDecimalsFor(style, lengthDecimals, metres));
}

/// Looked up once: a million lines have twelve million numbers.
void ValuePrinter::planNumbers()
{
    for (const Column &column : columns()) {
        m_plans[indexOf(column)] = {isAngle(column) ? Unit_Degree : lengthUnitOf(column),
                                    decimalsOf(column)};
    }
}

const ValuePrinter::NumberPlan &ValuePrinter::planOf(const Column &column) const
{
    return m_plans[indexOf(column)];
}

QString ValuePrinter::text(const Column &column, const Location &location) const
{
    const double value = (location.*column.value)();
    switch (m_form) {
    case Form::Exact: return exactText(value);
    case Form::Configured: return configuredText(column, value);
    case Form::Numbers: break;
    }
    return numberText(plainNumber(column, location), planOf(column).decimals);
}

void ValuePrinter::append(QByteArray &bytes, const Column &column, const Location &location) const
{
    if (m_form == Form::Numbers)
        appendNumber(bytes, plainNumber(column, location), planOf(column).decimals);
    else
        bytes += text(column, location).toUtf8();
}

/// In the unit of the column's plain decimals.
double ValuePrinter::plainNumber(const Column &column, const Location &location) const
{
    const double value = (location.*column.value)();
    const EUnit unit = planOf(column).unit;
    const bool isAsItStands = unit == Unit_Degree || unit == Unit_Meter;
    return isAsItStands ? value : CoordStringHelper::ConvertUnit_Length(value, Unit_Meter, unit);
}

QString ValuePrinter::configuredText(const Column &column, double value) const
{
    if (isAngle(column) && m_angleStyle->format == Format_Radian)
        return radianText(value);
    if (isAngle(column) && countsBackwards(column, m_localAxes))
        value = -value;
    const EValueType type = column.valueType;
    const double shown = type == ValueType_Longitude ? within180(value) : value;
    const QString text =
        m_config.getParamValueString({type, isAngle(column) ? Unit_Degree : Unit_Meter, shown});
    return isAngle(column) ? text : withoutSignOfZero(text);
}

/// A plain number with a sign for longitudes and latitudes alike: a radian with a letter is read by
/// nobody.
QString ValuePrinter::radianText(double degrees) const
{
    constexpr double radiansPerDegree = 0.017453292519943295;
    return withoutSignOfZero(
        QString::number(within180(degrees) * radiansPerDegree, 'f', m_config.latLongPrecision));
}

QString ValuePrinter::cell(const Column &column, const Location &location) const
{
    QString shown = text(column, location);
    if (m_form != Form::Configured || isAngle(column))
        return shown;
    const auto point = shown.indexOf(QLatin1Char('.'));
    const int fraction = point < 0 ? 0 : static_cast<int>(shown.size() - point);
    return shown
           + QString(std::max(0, fractionWidth(decimalsOf(column)) - fraction), QLatin1Char(' '));
}

QString ValuePrinter::unit(const Column &column) const
{
    if (!isAngle(column))
        return unitSymbol(lengthUnitOf(column));
    return QString::fromLatin1(m_form == Form::Configured ? m_angleStyle->unit : column.unit);
}

QString ValuePrinter::csvName(const Column &column) const
{
    return csvNameOf(column, unit(column));
}

int ValuePrinter::decimalsOf(const Column &column) const
{
    return isAngle(column) ? m_config.latLongPrecision : m_config.*rowOf(column).precision;
}

EUnit ValuePrinter::lengthUnitOf(const Column &column) const
{
    return m_form == Form::Exact ? Unit_Meter : m_config.*rowOf(column).unit;
}

int ValuePrinter::angleWidth(const Column &column) const
{
    const int fraction = fractionWidth(m_config.latLongPrecision);
    const int degreeDigits = column.valueType == ValueType_Longitude ? 3 : 2;
    constexpr int symbolAndLetter = 2;
    switch (static_cast<int>(m_angleStyle->format)) {
    case Format_Degree: return degreeDigits + fraction + symbolAndLetter;
    case Format_Second: return 6 + fraction + symbolAndLetter;
    case Format_Radian: return 2 + fraction; // a sign
    default: return degreeDigits + 1 + 2 + 1 + 2 + fraction + symbolAndLetter;
    }
}

int ValuePrinter::width(const Column &column) const
{
    int width = exactWidth;
    if (m_form != Form::Exact && isAngle(column)) {
        width = angleWidth(column);
    } else if (m_form != Form::Exact) {
        const double unitsOfMetre =
            CoordStringHelper::ConvertUnit_Length(1.0, Unit_Meter, lengthUnitOf(column));
        const int moreDigits = static_cast<int>(std::ceil(std::log10(unitsOfMetre)));
        width = column.integerWidth + moreDigits + fractionWidth(decimalsOf(column));
    }
    return std::max(
        {width, static_cast<int>(qstrlen(column.label)), static_cast<int>(unit(column).size())});
}

} // namespace KelStd::positions
