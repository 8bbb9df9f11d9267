// What `kelstd convert` computes, and in which order it reads and prints it.

#include "cli/ProgramRun.h"
#include "location/PublishedFigures.h"
#include "support/Printers.h"

#include <cmath>

namespace KelStd {
namespace {

using test::Frame;
using test::Mentions;
using test::numberIn;
using test::ProgramRun;
using test::PublishedCase;

/// How the program's columns carry a frame. The published figures give a projected position as
/// east, north, height; the program reads and prints northing first.
struct FrameColumns
{
    const char *option;
    const char *columns[3]; ///< of the first, second and third published component
    int inputOrder[3];      ///< which published component stands first, second, third in a line
};

const FrameColumns &columnsOf(Frame frame)
{
    static const FrameColumns rows[] = {
        {"wgs84-llh", {"wgs84_longitude_deg", "wgs84_latitude_deg", "wgs84_height_m"}, {0, 1, 2}},
        {"wgs84-xyz", {"wgs84_x_m", "wgs84_y_m", "wgs84_z_m"}, {0, 1, 2}},
        {"local-llh",
         {"local_longitude_deg", "local_latitude_deg", "local_ellipsoidal_height_m"},
         {0, 1, 2}},
        {"local-neh", {"local_easting_m", "local_northing_m", "local_height_m"}, {1, 0, 2}},
    };
    return rows[static_cast<int>(frame)];
}

/// Half a unit of the last digit that the CSV output prints: 11 decimals of a degree, 5 of a metre.
double printed(const char *column)
{
    return QString::fromLatin1(column).endsWith(QLatin1String("_deg")) ? 0.5e-11 : 0.5e-5;
}

class PublishedFigure : public testing::TestWithParam<PublishedCase>
{};

TEST_P(PublishedFigure, ComesOutOfTheProgram)
{
    const PublishedCase &published = GetParam();
    const FrameColumns &from = columnsOf(published.from);
    const auto start = test::componentsOf(published.start);
    QStringList fields;
    for (int component : from.inputOrder)
        fields += QString::number(start[static_cast<std::size_t>(component)], 'g', 17);

    const auto result =
        ProgramRun().convert(published.system, fields.join(QLatin1Char(',')).toUtf8() + '\n',
                             {QStringLiteral("--from"), QString::fromLatin1(from.option)});
    ASSERT_EQ(result.status, 0) << result.err;
    const auto rows = test::csvRows(result.out);
    ASSERT_EQ(rows.size(), 1);

    for (const test::ExpectedFrame &expected : published.expected) {
        const FrameColumns &frame = columnsOf(expected.frame);
        for (std::size_t i = 0; i < 3; ++i) {
            if (!expected.figures[i])
                continue;
            const auto [value, halfUnit] = *expected.figures[i];
            const double unit = expected.metresPerUnit[i];
            // Half a unit of the last published digit, and what the program's own rounding adds.
            const double tolerance = std::max(halfUnit, published.allowed[i])
                                     + printed(frame.columns[i]) / unit + 4e-16 * std::abs(value);
            EXPECT_NEAR(numberIn(rows.first(), QString::fromLatin1(frame.columns[i])) / unit, value,
                        tolerance)
                << published.source << ", " << frame.columns[i];
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Cases, PublishedFigure, testing::ValuesIn(test::publishedFigures().cases),
                         [](const auto &row) {
                             return "Line" + std::to_string(row.param.line) + "_"
                                    + test::testName(row.param.system);
                         });

// EPSG Guidance Note 7-2, "Geocentric translations", WGS 84 to ED50: 53d48'33.820"N, 2d07'46.380"E,
// 73.0 m is X 3771793.968, Y 140253.342, Z 5124304.349.
TEST(ConvertFrames, WithoutFromTheInputIsWgs84LongitudeLatitudeHeight)
{
    const auto result = ProgramRun().convert(QStringLiteral("ed50_utm_31n.xml"),
                                             "2.12955,53.80939444444444,73.0\n");
    ASSERT_EQ(result.status, 0) << result.err;
    const auto row = test::csvRows(result.out).value(0);
    // Half of the published millimetre, and the publication's angles are exact to 1e-9 degrees.
    EXPECT_NEAR(numberIn(row, QStringLiteral("wgs84_x_m")), 3771793.968, 0.0006);
    EXPECT_NEAR(numberIn(row, QStringLiteral("wgs84_y_m")), 140253.342, 0.0006);
    EXPECT_NEAR(numberIn(row, QStringLiteral("wgs84_z_m")), 5124304.349, 0.0006);
}

// Northing and easting of RD New's false origin: a swap is 308 km.
TEST(ConvertFrames, LocalNehIsReadAndPrintedNorthingFirst)
{
    const auto result =
        ProgramRun().convert(QStringLiteral("rd_new.xml"), "463000 155000 0\n",
                             {QStringLiteral("--from"), QStringLiteral("local-neh")});
    ASSERT_EQ(result.status, 0) << result.err;
    const auto row = test::csvRows(result.out).value(0);
    EXPECT_EQ(row.value(QStringLiteral("local_northing_m")), QStringLiteral("463000.00000"));
    EXPECT_EQ(row.value(QStringLiteral("local_easting_m")), QStringLiteral("155000.00000"));
    // The natural origin of EPSG's RD New: 5d23'15.5"E 52d09'22.178"N, given to 0.001".
    EXPECT_NEAR(numberIn(row, QStringLiteral("local_longitude_deg")), 5.387638889, 0.5e-3 / 3600);
    EXPECT_NEAR(numberIn(row, QStringLiteral("local_latitude_deg")), 52.156160556, 0.5e-3 / 3600);
}

TEST(ConvertFrames, TheInputsOwnFrameComesOutAsItWentIn)
{
    struct Row
    {
        const char *from;
        const char *line;
        const char *fields;
    };
    const Row rows[] = {
        {"wgs84-llh", "5.81015219444,52.17852791667,90.865",
         "5.81015219444,52.17852791667,90.86500"},
        {"wgs84-xyz", "3899209.11143,396765.25705,5015080.60299",
         "3899209.11143,396765.25705,5015080.60299"},
        {"local-llh", "5.81064972222,52.17951944444,47.582",
         "5.81064972222,52.17951944444,47.58200"},
        {"local-neh", "465682.9647,183928.877,47.582", "465682.96470,183928.87700,47.58200"},
    };
    const ProgramRun program;
    for (const Row &row : rows) {
        SCOPED_TRACE(row.from);
        const auto result =
            program.convert(QStringLiteral("rd_new.xml"), QByteArray(row.line) + '\n',
                            {QStringLiteral("--from"), QString::fromLatin1(row.from)});
        EXPECT_EQ(result.status, 0);
        EXPECT_THAT(result.outLines().value(1), Mentions(row.fields));
    }
}

TEST(ConvertFrames, AnUnknownFrameIsAUsageErrorThatNamesTheFrames)
{
    const auto result = ProgramRun().convert(QStringLiteral("rd_new.xml"), "1 2 3\n",
                                             {QStringLiteral("--from"), QStringLiteral("wgs84")});
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.out, QString());
    for (const char *name : {"'wgs84'", "wgs84-llh", "wgs84-xyz", "local-llh", "local-neh"})
        EXPECT_THAT(result.err, Mentions(name));
}

} // namespace
} // namespace KelStd
