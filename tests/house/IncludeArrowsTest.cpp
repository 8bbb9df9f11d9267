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
        {"KelStd/text/", {"coord", "platform"}},
        {"KelStd/display/", {"coord", "time", "text"}},
        {"KelStd/io/", {"coord", "text"}},
        {"KelStd/proj/", {"coord", "text", "display", "platform", "grid", "files"}},
        {"KelStd/location/", {"coord", "proj", "platform"}},
        {"KelStd/library/", {"coord", "display", "io"}},
    };
    return rows;
}

/// What every file may include.
const QStringList groundFiles = {"KelStd/Export.h", "KelStd/Failure.h"};

/// It includes every public header.
const QString umbrella = QStringLiteral("KelStd/KelStd.h");

const Room *roomOf(const QString &file)
{
    for (const Room &room : rooms()) {
        if (file.startsWith(QLatin1String(room.folder)))
            return &room;
    }
    return nullptr;
}

/// "KelStd/platform/default/" is "platform/default".
QString nameOf(const Room &room)
{
    return QString::fromLatin1(room.folder).section(QLatin1Char('/'), 1, -2);
}

TEST(IncludeArrows, EveryFileIncludesOnlyWhatItsRoomMay)
{
    const auto graph = test::includeGraph();
    ASSERT_GT(graph.size(), 60);
    for (auto file = graph.constBegin(); file != graph.constEnd(); ++file) {
        if (file.key() == umbrella || groundFiles.contains(file.key()))
            continue;
        const Room *room = roomOf(file.key());
        ASSERT_NE(room, nullptr) << file.key() << " stands in no room";
        for (const QString &included : file.value()) {
            if (groundFiles.contains(included))
                continue;
            const Room *other = roomOf(included);
            ASSERT_NE(other, nullptr) << file.key() << " includes " << included;
            EXPECT_TRUE(other == room || room->mayInclude.contains(nameOf(*other)))
                << file.key() << " includes " << included;
        }
    }
}

TEST(IncludeArrows, EveryRoomHasFilesAndEveryArrowIsUsed)
{
    const auto graph = test::includeGraph();
    for (const Room &room : rooms()) {
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
