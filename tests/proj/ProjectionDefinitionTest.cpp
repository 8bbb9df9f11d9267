#include "proj/FakeProjHome.h"
#include "support/Printers.h"
#include "support/ProjTest.h"
#include "support/Raised.h"

#include <KelStd/proj/ProjLib.h>

#include <gtest/gtest.h>

#include <cstdio>

namespace KelStd {
namespace {

/// The definition that PROJ's stand-in, which accepts everything, is asked about.
class ProjectionDefinition : public test::FakeProjTest
{
protected:
    ProjectionDefinition()
    {
        projection.proj4Projection = "tmerc";
        ellipsoid.proj4EllpsName = "bessel";
    }

    QString definition() const { return definitionOn(&ellipsoid); }

    QString definitionOn(const Ellipsoid *ellipsoidOrNull) const
    {
        QString out;
        EXPECT_TRUE(ProjLib::GetProjectionString_proj4(&projection, ellipsoidOrNull, out));
        EXPECT_EQ(fake().definitions.back(), out.toStdString());
        return out;
    }

    void add(const QString &key, const QString &projName, const Param &param)
    {
        projection.param[key] = param;
        projection.paramProj4[key] = projName;
    }

    Projection projection;
    Ellipsoid ellipsoid;
};

TEST_F(ProjectionDefinition, HasItsPiecesInOrder)
{
    add("b_key", "lon_0", Param(ValueType_Longitude, Unit_Degree, 10.5));
    add("a_key", "lat_0", Param(ValueType_Latitude, Unit_Degree, -2.25));
    EXPECT_EQ(definition(),
              "+proj=tmerc +ellps=bessel +axis=enu +lat_0=-2.25 +lon_0=10.5 +units=m");
}

TEST_F(ProjectionDefinition, TakesTheProjectionsNameAsItStands)
{
    projection.proj4Projection = " TMerc +south";
    EXPECT_EQ(definition(), "+proj= TMerc +south +ellps=bessel +axis=enu +units=m");
    projection.proj4Projection.clear();
    EXPECT_EQ(definition(), "+proj= +ellps=bessel +axis=enu +units=m");
}

TEST_F(ProjectionDefinition, WithoutEllipsoidStillEndsWithUnits)
{
    add("k", "k_0", Param(ValueType_Double, Unit_None, 0.5));
    EXPECT_EQ(definitionOn(nullptr), "+proj=tmerc +k_0=0.5 +units=m");
}

TEST_F(ProjectionDefinition, TrimsTheEllipsoidsName)
{
    ellipsoid.proj4EllpsName = "\t GRS80 \n";
    EXPECT_EQ(definition(), "+proj=tmerc +ellps=GRS80 +axis=enu +units=m");
}

TEST_F(ProjectionDefinition, SpellsOutAnEllipsoidWithoutName)
{
    for (const char *name : {"", "   ", " \t\n"}) {
        SCOPED_TRACE(name);
        ellipsoid.proj4EllpsName = name;
        ellipsoid.biggerHalfAxle.value = 6377397.155;
        ellipsoid.reciprocal = 299.1528128;
        EXPECT_EQ(definition(), "+proj=tmerc +a=6377397.155 +rf=299.1528128 +axis=enu +units=m");
    }
}

TEST_F(ProjectionDefinition, NamedEllipsoidIsNotSpelledOut)
{
    ellipsoid.biggerHalfAxle = Param(ValueType_Distance, Unit_Degree, 1.0); // would raise
    EXPECT_EQ(definition(), "+proj=tmerc +ellps=bessel +axis=enu +units=m");
}

TEST_F(ProjectionDefinition, InverseFlatteningKeepsEveryDigit)
{
    ellipsoid.proj4EllpsName.clear();
    ellipsoid.biggerHalfAxle.value = 6378137.0;
    for (const double reciprocal : {298.257223563, 298.257222101, 298.3, 294.9786982, 1.0 / 3.0}) {
        ellipsoid.reciprocal = reciprocal;
        const QString text = definition();
        const QString start = "+proj=tmerc +a=6378137 +rf=";
        ASSERT_TRUE(text.startsWith(start)) << text;
        const QString number = text.mid(start.size()).section(' ', 0, 0);
        EXPECT_EQ(number.toDouble(), reciprocal) << text;
        EXPECT_FALSE(number.endsWith('0')) << text;
        EXPECT_LE(number.section('.', 1).size(), 17) << text;
    }
    ellipsoid.reciprocal = 300.0;
    EXPECT_EQ(definition(), "+proj=tmerc +a=6378137 +rf=300 +axis=enu +units=m");
}

/// PROJ's words for the international and the US survey foot are deliberately "in" and "us-in".
/// The number before the word is in metres, as distances are shown.
TEST_F(ProjectionDefinition, GluesTheUnitsWordToTheAxis)
{
    ellipsoid.proj4EllpsName.clear();
    ellipsoid.reciprocal = 300.0;

    // 20,922,931.8 international feet of 0.3048 m.
    ellipsoid.biggerHalfAxle = Param(ValueType_Distance, Unit_Foot, 20922931.8);
    EXPECT_EQ(definition(), "+proj=tmerc +a=6377309.6126in +rf=300 +axis=enu +units=m");

    // 39,370,000 US survey feet of 1200/3937 m.
    ellipsoid.biggerHalfAxle = Param(ValueType_Distance, Unit_USFoot, 39370000.0);
    EXPECT_EQ(definition(), "+proj=tmerc +a=12000000us-in +rf=300 +axis=enu +units=m");

    // A plain number is not converted; its unit's word follows all the same.
    ellipsoid.biggerHalfAxle = Param(ValueType_Double, Unit_Foot, 20922931.8);
    EXPECT_EQ(definition(), "+proj=tmerc +a=20922931.8in +rf=300 +axis=enu +units=m");
}

TEST_F(ProjectionDefinition, AxisFollowsThePositiveDirections)
{
    const QPair<int, QString> rows[] = {
        {0, " +axis=enu"}, {1, " +axis=wsu"}, {2, " +axis=esu"}, {3, " +axis=wnu"}, {4, ""},
        {-1, ""},          {100, ""},         {INT_MAX, ""},     {INT_MIN, ""},
    };
    for (const auto &[direction, fragment] : rows) {
        SCOPED_TRACE(direction);
        ellipsoid.positiveDir = static_cast<EEllipsoidDirection>(direction);
        EXPECT_EQ(definition(), "+proj=tmerc +ellps=bessel" + fragment + " +units=m");
    }
}

TEST_F(ProjectionDefinition, ParametersComeInAscendingOrderOfTheirKeys)
{
    add("z", "first", Param(ValueType_Int32, Unit_None, 1));
    add("B", "second", Param(ValueType_Int32, Unit_None, 2));
    add("a", "third", Param(ValueType_Int32, Unit_None, 3));
    add("10", "fourth", Param(ValueType_Int32, Unit_None, 4));
    add("9", "fifth", Param(ValueType_Int32, Unit_None, 5));
    EXPECT_EQ(definitionOn(nullptr),
              "+proj=tmerc +fourth=4 +fifth=5 +second=2 +third=3 +first=1 +units=m");
}

TEST_F(ProjectionDefinition, NameWithoutAParameterHasTheFreshValue)
{
    projection.paramProj4["missing"] = "lat_0";
    EXPECT_EQ(definitionOn(nullptr), "+proj=tmerc +lat_0=0 +units=m");
}

TEST_F(ProjectionDefinition, ParameterWithoutANameIsNotWritten)
{
    projection.param["unnamed"] = Param(ValueType_Double, Unit_None, 5.0);
    EXPECT_EQ(definitionOn(nullptr), "+proj=tmerc +units=m");
}

TEST_F(ProjectionDefinition, FlagIsItsBareNameWhenTrueAndNothingWhenFalse)
{
    const QVariant trueValues[] = {true, 1, "true", "yes", 2.5};
    const QVariant falseValues[] = {false, 0, "false", "0", "", 0.0, QVariant()};
    for (const QVariant &value : trueValues) {
        SCOPED_TRACE(value.toString().toStdString());
        add("flag", "south", Param(ValueType_Proj4_Param_Bool, Unit_None, value));
        EXPECT_EQ(definitionOn(nullptr), "+proj=tmerc +south +units=m");
    }
    for (const QVariant &value : falseValues) {
        SCOPED_TRACE(value.toString().toStdString());
        add("flag", "south", Param(ValueType_Proj4_Param_Bool, Unit_None, value));
        EXPECT_EQ(definitionOn(nullptr), "+proj=tmerc +units=m");
    }
}

TEST_F(ProjectionDefinition, OrdinaryBooleanIsNoFlag)
{
    add("yes", "over", Param(ValueType_Boolean, Unit_None, true));
    EXPECT_EQ(definitionOn(nullptr), "+proj=tmerc +over=true +units=m");
}

TEST_F(ProjectionDefinition, ValuesAreExactAndWithoutUnits)
{
    const auto digits = [](double value) {
        char text[64];
        std::snprintf(text, sizeof text, "%.20f", value);
        return QString(text);
    };
    struct Row
    {
        Param param;
        QString text;
    };
    const Row rows[] = {
        // The double beside 0.9996, to 20 decimals.
        {Param(ValueType_Double, Unit_None, 0.9996), digits(0.9996)},
        {Param(ValueType_Angle, Unit_Degree, 116.1), digits(116.1)},
        {Param(ValueType_Angle, Unit_Second, 3600.5), "3600.5"},
        {Param(ValueType_Longitude, Unit_Degree, -3.5), "-3.5"},
        {Param(ValueType_Y, Unit_Foot, 500000.0), "500000"},
        {Param(ValueType_X, Unit_MilliMeter, -0.125), "-0.125"},
        {Param(ValueType_Int32, Unit_None, -31), "-31"},
        {Param(ValueType_Int64, Unit_None, Q_INT64_C(9007199254740993)), "9007199254740993"},
        {Param(ValueType_String, Unit_None, "paris"), "paris"},
        {Param(ValueType_Double, Unit_None, "12.5"), "12.5"},
    };
    for (const Row &row : rows) {
        add("key", "name", row.param);
        EXPECT_EQ(definitionOn(nullptr), "+proj=tmerc +name=" + row.text + " +units=m");
    }
    EXPECT_TRUE(digits(0.9996).startsWith("0.9996000000000000"));
}

TEST_F(ProjectionDefinition, UnitsAreTheProjectionsOwn)
{
    projection.loc_or_height_unit = Unit_Foot;
    EXPECT_EQ(definitionOn(nullptr), "+proj=tmerc +units=in");
    projection.loc_or_height_unit = Unit_USFoot;
    EXPECT_EQ(definition(), "+proj=tmerc +ellps=bessel +axis=enu +units=us-in");
}

TEST_F(ProjectionDefinition, UnitWithoutAWordRaises)
{
    QString out = "before";
    const auto check = [&] { ProjLib::GetProjectionString_proj4(&projection, &ellipsoid, out); };
    for (const EUnit unit : {Unit_None, Unit_MilliMeter, Unit_Yard, Unit_Inch, Unit_Mile, Unit_Bar,
                             Unit_Degree, Unit_Second, static_cast<EUnit>(12345)}) {
        projection.loc_or_height_unit = unit;
        EXPECT_EQ(test::messageRaisedByPointer(check), "Error unit for proj4") << unit;
    }
    projection.loc_or_height_unit = Unit_Meter;
    ellipsoid.proj4EllpsName.clear();
    ellipsoid.biggerHalfAxle = Param(ValueType_Distance, Unit_Yard, 1.0);
    EXPECT_EQ(test::messageRaisedByPointer(check), "Error unit for proj4");
    EXPECT_EQ(out, "before");
    EXPECT_TRUE(fake().definitions.empty());
}

TEST_F(ProjectionDefinition, IsGivenToProjAsUtf8OnTheDefaultContext)
{
    projection.proj4Projection = QStringLiteral(u"mercé测");
    EXPECT_EQ(definitionOn(nullptr), QStringLiteral(u"+proj=mercé测 +units=m"));
    EXPECT_EQ(fake().definitions.back(), "+proj=merc\xC3\xA9\xE6\xB5\x8B +units=m");
    EXPECT_EQ(fake().calls.back().function, "proj_destroy");
    EXPECT_EQ(fake().calls[fake().calls.size() - 2].context, nullptr);
    EXPECT_EQ(fake().livingObjects, 0);
}

TEST_F(ProjectionDefinition, WithoutAProjectionFailsWithoutAWord)
{
    QString out = "before";
    QString error = "before";
    EXPECT_FALSE(ProjLib::GetProjectionString_proj4(nullptr, &ellipsoid, out, &error));
    EXPECT_EQ(out, "before");
    EXPECT_EQ(error, "before");
    EXPECT_EQ(fake().count("proj_create"), 0);
}

using AcceptedDefinition = test::ProjTest;

TEST_F(AcceptedDefinition, IsAcceptedByProj)
{
    Projection projection;
    projection.proj4Projection = "utm";
    projection.param["zone"] = Param(ValueType_Int32, Unit_None, 32);
    projection.paramProj4["zone"] = "zone";
    Ellipsoid ellipsoid;
    ellipsoid.proj4EllpsName = "GRS80";
    QString out;
    QString error = "before";
    EXPECT_TRUE(ProjLib::GetProjectionString_proj4(&projection, &ellipsoid, out, &error));
    EXPECT_EQ(out, "+proj=utm +ellps=GRS80 +axis=enu +zone=32 +units=m");
    EXPECT_EQ(error, "before");
}

TEST_F(AcceptedDefinition, RejectedOneIsHandedOutAllTheSame)
{
    Projection projection;
    projection.proj4Projection = "no_such_projection";
    Ellipsoid ellipsoid;
    ellipsoid.proj4EllpsName = "GRS80";
    const QString rejected = "+proj=no_such_projection +ellps=GRS80 +axis=enu +units=m";
    QString out;
    QString error;
    EXPECT_FALSE(ProjLib::GetProjectionString_proj4(&projection, &ellipsoid, out, &error));
    EXPECT_EQ(out, rejected);
    EXPECT_EQ(error, "Error format.");

    out.clear();
    EXPECT_FALSE(ProjLib::GetProjectionString_proj4(&projection, &ellipsoid, out, nullptr));
    EXPECT_EQ(out, rejected);
}

} // namespace
} // namespace KelStd
