// What stShowConfig says of the unit or style in which values are shown.

#include "support/Printers.h"

#include <KelStd/coord/Param.h>
#include <KelStd/display/stShowConfig.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QTranslator>

#include <gtest/gtest.h>

#include <map>
#include <string>

namespace KelStd {
namespace {

using C = stShowConfig;

QString described(const stShowConfig &config, int type)
{
    const auto valueType = static_cast<EValueType>(type);
    const QString text = config.getParamShowFormatDescription(valueType);
    // A parameter has its type's description, whatever its own unit and value are.
    EXPECT_EQ(config.getParamShowFormatDescription(Param(valueType, Unit_Kelvin, 1.5)), text);
    return text;
}

QString expectedIn(const std::map<int, const char *> &texts, int number)
{
    const auto row = texts.find(number);
    return row != texts.end() ? QString::fromUtf8(row->second) : QString();
}

/// Yards, inches and miles have no description.
const std::map<int, const char *> unitDescriptions = {
    {10, "meter"},       {11, "milli meter"}, {20, "Foot"},    {30, "US Foot"},  {100, "bar"},
    {101, "Pascal"},     {102, "milli bar"},  {103, "mm Hg"},  {104, "inch Hg"}, {200, "Celsius"},
    {201, "Fahrenheit"}, {202, "Kelvin"},     {300, "Degree"}, {301, "Second"},
};

const std::map<int, const char *> angleDescriptions = {
    {0, "Degree Minute Second"},
    {20, "Degree Minute Second"},
    {22, "Degree"},
    {23, "Second"},
    {24, "Radian"},
};

const std::map<int, const char *> timeDescriptions = {
    {30, "UTC"},
    {31, "Local"},
    {32, "GPST"},
    {33, "GPSW"},
};

const std::map<int, EUnit C::*> unitFields = {
    {6, &C::distanceUnit},      {7, &C::heightUnit},
    {11, &C::pressureUnit},     {12, &C::tempratureUnit},
    {103, &C::xyUnit},          {104, &C::xyUnit},
    {102, &C::earthHeightUnit}, {105, &C::elevationHeightUnit},
};

const std::map<int, EFormat C::*> angleFields = {
    {8, &C::angleFormat},
    {100, &C::latLongFormat},
    {101, &C::latLongFormat},
};

TEST(ShownDescription, OfTheWorkingDefaultsForEveryType)
{
    const std::map<int, const char *> expected = {
        {6, "meter"},
        {7, "meter"},
        {8, "Second"},
        {9, "UTC"},
        {11, "bar"},
        {12, "Celsius"},
        {102, "meter"},
        {103, "meter"},
        {104, "meter"},
        {105, "meter"},
        {100, "Degree Minute Second"},
        {101, "Degree Minute Second"},
    };
    for (int type = -2; type <= 310; ++type)
        EXPECT_EQ(described(stShowConfig(), type), expectedIn(expected, type)) << type;
}

TEST(ShownDescription, IsThatOfTheUnitOfItsOwnField)
{
    for (const auto &[type, member] : unitFields) {
        for (int unit = -2; unit <= 310; ++unit) {
            // Every other field has a unit of its own that is not this one.
            stShowConfig config;
            for (const auto &[otherType, other] : unitFields)
                config.*other = unit == Unit_Foot ? Unit_USFoot : Unit_Foot;
            config.*member = static_cast<EUnit>(unit);
            ASSERT_EQ(described(config, type), expectedIn(unitDescriptions, unit))
                << type << " in " << unit;
        }
    }
}

TEST(ShownDescription, OfAnglesIsThatOfTheStyleOfTheirOwnField)
{
    for (const auto &[type, member] : angleFields) {
        for (int format = -2; format <= 40; ++format) {
            stShowConfig config;
            config.angleFormat = static_cast<EFormat>(-1);
            config.latLongFormat = static_cast<EFormat>(-1);
            config.*member = static_cast<EFormat>(format);
            ASSERT_EQ(described(config, type), expectedIn(angleDescriptions, format))
                << type << " in " << format;
        }
    }
}

TEST(ShownDescription, OfTimesIsTheNameOfTheirScale)
{
    for (int format = -2; format <= 40; ++format) {
        stShowConfig config;
        config.timeFormat = static_cast<EFormat>(format);
        ASSERT_EQ(described(config, ValueType_Time), expectedIn(timeDescriptions, format))
            << format;
        // A span of time has none.
        ASSERT_EQ(described(config, ValueType_TimeSpan), QString());
    }
}

/// Marks what it translates in Qt's context "QObject", and nothing else.
class Marking : public QTranslator
{
public:
    Marking() { QCoreApplication::installTranslator(this); }
    ~Marking() override { QCoreApplication::removeTranslator(this); }

    bool isEmpty() const override { return false; }
    QString translate(const char *context, const char *source, const char *, int) const override
    {
        return std::string(context) == "QObject"
                   ? QLatin1Char('<') + QString::fromUtf8(source) + QLatin1Char('>')
                   : QString();
    }
};

TEST(ShownDescription, IsTranslated)
{
    const Marking translator;
    stShowConfig config;
    EXPECT_EQ(described(config, ValueType_Distance), QStringLiteral("<meter>"));
    EXPECT_EQ(described(config, ValueType_Angle), QStringLiteral("<Second>"));
    for (const auto &[format, name] : timeDescriptions) {
        config.timeFormat = static_cast<EFormat>(format);
        EXPECT_EQ(described(config, ValueType_Time),
                  QLatin1Char('<') + QString::fromUtf8(name) + QLatin1Char('>'));
    }
    config.timeFormat = Format_None;
    EXPECT_EQ(described(config, ValueType_Time), QString());
}

TEST(ShownDescription, YesAndNoAreTranslatedToo)
{
    const Marking translator;
    const stShowConfig config;
    EXPECT_EQ(config.getParamValueString(Param(ValueType_Proj4_Param_Bool, Unit_None, true), -1),
              QStringLiteral("<Yes>"));
    EXPECT_EQ(config.getParamValueString(Param(ValueType_Proj4_Param_Bool, Unit_None, false), -1),
              QStringLiteral("<No>"));
}

} // namespace
} // namespace KelStd
