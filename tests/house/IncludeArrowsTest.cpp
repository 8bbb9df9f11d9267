// What may include what: the arrows of ARCHITECTURE.md.

#include "house/SourceFiles.h"
#include "support/Printers.h"

#include <QtCore/QSet>

#include <gtest/gtest.h>

#include <functional>

namespace KelStd {
namespace {

/// A part of the library, named by the beginning of its files' names, and the parts that it may
/// include besides itself. The first row that fits a file is its part.
struct Part
{
    const char *files;
    const char *name;
    QStringList mayInclude;
};

const QList<Part> &parts()
{
    static const QList<Part> rows = {
        {"KelStd/KelStd.h",
         "umbrella",
         {"enumerations", "values", "time", "text", "io", "proj", "showConfig", "registry",
          "platform", "files"}},
        {"KelStd/Export.h", "export", {}},
        {"KelStd/coord/Enumerations.h", "enumerations", {}},
        {"KelStd/coord/ChainDefinitions.cpp",
         "roof",
         {"export", "enumerations", "values", "proj", "platform"}},
        {"KelStd/coord/LocationBuilder.cpp",
         "roof",
         {"export", "enumerations", "values", "proj", "platform"}},
        {"KelStd/coord/CoordDefinitions.cpp",
         "roof",
         {"export", "enumerations", "values", "proj", "platform"}},
        {"KelStd/coord/LocationConstruction.cpp",
         "roof",
         {"export", "enumerations", "values", "proj", "platform"}},
        {"KelStd/coord/", "values", {"export", "enumerations"}},
        {"KelStd/time/", "time", {"export", "enumerations"}},
        {"KelStd/text/Formatting.cpp",
         "formatting",
         {"export", "enumerations", "values", "text", "platform", "showConfig"}},
        {"KelStd/text/", "text", {"export", "enumerations", "values", "platform"}},
        {"KelStd/library/stShowConfig",
         "showConfig",
         {"export", "enumerations", "values", "text", "time"}},
        {"KelStd/library/ShowConfig",
         "showConfig",
         {"export", "enumerations", "values", "text", "time"}},
        {"KelStd/library/", "registry", {"export", "enumerations", "values", "showConfig", "io"}},
        {"KelStd/io/", "io", {"export", "enumerations", "values", "text"}},
        {"KelStd/grid/", "grid", {}},
        {"KelStd/files/", "files", {"export"}},
        {"KelStd/proj/",
         "proj",
         {"export", "enumerations", "values", "text", "platform", "grid", "files"}},
        {"KelStd/platform/default/", "default platform", {"platform", "grid"}},
        {"KelStd/platform/", "platform", {}},
    };
    return rows;
}

const Part *partOf(const QString &file)
{
    for (const Part &part : parts()) {
        if (file.startsWith(QLatin1String(part.files)))
            return &part;
    }
    return nullptr;
}

TEST(IncludeArrows, EveryFileIncludesOnlyWhatItsPartMay)
{
    const auto graph = test::includeGraph();
    ASSERT_GT(graph.size(), 60);
    for (auto file = graph.constBegin(); file != graph.constEnd(); ++file) {
        const Part *part = partOf(file.key());
        ASSERT_NE(part, nullptr) << file.key() << " belongs to no part";
        for (const QString &included : file.value()) {
            const Part *other = partOf(included);
            ASSERT_NE(other, nullptr) << file.key() << " includes " << included;
            const QString name = QString::fromLatin1(other->name);
            EXPECT_TRUE(name == QLatin1String(part->name) || part->mayInclude.contains(name))
                << file.key() << " (" << part->name << ") includes " << included << " ("
                << other->name << ')';
        }
    }
}

TEST(IncludeArrows, NoFileIncludesInACircle)
{
    const auto graph = test::includeGraph();
    QSet<QString> finished;
    QStringList path;
    const std::function<void(const QString &)> walk = [&](const QString &file) {
        if (finished.contains(file))
            return;
        if (path.contains(file)) {
            ADD_FAILURE() << path.join(QLatin1String(" -> ")) << " -> " << file;
            return;
        }
        path << file;
        for (const QString &included : graph.value(file))
            walk(included);
        path.removeLast();
        finished.insert(file);
    };
    for (const QString &file : graph.keys())
        walk(file);
    EXPECT_EQ(finished.size(), graph.size());
}

TEST(IncludeArrows, EveryIncludedFileExists)
{
    const auto graph = test::includeGraph();
    for (auto file = graph.constBegin(); file != graph.constEnd(); ++file) {
        for (const QString &included : file.value())
            EXPECT_TRUE(graph.contains(included)) << file.key() << " includes " << included;
    }
}

/// A source that includes its own header first shows that the header stands alone.
TEST(IncludeArrows, EverySourceIncludesItsOwnHeaderFirst)
{
    const auto graph = test::includeGraph();
    for (auto file = graph.constBegin(); file != graph.constEnd(); ++file) {
        QString header = file.key();
        header.replace(QLatin1String("/platform/default/"), QLatin1String("/platform/"));
        header.replace(QLatin1String(".cpp"), QLatin1String(".h"));
        if (!file.key().endsWith(QLatin1String(".cpp")) || !graph.contains(header))
            continue;
        EXPECT_EQ(file.value().value(0), header) << file.key();
    }
}

} // namespace
} // namespace KelStd
