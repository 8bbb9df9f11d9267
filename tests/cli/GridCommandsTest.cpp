// Grids of datum shifts, put where PROJ finds them.

#include "cli/ProgramRun.h"
#include "proj/ProjPrograms.h"
#include "support/Printers.h"
#include "support/ShiftGrids.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>

namespace KelStd {
namespace {

using test::Mentions;
using test::ntv2Bytes;
using test::ProgramResult;
using test::ProgramRun;

class GridCommands : public testing::Test
{
protected:
    GridCommands() { test::ownResourceDirectory(m_program.home()); }

    ProgramResult grid(const QStringList &words) const
    {
        return m_program.run(QStringList(QStringLiteral("grid")) + words);
    }
    ProgramResult add(const QString &file) const { return grid({QStringLiteral("add"), file}); }

    QString added(const char *name) const
    {
        return m_program.home().path(QStringLiteral("proj/share/") + QString::fromLatin1(name));
    }

    ProgramRun m_program;
};

TEST_F(GridCommands, AnAddedGridIsListedAndConverts)
{
    const QString file = m_program.file(QStringLiteral("site.gsb"), ntv2Bytes());
    const auto result = add(file);
    ASSERT_EQ(result.status, 0) << result.err;
    EXPECT_THAT(result.out, Mentions("PROJ finds the grid site.gsb in "));
    EXPECT_EQ(test::readFile(added("site.gsb")), ntv2Bytes());

    const auto listed = grid({QStringLiteral("list")});
    EXPECT_EQ(listed.status, 0);
    EXPECT_THAT(listed.out, Mentions("site.gsb"));
    EXPECT_THAT(listed.out, Mentions("NTv2, latitudes 50 to 52, longitudes 5 to 7, SITE to WORLD"));

    // The grid moves by 3.6 seconds of arc northwards and 7.2 westwards everywhere.
    const QString system = m_program.file(
        QStringLiteral("site.xml"),
        test::editedSystem(
            QStringLiteral("rd_new.xml"),
            {{QStringLiteral("proj4EllpsName=\"bessel\""),
              QStringLiteral("proj4EllpsName=\"bessel +nadgrids=site.gsb\"")},
             {QStringLiteral("fuction=\"Seven\""), QStringLiteral("fuction=\"None\"")}}));
    // The parameters of the record, which are not used, would have it refused.
    const auto converted = m_program.run({QStringLiteral("convert"), QStringLiteral("--lenient"),
                                          QStringLiteral("--system"), system},
                                         "6,51,25\n9,51,25\n");
    ASSERT_EQ(converted.status, 1) << converted.err; // the second lies outside of the grid
    EXPECT_THAT(converted.err, Mentions("<stdin>:2: "));
    const auto rows = test::csvRows(converted.out);
    ASSERT_EQ(rows.size(), 1);
    EXPECT_NEAR(test::numberIn(rows.at(0), QStringLiteral("local_latitude_deg")), 50.999, 1e-8);
    EXPECT_NEAR(test::numberIn(rows.at(0), QStringLiteral("local_longitude_deg")), 6.002, 1e-8);
    EXPECT_NEAR(test::numberIn(rows.at(0), QStringLiteral("local_height_m")), 25.0, 1e-3);

    const auto shown = m_program.run(
        {QStringLiteral("system"), QStringLiteral("show"), QStringLiteral("--lenient"), system});
    EXPECT_EQ(shown.status, 0) << shown.err;
    EXPECT_THAT(shown.out, Mentions("site.gsb (SITE to WORLD)"));
}

TEST_F(GridCommands, AnotherGridOfTheNameIsKeptUnlessForced)
{
    ASSERT_EQ(add(m_program.file(QStringLiteral("site.gsb"), ntv2Bytes())).status, 0);
    EXPECT_EQ(add(m_program.home().path(QStringLiteral("site.gsb"))).status, 0);
    const QByteArray other = ntv2Bytes(test::ShiftGridNodes{50.0, 5.0, 1.0, 1.0, 2, 2});
    const QString file = m_program.file(QStringLiteral("new/site.gsb"), other);
    const auto kept = add(file);
    EXPECT_EQ(kept.status, 1);
    EXPECT_EQ(kept.out, QString());
    EXPECT_THAT(kept.err, Mentions("--force replaces it"));
    EXPECT_EQ(test::readFile(added("site.gsb")), ntv2Bytes());
    EXPECT_EQ(grid({QStringLiteral("add"), file, QStringLiteral("--force")}).status, 0);
    EXPECT_EQ(test::readFile(added("site.gsb")), other);
}

TEST_F(GridCommands, WhatIsNoGridIsRefused)
{
    struct Row
    {
        const char *name;
        QByteArray bytes;
        const char *message;
    };
    const Row rows[] = {
        {"cut.gsb", ntv2Bytes().chopped(40), "it has fewer values than its header promises"},
        {"text.gsb", "this is no grid", "neither an NTv2 nor a GeoTIFF file"},
        {"empty.gsb", {}, "neither an NTv2 nor a GeoTIFF file"},
        {"two words.gsb", ntv2Bytes(), "has a blank or a sign"},
        {"a,b.gsb", ntv2Bytes(), "has a blank or a sign"},
        {"@a.gsb", ntv2Bytes(), "has a blank or a sign"},
        {"geoid.tif", test::geoTiffBytes(1), "it has one value a node"},
        {"cut.tif", test::geoTiffBytes(2).chopped(8), "it has fewer values"},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(row.name);
        const auto result = add(m_program.file(QString::fromLatin1(row.name), row.bytes));
        EXPECT_EQ(result.status, 1);
        EXPECT_EQ(result.out, QString());
        EXPECT_THAT(result.err, Mentions(row.message));
        EXPECT_FALSE(QFileInfo::exists(added(row.name)));
    }
    EXPECT_EQ(add(m_program.home().path(QStringLiteral("nowhere.gsb"))).status, 1);
    EXPECT_EQ(add(m_program.home().path()).status, 1);
    EXPECT_EQ(grid({QStringLiteral("add")}).status, 2);
}

TEST_F(GridCommands, GeoTiffGridsAreListedWithTheirArea)
{
    ASSERT_EQ(add(m_program.file(QStringLiteral("shift.tif"), test::geoTiffBytes(2))).status, 0);
    EXPECT_THAT(grid({QStringLiteral("list")}).out,
                Mentions("GeoTIFF, latitudes 50 to 52, longitudes 5 to 7"));
}

// Of a geoid model in that format the place of its nodes is known.
TEST_F(GridCommands, GeoidModelsMayBeGeoTiffGrids)
{
    m_program.file(QStringLiteral("geoid_model_list/site.tif"), test::geoTiffBytes(1));
    const auto listed = m_program.run({QStringLiteral("geoid"), QStringLiteral("list")});
    EXPECT_THAT(listed.out, Mentions("site.tif"));
    EXPECT_THAT(listed.out,
                Mentions("GeoTIFF, latitudes 50 to 52 deg, longitudes 5 to 7 deg, every 1 deg"));
    const auto shown = m_program.run(
        {QStringLiteral("geoid"), QStringLiteral("info"), QStringLiteral("site.tif")});
    EXPECT_EQ(shown.status, 0) << shown.err;
    for (const char *text : {"GeoTIFF", "50 to 52 deg", "5 to 7 deg", "3, 3", "only PROJ reads"})
        EXPECT_THAT(shown.out, Mentions(text));
    const auto height = m_program.run({QStringLiteral("geoid"), QStringLiteral("height"),
                                       QStringLiteral("--model"), QStringLiteral("site.tif")},
                                      "6,51,100\n");
    EXPECT_EQ(height.status, 0) << height.err; // every node has 3.6 m
    EXPECT_THAT(height.out, Mentions("96.4"));
}

} // namespace
} // namespace KelStd
