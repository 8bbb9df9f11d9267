// The angles of stShowConfig::getParamValueString are the value, rounded to the decimals shown, and
// come back when they are read.

#include "support/AngleSamples.h"
#include "support/ShownAngle.h"

#include <KelStd/coord/Param.h>
#include <KelStd/display/stShowConfig.h>

#include <gtest/gtest.h>

#include <cmath>
#include <string>

namespace KelStd {
namespace {

using test::AngleSample;
using test::halfSpacing;
using test::halfUnit;
using test::roundingOf;
using test::ShownAngle;
using test::Zeros;

constexpr long double degreesPerRadian = 57.295779513082320877L;

/// What is printed, and what of it the readers give back.
struct Question
{
    EValueType type;
    EUnit unit;
    EFormat format;
    AngleSample sample;

    bool hasHemisphere() const { return type != ValueType_Angle; }
    double value() const { return unit == Unit_Second ? sample.degrees * 3600.0 : sample.degrees; }
    /// The value itself, however the double of its unit was rounded.
    long double degrees() const
    {
        return unit == Unit_Second ? value() / 3600.0L : static_cast<long double>(value());
    }
    /// What the conversion between the unit and that of the style costs [deg].
    double conversionNoise() const
    {
        if (format == Format_Second)
            return unit == Unit_Degree ? roundingOf(value() * 3600.0) / 3600.0 : 0.0;
        return unit == Unit_Second ? roundingOf(value() / 3600.0) : 0.0;
    }
    /// The same in degrees, minutes and seconds, where within half a spacing a short decimal is
    /// meant.
    double noise() const
    {
        const bool inSeconds = unit == Unit_Second;
        return conversionNoise() + halfSpacing(inSeconds ? value() / 3600.0 : value());
    }
    QString shown() const
    {
        stShowConfig config;
        config.angleFormat = config.latLongFormat = format;
        config.anglePrecision = config.latLongPrecision =
            static_cast<unsigned char>(sample.precision);
        return config.getParamValueString(Param(type, unit, value()), -1);
    }
    /// The unit in which the limits stand is that of the style.
    bool isBeyond() const
    {
        const double limit = type == ValueType_Longitude ? 180.0 : 90.0;
        if (format == Format_Second)
            return std::abs(unit == Unit_Degree ? value() * 3600.0 : value()) > limit * 3600.0;
        return std::abs(unit == Unit_Second ? value() / 3600.0 : value()) > limit;
    }
};

std::string at(const QString &shown, const std::string &wrong)
{
    return wrong.empty() ? wrong : shown.toStdString() + ": " + wrong;
}

/// The letter, and that there is none or no minus beside it.
std::string wrongSign(const Question &question, const ShownAngle &angle)
{
    if (!question.hasHemisphere())
        return test::wrongMinus(angle, question.value() < 0.0)
               + (angle.letter.isNull() ? "" : "a letter");
    const char *letters = question.type == ValueType_Longitude ? "EW" : "NS";
    return test::wrongMinus(angle, false)
           + (angle.letter == QLatin1Char(letters[question.value() < 0.0 ? 1 : 0])
                  ? ""
                  : "the wrong letter");
}

std::string wrongSexagesimal(const Question &question)
{
    const QString shown = question.shown();
    if (question.hasHemisphere() && question.isBeyond())
        return shown.isEmpty() ? "" : at(shown, "not empty");
    const auto angle = test::readAngle(shown);
    if (!angle || !angle->degrees || !angle->minutes)
        return at(shown, "not readable");
    const int precision = question.sample.precision;
    const long double noise = 3600.0L * question.noise();
    std::string wrong =
        test::wrongSexagesimal(*angle, 3600.0L * question.degrees(), precision, noise)
        + wrongSign(question, *angle);
    if (angle->degrees->decimals != 0 || angle->minutes->decimals != 0
        || angle->seconds->decimals != precision)
        wrong += "other decimals than asked for";
    const long double expected =
        question.hasHemisphere() ? std::abs(question.degrees()) : question.degrees();
    wrong += test::wrongSexagesimalReading(shown, *angle, expected,
                                           (halfUnit(precision) + noise) / 3600.0L);
    return at(shown, wrong);
}

/// A style of one number.
std::string wrongDecimal(const Question &question)
{
    const QString shown = question.shown();
    const bool wholeCircle =
        question.format == Format_Radian && question.type != ValueType_Latitude;
    if (question.hasHemisphere() && !wholeCircle && question.isBeyond())
        return shown.isEmpty() ? "" : at(shown, "not empty");
    const auto angle = test::readAngle(shown);
    if (!angle)
        return at(shown, "not readable");
    const auto &number = question.format == Format_Degree   ? angle->degrees
                         : question.format == Format_Second ? angle->seconds
                                                            : angle->plain;
    if (!number || !angle->hasOnePart())
        return at(shown, "another style");

    long double degrees = question.degrees();
    long double noise = question.conversionNoise();
    if (wholeCircle) {
        degrees = std::fmod(degrees, 360.0L);
        if (degrees < 0.0L) {
            degrees += 360.0L;
            noise += roundingOf(360.0);
        }
    }
    if (question.format == Format_Radian) // the factor and the product
        noise += 3e-16L * std::abs(degrees);
    const long double perDegree = question.format == Format_Second   ? 3600.0L
                                  : question.format == Format_Radian ? 1.0L / degreesPerRadian
                                                                     : 1.0L;
    const int precision = question.sample.precision;
    std::string wrong =
        test::wrongNumber(*number, perDegree * degrees, precision, Zeros::Kept, perDegree * noise);
    if (!wholeCircle)
        wrong += wrongSign(question, *angle);
    else if (!angle->letter.isNull() || number->negative)
        wrong += "a letter or a minus";
    wrong += test::wrongDecimalReading(shown, question.format,
                                       question.hasHemisphere() ? std::abs(degrees) : degrees,
                                       halfUnit(precision) / perDegree + noise);
    return at(shown, wrong);
}

/// The angle in degrees, minutes and seconds as one of the three kinds, and in turns another style.
std::string whatIsWrong(const AngleSample &sample, int turn)
{
    const EValueType types[] = {ValueType_Angle, ValueType_Longitude, ValueType_Latitude};
    const EFormat formats[] = {Format_Degree, Format_Second, Format_Radian};
    const EUnit unit = turn % 4 == 3 ? Unit_Second : Unit_Degree;
    // A longitude is taken from the half circle more often than an angle is, a latitude as well.
    const EValueType type = types[turn % 3];
    AngleSample inside = sample;
    if (type != ValueType_Angle && turn % 16 > 1)
        inside.degrees = std::remainder(sample.degrees, type == ValueType_Latitude ? 180.0 : 360.0);
    std::string wrong = wrongSexagesimal({type, unit, Format_DegreeMinuteSecond, inside});
    if (!wrong.empty() || turn % 2 == 0)
        return wrong;
    return wrongDecimal(
        {type, turn / 6 % 2 == 0 ? Unit_Degree : Unit_Second, formats[turn / 12 % 3], inside});
}

std::string where(const AngleSample &sample, const std::string &wrong)
{
    return wrong.empty() ? wrong
                         : QString::number(sample.degrees, 'g', 17).toStdString() + " at "
                               + std::to_string(sample.precision) + " decimals, " + wrong;
}

class ShownAngleProperty : public testing::TestWithParam<int>
{};

TEST_P(ShownAngleProperty, ARandomAngleIsShownRoundedAndReadBack)
{
    test::AngleSamples samples(1884U + static_cast<unsigned>(GetParam()));
    for (int i = 0; i < test::anglesPerTest; ++i) {
        const AngleSample sample = samples.next();
        ASSERT_EQ(where(sample, whatIsWrong(sample, samples.turn())), "");
    }
}

INSTANTIATE_TEST_SUITE_P(Part, ShownAngleProperty, testing::Range(0, 10));

class ShownAngleCarry : public testing::TestWithParam<int>
{};

TEST_P(ShownAngleCarry, IsMadeWhereTheSecondsRoundTo60)
{
    const int first = GetParam();
    test::AngleSamples turns(static_cast<unsigned>(first));
    std::string wrong;
    test::forEveryCarry(first, first + 45, [&](const AngleSample &sample) {
        if (wrong.empty())
            wrong = where(sample, whatIsWrong(sample, turns.turn()));
    });
    EXPECT_EQ(wrong, "");
}

INSTANTIATE_TEST_SUITE_P(From, ShownAngleCarry, testing::Range(0, 360, 45));

} // namespace
} // namespace KelStd
