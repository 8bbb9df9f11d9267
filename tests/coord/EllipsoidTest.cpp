#include "coord/RecordExpectations.h"
#include "support/Printers.h"

#include <KelStd/coord/Ellipsoid.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace KelStd {
namespace {

static_assert(test::isPlainValue<Ellipsoid>);

Ellipsoid bessel()
{
    Ellipsoid ellipsoid;
    ellipsoid.ellipsoid_name = QStringLiteral("Bessel 1841");
    ellipsoid.proj4EllpsName = QStringLiteral("bessel");
    ellipsoid.biggerHalfAxle = Param(ValueType_Distance, Unit_Meter, 6377397.155);
    ellipsoid.reciprocal = 299.1528128;
    ellipsoid.positiveDir = EllipsoidDirection_WSU;
    return ellipsoid;
}

TEST(Ellipsoid, FreshOneIsEmptyWithAnAxisOfZeroMetres)
{
    const Ellipsoid ellipsoid;
    EXPECT_TRUE(ellipsoid.ellipsoid_name.isEmpty());
    EXPECT_TRUE(ellipsoid.proj4EllpsName.isEmpty());
    test::expectNumber(ellipsoid.biggerHalfAxle, ValueType_Distance, Unit_Meter, 0.0);
    test::expectEmptyDictionary(ellipsoid.biggerHalfAxle);
    EXPECT_EQ(ellipsoid.reciprocal, 0.0);
    EXPECT_EQ(ellipsoid.positiveDir, EllipsoidDirection_ENU);
}

TEST(Ellipsoid, CopiesAndMovesTakeEveryMember)
{
    test::expectCopiesAndMovesEqual(bessel());
    Ellipsoid source = bessel();
    const Ellipsoid copy(source);
    EXPECT_EQ(copy.ellipsoid_name, QStringLiteral("Bessel 1841"));
    const Ellipsoid moved(std::move(source));
    EXPECT_EQ(moved.ellipsoid_name, QStringLiteral("Bessel 1841"));
}

TEST(Ellipsoid, DisplayNameDoesNotCountForEquality)
{
    Ellipsoid renamed = bessel();
    renamed.ellipsoid_name = QStringLiteral("another name");
    test::expectEqual(bessel(), renamed);
}

struct Change
{
    const char *member;
    void (*apply)(Ellipsoid &);
};

constexpr Change changes[] = {
    {"proj4EllpsName", [](Ellipsoid &e) { e.proj4EllpsName = QStringLiteral("Bessel"); }},
    {"axis value", [](Ellipsoid &e) { e.biggerHalfAxle.value = 6377397.156; }},
    {"axis unit", [](Ellipsoid &e) { e.biggerHalfAxle.unit = Unit_Foot; }},
    {"axis kind", [](Ellipsoid &e) { e.biggerHalfAxle.valType = ValueType_Double; }},
    {"reciprocal", [](Ellipsoid &e) { e.reciprocal = std::nextafter(e.reciprocal, 300.0); }},
    {"positiveDir", [](Ellipsoid &e) { e.positiveDir = EllipsoidDirection_ENU; }},
};

TEST(Ellipsoid, EachComputationalMemberCountsForEquality)
{
    for (const Change &change : changes) {
        SCOPED_TRACE(change.member);
        Ellipsoid changed = bessel();
        change.apply(changed);
        test::expectDifferent(bessel(), changed);
    }
}

TEST(Ellipsoid, NaNEqualsItsOwnObjectOnly)
{
    Ellipsoid ellipsoid = bessel();
    ellipsoid.reciprocal = std::numeric_limits<double>::quiet_NaN();
    const Ellipsoid copy(ellipsoid);
    EXPECT_TRUE(ellipsoid == ellipsoid);
    test::expectDifferent(ellipsoid, copy);
}

TEST(Ellipsoid, ClearResetsNameAxisFlatteningAndDirections)
{
    Ellipsoid ellipsoid = bessel();
    ellipsoid.biggerHalfAxle.valType = ValueType_Height;
    ellipsoid.biggerHalfAxle.unit = Unit_Foot;
    ellipsoid.clear();
    EXPECT_TRUE(ellipsoid.ellipsoid_name.isEmpty());
    test::expectNumber(ellipsoid.biggerHalfAxle, ValueType_Distance, Unit_Meter, 0.0);
    EXPECT_EQ(ellipsoid.reciprocal, 0.0);
    EXPECT_EQ(ellipsoid.positiveDir, EllipsoidDirection_ENU);
}

TEST(Ellipsoid, ClearKeepsTheProjName)
{
    Ellipsoid ellipsoid = bessel();
    ellipsoid.clear();
    EXPECT_EQ(ellipsoid.proj4EllpsName, QStringLiteral("bessel"));
    test::expectDifferent(ellipsoid, Ellipsoid());
}

TEST(Ellipsoid, ClearKeepsTheDictionaryOfTheAxis)
{
    Ellipsoid ellipsoid = bessel();
    test::giveDictionary(ellipsoid.biggerHalfAxle);
    ellipsoid.clear();
    EXPECT_FALSE(ellipsoid.biggerHalfAxle.isDictionary);
    test::expectKeptDictionary(ellipsoid.biggerHalfAxle);
}

} // namespace
} // namespace KelStd
