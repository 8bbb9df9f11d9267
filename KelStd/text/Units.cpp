#include <KelStd/text/CoordStringHelper.h>

#include <KelStd/text/AngleSigns.h>
#include <KelStd/text/EnumerationTables.h>
#include <KelStd/text/RaisedException.h>
#include <KelStd/text/Translation.h>

namespace KelStd {

// UTF-16 literals: their text does not depend on the character set that a compiler is told, and
// needs no memory that is gone when a host's static objects are destroyed.
const QString CoordStringHelper::s_specialSymbol_degree = QStringLiteral("\u00B0");
const QString CoordStringHelper::s_specialSymbol_Minute = QStringLiteral("\u2032");
const QString CoordStringHelper::s_specialSymbol_Second = QStringLiteral("\u2033");
const QString CoordStringHelper::s_specialSymbol_Celsius = QStringLiteral("\u00B0C");
const QString CoordStringHelper::s_specialSymbol_Fahrenheit = QStringLiteral("\u00B0F");

static_assert(printedAngleSign(AngleSign::Degree) == u'\u00B0'
                  && printedAngleSign(AngleSign::Minute) == u'\u2032'
                  && printedAngleSign(AngleSign::Second) == u'\u2033',
              "the symbols above are the first signs of their kinds");

namespace {

constexpr double secondsPerDegree = 3600.0;
constexpr double freezingPointKelvin = 273.15;   // 0 degrees Celsius
constexpr double freezingPointFahrenheit = 32.0; // 0 degrees Celsius
constexpr double fahrenheitPerCelsius = 1.8;

struct SpecialSymbol
{
    EUnit unit;
    const QString *symbol;
};

/// Symbols that are no words of a language: they are not translated.
const SpecialSymbol specialSymbols[] = {
    {Unit_Celsius, &CoordStringHelper::s_specialSymbol_Celsius},
    {Unit_Fahrenheit, &CoordStringHelper::s_specialSymbol_Fahrenheit},
    {Unit_Degree, &CoordStringHelper::s_specialSymbol_degree},
    {Unit_Second, &CoordStringHelper::s_specialSymbol_Second},
};

/// A factor that multiplies, or, where the contract divides, its divisor: 1 / 100000.0 and
/// 0.00001 do not give the same last digit.
struct PressureFactor
{
    double factor;
    bool divides;

    double apply(double value) const { return divides ? value / factor : value * factor; }
};

constexpr EUnit firstPressureUnit = Unit_Bar;
constexpr int pressureUnits = Unit_InHg - Unit_Bar + 1;

/// From the row's unit to the column's: bar, Pa, mbar, mmHg, inHg. The factors are this system's
/// own; they are not reciprocal in their last digits, and stay so.
constexpr PressureFactor pressureFactors[pressureUnits][pressureUnits] = {
    {{1.0, false},
     {100000.0, false},
     {1000.0, false},
     {750.0617000000232, false},
     {29.61340000000015, false}},
    {{100000.0, true},
     {1.0, false},
     {100.0, true},
     {133.32236534674, true},
     {3376.8496694064, true}},
    {{0.001, false},
     {100.0, false},
     {1.0, false},
     {0.7500617000000233, false},
     {0.02961340000000015, false}},
    {{0.0013332236534674001, false},
     {133.32236534674, false},
     {1.3332236534674002, false},
     {1.0, false},
     {0.03948128533959171, false}},
    {{0.033768496694064, false},
     {3376.8496694064, false},
     {33.768496694064, false},
     {25.328456036794808, false},
     {1.0, false}},
};

/// Index into the matrix, or -1 for a unit that is no pressure.
int pressureIndex(EUnit unit)
{
    const int index = static_cast<int>(unit) - static_cast<int>(firstPressureUnit);
    return index >= 0 && index < pressureUnits ? index : -1;
}

bool isTemperature(EUnit unit)
{
    return unit == Unit_Celsius || unit == Unit_Fahrenheit || unit == Unit_Kelvin;
}

double toCelsius(double value, EUnit from)
{
    switch (static_cast<int>(from)) {
    case Unit_Fahrenheit: return (value - freezingPointFahrenheit) / fahrenheitPerCelsius;
    case Unit_Kelvin: return value - freezingPointKelvin;
    default: return value;
    }
}

double fromCelsius(double value, EUnit to)
{
    switch (static_cast<int>(to)) {
    case Unit_Fahrenheit: return value * fahrenheitPerCelsius + freezingPointFahrenheit;
    case Unit_Kelvin: return value + freezingPointKelvin;
    default: return value;
    }
}

} // namespace

QString CoordStringHelper::Unit_to_String(EUnit unit)
{
    for (const SpecialSymbol &special : specialSymbols) {
        if (special.unit == unit)
            return *special.symbol;
    }
    const UnitRow *row = findRow(unitRows, unit);
    return row != nullptr ? translated(row->symbol) : QString();
}

QString CoordStringHelper::Unit_to_Proj4String(EUnit unit)
{
    const UnitRow *row = findRow(unitRows, unit);
    if (row == nullptr || row->projWord == nullptr)
        raiseByPointer("Error unit for proj4");
    return QString::fromLatin1(row->projWord);
}

double CoordStringHelper::LengthRatio_otherToMeter(EUnit unit)
{
    const UnitRow *row = findRow(unitRows, unit);
    if (row == nullptr || row->metresPerUnit == 0.0)
        raiseByValue();
    return row->metresPerUnit;
}

double CoordStringHelper::ConvertUnit_Length(double value, EUnit from, EUnit to)
{
    return value * LengthRatio_otherToMeter(from) / LengthRatio_otherToMeter(to);
}

double CoordStringHelper::ConvertUnit_Angle(double value, EUnit from, EUnit to)
{
    if (from == Unit_Degree && to == Unit_Second)
        return value * secondsPerDegree;
    if (from == Unit_Second && to == Unit_Degree)
        return value / secondsPerDegree;
    return value;
}

double CoordStringHelper::ConvertUnit_Pressure(double value, EUnit from, EUnit to)
{
    const int row = pressureIndex(from);
    const int column = pressureIndex(to);
    if (row < 0 || column < 0 || row == column)
        return value;
    return pressureFactors[row][column].apply(value);
}

double CoordStringHelper::ConvertUnit_Temprature(double value, EUnit from, EUnit to)
{
    if (from == to || !isTemperature(from) || !isTemperature(to))
        return value;
    return fromCelsius(toCelsius(value, from), to);
}

QString CoordStringHelper::SpecialSymbol_Degree()
{
    return s_specialSymbol_degree;
}

QString CoordStringHelper::SpecialSymbol_Minute()
{
    return s_specialSymbol_Minute;
}

QString CoordStringHelper::SpecialSymbol_Second()
{
    return s_specialSymbol_Second;
}

QString CoordStringHelper::SpecialSymbol_Celsius()
{
    return s_specialSymbol_Celsius;
}

QString CoordStringHelper::SpecialSymbol_Fahrenheit()
{
    return s_specialSymbol_Fahrenheit;
}

} // namespace KelStd
