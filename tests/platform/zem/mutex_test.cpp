#include <ZemError.h>
#include <ZemMutex.h>

#include <gtest/gtest.h>

#include <thread>

using Zem::Mutex;
using Zem::ProgError;

TEST(Mutex, letsOneThreadInAtATime)
{
    Mutex mutex;
    int counter = 0;
    auto count = [&] {
        for (int i = 0; i < 10000; ++i) {
            mutex.lock();
            ++counter;
            mutex.unlock("count", "mutex_test", __LINE__);
        }
    };
    std::thread first(count);
    std::thread second(count);
    first.join();
    second.join();
    EXPECT_EQ(counter, 20000);
}

TEST(Mutex, refusesToBeLockedTwiceByOneThread)
{
    Mutex mutex;
    mutex.lock();
    EXPECT_THROW(mutex.lock(), ProgError);
    mutex.unlock("test", "mutex_test", __LINE__);
}

TEST(Mutex, namesTheCallerThatUnlocksWithoutLock)
{
    Mutex mutex;
    try {
        mutex.unlock("Zem::Caller::work", "caller", 7);
        FAIL();
    } catch (ProgError const &error) {
        EXPECT_TRUE(error.getText().startsWith("Zem::Caller::work (caller:7): "));
    }
}

TEST(Mutex, isNotUnlockedByAnotherThread)
{
    Mutex mutex;
    mutex.lock();
    std::thread([&] { EXPECT_THROW(mutex.unlock("other", "mutex_test", __LINE__), ProgError); }).join();
    EXPECT_NO_THROW(mutex.unlock("owner", "mutex_test", __LINE__));
}
