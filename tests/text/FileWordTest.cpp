#include "support/Printers.h"

#include <KelStd/text/CoordStringHelper.h>

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

namespace KelStd {
namespace {

using Helper = CoordStringHelper;

template <typename Enumeration>
using Words = QMap<Enumeration, QString>;

const Words<EValueType> valueTypeWords = {
    {ValueType_None, QStringLiteral("None")},
    {ValueType_String, QStringLiteral("String")},
    {ValueType_Int32, QStringLiteral("Int32")},
    {ValueType_Int64, QStringLiteral("Int64")},
    {ValueType_Double, QStringLiteral("Double")},
    {ValueType_Boolean, QStringLiteral("Boolean")},
    {ValueType_Distance, QStringLiteral("Distance")},
    {ValueType_Height, QStringLiteral("Height")},
    {ValueType_Angle, QStringLiteral("Angle")},
    {ValueType_TimeSpan, QStringLiteral("TimeSpan")},
    {ValueType_Pressure, QStringLiteral("Pressure")},
    {ValueType_Temprature, QStringLiteral("Temprature")},
    {ValueType_Longitude, QStringLiteral("Longitude")},
    {ValueType_Latitude, QStringLiteral("Latitude")},
    {ValueType_EarthHeight, QStringLiteral("EarthHeight")},
    {ValueType_X, QStringLiteral("X")},
    {ValueType_Y, QStringLiteral("Y")},
    {ValueType_ElevationHeight, QStringLiteral("ElevationHeight")},
    {ValueType_LocationZeroType, QStringLiteral("LocationZeroType")},
    {ValueType_WhichHalfEarth, QStringLiteral("WhichHalfEarth")},
    {ValueType_EllipsoidDirection, QStringLiteral("EllipsoidDirection")},
    {ValueType_Proj4_Param_Bool, QStringLiteral("Proj4_Param_Bool")},
};

const Words<EUnit> unitWords = {
    {Unit_None, QStringLiteral("None")},
    {Unit_Meter, QStringLiteral("Meter")},
    {Unit_MilliMeter, QStringLiteral("Milli Meter")},
    {Unit_Foot, QStringLiteral("Foot")},
    {Unit_USFoot, QStringLiteral("US Foot")},
    {Unit_Bar, QStringLiteral("bar")},
    {Unit_Pascal, QStringLiteral("Pa")},
    {Unit_MilliBar, QStringLiteral("mbar")},
    {Unit_MmHg, QStringLiteral("mmHg")},
    {Unit_InHg, QStringLiteral("inHg")},
    {Unit_Celsius, QStringLiteral("Celsius")},
    {Unit_Fahrenheit, QStringLiteral("Fahrenheit")},
    {Unit_Kelvin, QStringLiteral("Kelvin")},
    {Unit_Degree, QStringLiteral("Degree")},
    {Unit_Second, QStringLiteral("Second")},
};

const Words<EFormat> formatWords = {
    {Format_None, QStringLiteral("None")},
    {Format_NorthEastHeight, QStringLiteral("North East Height")},
    {Format_EastNorthHeight, QStringLiteral("East North Height")},
    {Format_DegreeMinuteSecond, QStringLiteral("Degree Minute Second")},
    {Format_Degree, QStringLiteral("Degree")},
    {Format_Second, QStringLiteral("Second")},
    {Format_Radian, QStringLiteral("Radian")},
    {Format_UTC, QStringLiteral("UTC")},
    {Format_Local, QStringLiteral("Local")},
    {Format_GPST, QStringLiteral("GPST")},
    {Format_GPSW, QStringLiteral("GPSW")},
};

/// Every number near and in the bands has the word listed or none, every word leads back to its
/// number, and whatever is no word exactly is number 0.
template <typename Enumeration>
void expectWords(const Words<Enumeration> &expected, const Words<Enumeration> &table,
                 QString (*toWord)(Enumeration), Enumeration (*fromWord)(const QString &))
{
    EXPECT_EQ(table, expected);
    for (int number = -2; number <= 310; ++number) {
        const auto value = static_cast<Enumeration>(number);
        EXPECT_EQ(toWord(value), expected.value(value)) << number;
    }
    for (auto entry = expected.cbegin(); entry != expected.cend(); ++entry) {
        const QString &word = entry.value();
        SCOPED_TRACE(word.toStdString());
        EXPECT_EQ(fromWord(word), entry.key());
        for (const QString &near : {word + QLatin1Char(' '), QLatin1Char(' ') + word, word + word,
                                    word.left(word.size() - 1)})
            EXPECT_EQ(fromWord(near), static_cast<Enumeration>(0)) << near.toStdString();
        for (const QString &other : {word.toLower(), word.toUpper()}) {
            if (other != word) {
                EXPECT_EQ(fromWord(other), static_cast<Enumeration>(0)) << other.toStdString();
            }
        }
    }
    for (const QString &unknown : {QString(), QString(QLatin1String("")), QStringLiteral("what"),
                                   QStringLiteral("0"), QString(1000000, QLatin1Char('N'))})
        EXPECT_EQ(fromWord(unknown), static_cast<Enumeration>(0)) << unknown.left(10).toStdString();
}

#define KELSTD_EXPECT_WORDS(Enumeration, ...)                                                      \
    expectWords<Enumeration>(__VA_ARGS__, Helper::s_forCoordIO_##Enumeration##_asciiStrings,       \
                             Helper::ForCoordIO_##Enumeration##_to_AsciiString,                    \
                             Helper::ForCoordIO_##Enumeration##_from_AsciiString)

TEST(FileWords, OfValueTypes)
{
    expectWords(valueTypeWords, Helper::s_forCoordIO_valTypeAsciiStrings,
                Helper::ForCoordIO_ValueType_to_AsciiString,
                Helper::ForCoordIO_ValueType_from_AsciiString);
}

TEST(FileWords, OfUnits)
{
    expectWords(unitWords, Helper::s_forCoordIO_unitDescriptionAsciiStrings,
                Helper::ForCoordIO_Unit_to_DescriptionAsciiString,
                Helper::ForCoordIO_Unit_from_DescriptionAsciiString);
}

TEST(FileWords, OfFormats)
{
    expectWords(formatWords, Helper::s_forCoordIO_formatAsciiStrings,
                Helper::ForCoordIO_Format_to_AsciiString,
                Helper::ForCoordIO_Format_from_AsciiString);
}

TEST(FileWords, OfLocationTypes)
{
    const Words<ELocationType> words = {
        {LocationType_X_Y_ElevationHeight, QStringLiteral("X_Y_ElevationHeight")},
        {LocationType_Lat_Long_EarthHeight, QStringLiteral("Lat_Long_EarthHeight")}};
    KELSTD_EXPECT_WORDS(ELocationType, words);
}

TEST(FileWords, OfLocationZeroTypes)
{
    const Words<ELocationZeroType> words = {
        {LocationZeroType_Equator_Zero, QStringLiteral("Equator_Zero")},
        {LocationZeroType_Central_Meridian_Zero, QStringLiteral("Central_Meridian_Zero")}};
    KELSTD_EXPECT_WORDS(ELocationZeroType, words);
}

TEST(FileWords, OfHemispheres)
{
    const Words<EWhichHalfEarth> words = {{WhichHalfEarth_North, QStringLiteral("N")},
                                          {WhichHalfEarth_South, QStringLiteral("S")}};
    KELSTD_EXPECT_WORDS(EWhichHalfEarth, words);
}

TEST(FileWords, OfEllipsoidDirections)
{
    const Words<EEllipsoidDirection> words = {{EllipsoidDirection_ENU, QStringLiteral("ENU")},
                                              {EllipsoidDirection_WSU, QStringLiteral("WSU")},
                                              {EllipsoidDirection_ESU, QStringLiteral("ESU")},
                                              {EllipsoidDirection_WNU, QStringLiteral("WNU")}};
    KELSTD_EXPECT_WORDS(EEllipsoidDirection, words);
}

TEST(FileWords, OfDatumTransformationModels)
{
    const Words<EEllipsoinTransformFunction> words = {
        {EllipsoinTransformFunction_None, QStringLiteral("None")},
        {EllipsoinTransformFunction_Three, QStringLiteral("Three")},
        {EllipsoinTransformFunction_Seven, QStringLiteral("Seven")}};
    KELSTD_EXPECT_WORDS(EEllipsoinTransformFunction, words);
}

TEST(FileWords, OfDatumTransitions)
{
    const Words<EEllipsoinTransition> words = {{EllipsoinTransition_XYZ, QStringLiteral("XYZ")},
                                               {EllipsoinTransition_BLH, QStringLiteral("BLH")}};
    KELSTD_EXPECT_WORDS(EEllipsoinTransition, words);
}

TEST(FileWords, OfPlaneTransformationModels)
{
    const Words<EPlaneTransformFunction> words = {
        {PlaneTransformFunction_None, QStringLiteral("None")},
        {PlaneTransformFunction_Four, QStringLiteral("Four")}};
    KELSTD_EXPECT_WORDS(EPlaneTransformFunction, words);
}

TEST(FileWords, OfHeightFittingModels)
{
    const Words<EElevationFittingFunction> words = {
        {ElevationFittingFunction_None, QStringLiteral("None")},
        {ElevationFittingFunction_Fixed, QStringLiteral("Fixed")},
        {ElevationFittingFunction_Plane, QStringLiteral("Plane")},
        {ElevationFittingFunction_Curve, QStringLiteral("Curve")}};
    KELSTD_EXPECT_WORDS(EElevationFittingFunction, words);
}

TEST(FileWords, TheWordOnScreenIsNotTheWordOfTheFile)
{
    EXPECT_EQ(Helper::ForCoordIO_Unit_from_DescriptionAsciiString(QStringLiteral("meter")),
              Unit_None);
    EXPECT_EQ(Helper::ForCoordIO_Unit_from_DescriptionAsciiString(QStringLiteral("Pascal")),
              Unit_None);
    EXPECT_EQ(Helper::ForCoordIO_Unit_to_DescriptionAsciiString(Unit_None), QStringLiteral("None"));
}

TEST(FileWords, TheFreeFormatNumber21IsEmptyThereAndNoneBack)
{
    const QString word = Helper::ForCoordIO_Format_to_AsciiString(static_cast<EFormat>(21));
    EXPECT_EQ(word, QString());
    EXPECT_EQ(Helper::ForCoordIO_Format_from_AsciiString(word), Format_None);
}

TEST(FileWords, AnIntervalHasAWordAndAnInstantHasNone)
{
    EXPECT_EQ(Helper::ForCoordIO_ValueType_to_AsciiString(ValueType_TimeSpan),
              QStringLiteral("TimeSpan"));
    EXPECT_EQ(Helper::ForCoordIO_ValueType_to_AsciiString(ValueType_Time), QString());
    EXPECT_EQ(Helper::ForCoordIO_ValueType_from_AsciiString(QStringLiteral("Time")),
              ValueType_None);
}

TEST(FileWords, OfBooleansAreReadInAnyMixtureOfCases)
{
    EXPECT_EQ(Helper::ForCoordIO_Boolean_to_AsciiString(true), QStringLiteral("true"));
    EXPECT_EQ(Helper::ForCoordIO_Boolean_to_AsciiString(false), QStringLiteral("false"));
    for (const char *word : {"true", "TRUE", "True", "tRuE"})
        EXPECT_TRUE(Helper::ForCoordIO_Boolean_from_AsciiString(QString::fromLatin1(word))) << word;
    for (const char *word : {"false", "FALSE", "1", "0", "yes", "on", "", " true", "true ", "t"})
        EXPECT_FALSE(Helper::ForCoordIO_Boolean_from_AsciiString(QString::fromLatin1(word)))
            << word;
}

TEST(FileWords, MayBeLookedUpFromAnyThread)
{
    std::atomic<int> wrong{0};
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&wrong] {
            for (int round = 0; round < 500; ++round) {
                for (auto entry = unitWords.cbegin(); entry != unitWords.cend(); ++entry) {
                    if (Helper::ForCoordIO_Unit_to_DescriptionAsciiString(entry.key())
                            != entry.value()
                        || Helper::ForCoordIO_Unit_from_DescriptionAsciiString(entry.value())
                               != entry.key())
                        ++wrong;
                }
            }
        });
    }
    for (std::thread &thread : threads)
        thread.join();
    EXPECT_EQ(wrong, 0);
}

} // namespace
} // namespace KelStd
