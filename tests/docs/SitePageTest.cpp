// What becomes of a page before the site's generator reads it.

#include "docs/site/SitePage.h"
#include "docs/site/CommandPages.h"
#include "support/Printers.h"

#include <gtest/gtest.h>

#include <ostream>

namespace KelStd {
namespace {

struct Prepared
{
    const char16_t *markdown;
    const char16_t *expected;
};

void PrintTo(const Prepared &row, std::ostream *out)
{
    *out << QString::fromUtf16(row.markdown).toStdString();
}

class SitePage : public testing::TestWithParam<Prepared>
{};

const Prepared rows[] = {
    {u"# Title", u"# Title {#a-b}"},
    {u"# Title\n## One value\n## One value", u"# Title {#a-b}\n## One value {#a-b-one-value}\n"
                                             u"## One value {#a-b-one-value-1}"},
    {u"see [x](c.md)", u"see @ref a-c \"x\""},
    {u"see [x](../d.md#e-f)", u"see @ref d-e-f \"x\""},
    {u"see [x](#part)", u"see @ref a-b-part \"x\""},
    {u"see [x](../../KelStd/io/Coord_IO.h)", u"see x"},
    {u"see [x](https://example.org/a)", u"see [x](https://example.org/a)"},
    {u"`a'b`", u"``a'b``"},
    {u"`say \"a\" #1`", u"<code>say &quot;a&quot; \\#1</code>"},
    {u"`a\\|b`", u"<code>a\\|b</code>"},
    {u"`two\nlines`", u"``two\nlines``"},
    {u"a -- b @c", u"a \\-- b \\@c"},
    {u"|---|---|", u"|---|---|"},
    {u"KelStd is `KelStd`, not KelStd::Pos", u"%KelStd is ``KelStd``, not KelStd::Pos"},
    {u"```cpp\n# no `title`\n```", u"```{.cpp}\n# no `title`\n```"},
    {u"```console\n$ a -- b\n```", u"```{.unparsed}\n$ a -- b\n```"},
};

INSTANTIATE_TEST_SUITE_P(Rows, SitePage, testing::ValuesIn(rows),
                         [](const auto &row) { return std::to_string(row.index); });

TEST_P(SitePage, IsWrittenForTheGenerator)
{
    EXPECT_EQ(site::sitePage(QString::fromUtf16(GetParam().markdown), QStringLiteral("a/b.md")),
              QString::fromUtf16(GetParam().expected));
}

TEST(SitePageNames, AreThoseOfPaths)
{
    EXPECT_EQ(site::pageName(QStringLiteral("many-points.md")), QStringLiteral("many-points"));
    EXPECT_EQ(site::pageName(QStringLiteral("formats/ggf.md")), QStringLiteral("formats-ggf"));
    EXPECT_EQ(site::headingAnchor(QStringLiteral("A controller's list: `x`, and back")),
              QStringLiteral("a-controllers-list-x-and-back"));
}

TEST(CommandPage, StandsInTheMenuWithThoseOfItsFirstWord)
{
    EXPECT_EQ(
        site::commandTabs({QStringLiteral("a b"), QStringLiteral("c"), QStringLiteral("a")}),
        QStringLiteral(
            "<tab type=\"usergroup\" visible=\"yes\" url=\"@ref commands\" title=\"Commands\">\n"
            "<tab type=\"usergroup\" url=\"[none]\" title=\"a\">\n"
            "<tab type=\"user\" url=\"@ref command-a-b\" title=\"a b\"/>\n"
            "<tab type=\"user\" url=\"@ref command-a\" title=\"a\"/>\n</tab>\n"
            "<tab type=\"user\" url=\"@ref command-c\" title=\"c\"/>\n</tab>\n"));
}

TEST(CommandPage, HasTheSectionsOfTheHelp)
{
    const QString help =
        QStringLiteral("Examples:\n  kelstd a b <c>\n\n"
                       "Usage: kelstd a [OPTIONS] FILE|-\nDoes a_b.\nWith --force.\n\n"
                       "Options:\n  --force       Replaces.\n"
                       "  --a-long-name VALUE|none\n                Long *name*.\n\n"
                       "Text with | and <tag>:\n  one\n    two\nbehind it.");
    EXPECT_EQ(site::commandPage(QStringLiteral("a"), help),
              QStringLiteral("# kelstd a\n\n## Examples\n\n```text\nkelstd a b <c>\n```\n\n"
                             "## Usage\n\n```text\nkelstd a [OPTIONS] FILE|-\n```\n\n"
                             "Does a\\_b. With `--force`.\n\n## Options\n\n"
                             "| option | meaning |\n|---|---|\n| `--force` | Replaces. |\n"
                             "| `--a-long-name VALUE\\|none` | Long \\*name\\*. |\n\n"
                             "Text with \\| and \\<tag\\>:\n\n```text\none\n  two\n```\n\n"
                             "behind it.\n\n[All commands](commands.md)\n"));
}

} // namespace
} // namespace KelStd
