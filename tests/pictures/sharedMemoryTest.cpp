#include "pictures/BoundedCache.h"
#include "pictures/MemoryBudget.h"
#include "platform/tasks/Cancelled.h"

#include <gtest/gtest.h>

#include <thread>

namespace folvane {

TEST(MemoryBudget, LendsWhatIsFreeAndWaitsForTheRest)
{
    MemoryBudget budget(100);
    MemoryBudget::Lease most = budget.tryTake(70);
    EXPECT_TRUE(most);
    EXPECT_FALSE(budget.tryTake(40));
    std::stop_source stop;
    std::jthread owner([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        most.reset();
    });
    const MemoryBudget::Lease all = budget.take(100, stop.get_token());
    EXPECT_FALSE(budget.tryTake(1));
    stop.request_stop();
    EXPECT_THROW(budget.take(1, stop.get_token()), Cancelled);
}

TEST(BoundedCache, KeepsWhatWasAskedForLastOrWhatCameFirst)
{
    const auto one = std::make_shared<const int>(1);
    BoundedCache<int> cache(250), first(250, WhenFull::NewestLeaves);
    for (const char* key : {"a", "b", "c"}) {
        cache.find("a");
        cache.insert(key, one, 100);
        first.insert(key, one, 100);
    }
    EXPECT_TRUE(cache.find("a") && !cache.find("b") && cache.find("c"));
    EXPECT_TRUE(first.find("a") && first.find("b") && !first.find("c"));
    cache.insert("d", one, 400);
    EXPECT_TRUE(cache.find("a")); // what is too large pushes nothing out
    cache.insert("a", one, 50);
    EXPECT_EQ(cache.bytes(), 150U);
}

} // namespace folvane
