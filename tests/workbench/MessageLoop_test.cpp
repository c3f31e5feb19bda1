#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <poll.h>
#include <string>
#include <thread>
#include <vector>

#include "support/FakeClock.h"
#include "workbench/MessageLoop.h"

using namespace std::chrono_literals;

namespace
{

bool Readable(int fd)
{
    pollfd p{fd, POLLIN, 0};
    return poll(&p, 1, 0) == 1 && (p.revents & POLLIN) != 0;
}

// The wake descriptor is readable exactly while work waits.
TEST(MessageLoopTasks, RunInOrderAndNeverInsidePost)
{
    MessageLoop loop;
    ASSERT_GE(loop.WakeFd(), 0);
    EXPECT_FALSE(loop.PostTask({}));
    EXPECT_FALSE(Readable(loop.WakeFd()));
    std::vector<std::string> log;
    loop.PostTask([&] {
        log.push_back("1 begin");
        loop.PostTask([&] { log.push_back("3"); });
        log.push_back("1 end");
    });
    loop.PostTask([&] { log.push_back("2"); });
    EXPECT_TRUE(log.empty());
    EXPECT_TRUE(Readable(loop.WakeFd()));
    EXPECT_EQ(loop.RunUntilIdle(), 3u);
    EXPECT_EQ(log, (std::vector<std::string>{"1 begin", "1 end", "2", "3"}));
    EXPECT_FALSE(Readable(loop.WakeFd()));
    EXPECT_EQ(loop.RunUntilIdle(), 0u);
}

TEST(MessageLoopTasks, TaskFromAnotherThreadRunsOnTheLoopThread)
{
    MessageLoop loop;
    std::thread::id ranOn;
    bool ran = false;
    std::thread poster([&] {
        loop.PostTask([&] {
            ranOn = std::this_thread::get_id();
            ran = true;
        });
    });
    EXPECT_TRUE(loop.RunUntil([&] { return ran; }, 5s));
    poster.join();
    EXPECT_EQ(ranOn, std::this_thread::get_id());
}

TEST(MessageLoopTasks, RunUntilGivesUpAfterTheTimeout)
{
    MessageLoop loop;
    const auto start = std::chrono::steady_clock::now();
    EXPECT_FALSE(loop.RunUntil([] { return false; }, 20ms));
    EXPECT_GE(std::chrono::steady_clock::now() - start, 20ms);
}

TEST(MessageLoopTimers, FireOnSchedule)
{
    struct Case {
        const char* name;
        uint32_t intervalMs;
        std::vector<int> advancesMs, firesAfter; // one RunUntilIdle after each advance
    };
    const Case cases[] = {{"not before due", 100, {0, 99, 1}, {0, 0, 1}},
                          {"repeats", 100, {100, 100, 0, 100}, {1, 2, 2, 3}},
                          {"keeps cadence when late", 100, {150, 50, 100}, {1, 2, 3}},
                          {"a stall folds into one tick", 10, {1000, 9, 1}, {1, 1, 2}},
                          {"zero interval is one millisecond", 0, {0, 1, 1}, {0, 1, 2}}};
    for (const auto& c : cases) {
        FakeClock clock;
        MessageLoop loop(clock.AsClock());
        int fired = 0;
        ASSERT_TRUE(loop.StartTimer(1, c.intervalMs, [&] { ++fired; }));
        for (size_t i = 0; i < c.advancesMs.size(); ++i) {
            clock.Advance(std::chrono::milliseconds(c.advancesMs[i]));
            loop.RunUntilIdle();
            EXPECT_EQ(fired, c.firesAfter[i]) << c.name << ", after advance " << i;
        }
    }
}

TEST(MessageLoopTimers, NextDelayFollowsTheEarliestTimerAndRunOnceDoesNotWaitForADueOne)
{
    FakeClock clock;
    MessageLoop loop(clock.AsClock());
    EXPECT_FALSE(loop.NextTimerDelay().has_value());
    loop.StartTimer(1, 300, [] {});
    loop.StartTimer(2, 120, [] {});
    EXPECT_EQ(loop.NextTimerDelay(), 120ms);
    clock.Advance(100ms);
    EXPECT_EQ(loop.NextTimerDelay(), 20ms);
    clock.Advance(50ms);
    EXPECT_EQ(loop.NextTimerDelay(), 0ms);
    EXPECT_EQ(loop.RunOnce(10s), 1u);
    EXPECT_FALSE(loop.StartTimer(5, 10, {}));
    EXPECT_FALSE(loop.HasTimer(5));
}

} // namespace
