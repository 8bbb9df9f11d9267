#include "support/Printers.h"

#include <KelStd/coord/Pos.h>

#include <gtest/gtest.h>

#include <limits>
#include <type_traits>
#include <utility>

namespace KelStd {
namespace {

static_assert(std::is_copy_constructible_v<Pos> && std::is_copy_assignable_v<Pos>);
static_assert(std::is_move_constructible_v<Pos> && std::is_move_assignable_v<Pos>);
static_assert(!std::is_polymorphic_v<Pos>);
static_assert(sizeof(Pos) == 3 * sizeof(double) && sizeof(uPos) == 3 * sizeof(double));
static_assert(std::is_union_v<uPos>);

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

/// Every reading shows the same three doubles.
void expectReadings(const Pos &pos, double first, double second, double third)
{
    EXPECT_EQ(pos.getXYZ().x, first);
    EXPECT_EQ(pos.getXYZ().y, second);
    EXPECT_EQ(pos.getXYZ().z, third);
    EXPECT_EQ(pos.getLongLatH().longitude, first);
    EXPECT_EQ(pos.getLongLatH().latitude, second);
    EXPECT_EQ(pos.getLongLatH().height, third);
    EXPECT_EQ(pos.getENU().e, first);
    EXPECT_EQ(pos.getENU().n, second);
    EXPECT_EQ(pos.getENU().u, third);
    EXPECT_EQ(pos.getUPos().xyz.x, first);
    EXPECT_EQ(pos.getUPos().llh.latitude, second);
    EXPECT_EQ(pos.getUPos().enu.u, third);
}

TEST(Pos, OnePointHasThreeReadings)
{
    const Pos pos = Pos::fromXYZ(1, 2, 3);
    const stLongLatH &llh = pos.getLongLatH();
    EXPECT_EQ(llh.longitude, 1);
    EXPECT_EQ(llh.latitude, 2);
    EXPECT_EQ(llh.height, 3);
}

TEST(Pos, GettersReferToTheOneStorage)
{
    Pos pos = Pos::fromXYZ(1, 2, 3);
    const void *const storage = &pos.getUPos();
    EXPECT_EQ(static_cast<const void *>(&pos.getXYZ()), storage);
    EXPECT_EQ(static_cast<const void *>(&pos.getLongLatH()), storage);
    EXPECT_EQ(static_cast<const void *>(&pos.getENU()), storage);
    const stENU &enu = pos.getENU();
    pos.setXYZ(4, 5, 6);
    EXPECT_EQ(enu.n, 5);
}

TEST(Pos, FreshAndClearedOnesAreThreeZeros)
{
    expectReadings(Pos(), 0, 0, 0);
    Pos pos = Pos::fromENU(1, 2, 3);
    pos.clear();
    expectReadings(pos, 0, 0, 0);
}

TEST(Pos, MakersAreOneOperation)
{
    expectReadings(Pos::fromXYZ(1.5, -2.5, 3.25), 1.5, -2.5, 3.25);
    expectReadings(Pos::fromLongLatH(1.5, -2.5, 3.25), 1.5, -2.5, 3.25);
    expectReadings(Pos::fromENU(1.5, -2.5, 3.25), 1.5, -2.5, 3.25);
}

TEST(Pos, SettersOfAllThreeAreOneOperation)
{
    constexpr void (Pos::*setters[])(double, double, double) = {&Pos::setXYZ, &Pos::setLongLatH,
                                                                &Pos::setENU};
    for (const auto setter : setters) {
        Pos pos = Pos::fromXYZ(7, 8, 9);
        (pos.*setter)(1.5, -2.5, 3.25);
        expectReadings(pos, 1.5, -2.5, 3.25);
    }
}

TEST(Pos, SettersOfOneComponentLeaveTheOthers)
{
    using Setter = void (Pos::*)(double);
    for (const Setter setter : {&Pos::setXYZ_X, &Pos::setLLH_Longitude, &Pos::setENU_E}) {
        Pos pos = Pos::fromXYZ(7, 8, 9);
        (pos.*setter)(-1.5);
        expectReadings(pos, -1.5, 8, 9);
    }
    for (const Setter setter : {&Pos::setXYZ_Y, &Pos::setLLH_Latitude, &Pos::setENU_N}) {
        Pos pos = Pos::fromXYZ(7, 8, 9);
        (pos.*setter)(-1.5);
        expectReadings(pos, 7, -1.5, 9);
    }
    for (const Setter setter : {&Pos::setXYZ_Z, &Pos::setLLH_H, &Pos::setENU_U}) {
        Pos pos = Pos::fromXYZ(7, 8, 9);
        (pos.*setter)(-1.5);
        expectReadings(pos, 7, 8, -1.5);
    }
}

TEST(Pos, CopiesAndMovesTakeTheThreeDoubles)
{
    Pos source = Pos::fromXYZ(1, 2, 3);
    Pos copy(source);
    expectReadings(copy, 1, 2, 3);
    Pos assigned;
    assigned = source;
    expectReadings(assigned, 1, 2, 3);
    const Pos moved(std::move(copy));
    expectReadings(moved, 1, 2, 3);
    Pos moveAssigned;
    moveAssigned = std::move(assigned);
    expectReadings(moveAssigned, 1, 2, 3);
    source.setXYZ_X(9); // the copies are their own
    expectReadings(moved, 1, 2, 3);
}

TEST(Pos, EqualityIsExact)
{
    const Pos pos = Pos::fromXYZ(1, 2, 3);
    EXPECT_TRUE(pos == Pos::fromENU(1, 2, 3));
    EXPECT_FALSE(pos != Pos::fromENU(1, 2, 3));
    const double step = std::numeric_limits<double>::epsilon();
    for (const Pos &other : {Pos::fromXYZ(1 + step, 2, 3), Pos::fromXYZ(1, 2 + 2 * step, 3),
                             Pos::fromXYZ(1, 2, 3 + 2 * step)}) {
        EXPECT_FALSE(pos == other);
        EXPECT_TRUE(pos != other);
    }
}

TEST(Pos, EqualityIsIeee)
{
    EXPECT_TRUE(Pos::fromXYZ(0.0, 0.0, 0.0) == Pos::fromXYZ(-0.0, -0.0, -0.0));
    EXPECT_TRUE(Pos::fromXYZ(infinity, 0, 0) == Pos::fromXYZ(infinity, 0, 0));
    EXPECT_FALSE(Pos::fromXYZ(infinity, 0, 0) == Pos::fromXYZ(-infinity, 0, 0));
}

TEST(Pos, NaNDoesNotEvenEqualItself)
{
    for (const Pos &pos :
         {Pos::fromXYZ(nan, 0, 0), Pos::fromXYZ(0, nan, 0), Pos::fromXYZ(0, 0, nan)}) {
        EXPECT_FALSE(pos == pos);
        EXPECT_TRUE(pos != pos);
        EXPECT_FALSE(pos.equals(pos));
    }
}

// From 0, so that the difference of two doubles is exactly the double that is written here.
TEST(Pos, EqualsToleratesATenThousandthInEachComponent)
{
    for (const double sign : {1.0, -1.0}) {
        const double within = sign * 0.0001;
        const double beyond = sign * 0.00011;
        EXPECT_TRUE(Pos().equals(Pos::fromXYZ(within, 0, 0)));
        EXPECT_TRUE(Pos().equals(Pos::fromXYZ(0, within, 0)));
        EXPECT_TRUE(Pos().equals(Pos::fromXYZ(0, 0, within)));
        EXPECT_TRUE(Pos().equals(Pos::fromXYZ(within, within, within)));
        EXPECT_FALSE(Pos().equals(Pos::fromXYZ(beyond, 0, 0)));
        EXPECT_FALSE(Pos().equals(Pos::fromXYZ(0, beyond, 0)));
        EXPECT_FALSE(Pos().equals(Pos::fromXYZ(0, 0, beyond)));
    }
}

TEST(Pos, EqualsIsTheSameForMetresAndDegrees)
{
    EXPECT_TRUE(Pos::fromLongLatH(3.5, 52, 45).equals(Pos::fromLongLatH(3.50005, 52, 45)));
    EXPECT_TRUE(Pos::fromENU(5e5, 4e6, 45).equals(Pos::fromENU(5e5 + 5e-5, 4e6, 45)));
    EXPECT_FALSE(Pos::fromLongLatH(3.5, 52, 45).equals(Pos::fromLongLatH(3.5005, 52, 45)));
    EXPECT_FALSE(Pos::fromENU(5e5, 4e6, 45).equals(Pos::fromENU(5e5 + 5e-4, 4e6, 45)));
}

TEST(Pos, TwoInfinitiesHaveNoDifferenceWithinTheTolerance)
{
    const Pos pos = Pos::fromXYZ(infinity, 0, 0);
    EXPECT_FALSE(pos.equals(pos));
}

TEST(Pos, DifferenceIsComponentByComponent)
{
    Pos minuend = Pos::fromENU(5, 7, 9);
    const Pos difference = minuend - Pos::fromENU(1, 2, 3);
    EXPECT_EQ(difference, Pos::fromXYZ(4, 5, 6));
    EXPECT_EQ(minuend, Pos::fromENU(5, 7, 9));
}

} // namespace
} // namespace KelStd
