// What becomes of a public header before the site's generator reads it.

#include "docs/site/SitePage.h"
#include "support/Printers.h"

#include <gtest/gtest.h>

namespace KelStd {
namespace {

TEST(SiteHeader, ItsNamespaceBelongsToTheGroupOfItsFolder)
{
    EXPECT_EQ(
        site::siteHeader(QStringLiteral("#pragma once\n\nnamespace KelStd::io {\n\nint a;\n\n"
                                        "} // namespace KelStd::io\n"),
                         QStringLiteral("KelStd/io/A.h")),
        QStringLiteral(
            "#pragma once /** \\file */\n\nnamespace KelStd::io { /** \\addtogroup room_io */ "
            "/** \\{ */\n\nint a;\n\n/** \\} */ } // namespace KelStd::io\n"));
}

TEST(SiteHeader, WithoutANamespaceAllOfItBehindTheIncludesDoes)
{
    EXPECT_EQ(
        site::siteHeader(QStringLiteral("#pragma once\n#include <A>\n#include <B>\n\nint a;\n"),
                         QStringLiteral("KelStd/platform/A.h")),
        QStringLiteral("#pragma once /** \\file */\n#include <A>\n#include <B> /** \\addtogroup "
                       "room_platform */ /** \\{ */\n\nint a;\n/** \\} */ "));
}

TEST(SiteHeader, ANamespaceWithinAnotherBelongsToTheGroupToo)
{
    EXPECT_EQ(
        site::siteHeader(
            QStringLiteral("namespace KelStd {\nnamespace library {\nint a;\n} // namespace "
                           "library\n} // namespace KelStd\n"),
            QStringLiteral("KelStd/io/A.h"))
            .replace(QStringLiteral(" /** \\addtogroup room_io */ /** \\{ */"), QStringLiteral("["))
            .replace(QStringLiteral("/** \\} */ "), QStringLiteral("]")),
        QStringLiteral(
            "namespace KelStd {[\n]namespace library {[\nint a;\n]}[ // namespace library\n"
            "]} // namespace KelStd\n"));
}

TEST(SiteHeader, PrivateSectionsAreLeftOut)
{
    EXPECT_EQ(site::siteHeader(
                  QStringLiteral("class A\n{\n    int a;\nprivate:\n    struct B\n    {\n"
                                 "    };\nprotected:\n    int c;\nprivate:\n    int d;\n};\n"),
                  QStringLiteral("KelStd/io/A.h")),
              QStringLiteral("class A\n{\n    int a;\n\n\n\n\nprotected:\n    int c;\n\n\n};\n"));
}

} // namespace
} // namespace KelStd
