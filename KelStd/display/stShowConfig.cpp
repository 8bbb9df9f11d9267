#include <KelStd/display/stShowConfig.h>

#include <QtCore/QDataStream>

namespace KelStd {

namespace {

constexpr qint32 formatVersion = 1;

// How each type of field stands in a stream.

template <typename Enumeration>
void write(QDataStream &stream, Enumeration value)
{
    stream << static_cast<qint32>(value);
}

void write(QDataStream &stream, unsigned char precision)
{
    stream << static_cast<qint8>(precision);
}

void write(QDataStream &stream, bool flag)
{
    stream << flag;
}

template <typename Enumeration>
void read(QDataStream &stream, Enumeration &value)
{
    qint32 number = 0;
    stream >> number;
    value = static_cast<Enumeration>(number);
}

void read(QDataStream &stream, unsigned char &precision)
{
    qint8 number = 0;
    stream >> number;
    precision = static_cast<unsigned char>(number);
}

void read(QDataStream &stream, bool &flag)
{
    stream >> flag;
}

} // namespace

// One row for each field, in declaration order: what a new record has, and what a cleared one has.
#define KELSTD_SHOW_CONFIG_FIELDS(FIELD)                                                           \
    FIELD(coordOrder, Format_NorthEastHeight, Format_NorthEastHeight)                              \
    FIELD(doublePrecision, 6, 12)                                                                  \
    FIELD(doubleKeepZero, false, false)                                                            \
    FIELD(latLongFormat, Format_DegreeMinuteSecond, Format_DegreeMinuteSecond)                     \
    FIELD(latLongPrecision, 6, 15)                                                                 \
    FIELD(latLongKeepZero, false, false)                                                           \
    FIELD(earthHeightUnit, Unit_Meter, Unit_Meter)                                                 \
    FIELD(earthHeightPrecision, 4, 15)                                                             \
    FIELD(earthHeightKeepZero, false, false)                                                       \
    FIELD(xyUnit, Unit_Meter, Unit_Meter)                                                          \
    FIELD(xyPrecision, 4, 15)                                                                      \
    FIELD(xyKeepZero, false, false)                                                                \
    FIELD(elevationHeightUnit, Unit_Meter, Unit_Meter)                                             \
    FIELD(elevationHeightPrecision, 4, 15)                                                         \
    FIELD(elevationHeightKeepZero, false, false)                                                   \
    FIELD(timeFormat, Format_UTC, Format_UTC)                                                      \
    FIELD(tempratureUnit, Unit_Celsius, Unit_Celsius)                                              \
    FIELD(tempraturePrecision, 0, 2)                                                               \
    FIELD(tempratureKeepZero, false, false)                                                        \
    FIELD(pressureUnit, Unit_Bar, Unit_Bar)                                                        \
    FIELD(pressurePrecision, 0, 2)                                                                 \
    FIELD(pressureKeepZero, false, false)                                                          \
    FIELD(angleFormat, Format_Second, Format_Degree)                                               \
    FIELD(anglePrecision, 2, 15)                                                                   \
    FIELD(angleKeepZero, false, false)                                                             \
    FIELD(distanceUnit, Unit_Meter, Unit_Meter)                                                    \
    FIELD(distancePrecision, 4, 15)                                                                \
    FIELD(distanceKeepZero, false, false)                                                          \
    FIELD(heightUnit, Unit_Meter, Unit_Meter)                                                      \
    FIELD(heightPrecision, 4, 15)                                                                  \
    FIELD(heightKeepZero, false, false)

stShowConfig::stShowConfig()
{
#define KELSTD_FIELD(field, constructed, cleared) field = constructed;
    KELSTD_SHOW_CONFIG_FIELDS(KELSTD_FIELD)
#undef KELSTD_FIELD
}

void stShowConfig::clear()
{
#define KELSTD_FIELD(field, constructed, cleared) field = cleared;
    KELSTD_SHOW_CONFIG_FIELDS(KELSTD_FIELD)
#undef KELSTD_FIELD
}

bool stShowConfig::operator==(const stShowConfig &other) const
{
    if (this == &other)
        return true;
#define KELSTD_FIELD(field, constructed, cleared)                                                  \
    if (field != other.field)                                                                      \
        return false;
    KELSTD_SHOW_CONFIG_FIELDS(KELSTD_FIELD)
#undef KELSTD_FIELD
    return true;
}

bool stShowConfig::operator!=(const stShowConfig &other) const
{
    return !(*this == other);
}

void stShowConfig::save(QDataStream &stream) const
{
    stream << formatVersion;
#define KELSTD_FIELD(field, constructed, cleared) write(stream, field);
    KELSTD_SHOW_CONFIG_FIELDS(KELSTD_FIELD)
#undef KELSTD_FIELD
}

bool stShowConfig::load(QDataStream &stream)
{
    clear();
    qint32 version = 0;
    stream >> version;
    if (version != formatVersion)
        return false;
#define KELSTD_FIELD(field, constructed, cleared) read(stream, field);
    KELSTD_SHOW_CONFIG_FIELDS(KELSTD_FIELD)
#undef KELSTD_FIELD
    return true;
}

} // namespace KelStd
