#include "support/Printers.h"

#include <KelStd/coord/Pos.h>

#include <gtest/gtest.h>

namespace KelStd {
namespace {

TEST(Pos, OnePointHasThreeReadings)
{
    const Pos pos = Pos::fromXYZ(1, 2, 3);
    const stLongLatH &llh = pos.getLongLatH();
    EXPECT_EQ(llh.longitude, 1);
    EXPECT_EQ(llh.latitude, 2);
    EXPECT_EQ(llh.height, 3);
}

} // namespace
} // namespace KelStd
