// Lists of points that are known twice.

#include "support/Printers.h"

#include <KelStd/positions/ControlList.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace KelStd {
namespace {

using positions::ControlListReader;
using positions::PairListReader;

/// The mistake of the last line; the lines before it have none.
template <typename Reader>
QString mistakeOf(Reader &reader, const std::vector<std::string> &lines)
{
    QString mistake;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        mistake.clear();
        const bool isRead = reader.read(lines[i], mistake);
        EXPECT_EQ(isRead, mistake.isEmpty());
        EXPECT_TRUE(isRead || i + 1 == lines.size()) << lines[i] << ": " << mistake.toStdString();
    }
    return mistake;
}

TEST(ControlList, ReadsEveryColumn)
{
    ControlListReader reader;
    EXPECT_EQ(mistakeOf(reader, {"# control", "",
                                 "use,sigma_v,sigma_h,elevation,easting,northing,"
                                 "height,latitude,longitude,name",
                                 "v,0.02,0.01,12.5,3,2,45.5,52d30'0\"N,5:15:0W,\"a, b\""}),
              QString());
    ASSERT_EQ(reader.points().size(), 1);
    const ControlPoint &point = reader.points().first();
    EXPECT_EQ(point.name, QStringLiteral("a, b"));
    EXPECT_EQ(point.wgs84.getLongLatH().longitude, -5.25);
    EXPECT_EQ(point.wgs84.getLongLatH().latitude, 52.5);
    EXPECT_EQ(point.wgs84.getLongLatH().height, 45.5);
    EXPECT_EQ(point.north, 2.0);
    EXPECT_EQ(point.east, 3.0);
    EXPECT_EQ(point.height, std::optional(12.5));
    EXPECT_EQ(point.useWord(), QStringLiteral("v"));
    EXPECT_EQ(point.sigmaH, std::optional(0.01));
    EXPECT_EQ(point.sigmaV, std::optional(0.02));
}

TEST(ControlList, WhatIsNotThereIsNotKnown)
{
    ControlListReader reader;
    EXPECT_EQ(mistakeOf(reader, {"name;lon;lat;h;n;e;elevation;sigma_h;code", "A;5;52,5;45;2;3;;;x",
                                 "B;5;52;45;2;3,5;0;0,02;x"}),
              QString());
    ASSERT_EQ(reader.points().size(), 2);
    EXPECT_FALSE(reader.points().at(0).height);
    EXPECT_FALSE(reader.points().at(0).sigmaH);
    EXPECT_EQ(reader.points().at(0).useWord(), QStringLiteral("hv"));
    EXPECT_EQ(reader.points().at(0).wgs84.getLongLatH().latitude, 52.5);
    EXPECT_EQ(reader.points().at(1).height, std::optional(0.0));
    EXPECT_EQ(reader.points().at(1).sigmaH, std::optional(0.02));
    EXPECT_EQ(reader.notRead(), QStringList(QStringLiteral("code")));
}

TEST(ControlList, RowsAreSeparatedAsTheirHeadingsAre)
{
    ControlListReader reader;
    EXPECT_EQ(
        mistakeOf(reader, {"name,lon,lat,h,n,e,remark", "A,5,52,45,2,3,oak;x;y", "B,5,52,45,2,3,"}),
        QString());
    ASSERT_EQ(reader.points().size(), 2);
    EXPECT_EQ(reader.points().first().east, 3.0);
    ControlListReader other;
    EXPECT_EQ(mistakeOf(other, {"name,lon,lat,h,n,e", "A;5,5;52,5;45;2;3"}), QString());
    ASSERT_EQ(other.points().size(), 1);
    EXPECT_EQ(other.points().first().wgs84.getLongLatH().longitude, 5.5);
}

/// Thousands that a point sets apart are no decimals.
TEST(ControlList, HasOneDecimalMark)
{
    for (const char *later : {"B;5;52;45;463.000;155.000", "B;5;52;45.5;463000;155000"}) {
        ControlListReader reader;
        const QString mistake =
            mistakeOf(reader, {"name;lon;lat;h;n;e", "A;5,5;52,5;45,5;463000;155000", later});
        EXPECT_TRUE(mistake.endsWith(QLatin1String("a comma or a point may set thousands apart")))
            << mistake.toStdString();
    }
}

