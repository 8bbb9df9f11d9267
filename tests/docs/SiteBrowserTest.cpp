// The site as a browser shows it, on a telephone and on a desk.

#include "docs/SitePages.h"
#include "support/Printers.h"
#include "support/TemporaryHome.h"

#include <QtCore/QProcess>
#include <QtCore/QRegularExpression>
#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

namespace KelStd {
namespace {

/// Pages of every kind, and what a reader finds on them.
struct LookedAt
{
    const char *page;
    const char *text;
};

const LookedAt pages[] = {
    {"index.html", "turns a measured GNSS position"},
    {"concepts.html", "Glossary"},
    {"values.html", "Angles as they are typed"},
    {"formats-streams.html", "Examples, byte by byte"},
    {"formats-documents.html", "A whole one"},
    {"formats-ggf.html", "Leaving rows out is an old habit"},
    {"heights.html", "Which height is where"},
    {"display-configuration.html", "What the library does about it"},
    {"cookbook.html", "A whole survey in every format"},
    {"commands.html", "Positions of one frame in all frames"},
    {"command-convert.html", "--columns LIST"},
    {"modules.html", "Coordinate systems and positions (coord)"},
    {"group__room__coord.html", "ISO 19111"},
    {"classKelStd_1_1LocationBuilder.html", "Makes many locations of one coordinate system."},
    {"classKelStd_1_1CoordStringHelper.html", "ForCoordIO_Unit_from_DescriptionAsciiString"},
    {"classKelStd_1_1stEllipsoinTransform.html", "The datum transformation from WGS84"},
    {"functions_func_f.html", "ForCoordIO_Boolean_to_AsciiString"},
    {"KelStd_8h.html", "KelStd/calibration/SiteFit.h"},
    {"performance.html", "What the rows mean"},
};

constexpr int widths[] = {360, 1280}; // of a telephone's screen, and a desk's

/// Frames of both widths hold the pages: a headless browser's own window is never below 500. Of
/// what is wider than its page, a box that scrolls is an answer, and so are texts in it.
const char measuring[] = R"(
window.onload = () => setTimeout(() => {
  let out = '';
  for (const f of document.querySelectorAll('iframe')) {
    const d = f.contentDocument, w = d.documentElement, view = d.defaultView;
    const content = d.getElementById('doc-content');
    const right = content.getBoundingClientRect().left + content.clientWidth;
    const scrolls = e => ['auto', 'scroll', 'hidden'].includes(view.getComputedStyle(e).overflowX);
    let worst = '';
    for (const e of content.querySelectorAll('*')) {
      const box = e.getBoundingClientRect();
      let around = e.parentElement;
      while (around !== content && !scrolls(around))
        around = around.parentElement;
      if (around === content && box.width > 0 && box.right > right + 1)
        worst = worst || e.tagName + '.' + e.className;
    }
    const s = view.getComputedStyle(d.body);
    const ink = s.color.match(/\d+/g)[0], paper = s.backgroundColor.match(/\d+/g)[0];
    const name = f.src.split('/').pop();
    out += `[${name} ${f.width} window ${w.scrollWidth - w.clientWidth} content `
      + `${content.scrollWidth - content.clientWidth} worst (${worst}) ink ${ink} paper ${paper} `
      + `text ${d.body.innerText.includes(f.title)}]`;
  }
  document.body.textContent = out;
}, 1500);
)";

class SiteInABrowser : public testing::TestWithParam<bool>
{};

INSTANTIATE_TEST_SUITE_P(Scheme, SiteInABrowser, testing::Bool(), [](const auto &isDark) {
    return std::string(isDark.param ? "Dark" : "Light");
});

TEST_P(SiteInABrowser, NothingOverflowsOnATelephoneOrADesk)
{
    const bool isDark = GetParam();
    QString frames;
    for (const LookedAt &look : pages) {
        for (const int width : widths) {
            frames += QStringLiteral("<iframe src=\"file://%1\" title=\"%2\" width=\"%3\" "
                                     "height=\"900\" style=\"border:0\"></iframe>")
                          .arg(test::site().filePath(QString::fromLatin1(look.page)),
                               QString::fromLatin1(look.text))
                          .arg(width);
        }
    }
    const QTemporaryDir directory;
    const QString outer = directory.filePath(QStringLiteral("outer.html"));
    test::writeFile(outer, "<!DOCTYPE html><body>" + frames.toUtf8() + "<script>" + measuring
                               + "</script></body>");
    QProcess browser;
    browser.start(
        QStringLiteral(KELSTD_TEST_BROWSER),
        {QStringLiteral("--headless"), QStringLiteral("--no-sandbox"),
         QStringLiteral("--disable-gpu"), QStringLiteral("--disable-dev-shm-usage"),
         QStringLiteral("--allow-file-access-from-files"),
         QStringLiteral("--enable-logging=stderr"), QStringLiteral("--window-size=1400,1000"),
         QStringLiteral("--virtual-time-budget=10000"), QStringLiteral("--dump-dom"),
         QStringLiteral("--user-data-dir=") + directory.filePath(QStringLiteral("profile")),
         QStringLiteral("--blink-settings=preferredColorScheme=%1").arg(isDark ? 0 : 1),
         QStringLiteral("file://") + outer});
    const bool isDone = browser.waitForFinished(240000);
    browser.kill();
    browser.waitForFinished();
    ASSERT_TRUE(isDone);
    ASSERT_EQ(browser.exitCode(), 0);
    const QString said = QString::fromUtf8(browser.readAllStandardError());
    EXPECT_FALSE(said.contains(QLatin1String("CONSOLE"))) << said;
    const QString measured = QString::fromUtf8(browser.readAllStandardOutput());
    for (const LookedAt &look : pages) {
        for (const int width : widths) {
            const QString name = QString::fromLatin1(look.page);
            SCOPED_TRACE(QStringLiteral("%1 %2").arg(name).arg(width).toStdString());
            const QRegularExpression found(
                QStringLiteral("\\[%1 %2 window (-?\\d+) content (-?\\d+) worst \\((.*?)\\) ink "
                               "(\\d+) paper (\\d+) text (\\w+)\\]")
                    .arg(QRegularExpression::escape(name))
                    .arg(width));
            const auto match = found.match(measured);
            ASSERT_TRUE(match.hasMatch()) << measured.right(2000);
            EXPECT_LE(match.captured(1).toInt(), 0);
            EXPECT_LE(match.captured(2).toInt(), 0);
            EXPECT_EQ(match.captured(3), QString());
            EXPECT_EQ(match.captured(6), QStringLiteral("true"));
            // Dark ink on light, or the other way round.
            const int contrast = match.captured(5).toInt() - match.captured(4).toInt();
            EXPECT_GT(isDark ? -contrast : contrast, 150);
        }
    }
}

} // namespace
} // namespace KelStd
