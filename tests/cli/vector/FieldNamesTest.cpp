// Names of attributes as formats can hold them.

#include <cli/vector/FieldNames.h>

#include <KelStd/positions/AttributeColumns.h>

#include "support/Printers.h"

#include <gtest/gtest.h>

namespace KelStd {
namespace {

using namespace cli::vector;

TEST(ShapefileNames, OfOurColumnsSayWhatTheyAre)
{
    EXPECT_EQ(
        shapefileNames({"point", "wgs84_longitude_deg", "wgs84_x_m", "local_northing_us_ft",
                        "local_easting_m", "local_height_reference"}),
        (QStringList{"point", "wgs84_lon", "wgs84_x_m", "northing", "easting", "height_ref"}));
    EXPECT_EQ(shapefileNames({"site_northing_m", "site_easting_us_ft", "site_height_ft"}),
              (QStringList{"site_north", "site_east", "site_h"}));
}

TEST(ShapefileNames, OfOthersAreCutAndStandOnce)
{
    EXPECT_EQ(shapefileNames({"description_long", "description_short", "Name", "name", "NAME"}),
              (QStringList{"descriptio", "descript_2", "Name", "name_2", "NAME_3"}));
}

// The tenth byte is the first half of a letter.
TEST(ShapefileNames, CountBytesNotLetters)
{
    const QStringList names = shapefileNames(
        {QString::fromUtf8("gelaendeh\u00f6he"), QString::fromUtf8("\u5ea7\u6a19\u7cfb\u540d")});
    EXPECT_EQ(names,
              (QStringList{QStringLiteral("gelaendeh"), QString::fromUtf8("\u5ea7\u6a19\u7cfb")}));
}

TEST(ShapefileNames, OfManyEqualOnesStayShort)
{
    QStringList given;
    for (int i = 0; i < 120; ++i)
        given += QStringLiteral("measurement_%1").arg(i);
    QStringList names = shapefileNames(given);
    for (const QString &name : names)
        EXPECT_LE(name.toUtf8().size(), 10) << name;
    EXPECT_EQ(names.removeDuplicates(), 0);
}

TEST(DatabaseNames, DifferInMoreThanCase)
{
    EXPECT_EQ(positions::numberedNames({"Code", "code", "CODE", "x"}),
              (QStringList{"Code", "code_2", "CODE_3", "x"}));
}

TEST(ChangedNames, AreListedInPairs)
{
    EXPECT_EQ(changedNames({"a", "bb", "cc"}, {"a", "b", "c"}), "bb as b, cc as c");
    EXPECT_EQ(changedNames({"a"}, {"a"}), "");
}

TEST(OwnCoordinates, AreKnownByTheirNames)
{
    EXPECT_EQ(ownCoordinates({"code", "wgs84_x_m", "local_height_reference", "local_northing_us_ft",
                              "localname", "height"}),
              (std::vector<bool>{false, true, true, true, false, false}));
    // A field "height" of other programs is one of ours only beside what nobody else writes.
    EXPECT_EQ(ownCoordinates({"height", "wgs84_lon", "height_ref", "code"}),
              (std::vector<bool>{true, true, true, false}));
    // What merely begins like one of ours is the user's, with any ending but that of a unit.
    EXPECT_EQ(ownCoordinates({"local_height_pole", "wgs84_x_check", "local_height", "wgs84_x_us_ft",
                              "local_easting_clarke_ft", "wgs84_latitude_dms", "wgs84_latitude_rad",
                              "wgs84_longitude_deg"}),
              (std::vector<bool>{false, false, true, true, true, true, true, true}));
    // What --frames wrote: whole frames.
    EXPECT_EQ(ownCoordinates({"northing", "easting", "height", "height_ref", "Code"}),
              (std::vector<bool>{true, true, true, true, false}));
    EXPECT_EQ(ownCoordinates({"wgs84_lon", "wgs84_lat", "wgs84_h", "height", "local_h"}),
              (std::vector<bool>{true, true, true, false, false}));
    EXPECT_EQ(ownCoordinates({"northing", "easting", "height"}),
              (std::vector<bool>{false, false, false}));
    // At a site, where only whole frames are ours.
    EXPECT_EQ(ownCoordinates({"site_northing_m", "site_easting_us_ft", "site_height", "site_name"}),
              (std::vector<bool>{true, true, true, false}));
    EXPECT_EQ(ownCoordinates({"site_north", "site_east", "site_h", "point"}),
              (std::vector<bool>{true, true, true, false}));
    EXPECT_EQ(ownCoordinates({"site_h", "point"}), (std::vector<bool>{false, false}));
}

} // namespace
} // namespace KelStd
