#include "Values.h"

#include "Raised.h"
#include "Text.h"

#include <KelStd/display/stShowConfig.h>
#include <KelStd/text/CoordStringHelper.h>
#include <KelStd/text/TypedAngle.h>
#include <KelStd/text/TypedNumber.h>
#include <KelStd/text/UnitWords.h>
#include <KelStd/time/LeapSecondTable.h>

#include <QtCore/QVariant>

#include <algorithm>
#include <cmath>

namespace KelStd::python {

namespace py = pybind11;

namespace {

struct AngleKind
{
    const char *name;
    EValueType type;
    AngleSense sense;
};

constexpr AngleKind angleKinds[] = {
    {"angle", ValueType_Angle, AngleSense::Plain},
    {"longitude", ValueType_Longitude, AngleSense::Longitude},
    {"latitude", ValueType_Latitude, AngleSense::Latitude},
};

const AngleKind &kindOf(const std::string &name)
{
    for (const AngleKind &kind : angleKinds) {
        if (name == kind.name)
            return kind;
    }
    throw Raised(Raise::Value, QStringLiteral("the kind '%1' is none of angle, longitude, latitude")
                                   .arg(fromPython(name)));
}

const LengthUnit &unitOf(const std::string &symbol)
{
    if (const LengthUnit *unit = findLengthUnit(fromPython(symbol)))
        return *unit;
    QStringList symbols;
    for (const LengthUnit &unit : lengthUnits())
        symbols += QString::fromLatin1(unit.symbol);
    throw Raised(Raise::Value, QStringLiteral("the unit '%1' is none of %2")
                                   .arg(fromPython(symbol), symbols.join(QLatin1String(", "))));
}

unsigned char checkedDecimals(int decimals)
{
    constexpr int most = 15;
    if (decimals < 0 || decimals > most)
        throw Raised(Raise::Value, QStringLiteral("decimals are 0 to %1").arg(most));
    return static_cast<unsigned char>(decimals);
}

void requireFinite(double value)
{
    if (!std::isfinite(value))
        throw Raised(Raise::Value, QStringLiteral("%1 is not a finite number").arg(value));
}

py::str formatAngle(double degrees, const std::string &kindName, const std::string &styleName,
                    const py::object &decimals)
{
    requireFinite(degrees);
    const AngleKind &kind = kindOf(kindName);
    const AngleStyle *style = findAngleStyle(fromPython(styleName));
    if (style == nullptr) {
        QStringList names;
        for (const AngleStyle &one : angleStyles())
            names += QString::fromLatin1(one.name);
        throw Raised(Raise::Value,
                     QStringLiteral("the style '%1' is none of %2")
                         .arg(fromPython(styleName), names.join(QLatin1String(", "))));
    }
    // A configuration of our own: that of the registry is the host's.
    stShowConfig config;
    config.latLongFormat = config.angleFormat = style->format;
    config.latLongPrecision = config.anglePrecision =
        checkedDecimals(decimals.is_none() ? style->decimals : decimals.cast<int>());
    config.latLongKeepZero = config.angleKeepZero = true;
    // Of a plain angle the sign would stand before the first part that is not zero.
    const bool isPlain = kind.sense == AngleSense::Plain;
    const double shown = isPlain ? std::abs(degrees) : degrees;
    const QString text = config.getParamValueString(Param(kind.type, Unit_Degree, shown), -1);
    const bool isZero = std::none_of(text.cbegin(), text.cend(), [](QChar c) {
        return c >= QLatin1Char('1') && c <= QLatin1Char('9');
    });
    return toPython(isPlain && degrees < 0.0 && !isZero ? QLatin1Char('-') + text : text);
}

double parseAngle(const std::string &given, const std::string &kindName)
{
    const QString text = fromPython(given);
    TypedValueFailure failure;
    const auto degrees = readTypedAngle(
        text, kindOf(kindName).sense,
        text.contains(QLatin1Char(',')) ? DecimalMark::Comma : DecimalMark::Point, failure);
    if (!degrees)
        throw Raised(Raise::Value, failure.text);
    return *degrees;
}

py::str formatLength(double metres, const std::string &unit, int decimals)
{
    requireFinite(metres);
    return toPython(CoordStringHelper::GetFormatString(ValueType_Distance, metres, Unit_Meter,
                                                       unitOf(unit).unit, Format_None,
                                                       checkedDecimals(decimals), false));
}

double parseLength(const std::string &given, const std::string &unit)
{
    const QString text = fromPython(given);
    TypedValueFailure failure;
    const auto number = readNumber(
        text, text.contains(QLatin1Char(',')) ? DecimalMark::Comma : DecimalMark::Point, failure);
    if (!number)
        throw Raised(Raise::Value, failure.text);
    const double metres =
        CoordStringHelper::ConvertUnit_Length(*number, unitOf(unit).unit, Unit_Meter);
    requireFinite(metres);
    return metres;
}

/// Pairs of the UTC instant [ms since 1970] from which a count holds, and the count.
py::list leapSeconds()
{
    py::list rows;
    for (const LeapSecondRow &row : leapSecondTable())
        rows.append(py::make_tuple(row.from.toValueTime(), row.gpsMinusUtc));
    return rows;
}

} // namespace

void addValues(py::module_ &module)
{
    module.def("format_angle", &formatAngle);
    module.def("parse_angle", &parseAngle);
    module.def("format_length", &formatLength);
    module.def("parse_length", &parseLength);
    module.def("leap_seconds", &leapSeconds);
    module.def("leap_seconds_known_until",
               [] { return leapSecondTableKnownUntil().toValueTime(); });
}

} // namespace KelStd::python
