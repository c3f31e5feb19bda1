#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "support/FakeClock.h"
#include "support/RecordingClient.h"
#include "workbench/PostMessageService.h"

using namespace std::chrono_literals;
using Log = std::vector<std::string>;

namespace
{

class PostMessage : public ::testing::Test
{
protected:
    FakeClock clock;
    MessageLoop loop{clock.AsClock()};
    PostMessageService posts{loop};
    Log log;
    RecordingClient a{"a", log}, b{"b", log};

    void Tick(std::chrono::milliseconds step)
    {
        clock.Advance(step);
        loop.RunUntilIdle();
    }
};

TEST_F(PostMessage, PostFromAHandlerIsNotReentrant)
{
    a.onPost = [&](uint32_t v) {
        if (v < 3)
            posts.Post(&a, v + 1);
    };
    posts.Post(&a, 1);
    posts.Post(&b, 9);
    loop.RunUntilIdle();
    EXPECT_EQ(log, (Log{"a:post:1", "b:post:9", "a:post:2", "a:post:3"})) << "a nested call would come first";
}

TEST_F(PostMessage, NullClientIsRefused)
{
    EXPECT_EQ(posts.Post(nullptr, 1), E_POINTER);
    EXPECT_EQ(posts.SetTimer(nullptr, 1, 10), E_POINTER);
    EXPECT_EQ(posts.KillTimer(nullptr, 1), E_POINTER);
    EXPECT_EQ(posts.PendingMessages(), 0u);
    EXPECT_EQ(loop.RunUntilIdle(), 0u);
}

TEST_F(PostMessage, TimerRestartsWithTheNewIntervalWhenSetAgainAndRepeatsUntilKilledEvenFromItsOwnCall)
{
    ASSERT_EQ(posts.SetTimer(a.Timer(), 5, 100), S_OK);
    Tick(80ms);
    posts.SetTimer(a.Timer(), 5, 50);
    Tick(40ms);
    EXPECT_TRUE(log.empty());
    Tick(10ms);
    Tick(50ms);
    EXPECT_EQ(posts.KillTimer(a.Timer(), 5), S_OK);
    Tick(100ms);
    EXPECT_EQ(log, (Log{"a:timer:5", "a:timer:5"}));
    EXPECT_EQ(posts.KillTimer(a.Timer(), 5), E_FAIL);

    a.onTimer = [&](uint32_t id) { posts.KillTimer(a.Timer(), id); };
    posts.SetTimer(a.Timer(), 6, 10);
    Tick(10ms);
    Tick(10ms);
    EXPECT_EQ(log, (Log{"a:timer:5", "a:timer:5", "a:timer:6"}));
    EXPECT_FALSE(posts.HasTimer(a.Timer(), 6));
}

TEST_F(PostMessage, ForgetClientDropsItsMessagesAndTimersOnly)
{
    for (IUnknown* asGiven : {a.Identity(), static_cast<IUnknown*>(a.Timer())}) {
        SCOPED_TRACE(asGiven == a.Identity() ? "by identity" : "by timer pointer");
        log.clear();
        posts.Post(&a, 1);
        posts.Post(&b, 2);
        posts.SetTimer(a.Timer(), 3, 10);
        posts.SetTimer(b.Timer(), 4, 10);
        posts.ForgetClient(asGiven);
        Tick(10ms);
        EXPECT_EQ(log, (Log{"b:post:2", "b:timer:4"}));
        EXPECT_FALSE(posts.HasTimer(a.Timer(), 3));
        posts.KillTimer(b.Timer(), 4);
    }
}

TEST_F(PostMessage, PostFromAnotherThreadCallsTheClientOnTheLoopsThreadOnly)
{
    std::thread([&] { EXPECT_EQ(posts.Post(&a, 7), S_OK); }).join();
    std::thread([&] { posts.Post(&a, 8); }).join();
    EXPECT_TRUE(a.askedOn.empty()) << "the posting thread does not call into the client";
    posts.ForgetClient(a.Identity());
    std::thread([&] { posts.Post(&a, 9); }).join();
    loop.RunUntilIdle();
    EXPECT_EQ(log, (Log{"a:post:9"})) << "forgotten under the pointer it was posted with";
    for (auto id : a.askedOn)
        EXPECT_EQ(id, std::this_thread::get_id());
}

TEST_F(PostMessage, MessagesQueuedByAGoneServiceAreDropped)
{
    {
        PostMessageService gone{loop};
        gone.Post(&a, 1);
        gone.SetTimer(a.Timer(), 2, 10);
    }
    Tick(10ms);
    EXPECT_TRUE(log.empty());
    EXPECT_FALSE(loop.NextTimerDelay().has_value());
}

} // namespace
