#include "delivered/ExpectedOrigin.h"

#include "support/Printers.h"

#include <gtest/gtest.h>

namespace KelStd::test {

void expectOrigin(const SystemOrigin &origin, const QString &code, const Usage &usage)
{
    EXPECT_EQ(origin.fullCode(), code);
    EXPECT_EQ(origin.databaseVersion, QStringLiteral("EPSG v10.076"));
    ASSERT_TRUE(origin.area.has_value());
    EXPECT_EQ(origin.area->west, usage.area.west);
    EXPECT_EQ(origin.area->south, usage.area.south);
    EXPECT_EQ(origin.area->east, usage.area.east);
    EXPECT_EQ(origin.area->north, usage.area.north);
    EXPECT_EQ(origin.areaName, usage.name);
    EXPECT_FALSE(origin.planeUnit.has_value());
}

} // namespace KelStd::test
