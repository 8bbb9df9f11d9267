// The report of a fitted site, as a browser shows it.

#include "calibration/MeasuredSite.h"
#include "cli/ProgramRun.h"
#include "support/Printers.h"
#include "support/ProjTest.h"

#include <KelStd/calibration/SiteReport.h>

#include <QtCore/QFile>
#include <QtCore/QRegularExpression>
#include <QtCore/QTemporaryDir>

namespace KelStd {
namespace {

using calibration::SiteFit;
using calibration::SiteFitOptions;

QString text(const char *latin1)
{
    return QString::fromLatin1(latin1);
}

void expectMentions(const QString &all, std::initializer_list<const char *> texts)
{
    for (const char *each : texts)
        EXPECT_THAT(all, test::Mentions(each));
}

class SiteReportTest : public test::ProjTest
{
protected:
    void SetUp() override
    {
        test::ProjTest::SetUp();
        Coord base = test::planeSystem();
        test::TrueSite site;
        site.turn = 0.6;
        site.a = 3.0;
        site.b = 80e-6;
        ControlPoints control = test::controlOf(base, site, 1.0);
        control[0].name = text("<b>\"corner\" & co</b>");
        control[1].name = QString(200, QLatin1Char('w')); // no place to break it
        control[3].east += 0.4;
        SiteFitOptions options;
        options.sigmaH = 0.01;
        m_fit = test::fitted(base, control, options);
        m_fit.coord.coord_name = text("Site <7> & \"east\"");
    }

    QByteArray page() const
    {
        calibration::SiteReportFacts facts;
        facts.baseName = text("Base <system>");
        facts.madeOn = text("2026-05-01");
        facts.pipeline = text("+proj=pipeline +step ") + QString(300, QLatin1Char('x'));
        return calibration::siteReport(m_fit, facts);
    }

