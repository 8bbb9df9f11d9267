// Northing and easting in a unit of their own, heights and all other lengths in metres.

#include "positions/ParsedInput.h"
#include "support/Mentions.h"
#include "support/Printers.h"

#include <KelStd/positions/CsvWriter.h>
#include <KelStd/positions/LocationPrinter.h>
#include <KelStd/text/UnitWords.h>

#include <gtest/gtest.h>

namespace KelStd {
namespace {

using positions::Frame;
using positions::InputForm;
using positions::InputHeight;
using positions::LocationPrinter;
using positions::PrintOptions;
using positions::ValuePrinter;
using test::Mentions;
using test::parsed;
using test::ParsedInput;
using test::parserFor;

InputForm inUsFeet(Frame frame = Frame::LocalProjected)
{
    InputForm form(frame);
    form.planeUnit = Unit_USFoot;
    return form;
}

// 3937 US survey feet are 1200 m, by the unit's definition.
TEST(PlaneUnit, IsThatOfNorthingsAndEastingsAlone)
{
    for (const char *input :
         {"3937,7874,12\n", "P,3937,7874,12\n", "n,e,h\n3937,7874,12\n",
          "northing_us_ft;easting_us_ft;height_m\n3937;7874;12\n",
          "local_height_m,local_easting_us_ft,local_northing_us_ft\n12,7874,3937\n",
          "3937.0  7874.0  12.0\n", "+3937,+7874,+12\n", "\"3937\",\"7874\",\"12\"\n",
          "n;e;h\n3937,0;7874,0;12,0\n"}) {
        SCOPED_TRACE(input);
        const ParsedInput result = parsed(parserFor(inUsFeet()), input);
        EXPECT_EQ(result.end, QString());
        ASSERT_EQ(result.positions.size(), 1U) << testing::PrintToString(result.failures);
        const stENU &position = result.positions.front().getENU();
        EXPECT_NEAR(position.n, 1200.0, 1e-9);
        EXPECT_NEAR(position.e, 2400.0, 1e-9);
        EXPECT_EQ(position.u, 12.0);
    }
}

TEST(PlaneUnit, OfAHeadingMustBeTheOneThatIsRead)
{
    struct Row
    {
        const char *input;
        const char *reason;
    };
    const Row rows[] = {
        {"n_m,e_m,h_m\n1,2,3\n",
         "\"n_m\" is in m, but northing is read in us-ft; --length-unit m reads and prints"},
        {"n_ft,e_ft,h\n1,2,3\n", "\"n_ft\" is in ft, but northing is read in us-ft"},
        {"n,e,h_us_ft\n1,2,3\n",
         "\"h_us_ft\" is in us-ft, but height is read in m; --length-unit us-ft reads and prints"},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(row.input);
        EXPECT_THAT(parsed(parserFor(inUsFeet()), row.input).end, Mentions(row.reason));
    }
}

TEST(PlaneUnit, OfALineMustBeTheOneThatIsRead)
{
    const ParsedInput metres = parsed(parserFor(inUsFeet()), "n,e,h,unit\n1,2,3,m\n");
    EXPECT_TRUE(metres.positions.empty());
    const ParsedInput feet = parsed(parserFor(inUsFeet()), "n,e,h,unit\n1,2,3,us-ft\n");
    EXPECT_TRUE(feet.positions.empty());
}

TEST(PlaneUnit, IsNoneOfOtherFrames)
{
    for (const Frame frame :
         {Frame::Wgs84Geographic, Frame::Wgs84Cartesian, Frame::LocalGeographic}) {
        const ParsedInput result = parsed(parserFor(inUsFeet(frame)), "5,52,12\n");
        ASSERT_EQ(result.positions.size(), 1U);
        EXPECT_TRUE(result.positions.front() == Pos::fromXYZ(5.0, 52.0, 12.0));
    }
}

Location someLocation()
{
    Location location;
    location.wgs84LLH = Pos::fromLongLatH(-96.0, 28.5, 40.0);
    location.wgs84XYZ = Pos::fromXYZ(1200.0, 2400.0, 3600.0);
    location.localLLH = Pos::fromLongLatH(-96.0, 28.5, 1.5);
    location.localNEH = Pos::fromENU(2400.0, 1200.0, -0.25);
    return location;
}

QByteArray printed(const LocationPrinter &printer)
{
    positions::CsvWriter writer(printer, true);
    QByteArray bytes = writer.begin({});
    writer.write(bytes, {"P", someLocation(), QString(), {}});
    return bytes;
}

TEST(PlaneUnit, IsPrintedWithItsNameInTheHeadings)
{
    const LocationPrinter printer({}, ValuePrinter::Output::Csv, findLengthUnit(1200.0 / 3937.0));
    EXPECT_EQ(printed(printer).toStdString(),
              "point,wgs84_longitude_deg,wgs84_latitude_deg,wgs84_height_m,wgs84_x_m,wgs84_y_m,"
              "wgs84_z_m,local_longitude_deg,local_latitude_deg,local_ellipsoidal_height_m,"
              "local_northing_us_ft,local_easting_us_ft,local_height_m,local_height_reference\n"
              "P,-96.00000000000,28.50000000000,40.00000,1200.00000,2400.00000,3600.00000,"
              "-96.00000000000,28.50000000000,1.50000,3937.00000,7874.00000,-0.25000,ellipsoid\n");
}

TEST(PlaneUnit, IsOverruledByWhatIsAskedFor)
{
    const LengthUnit *const usFoot = findLengthUnit(QStringLiteral("us-ft"));
    const auto hasOwn = [&](const PrintOptions &options,
                            ValuePrinter::Output output = ValuePrinter::Output::Csv) {
        const bool has = LocationPrinter::hasOwnPlaneUnit(options, output, usFoot);
        const QByteArray own = printed(LocationPrinter(options, output, usFoot));
        EXPECT_EQ(own == printed(ValuePrinter(options, output)), !has);
        return has;
    };
    PrintOptions options;
    EXPECT_TRUE(hasOwn(options));
    EXPECT_TRUE(hasOwn(options, ValuePrinter::Output::Table));
    options.lengthUnit = findLengthUnit(QStringLiteral("m"));
    EXPECT_FALSE(hasOwn(options));
    options = {};
    options.form = PrintOptions::Form::Exact; // decimal degrees and metres
    EXPECT_FALSE(hasOwn(options));
    options = {};
    options.configured = stShowConfig();
    EXPECT_TRUE(hasOwn(options)); // plain numbers follow no configuration
    EXPECT_FALSE(hasOwn(options, ValuePrinter::Output::Table));
    options.form = PrintOptions::Form::Configured;
    EXPECT_FALSE(hasOwn(options));
    EXPECT_FALSE(LocationPrinter::hasOwnPlaneUnit({}, ValuePrinter::Output::Csv, nullptr));
}

TEST(LengthUnits, AreFoundByTheirLength)
{
    struct Row
    {
        double metres;
        const char *symbol; ///< empty for none
    };
    const Row rows[] = {
        {1.0, "m"},
        {0.3048, "ft"},
        {0.304800609601219, "us-ft"}, // as databases print it
        {0.3048006096012192, "us-ft"},
        {0.001, "mm"},
        {0.3048003, ""},
        {0.3047972654, ""}, // Clarke's foot
        {0.201168, ""},     // link
        {1.0000135965, ""}, // German legal metre
        {0.0, ""},
        {-1.0, ""},
    };
    for (const Row &row : rows) {
        const LengthUnit *const unit = findLengthUnit(row.metres);
        EXPECT_STREQ(unit != nullptr ? unit->symbol : "", row.symbol) << row.metres;
    }
}

} // namespace
} // namespace KelStd
