// The debug menu's rules: which commands can run in which state of the
// session, which entries are marked, and refusals of commands that cannot run.
#include <gtest/gtest.h>

#include "component/run/CRunner.h"
#include "component/run/RunState.h"
#include "support/StateFixture.h"

namespace
{

struct DebugCommands : StateFixture {
    void SetUp() override { StartSession(); }
    void TearDown() override { state->Terminate(1); }
    // The ids enabled now, in the table's order.
    std::vector<uint32_t> Enabled()
    {
        std::vector<uint32_t> ids;
        for (const DebugCommandRow& row : DebugCommandTable::Rows())
            if (state->GetDebugCommands().IsEnabled(row.id))
                ids.push_back(row.id);
        return ids;
    }
};

TEST_F(DebugCommands, EachStateOfTheSessionEnablesItsOwnCommands)
{
    // Always: radix (an evaluator is there), evaluate, step modes, breakpoints.
    const std::vector<uint32_t> always = {32814, 32815, 32816, 32817, 32818, 32820, 32821, 32822, 32796};
    const auto with = [&](std::vector<uint32_t> ids) {
        ids.insert(ids.end(), always.begin(), always.end());
        std::vector<uint32_t> ordered;
        for (const DebugCommandRow& row : DebugCommandTable::Rows())
            if (std::find(ids.begin(), ids.end(), row.id) != ids.end())
                ordered.push_back(row.id);
        return ordered;
    };
    // A platform named but not connected: Go lights up, for the run connects first.
    store.number["noauto"] = VARIANT_TRUE;
    ASSERT_EQ(state->OpenSession(true, false, false), S_OK);
    ASSERT_FALSE(state->IsConnected());
    EXPECT_EQ(Enabled(), with({32798, 32799, 32800, 32824, 32783}));

    ASSERT_EQ(state->Connect(), S_OK);
    EXPECT_EQ(Enabled(), with({32798, 32799, 32800, 32803, 39517, 39518, 39519, 39520, 32819, 32823, 32954,
                               32797, 32783}));

    state->GetRunner()->SetRunState(RUN_GOING);
    EXPECT_EQ(Enabled(), with({39521, 32807, 32797})) << "running: halt, and nothing that needs a stop";
    EXPECT_EQ(state->GetDebugCommands().Run(32799), E_FAIL);
    state->GetRunner()->SetRunState(RUN_HALTED);

    registry.SetBusy(Ids::BusyLoad);
    EXPECT_FALSE(state->GetDebugCommands().IsEnabled(32783)) << "no settings while a load holds the mark";
    registry.ClearBusy(Ids::BusyLoad);
}

TEST_F(DebugCommands, TheRadixAndStepModeInForceAreMarked)
{
    DebugCommandTable& menu = state->GetDebugCommands();
    EXPECT_TRUE(menu.IsChecked(32814) && !menu.IsChecked(32815)) << "hexadecimal to begin with";
    ASSERT_EQ(menu.Run(32815), S_OK);
    EXPECT_TRUE(menu.IsChecked(32815) && !menu.IsChecked(32814));
    EXPECT_EQ(recorder.Lines().back(), "radix dec");
    EXPECT_TRUE(menu.IsChecked(32820));
    ASSERT_EQ(menu.Run(32822), S_OK);
    EXPECT_TRUE(menu.IsChecked(32822) && !menu.IsChecked(32820));
    EXPECT_EQ(menu.StepMode(), 2);
}

} // namespace
