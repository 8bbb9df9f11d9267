#include "support/ScopedShowConfig.h"

#include <KelStd/library/StandardLibrary.h>

#include <gtest/gtest.h>

#include <algorithm>
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

TEST(StandardLibrary, IsAQObjectAndSoCanSignal)
{
    EXPECT_TRUE((std::is_base_of_v<QObject, StandardLibrary>));
    EXPECT_STREQ(StandardLibrary::getInstance().metaObject()->className(),
                 "KelStd::StandardLibrary");
}

} // namespace
} // namespace KelStd
