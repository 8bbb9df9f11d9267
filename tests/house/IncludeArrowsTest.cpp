// What may include what: the arrows of ARCHITECTURE.md.

#include "house/SourceFiles.h"
#include "support/Printers.h"

#include <QtCore/QSet>

#include <gtest/gtest.h>

#include <functional>

namespace KelStd {
namespace {

/// A folder and the folders that its files may include besides their own. The first row whose
/// name a file's begins with is its room.
struct Room
{
    const char *folder;
    QStringList mayInclude;
};

const QList<Room> &rooms()
{
    static const QList<Room> rows = {
        {"KelStd/platform/default/", {"platform", "grid"}},
        {"KelStd/platform/", {}},
        {"KelStd/stream/", {}},
        {"KelStd/grid/", {}},
        {"KelStd/files/", {}},
        {"KelStd/coord/", {"stream"}},
        {"KelStd/time/", {"coord"}},
        {"KelStd/nmea/", {"time"}},
        {"KelStd/text/", {"coord", "platform"}},
        {"KelStd/display/", {"coord", "time", "text"}},
        {"KelStd/io/", {"coord", "text"}},
        {"KelStd/proj/", {"coord", "text", "display", "platform", "grid", "files"}},
        {"KelStd/location/", {"coord", "text", "proj", "platform"}},
        {"KelStd/positions/", {"coord", "display", "text", "location", "io"}},
        {"KelStd/library/", {"coord", "text", "display", "io", "files", "platform"}},
        {"KelStd/catalogue/", {"coord", "text", "io", "location", "proj", "calibration"}},
        {"KelStd/calibration/", {"coord", "io", "text", "location"}},
    };
    return rows;
}

/// The same of the program, which also includes the library's public headers
/// (PublicHeadersTest.cpp).
const QList<Room> &programRooms()
{
    static const QList<Room> rows = {
        {"cli/terminal/", {}},
        {"cli/run/", {"terminal"}},
        {"cli/values/", {"terminal", "run"}},
        {"cli/library/", {"terminal", "proj"}},
        {"cli/geoids/", {"terminal", "run"}},
        {"cli/conversion/", {"terminal", "run", "values"}},
        {"cli/doctor/", {"terminal", "proj", "geoids"}},
        {"cli/proj/", {"terminal"}},
        {"cli/catalogue/", {"terminal", "library", "proj"}},
        {"cli/systems/", {"terminal", "values", "library", "geoids", "catalogue"}},
        {"cli/site/", {"terminal", "run", "proj", "systems"}},
        {"cli/vector/gdal/", {"vector"}},
        {"cli/vector/", {"terminal", "run", "conversion"}},
        {"cli/commands/",
         {"terminal", "values", "run", "library", "geoids", "systems", "proj", "conversion",
          "catalogue", "doctor", "vector", "site"}},
        {"cli/", {"commands", "terminal"}},
    };
    return rows;
}

/// What every file may include.
const QStringList groundFiles = {"KelStd/Export.h", "KelStd/Failure.h"};

/// It includes every public header.
const QString umbrella = QStringLiteral("KelStd/KelStd.h");

const Room *roomOf(const QString &file)
{
    for (const QList<Room> *list : {&rooms(), &programRooms()}) {
        for (const Room &room : *list) {
            if (file.startsWith(QLatin1String(room.folder)))
                return &room;
        }
    }
    return nullptr;
}

/// "KelStd/platform/default/" is "platform/default", "cli/" is "cli".
QString nameOf(const Room &room)
{
    const QString folder = QString::fromLatin1(room.folder).chopped(1);
    return folder.contains(QLatin1Char('/')) ? folder.section(QLatin1Char('/'), 1) : folder;
}

/// Whether the program includes a header of the library.
bool isOfTheLibrary(const QString &included, const QString &file)
{
    return included.startsWith(QLatin1String("KelStd/")) && file.startsWith(QLatin1String("cli/"));
}

struct Tree
{
    const char *folder;
    const QList<Room> &rooms;
    int files; ///< at least
};

void PrintTo(const Tree &tree, std::ostream *out)
{
    *out << tree.folder;
}

class IncludeArrowsOf : public testing::TestWithParam<Tree>
{};

TEST_P(IncludeArrowsOf, EveryFileIncludesOnlyWhatItsRoomMay)
{
    const auto graph = test::includeGraph(QString::fromLatin1(GetParam().folder));
    ASSERT_GT(graph.size(), GetParam().files);
    for (auto file = graph.constBegin(); file != graph.constEnd(); ++file) {
        if (file.key() == umbrella || groundFiles.contains(file.key()))
            continue;
        const Room *room = roomOf(file.key());
        ASSERT_NE(room, nullptr) << file.key() << " stands in no room";
        for (const QString &included : file.value()) {
            if (groundFiles.contains(included) || isOfTheLibrary(included, file.key()))
                continue;
            const Room *other = roomOf(included);
            ASSERT_NE(other, nullptr) << file.key() << " includes " << included;
            EXPECT_TRUE(other == room || room->mayInclude.contains(nameOf(*other)))
                << file.key() << " includes " << included;
        }
    }
}

TEST_P(IncludeArrowsOf, EveryRoomHasFilesAndEveryArrowIsUsed)
{
    const auto graph = test::includeGraph(QString::fromLatin1(GetParam().folder));
    for (const Room &room : GetParam().rooms) {
        QSet<QString> used;
        bool hasFiles = false;
        for (auto file = graph.constBegin(); file != graph.constEnd(); ++file) {
            if (roomOf(file.key()) != &room)
                continue;
            hasFiles = true;
            for (const QString &included : file.value()) {
                if (const Room *other = roomOf(included))
                    used.insert(nameOf(*other));
            }
        }
        EXPECT_TRUE(hasFiles) << room.folder;
        for (const QString &arrow : room.mayInclude)
            EXPECT_TRUE(used.contains(arrow)) << room.folder << " -> " << arrow;
    }
}

INSTANTIATE_TEST_SUITE_P(Tree, IncludeArrowsOf,
                         testing::Values(Tree{"KelStd", rooms(), 100},
                                         Tree{"cli", programRooms(), 80}));

QMap<QString, QStringList> allIncludes()
{
    auto graph = test::includeGraph(QStringLiteral("KelStd"));
    const auto program = test::includeGraph(QStringLiteral("cli"));
    for (auto file = program.constBegin(); file != program.constEnd(); ++file)
        graph.insert(file.key(), file.value());
    return graph;
}

TEST(IncludeArrows, NoFileIncludesInACircle)
{
    const auto graph = allIncludes();
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
    const auto graph = allIncludes();
    for (auto file = graph.constBegin(); file != graph.constEnd(); ++file) {
        for (const QString &included : file.value())
            EXPECT_TRUE(graph.contains(included)) << file.key() << " includes " << included;
    }
}

/// A source that includes its own header first shows that the header stands alone.
TEST(IncludeArrows, EverySourceIncludesItsOwnHeaderFirst)
{
    const auto graph = allIncludes();
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