    SiteFit m_fit;
};

/// What the browser makes of a page: its document after the scripts have run.
QString dumped(const QByteArray &page, const QStringList &options = {})
{
    const QTemporaryDir directory;
    QFile file(directory.filePath(text("page.html")));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(page);
    file.close();
    QProcess browser;
    browser.start(QStringLiteral(KELSTD_TEST_BROWSER),
                  QStringList{text("--headless"), text("--no-sandbox"), text("--disable-gpu"),
                              text("--disable-dev-shm-usage"), text("--dump-dom"),
                              text("--user-data-dir=") + directory.filePath(text("profile"))}
                      + options + QStringList(text("file://") + file.fileName()));
    EXPECT_TRUE(browser.waitForFinished(120000));
    EXPECT_EQ(browser.exitCode(), 0) << browser.readAllStandardError().toStdString();
    return QString::fromUtf8(browser.readAllStandardOutput());
}

TEST_F(SiteReportTest, ABrowserReadsAllOfItWithoutAScriptAndWithoutANetwork)
{
    const QByteArray bytes = page();
    EXPECT_FALSE(bytes.contains("<script"));
    EXPECT_FALSE(bytes.contains("http"));
    EXPECT_FALSE(bytes.contains("url("));
    EXPECT_FALSE(bytes.contains("<b>"));
    // The browser's own text of the page, in place of the page.
    QByteArray measured = bytes;
    measured.replace("</body>", "<script>document.title = 'read';"
                                "const t = document.body.innerText;"
                                "document.body.textContent = t;</script></body>");
    const QString shown = dumped(measured);
    expectMentions(shown, {"read",
                           "Site calibration: Site &lt;7&gt; &amp; \"east\"",
                           "Base",
                           "Geoid model",
                           "Plan: four",
                           "Height: plane",
                           "Shift east",
                           "as stored",
                           "With the other sign",
                           "About the centroid",
                           "&lt;b&gt;\"corner\" &amp; co&lt;/b&gt;",
                           "P4",
                           "suspect",
                           "Baarda's w",
                           "Plan of the site",
                           "times as long",
                           "standard ellipses",
                           "Residuals of the heights",
                           "Where the fit holds",
                           "+proj=pipeline",
                           "tilted by"});
    // Every point in both tables, with its residual to 0.1 mm.
    for (const auto &point : m_fit.points) {
        EXPECT_TRUE(shown.contains(point.name.toHtmlEscaped().replace(text("&quot;"), text("\""))))
            << point.name;
        EXPECT_TRUE(shown.contains(QString::number(*point.residualEast, 'f', 4))) << point.name;
        EXPECT_TRUE(shown.contains(QString::number(*point.residualHeight, 'f', 4))) << point.name;
    }
}

TEST_F(SiteReportTest, TheDrawingIsToScale)
{
    const QString drawn = dumped(page());
    const auto numberOf = [](const QString &element, const char *attribute) {
        const QRegularExpression found(QStringLiteral(" %1=\"([-0-9.]+)\"").arg(text(attribute)));
        return found.match(element).captured(1).toDouble();
    };
    const QRegularExpression circle(text("<circle[^>]*>"));
    auto each = circle.globalMatch(drawn);
    std::vector<std::pair<double, double>> centres;
    while (each.hasNext()) {
        const QString element = each.next().captured(0);
        centres.emplace_back(numberOf(element, "cx"), numberOf(element, "cy"));
    }
    ASSERT_EQ(centres.size(), 8U);
    const auto &first = m_fit.points.at(0).control;
    const auto &second = m_fit.points.at(2).control;
    const double scale = (centres[2].first - centres[0].first) / (second.e - first.e);
    EXPECT_GT(scale, 0.0);
    // Coordinates of the drawing have two decimals.
    for (std::size_t i = 1; i < centres.size(); ++i) {
        const auto &at = m_fit.points.at(static_cast<int>(i)).control;
        EXPECT_NEAR(centres[i].first - centres[0].first, scale * (at.e - first.e), 0.05);
        EXPECT_NEAR(centres[i].second - centres[0].second, -scale * (at.n - first.n), 0.05);
    }
    const QRegularExpression magnification(text("are drawn ([0-9.e+]+) times as long"));
    const double times = magnification.match(drawn).captured(1).toDouble();
    ASSERT_GT(times, 1.0);
    const QRegularExpression vector(text("<line class=\"vector\"[^>]*>"));
    const QString line = vector.match(drawn).captured(0);
    EXPECT_NEAR(numberOf(line, "x2") - numberOf(line, "x1"),
                *m_fit.points.at(0).residualEast * scale * times, 0.05);
    EXPECT_NEAR(numberOf(line, "y2") - numberOf(line, "y1"),
                -*m_fit.points.at(0).residualNorth * scale * times, 0.05);
}

// Windows are as wide as a telephone, A4 at 96 dots per inch and a desk's screen, paper as A4
// within its margins. A frame of that width holds the page: a headless browser's own window is
// never below 500. A number that is broken over two lines reads as another one.
TEST_F(SiteReportTest, NothingOverflowsOnAnyScreenOrPaperInLightAndDark)
{
    for (const bool isDark : {false, true}) {
        for (const bool isPrinted : {false, true}) {
            QByteArray bytes = page();
            if (isPrinted)
                bytes.replace("@media print", "@media all")
                    .replace("@media screen", "@media speech");
            if (isDark)
                bytes.replace("prefers-color-scheme:dark", "min-width:0");
            QString frames;
            for (const int width : {360, 680, 794, 1280}) {
                frames += QStringLiteral("<iframe style=\"border:0\" width=\"%1\" height=\"900\" "
                                         "srcdoc=\"%2\"></iframe>")
                              .arg(width)
                              .arg(QString::fromUtf8(bytes).toHtmlEscaped());
            }
            const QString outer =
                text("<!DOCTYPE html><body>") + frames
                + text(
                    "<script>window.onload = () => {"
                    "let out = '';"
                    "for (const f of document.querySelectorAll('iframe')) {"
                    "const d = f.contentDocument, w = d.documentElement;"
                    "let worst = 0;"
                    "for (const e of d.body.querySelectorAll('*'))"
                    " worst = Math.max(worst, e.getBoundingClientRect().right - w.clientWidth);"
                    "let clipped = 0;"
                    "for (const e of d.body.querySelectorAll('td,pre,p,h1,h2,li'))"
                    " clipped = Math.max(clipped, e.scrollWidth - e.clientWidth);"
                    "let broken = '';"
                    "for (const e of d.body.querySelectorAll('td')) {"
                    " if (!/^[-+]?[0-9]+[.][0-9]+$/.test(e.textContent)) continue;"
                    " const r = d.createRange(); r.selectNodeContents(e);"
                    " if (r.getClientRects().length != 1) broken += e.textContent + ','; }"
                    "const s = d.defaultView.getComputedStyle(d.body);"
                    "out += `[${f.width} ${w.clientWidth} ${w.scrollWidth} ${worst <= 0.5} "
                    "${clipped <= 1} ${broken || 'whole'} ${s.color} on ${s.backgroundColor}]`; }"
                    "document.body.textContent = out; };</script></body>");
            const QString measured = dumped(outer.toUtf8(), {text("--window-size=1400,1000"),
                                                             text("--virtual-time-budget=5000")});
            for (const int width : {360, 680, 794, 1280}) {
                if (isPrinted != (width == 680))
                    continue;
                SCOPED_TRACE(QStringLiteral("%1 dark %2 printed %3: %4")
                                 .arg(width)
                                 .arg(isDark)
                                 .arg(isPrinted)
                                 .arg(measured.right(600))
                                 .toStdString());
                const QRegularExpression found(
                    QStringLiteral("\\[%1 (\\d+) (\\d+) (\\w+) (\\w+) (\\S+) rgb\\((.*?)\\) on "
                                   "rgb\\((.*?)\\)\\]")
                        .arg(width));
                const QRegularExpressionMatch match = found.match(measured);
                ASSERT_TRUE(match.hasMatch());
                EXPECT_LE(match.captured(2).toInt(), match.captured(1).toInt());
                EXPECT_EQ(match.captured(3), text("true"));
                EXPECT_EQ(match.captured(4), text("true"));
                EXPECT_EQ(match.captured(5), text("whole"));
                // Dark ink on light, or the other way round; paper is white.
                const int ink = match.captured(6).section(QLatin1Char(','), 0, 0).toInt();
                const int paper = match.captured(7).section(QLatin1Char(','), 0, 0).toInt();
                if (isDark && !isPrinted)
                    EXPECT_GT(ink, paper + 150);
                else
                    EXPECT_GT(paper, ink + 150);
            }
        }
    }
}

// One with coordinates that were typed wrong would make all others one spot.
TEST_F(SiteReportTest, APointThatIsNotUsedDoesNotScaleTheDrawing)
{
    const auto drawing = [this] {
        const QString shown = QString::fromUtf8(page());
        return shown.mid(shown.indexOf(text("<svg")),
                         shown.indexOf(text("</svg>")) - shown.indexOf(text("<svg")));
    };
    const QString before = drawing();
    calibration::SitePoint far;
    far.name = text("far");
    far.control = {1e6, 0.0, 0.0};
    m_fit.points += far;
    m_fit.control += ControlPoint();
    m_fit.control.last().setUse(text("-"));
    EXPECT_EQ(drawing(), before);
    m_fit.points.last().control = m_fit.points.first().control;
    EXPECT_TRUE(drawing().contains(text("class=\"unused\"")));
}

// Rounding leaves "-0.0000" of a residual that is nothing.
TEST_F(SiteReportTest, NothingHasNoSign)
{
    for (auto &point : m_fit.points) {
        for (auto *value : {&point.residualNorth, &point.residualEast, &point.residualHeight,
                            &point.leftOutNorth, &point.leftOutEast, &point.leftOutHeight})
            *value = -1e-7;
    }
    m_fit.plan.statistics.rms = 0.0;
    const QByteArray bytes = page();
    EXPECT_TRUE(bytes.contains(">0.0000<"));
    EXPECT_FALSE(QRegularExpression(text(">-0[.]0+<")).match(QString::fromUtf8(bytes)).hasMatch());
}

// A name is cut between letters, not in the middle of one that takes two units of UTF-16.
TEST_F(SiteReportTest, LongNamesAreCutBetweenLetters)
{
    const QString letter = QString::fromUtf8("\xF0\x9F\x98\x80");
    m_fit.points[2].name = letter.repeated(9);
    const QString shown = QString::fromUtf8(page());
    EXPECT_TRUE(shown.contains(letter.repeated(6) + QChar(0x2026) + text("</text>")));
    EXPECT_FALSE(shown.contains(QChar::ReplacementCharacter));
    EXPECT_FALSE(shown.contains(text("?") + QChar(0x2026)));
}

TEST_F(SiteReportTest, SaysWhereHeightsHoldWhereThatIsElsewhere)
{
    const Coord base = test::planeSystem();
    const auto reportOf = [&](int heights) {
        ControlPoints control = test::controlOf(base, test::TrueSite());
        for (int i = heights; i < control.size(); ++i)
            control[i].isUsedInHeight = false;
        SiteFitOptions options;
        options.height = calibration::HeightMethod::Plane;
        return QString::fromUtf8(calibration::siteReport(test::fitted(base, control, options), {}));
    };
    expectMentions(reportOf(3), {"Northing and easting: within the hull of its control points",
                                 "Heights: within the hull of its control points"});
    const QString all = reportOf(8);
    expectMentions(all, {"The fit: within the hull of its control points"});
    EXPECT_FALSE(all.contains(text("Heights: within")));
}

TEST_F(SiteReportTest, SaysWhatAPoorSiteLacks)
{
    const Coord base = test::planeSystem();
    SiteFitOptions options;
    options.plan = calibration::PlanMethod::Shift;
    options.height = calibration::HeightMethod::None;
    const SiteFit fit =
        test::fitted(base, test::controlOf(base, test::TrueSite(), 0.0, 1), options);
    calibration::SiteReportFacts facts;
    facts.pipelineNote = text("There is none.");
    const QString shown = QString::fromUtf8(calibration::siteReport(fit, facts));
    expectMentions(shown, {"Plan: shift", "no redundancy in plan",
                           "enclose no area; within 100 m of the only one", "There is none.",
                           "Height: none"});
    EXPECT_FALSE(shown.contains(text("nan")));
    EXPECT_FALSE(shown.contains(text("inf\"")));
}

} // namespace
} // namespace KelStd
