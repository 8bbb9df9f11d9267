#include "support/Printers.h"
#include "text/Symbols.h"

#include <KelStd/text/CoordStringHelper.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QList>
#include <QtCore/QTranslator>

#include <gtest/gtest.h>

namespace KelStd {
namespace {

using Helper = CoordStringHelper;

/// Marks every text it is asked for, and remembers what was asked.
class MarkingTranslator : public QTranslator
{
public:
    struct Question
    {
        QByteArray context;
        QByteArray source;
        bool hasDisambiguation;
    };

    MarkingTranslator() { QCoreApplication::installTranslator(this); }
    ~MarkingTranslator() override { QCoreApplication::removeTranslator(this); }

    bool isEmpty() const override { return false; }

    QString translate(const char *context, const char *source, const char *disambiguation,
                      int /*n*/) const override
    {
        questions.append({context, source, disambiguation != nullptr});
        return marked(QString::fromUtf8(source));
    }

    static QString marked(const QString &source)
    {
        return QLatin1Char('<') + source + QLatin1Char('>');
    }

    mutable QList<Question> questions;
};

/// A test with the translator installed, all of whose questions are checked at its end.
class Translation : public testing::Test
{
protected:
    void TearDown() override
    {
        for (const MarkingTranslator::Question &question : translator.questions) {
            EXPECT_EQ(question.context.toStdString(), "QObject") << question.source.constData();
            EXPECT_FALSE(question.source.isEmpty());
            EXPECT_FALSE(question.hasDisambiguation) << question.source.constData();
        }
    }

    static QString marked(const char *source)
    {
        return MarkingTranslator::marked(test::text(source));
    }

    /// Every number gives the marked text of `expected`, or, translated by nobody, the empty one.
    template <typename Enumeration>
    void expectMarked(QString (*describe)(Enumeration),
                      const QMap<int, const char *> &expected) const
    {
        for (int number = -2; number <= 310; ++number) {
            const int asked = translator.questions.size();
            const QString text = describe(static_cast<Enumeration>(number));
            const bool known = expected.contains(number);
            EXPECT_EQ(text, known ? marked(expected.value(number)) : QString()) << number;
            EXPECT_EQ(translator.questions.size() - asked, known ? 1 : 0) << number;
        }
    }

    static QString formatted(EValueType type, const QVariant &value, QString *unit = nullptr)
    {
        return Helper::GetFormatString(type, value, Unit_None, Unit_None, Format_None, 2, true,
                                       unit);
    }