TEST(ControlList, LengthsAreInTheUnitOfTheirHeadingOrOfThePlane)
{
    const positions::PlaneUnit foot{QStringLiteral("ft"), 0.3048};
    ControlListReader plain(foot);
    EXPECT_EQ(
        mistakeOf(plain, {"name,lon,lat,h,northing,easting,elevation_m", "A,5,52,1,10,20,10"}),
        QString());
    EXPECT_TRUE(plain.usesPlaneUnit());
    EXPECT_DOUBLE_EQ(plain.points().first().north, 3.048);
    EXPECT_DOUBLE_EQ(plain.points().first().east, 6.096);
    EXPECT_DOUBLE_EQ(*plain.points().first().height, 10.0);

    ControlListReader headed(foot);
    EXPECT_EQ(mistakeOf(headed, {"name,lon,lat,h_ft,northing_us_ft,easting_ft,elevation_ft",
                                 "A,5,52,10,39.37,10,10"}),
              QString());
    EXPECT_FALSE(headed.usesPlaneUnit());
    EXPECT_NEAR(headed.points().first().north, 12.0, 1e-12);
    EXPECT_DOUBLE_EQ(headed.points().first().wgs84.getLongLatH().height, 3.048);

    ControlListReader angles;
    EXPECT_EQ(
        mistakeOf(angles, {"name,lon_gon,lat_gon,h_cm,northing_km,easting_km", "A,6,58,150,1.5,2"}),
        QString());
    EXPECT_DOUBLE_EQ(angles.points().first().wgs84.getLongLatH().longitude, 5.4);
    EXPECT_DOUBLE_EQ(angles.points().first().wgs84.getLongLatH().latitude, 52.2);
    EXPECT_DOUBLE_EQ(angles.points().first().wgs84.getLongLatH().height, 1.5);
    EXPECT_DOUBLE_EQ(angles.points().first().north, 1500.0);
    EXPECT_FALSE(angles.points().first().height);
}

struct Row
{
    std::vector<std::string> lines;
    const char *says;
};

TEST(ControlList, RefusesWhatCanBeReadInTwoWays)
{
    const std::string headings = "name,lon,lat,h,northing,easting,elevation";
    const Row rows[] = {
        {{"1,2,3,4,5,6,7"}, "headings"},
        {{"name,lon,lat,h,northing"}, "no easting"},
        {{"name,lon,lat,h,northing,n,easting"}, "northing twice"},
        {{"name,lon,lat,h,northing_ft,easting", "A,5,52,1,2,3"}, "\"easting\" names no unit"},
        {{"name,lon,lat,h,northing_ft,easting_ft,elevation", "A,5,52,1,2,3,4"},
         "\"elevation\" names no unit"},
        {{"name,lon,lat,h,northing_mi,easting_mi"}, "mi"},
        {{"name,lon_gon,lat,h,northing,easting", "A,5,52,1,2,3"}, "\"lat\" names no unit"},
        {{"name,lat,min,lon,h,northing,easting"}, "minutes"},
        {{headings, "[m],[deg],[deg],[m],[m],[m],[m]"}, "headings"},
        {{headings, "A,5,52,1,2,3"}, "6 fields"},
        {{headings, "A,5,52,1,2,3,4,5"}, "8 fields"},
        {{headings, ",5,52,1,2,3,4"}, "no name"},
        {{headings, "A,,52,1,2,3,4"}, "longitude is missing"},
        {{headings, "A,5,52,1,,3,4"}, "northing is missing"},
        // No option gives a control point a height.
        {{headings, "A,5,52,,2,3,4"},
         "height is missing; correct the line, or take it out of the list"},
        {{headings, "A,5,52,1,2,3,high"}, "\"high\""},
        {{headings, "A,5,91,1,2,3,4"}, "91"},
        {{headings, "A,52N,5E,1,2,3,4"}, "longitude"},
        {{headings, "A,5,52,1,2,inf,4"}, "inf"},
        {{"# all lengths in US survey feet", headings, "A,5,52,1,2,3,4"}, "feet"},
        {{"name;lon;lat;h;northing;easting", "A;5,5;52,5;1,5;2;3,000", "B;5;52;1;2;3,000"},
         "comma"},
        {{"name;lon;lat;h;northing;easting", "A;5,5;52,5;1;2;3.5"}, "point"},
        {{"name;lon;lat;h;northing;easting", "A;5,5;52,5;1;1,234,567;3"}, "\"1,234,567\""},
        {{"name;lon;lat;h;northing;easting", "A;5.5;52,5;1;2;3"}, "point"},
        {{"name lon lat h northing easting", "A 5 30 52 10 1 2 3"}, "8 fields"},
        {{headings + ",use", "A,5,52,1,2,3,4,vertical"}, "\"vertical\""},
    };
    for (const Row &row : rows) {
        ControlListReader reader;
        const QString mistake = mistakeOf(reader, row.lines);
        EXPECT_TRUE(mistake.contains(QLatin1String(row.says)))
            << row.lines.back() << ": " << mistake.toStdString();
    }
}

