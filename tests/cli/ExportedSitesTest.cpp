// Systems with a site, exported as pipelines and run by PROJ's own program cct.

#include "cli/ProgramRun.h"
#include "cli/SiteEdits.h"
#include "support/Printers.h"
#include "support/ShiftGrids.h"

namespace KelStd {
namespace {

using test::csvRows;
using test::edits;
using test::Mentions;
using test::numberIn;
using test::ProgramResult;
using test::ProgramRun;
using test::quarterTurn;
using test::text;

const QString rdNew = QStringLiteral("rd_new.xml");

class ExportSite : public testing::Test
{
protected:
    ProgramResult exported(const QString &system) const
    {
        return m_program.run({text("system"), text("export"), system, text("--as"), text("proj"),
                              text("--lenient")});
    }

    /// The pipeline gives what the program gives, at a place in the Netherlands.
    void expectSame(const QString &system, const QString &pipeline) const
    {
        QProcess cct;
        cct.start(text("cct"),
                  QStringList{text("-d"), text("7")} + pipeline.trimmed().split(QLatin1Char(' ')));
        cct.write("5.25 52 1 0\n");
        cct.closeWriteChannel();
        ASSERT_TRUE(cct.waitForFinished());
        const QStringList numbers =
            QString::fromUtf8(cct.readAllStandardOutput()).simplified().split(QLatin1Char(' '));
        const auto converted =
            m_program.run({text("convert"), text("--system"), system, text("--format"),
                           text("exact"), text("--csv"), text("--lenient")},
                          "5.25,52,1\n");
        const auto row = csvRows(converted.out).value(0);
        ASSERT_EQ(numbers.size(), 4) << pipeline;
        EXPECT_NEAR(numbers.at(0).toDouble(), numberIn(row, text("site_easting_m")), 1e-6);
        EXPECT_NEAR(numbers.at(1).toDouble(), numberIn(row, text("site_northing_m")), 1e-6);
        EXPECT_NEAR(numbers.at(2).toDouble(), numberIn(row, text("site_height_m")), 1e-6);
    }

    ProgramRun m_program;
};

TEST_F(ExportSite, PipelineIsOneLineForCct)
{
    const QString system =
        m_program.file(text("system.xml"), test::editedSystem(rdNew, quarterTurn()));
    const auto result = exported(system);
    ASSERT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.outLines().size(), 1);
    EXPECT_TRUE(result.out.startsWith(text("+proj=pipeline +step +proj=unitconvert +xy_in=deg")));
    EXPECT_TRUE(result.out.endsWith(
        text("+step +proj=helmert +x=-462000 +y=157000 +s=1 +theta=324000 +step +proj=affine "
             "+zoff=0.5\n")));
    expectSame(system, result.out);
}

TEST_F(ExportSite, PipelineNamesTheFilesOfGrids)
{
    test::ownResourceDirectory(m_program.home());
    ASSERT_EQ(
        m_program
            .run({text("grid"), text("add"), m_program.file(text("shift.gsb"), test::ntv2Bytes())})
            .status,
        0);
    auto changes = quarterTurn();
    changes.insert(text("proj4EllpsName=\"bessel\""),
                   text("proj4EllpsName=\"bessel +nadgrids=shift.gsb\""));
    changes.insert(text("fuction=\"Seven\""), text("fuction=\"None\""));
    changes.insert(text("modelFileName=\"\""), text("modelFileName=\"egm96_15.gtx\""));
    const QString system = m_program.file(text("system.xml"), test::editedSystem(rdNew, changes));
    const auto result = exported(system);
    ASSERT_EQ(result.status, 0) << result.err;
    EXPECT_THAT(result.out,
                Mentions(qPrintable(text("+grids=")
                                    + m_program.home().path(text("proj/share/shift.gsb")))));
    EXPECT_THAT(result.out, Mentions("egm96_15.gtx +step +proj=push +v_3"));
    expectSame(system, result.out);
}

TEST_F(ExportSite, CurvedSurfaceIsRefused)
{
    const QString curved = m_program.file(
        text("curved.xml"),
        test::editedSystem(rdNew, edits("Elevation_Fitting", "function", "Curve", {})));
    const auto refused = exported(curved);
    EXPECT_EQ(refused.status, 1);
    EXPECT_EQ(refused.out, QString());
    EXPECT_THAT(refused.err, Mentions("curved surface, for which PROJ has no step"));
}

} // namespace
} // namespace KelStd
