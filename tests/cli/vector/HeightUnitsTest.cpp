// Heights beside a plane in feet, in files of the program: read in the unit in which they are
// written, whatever unit is printed. A US survey foot is 1200/3937 m.

#include "cli/vector/VectorRun.h"
#include "support/Printers.h"

#include <cli/vector/FieldNames.h>

namespace KelStd {
namespace {

using cli::vector::statedHeightUnit;
using test::csvRows;
using test::mentionsAll;
using test::numberIn;
using test::ProgramResult;
using test::ProgramRun;
using test::words;

TEST(HeightUnits, AreSaidByTheProgramsColumns)
{
    const struct
    {
        QStringList names;
        double metres; ///< 0 where nothing is said
    } rows[] = {
        {{"local_height_m", "local_easting_us_ft"}, 1.0},
        {{"wgs84_height_us_ft", "x"}, 1200.0 / 3937.0},
        {{"local_ellipsoidal_height_ft"}, 0.3048},
        {{"wgs84_x_mm", "wgs84_y_mm", "wgs84_z_mm"}, 0.001},
        {{"local_height_m", "wgs84_height_ft"}, 0.0},
        {{"local_easting_us_ft", "local_northing_us_ft"}, 0.0},
        {{"height", "height_m", "z"}, 0.0},
        {{"wgs84_x", "wgs84_y", "wgs84_z"}, 0.0},
        // Of a Shapefile, where "wgs84_x_us_ft" has no room.
        {{"wgs84_lon", "height_ref", "wgs84_x"}, 1200.0 / 3937.0},
        {{"wgs84_lon", "height_ref", "wgs84_x_m"}, 1.0},
        {{"wgs84_lon", "height_ref", "height"}, 0.0},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.names.join(QLatin1Char(' ')).toStdString());
        const auto stated = statedHeightUnit(row.names);
        ASSERT_EQ(stated.has_value(), row.metres != 0.0);
        if (stated) {
            EXPECT_NEAR(stated->metres, row.metres, 1e-15);
        }
    }
}

TEST(HeightUnits, OfOurFilesAreTheirOwn)
{
    const ProgramRun program;
    const QString list =
        program.file(QStringLiteral("list.csv"),
                     "point,northing_usft,easting_usft,height_m\nA,196850,984250,12.5\n");
    const struct
    {
        const char *written;
        const char *read;
        bool isNoted;
    } rows[] = {
        {"", "", false},
        {"", "--length-unit us-ft", true},
        {"--length-unit us-ft", "", true},
        {"--length-unit us-ft", "--length-unit us-ft", false},
        {"--length-unit us-ft", "--length-unit m", true},
    };
    for (const char *const name : {"o.gpkg", "o.shp"}) {
        const QString file = program.home().path(QString::fromLatin1(name));
        for (const auto &row : rows) {
            SCOPED_TRACE(std::string(name) + ' ' + row.written + " / " + row.read);
            const QString begin = QStringLiteral("convert --system EPSG:2263 --from local-neh %1 ");
            const ProgramResult written =
                program.run(words(begin.arg(QLatin1String(row.written))
                                  + QStringLiteral("--force -o %1 %2").arg(file, list)));
            ASSERT_EQ(written.status, 0) << written.err;
            const ProgramResult read = program.run(
                words(begin.arg(QLatin1String(row.read)) + QStringLiteral("--csv ") + file));
            ASSERT_EQ(read.status, 0) << read.err;
            const bool isInFeet = read.out.contains(QLatin1String("local_height_us_ft"));
            EXPECT_NEAR(
                numberIn(csvRows(read.out).value(0), isInFeet ? QStringLiteral("local_height_us_ft")
                                                              : QStringLiteral("local_height_m")),
                isInFeet ? 12.5 * 3937.0 / 1200.0 : 12.5, 1.1e-5);
            EXPECT_EQ(read.err.contains(QLatin1String("which the column")), row.isNoted)
                << read.err;
        }
    }
}

} // namespace
} // namespace KelStd
