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
    form.planeUnit = positions::findPlaneUnit({QString(), 1200.0 / 3937.0});
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

TEST(PlaneUnit, IsOverruledByTheUnitOfAHeading)
{
    const ParsedInput metres = parsed(parserFor(inUsFeet()), "n_m,e_m,h_m\n1,2,3\n");
    ASSERT_EQ(metres.positions.size(), 1U) << metres.end.toStdString();
    EXPECT_EQ(metres.positions.front(), Pos::fromENU(2, 1, 3));
    const ParsedInput height = parsed(parserFor(inUsFeet()), "n,e,h_us_ft\n3937,7874,39.37\n");
    ASSERT_EQ(height.positions.size(), 1U) << height.end.toStdString();
    EXPECT_NEAR(height.positions.front().getENU().n, 1200.0, 1e-9);
    EXPECT_NEAR(height.positions.front().getENU().u, 12.0, 1e-12);
    EXPECT_THAT(parsed(parserFor(inUsFeet()), "n_ft,e_ft,h\n1,2,3\n").end,
                Mentions("\"n_ft\" is in ft, but northing is read in us-ft"));
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
    const LocationPrinter printer({}, ValuePrinter::Output::Csv,
                                  positions::findPlaneUnit({QString(), 1200.0 / 3937.0}));
    EXPECT_EQ(printed(printer).toStdString(),
              "point,wgs84_longitude_deg,wgs84_latitude_deg,wgs84_height_m,wgs84_x_m,wgs84_y_m,"
              "wgs84_z_m,local_longitude_deg,local_latitude_deg,local_ellipsoidal_height_m,"
              "local_northing_us_ft,local_easting_us_ft,local_height_m,local_height_reference\n"
              "P,-96.00000000000,28.50000000000,40.00000,1200.00000,2400.00000,3600.00000,"
              "-96.00000000000,28.50000000000,1.50000,3937.00000,7874.00000,-0.25000,ellipsoid\n");
}

TEST(PlaneUnit, IsOverruledByWhatIsAskedFor)
{
    const auto usFoot = positions::findPlaneUnit({QString(), 1200.0 / 3937.0});
    const auto hasOwn = [&](const PrintOptions &options,
                            ValuePrinter::Output output = ValuePrinter::Output::Csv) {
        const LocationPrinter printer(options, output, usFoot);
        const bool has = printer.hasOwnPlaneUnit();
        const QByteArray own = printed(printer);
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
    EXPECT_FALSE(LocationPrinter({}, ValuePrinter::Output::Csv, std::nullopt).hasOwnPlaneUnit());
}

// The lengths are printed in the EPSG Dataset.
TEST(PlaneUnits, AreFoundByTheirLength)
{
    struct Row
    {
        double metres;
        const char *symbol; ///< empty for none
    };
    const Row rows[] = {
        {0.3048, "ft"},
        {0.304800609601219, "us-ft"},
        {0.30480060960121924, "us-ft"},
        {0.3047972654, "clarke-ft"},
        {0.3047997101815088, "gold-coast-ft"},
        {0.3047994715386762, "sears-ft"},
        {0.9143985307444408, "indian-yd"},
        {0.9143984146160287, "sears-yd"},
        {0.9143917962, "clarke-yd"},
        {0.201168, "link"},
        {0.201166195164, "clarke-link"},
        {20.116765121552632, "sears-chain"},
        {20.116756, "truncated-sears-chain"},
        {1.0000135965, "german-m"},
        {1000.0, "km"},
        {1.0, ""},
        {0.3048003, ""},
        {0.0, ""},
        {-1.0, ""},
    };
    for (const Row &row : rows) {
        const auto unit = positions::findPlaneUnit({QString(), row.metres});
        EXPECT_EQ(unit ? unit->symbol : QString(), QString::fromLatin1(row.symbol)) << row.metres;
    }
}

// What is printed in a unit is read in it, whatever the unit of the plane is.
TEST(PlaneUnits, AreToldApartByTheirHeadings)
{
    for (const positions::PlaneUnit &unit : positions::planeUnits()) {
        SCOPED_TRACE(unit.symbol.toStdString());
        const QByteArray table =
            printed(LocationPrinter({}, ValuePrinter::Output::Csv, unit)).replace("point", "name");
        for (const positions::PlaneUnit &other : positions::planeUnits()) {
            InputForm form(Frame::LocalProjected);
            form.planeUnit = other;
            const ParsedInput result = parsed(parserFor(form, "11,12,13"), table);
            // Links are those of several feet; feet are read as their own headings have them.
            if (other.symbol != unit.symbol && unit.symbol == QLatin1String("link")) {
                EXPECT_THAT(result.end, Mentions("but northing is read in"));
                continue;
            }
            EXPECT_EQ(result.end, QString());
            ASSERT_EQ(result.positions.size(), 1U);
            // Five decimals of the unit, at most a kilometre.
            EXPECT_NEAR(result.positions.front().getENU().n, 1200.0, 0.5e-5 * unit.metres);
            EXPECT_NEAR(result.positions.front().getENU().e, 2400.0, 0.5e-5 * unit.metres);
            EXPECT_EQ(result.positions.front().getENU().u, -0.25);
        }
        const ParsedInput metres =
            parsed(parserFor(InputForm(Frame::LocalProjected), "11,12,13"), table);
        if (unit.symbol == QLatin1String("link")) {
            EXPECT_THAT(metres.end, Mentions("but northing is read in m"));
            continue;
        }
        ASSERT_EQ(metres.positions.size(), 1U);
        EXPECT_NEAR(metres.positions.front().getENU().n, 1200.0, 0.5e-5 * unit.metres);
    }
}

} // namespace
} // namespace KelStd