TEST(ControlList, AnAngleWithACommaTellsWhatTheCommasOfItsLineAre)
{
    ControlListReader reader;
    EXPECT_EQ(mistakeOf(reader, {"name;lon;lat;h;northing;easting;elevation;sigma_h",
                                 "A;5,25;52;1,234;100,123;200,456;12,345;0,01"}),
              QString());
    ASSERT_EQ(reader.points().size(), 1);
    EXPECT_EQ(reader.points().first().north, 100.123);
    EXPECT_EQ(reader.points().first().height, std::optional(12.345));
    EXPECT_EQ(reader.points().first().wgs84.getLongLatH().height, 1.234);
    EXPECT_EQ(reader.points().first().sigmaH, std::optional(0.01));
}

TEST(ControlList, APointMayBeCalledByALetterOfAHemisphere)
{
    ControlListReader reader;
    EXPECT_EQ(mistakeOf(reader, {"name,lon,lat,h,northing,easting", "N,5,52,1,2,3", "E,5,52,1,2,3",
                                 "12,5,52,1,2,3"}),
              QString());
    EXPECT_EQ(reader.points().size(), 3);
}

TEST(PairList, ReadsEachSideInEitherForm)
{
    PairListReader mixed;
    EXPECT_EQ(mistakeOf(mixed, {"wgs84_longitude,wgs84_latitude,wgs84_height_m,id,local_x,local_y,"
                                "local_z",
                                "5d30'E,52.5,45,A,1,2,3"}),
              QString());
    EXPECT_TRUE(mixed.isWgs84Geographic());
    EXPECT_FALSE(mixed.isLocalGeographic());
    ASSERT_EQ(mixed.pairs().size(), 1);
    EXPECT_EQ(mixed.pairs().first().wgs84.getLongLatH().longitude, 5.5);
    EXPECT_EQ(mixed.pairs().first().local.getXYZ().z, 3.0);

    const Row rows[] = {
        {{"name,local_x,local_y,local_z"}, "wgs84_x"},
        {{"name,x,y,z,wgs84_x,wgs84_y,wgs84_z"}, "local_x"},
        {{"name,local_x,local_y,local_z,local_height,wgs84_x,wgs84_y,wgs84_z"}, "two ways"},
        {{"name,local_x,local_y,local_z,wgs84_x,wgs84_y,wgs84_z", "A,1,2,3,4,5,"}, "missing"},
        {{"name,local_x,local_y,local_z,wgs84_x,wgs84_y,wgs84_z", ",1,2,3,4,5,6"}, "no name"},
        {{"name,local_x,local_y,local_z,wgs84_x,wgs84_y,wgs84_z", "A,1,2,3,4,5,x"}, "\"x\""},
    };
    for (const Row &row : rows) {
        PairListReader reader;
        const QString mistake = mistakeOf(reader, row.lines);
        EXPECT_TRUE(mistake.contains(QLatin1String(row.says)))
            << row.lines.back() << ": " << mistake.toStdString();
        // Headings that do not do are none, so that what follows is not held against them.
        EXPECT_EQ(reader.hasHeadings(), row.lines.size() > 1) << row.lines.front();
    }
}

} // namespace
} // namespace KelStd
