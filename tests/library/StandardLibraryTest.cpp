#include "support/ScopedShowConfig.h"

#include <KelStd/library/StandardLibrary.h>

#include <QtCore/QMetaMethod>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <thread>
#include <type_traits>
#include <vector>

namespace KelStd {
namespace {

TEST(StandardLibrary, IsOneObject)
{
    EXPECT_EQ(&StandardLibrary::getInstance(), &StandardLibrary::getInstance());
    EXPECT_FALSE(std::is_default_constructible_v<StandardLibrary>);
    EXPECT_FALSE(std::is_copy_constructible_v<StandardLibrary>);
    EXPECT_FALSE(std::is_copy_assignable_v<StandardLibrary>);
}

TEST(StandardLibrary, ConcurrentFirstCallersGetTheSameObject)
{
    constexpr int callers = 8;
    std::vector<StandardLibrary *> seen(callers, nullptr);
    std::vector<std::thread> threads;
    for (StandardLibrary *&mine : seen)
        threads.emplace_back([&mine] { mine = &StandardLibrary::getInstance(); });
    for (std::thread &thread : threads)
        thread.join();
    EXPECT_NE(seen.front(), nullptr);
    EXPECT_EQ(std::count(seen.begin(), seen.end(), seen.front()), callers);
}

TEST(StandardLibrary, StartsWithTheWorkingDefaults)
{
    const stShowConfig *config = StandardLibrary::getInstance().getShowConfig();
    ASSERT_NE(config, nullptr);
    EXPECT_TRUE(*config == stShowConfig());
}

TEST(StandardLibrary, HandsOutTheSameConfigurationReadOnly)
{
    const StandardLibrary &library = StandardLibrary::getInstance();
    EXPECT_EQ(library.getShowConfig(), StandardLibrary::getInstance().getShowConfig());
    EXPECT_TRUE((std::is_same_v<decltype(library.getShowConfig()), const stShowConfig *>));
}

TEST(StandardLibrary, AChangedConfigurationIsSeenThroughAPointerTakenBefore)
{
    const stShowConfig *config = StandardLibrary::getInstance().getShowConfig();
    {
        stShowConfig changed;
        changed.xyPrecision = 9;
        const test::ScopedShowConfig shown(changed);
        EXPECT_EQ(config->xyPrecision, 9);
    }
    EXPECT_TRUE(*config == stShowConfig());
}

TEST(StandardLibrary, IsAQObjectWithTwoSignalsInThisOrder)
{
    EXPECT_TRUE((std::is_base_of_v<QObject, StandardLibrary>));
    const QMetaObject &meta = *StandardLibrary::getInstance().metaObject();
    EXPECT_STREQ(meta.className(), "KelStd::StandardLibrary");
    ASSERT_EQ(meta.methodCount() - meta.methodOffset(), 2);
    const char *signatures[] = {"sgShowConfigChanged()", "sgShowInCreateProjectCoordsChanged()"};
    for (int i = 0; i < 2; ++i) {
        const QMetaMethod method = meta.method(meta.methodOffset() + i);
        EXPECT_EQ(method.methodSignature(), QByteArray(signatures[i]));
        EXPECT_EQ(method.methodType(), QMetaMethod::Signal);
    }
    EXPECT_EQ(meta.propertyCount(), meta.propertyOffset());
}

/// Nothing in the library, as when no test has used it.
bool isAsCreated(const StandardLibrary &library)
{
    QMap<QString, const Ellipsoid *> ellipsoids;
    QMap<QString, const Projection *> projections;
    QMap<QString, const Coord *> systems;
    QList<QPair<QString, QString>> offered;
    library.getEllipsoidLibrary(ellipsoids);
    library.getProjectionLibrary(projections);
    library.getCustomCoordLibrary(systems);
    library.getStandardCoordLibrary(systems);
    library.getShowInCreateProjectCoords(offered);
    return ellipsoids.isEmpty() && projections.isEmpty() && systems.isEmpty() && offered.isEmpty()
           && *library.getBaseCoord() == Coord() && library.getBaseCoord()->coord_name.isEmpty()
           && *library.getShowConfig() == stShowConfig();
}

TEST(StandardLibrary, StartsWithoutRecordsAndWithAFreshBaseSystem)
{
    // In a process that begins anew, whatever other tests did in this one.
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(std::exit(isAsCreated(StandardLibrary::getInstance()) ? 0 : 1),
                testing::ExitedWithCode(0), "");
}

} // namespace
} // namespace KelStd
