#include <gtest/gtest.h>

#include <future>
#include <stdexcept>
#include <thread>
#include <tuple>

#include "support/SimHarness.h"

namespace
{

// The CRC-32 that tests/firmware/loop.c computes, worked out on the host.
constexpr uint32_t kLoopChecksum = 0xA5BF07E9;

TEST(SimRun, ProgramsPrintExactlyAndExitWithTheirCodeOnEachVariant)
{
    for (const char* variant : {"cortex-m3", "cortex-m4"}) {
        SCOPED_TRACE(variant);
        SimHarness hello;
        ASSERT_TRUE(hello.Boot("hello", variant)) << hello.Error();
        auto stop = hello.Run();
        ASSERT_TRUE(stop);
        EXPECT_EQ(std::pair(stop->reason, stop->exitCode), std::pair(StopReason::Exit, 0)) << stop->cause;
        EXPECT_EQ(hello.Output(), "hello\n");
        EXPECT_FALSE(hello.Next(std::chrono::milliseconds(0))) << "one report";
        EXPECT_FALSE(hello.Target().IsRunning());

        SimHarness h;
        ASSERT_TRUE(h.Boot("loop", variant)) << h.Error();
        stop = h.Run();
        ASSERT_TRUE(stop);
        ASSERT_EQ(stop->reason, StopReason::Exit) << stop->cause;
        EXPECT_EQ(std::pair(h.Word(h.Symbol("mailbox")), stop->exitCode),
                  std::pair(kLoopChecksum, static_cast<int>(kLoopChecksum & 0xFF)));
        // Millions of instructions, but counted, not guessed.
        EXPECT_GT(h.Target().InstructionCount(), 10'000'000u);
    }
}

TEST(SimRun, GoAndHaltWhenRunningOnlyStopInsideTheLoopAndGoingAgainContinues)
{
    SimHarness h;
    ASSERT_TRUE(h.Boot("count")) << h.Error();
    EXPECT_EQ(h.Target().Halt().cause, "target not running");
    EXPECT_TRUE(h.Target().WaitUntilHalted(std::chrono::milliseconds(0)));
    EXPECT_FALSE(h.Next(std::chrono::milliseconds(50))) << "a refused halt is not reported";
    ASSERT_TRUE(h.Target().Go());
    EXPECT_TRUE(h.Target().IsRunning());
    ASSERT_TRUE(h.WaitForOutput("+"));
    // Nothing else is done while it runs.
    uint32_t word = 0;
    for (const SimResult& refused :
         {h.Target().ReadMemory(0x20000000, 4, &word), h.Target().WriteMemory(0x20000000, 4, &word),
          h.Target().ReadRegister(kRegPc), h.Target().WriteRegister(kRegR0, 1), h.Target().Reset(),
          h.Target().Go(), h.Target().Step()}) {
        EXPECT_EQ(std::pair(bool(refused), refused.cause), std::pair(false, std::string("target running")));
    }

    ASSERT_TRUE(h.Target().Halt());
    auto stop = h.Next();
    ASSERT_TRUE(stop);
    EXPECT_EQ(std::tuple(stop->reason, h.Target().IsRunning(), h.Reg(kRegPc)),
              std::tuple(StopReason::Halted, false, stop->pc));
    const uint32_t first = h.Word(h.Symbol("mailbox"));
    EXPECT_GE(first, 1000u);
    EXPECT_GE(stop->pc, h.Symbol("count_loop"));
    EXPECT_LT(stop->pc, h.Symbol("count_end"));

    // Going again continues counting; a halt right after go still stops.
    const uint64_t instructions = h.Target().InstructionCount();
    for (int i = 0; i < 20; ++i) {
        ASSERT_TRUE(h.Target().Go());
        ASSERT_TRUE(h.Target().Halt());
        stop = h.Next();
        ASSERT_TRUE(stop);
        EXPECT_EQ(stop->reason, StopReason::Halted);
    }
    EXPECT_TRUE(h.Target().WaitUntilHalted(std::chrono::milliseconds(0)));
    EXPECT_GE(h.Word(h.Symbol("mailbox")), first);
    EXPECT_GE(h.Target().InstructionCount(), instructions);

    // Destroying a running target stops it, and a run cut short so is not reported.
    ASSERT_TRUE(h.Target().Go());
    h.Destroy();
    EXPECT_FALSE(h.Next(std::chrono::milliseconds(0)));
}

// Signals when the callback that holds it is destroyed, which happens after the
// engine is gone.
struct Sentinel {
    std::promise<void> gone;
    ~Sentinel() { gone.set_value(); }
};

TEST(SimRun, TargetMayBeDestroyedFromItsOwnStopCallback)
{
    std::unique_ptr<SimTarget> target;
    std::promise<std::thread::id> destroyedOn;
    auto sentinel = std::make_shared<Sentinel>();
    auto released = sentinel->gone.get_future();
    SimTarget::Config config;
    config.onStop = [&, sentinel](const StopInfo& info) {
        if (info.reason == StopReason::Exit) {
            target.reset();
            destroyedOn.set_value(std::this_thread::get_id());
        }
    };
    target = SimTarget::Create(std::move(config));
    ASSERT_TRUE(target);
    ASSERT_TRUE(SimHarness::Download(*target, "hello"));
    ASSERT_TRUE(target->Go());
    sentinel.reset();
    auto done = destroyedOn.get_future();
    ASSERT_EQ(done.wait_for(std::chrono::seconds(20)), std::future_status::ready);
    EXPECT_NE(done.get(), std::this_thread::get_id());
    EXPECT_EQ(released.wait_for(std::chrono::seconds(20)), std::future_status::ready);
}

TEST(SimRun, ThrowingCallbacksDoNotReachTheSimulator)
{
    std::promise<StopInfo> stopped;
    int outputs = 0;
    SimTarget::Config config;
    config.onOutput = [&](std::string_view) {
        ++outputs;
        throw std::runtime_error("output window gone");
    };
    config.onStop = [&](const StopInfo& info) {
        if (info.reason == StopReason::Reset)
            throw std::runtime_error("not interested");
        stopped.set_value(info);
        throw std::runtime_error("still not interested");
    };
    auto target = SimTarget::Create(std::move(config));
    ASSERT_TRUE(target && SimHarness::Download(*target, "hello"));
    ASSERT_TRUE(target->Go());
    auto stop = stopped.get_future();
    ASSERT_EQ(stop.wait_for(std::chrono::seconds(20)), std::future_status::ready);
    const StopInfo info = stop.get();
    EXPECT_EQ(std::tuple(info.reason, info.exitCode, outputs), std::tuple(StopReason::Exit, 0, 3));
}

} // namespace