    MarkingTranslator translator;
};

TEST_F(Translation, PlainUnitSymbolsAreTranslatedAndSpecialOnesAreNot)
{
    const auto plainSymbol = [](EUnit unit) {
        const bool special = unit == Unit_Celsius || unit == Unit_Fahrenheit || unit == Unit_Degree
                             || unit == Unit_Second;
        return special ? QString() : Helper::Unit_to_String(unit);
    };
    expectMarked<EUnit>(plainSymbol, {{10, "m"},
                                      {11, "mm"},
                                      {20, "ft"},
                                      {30, "U.S ft"},
                                      {100, "bar"},
                                      {101, "par"},
                                      {102, "mbar"},
                                      {103, "mmHg"},
                                      {104, "inHg"},
                                      {202, "K"}});
    const int asked = translator.questions.size();
    EXPECT_EQ(Helper::Unit_to_String(Unit_Celsius), test::text("°C"));
    EXPECT_EQ(Helper::Unit_to_String(Unit_Fahrenheit), test::text("°F"));
    EXPECT_EQ(Helper::Unit_to_String(Unit_Degree), test::text("°"));
    EXPECT_EQ(Helper::Unit_to_String(Unit_Second), test::text("″"));
    EXPECT_EQ(translator.questions.size(), asked);
}

TEST_F(Translation, DescriptionsOfUnitsAndFormatsAreTranslated)
{
    expectMarked(Helper::Unit_to_DescriptionString, {{10, "meter"},
                                                     {11, "milli meter"},
                                                     {20, "Foot"},
                                                     {30, "US Foot"},
                                                     {100, "bar"},
                                                     {101, "Pascal"},
                                                     {102, "milli bar"},
                                                     {103, "mm Hg"},
                                                     {104, "inch Hg"},
                                                     {200, "Celsius"},
                                                     {201, "Fahrenheit"},
                                                     {202, "Kelvin"},
                                                     {300, "Degree"},
                                                     {301, "Second"}});
    expectMarked(Helper::Format_to_DescriptionString, {{1, "North East Height"},
                                                       {2, "East North Height"},
                                                       {20, "Degree Minute Second"},
                                                       {22, "Degree"},
                                                       {23, "Second"},
                                                       {24, "Radian"},
                                                       {30, "UTC"},
                                                       {31, "Local"},
                                                       {32, "GPST"},
                                                       {33, "GPSW"}});
}

TEST_F(Translation, DescriptionsOfValueTypesAreTranslated)
{
    for (const char *word : {"None",
                             "String",
                             "Int32",
                             "Int64",
                             "Double",
                             "Boolean",
                             "Distance",
                             "Height",
                             "Angle",
                             "Pressure",
                             "Temprature",
                             "Longitude",
                             "Latitude",
                             "EarthHeight",
                             "X",
                             "Y",
                             "ElevationHeight",
                             "LocationZeroType",
                             "WhichHalfEarth",
                             "EllipsoidDirection",
                             "Proj4_Param_Bool"}) {
        const EValueType type =
            Helper::ForCoordIO_ValueType_from_AsciiString(QString::fromLatin1(word));
        EXPECT_EQ(Helper::ValueType_to_DescriptionString(type), marked(word)) << word;
    }
    const int asked = translator.questions.size();
    EXPECT_EQ(Helper::ValueType_to_DescriptionString(static_cast<EValueType>(13)), QString());
    EXPECT_EQ(translator.questions.size(), asked);
}

TEST_F(Translation, DescriptionsOfTheModelsEnumerationsAreTranslated)
{
    expectMarked(Helper::ELocationType_to_DescriptionString,
                 {{0, "X_Y_ElevationHeight"}, {1, "Lat_Long_EarthHeight"}});
    expectMarked(Helper::ELocationZeroType_to_DescriptionString,
                 {{0, "Equator_Zero"}, {1, "Central_Meridian_Zero"}});
    expectMarked(Helper::EWhichHalfEarth_to_DescriptionString, {{0, "N"}, {1, "S"}});
    expectMarked(Helper::EEllipsoidDirection_to_DescriptionString,
                 {{0, "ENU"}, {1, "WSU"}, {2, "ESU"}, {3, "WNU"}});
    expectMarked(Helper::EEllipsoinTransformFunction_to_DescriptionString,
                 {{0, "None"}, {1, "Three"}, {2, "Seven"}});
    expectMarked(Helper::EEllipsoinTransition_to_DescriptionString, {{0, "XYZ"}, {1, "BLH"}});
    expectMarked(Helper::EPlaneTransformFunction_to_DescriptionString, {{0, "None"}, {1, "Four"}});
    expectMarked(Helper::EElevationFittingFunction_to_DescriptionString,
                 {{0, "None"}, {1, "Fixed"}, {2, "Plane"}, {3, "Curve"}});
}

TEST_F(Translation, FormattedFlagsAndEnumerationsAreTranslated)
{
    for (const EValueType type : {ValueType_Boolean, ValueType_Proj4_Param_Bool}) {
        EXPECT_EQ(formatted(type, true), marked("true"));
        EXPECT_EQ(formatted(type, false), marked("false"));
        EXPECT_EQ(Helper::GetNoFormatString(Param(type, Unit_None, true)), marked("true"));
        EXPECT_EQ(Helper::GetNoFormatString(Param(type, Unit_None, false)), marked("false"));
    }
    EXPECT_EQ(formatted(ValueType_LocationZeroType, 0), marked("Equator_Zero"));
    EXPECT_EQ(formatted(ValueType_LocationZeroType, 1), marked("Central_Meridian_Zero"));
    EXPECT_EQ(formatted(ValueType_WhichHalfEarth, 0), marked("N"));
    EXPECT_EQ(formatted(ValueType_WhichHalfEarth, 1), marked("S"));
    EXPECT_EQ(formatted(ValueType_EllipsoidDirection, 3), marked("WNU"));
    EXPECT_EQ(formatted(ValueType_LocationZeroType, 2), QString());
    EXPECT_EQ(formatted(ValueType_WhichHalfEarth, -1), QString());
    EXPECT_EQ(formatted(ValueType_EllipsoidDirection, 4), QString());
}

TEST_F(Translation, NumbersSignsAndHemisphereLettersAreNot)
{
    const auto angle = [](EValueType type, QString *unit) {
        return Helper::GetFormatString(type, -30.5, Unit_Degree, Unit_Degree,
                                       Format_DegreeMinuteSecond, 0, true, unit);
    };
    QString unit;
    EXPECT_EQ(angle(ValueType_Latitude, &unit), test::text("30°30′0″S"));
    EXPECT_EQ(unit, test::text("°"));
    EXPECT_EQ(angle(ValueType_Longitude, nullptr), test::text("30°30′0″W"));
    EXPECT_EQ(formatted(ValueType_String, QStringLiteral("true")), QStringLiteral("true"));
    EXPECT_EQ(formatted(ValueType_Double, 1.5), QStringLiteral("1.5"));
    EXPECT_TRUE(translator.questions.isEmpty());
}

TEST_F(Translation, TheUnitTextIsTranslated)
{
    QString unit;
    Helper::GetFormatString(ValueType_Distance, 1.0, Unit_Meter, Unit_Foot, Format_None, 2, true,
                            &unit);
    EXPECT_EQ(unit, marked("ft"));
    Helper::GetNoFormatString(Param(ValueType_Distance, Unit_USFoot, 1.0), &unit);
    EXPECT_EQ(unit, marked("U.S ft"));
}

TEST_F(Translation, FileWordsAndProjWordsAreNeverTranslated)
{
    EXPECT_EQ(Helper::ForCoordIO_Unit_to_DescriptionAsciiString(Unit_Meter),
              QStringLiteral("Meter"));
    EXPECT_EQ(Helper::ForCoordIO_ValueType_to_AsciiString(ValueType_X), QStringLiteral("X"));
    EXPECT_EQ(Helper::ForCoordIO_Format_to_AsciiString(Format_Degree), QStringLiteral("Degree"));
    EXPECT_EQ(Helper::ForCoordIO_EWhichHalfEarth_to_AsciiString(WhichHalfEarth_South),
              QStringLiteral("S"));
    EXPECT_EQ(Helper::ForCoordIO_Boolean_to_AsciiString(true), QStringLiteral("true"));
    EXPECT_EQ(Helper::ForCoordIO_Unit_from_DescriptionAsciiString(marked("Meter")), Unit_None);
    EXPECT_EQ(Helper::Unit_to_Proj4String(Unit_Foot), QStringLiteral("in"));
    EXPECT_TRUE(translator.questions.isEmpty());
}

TEST(TranslationOfTheMoment, FollowsTheInstalledTranslator)
{
    EXPECT_EQ(Helper::Unit_to_DescriptionString(Unit_Meter), QStringLiteral("meter"));
    {
        const MarkingTranslator translator;
        EXPECT_EQ(Helper::Unit_to_DescriptionString(Unit_Meter), QStringLiteral("<meter>"));
    }
    EXPECT_EQ(Helper::Unit_to_DescriptionString(Unit_Meter), QStringLiteral("meter"));
}

} // namespace
} // namespace KelStd
