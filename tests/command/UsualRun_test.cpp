// A command run in the usual order: what the user reads for each kind of line,
// and which lines reach the manager.
#include <gtest/gtest.h>

#include "boundary/Ids.h"
#include "support/TestCommands.h"
#include "tests/component/support/FakeEvaluator.h"

namespace
{

struct RunCase {
    const char* line;
    HRESULT hr;
    const char* message;
    const char* call; // what the manager was asked, or "" for nothing
};

class UsualRun : public ::testing::Test
{
protected:
    UsualRun()
    {
        host.RegisterService(Ids::IQEvaluator2, &evaluator);
        host.RegisterService(Ids::TimingService, &timing);
    }
    std::pair<HRESULT, std::string> Run(CCmd& cmd, const std::string& line)
    {
        std::string message, prompt;
        VariantBool continuing = 0, pending = 0;
        HRESULT hr = cmd.ExecuteCommand(line, message, prompt, continuing, pending, nullptr);
        return {hr, message};
    }
    FakeEvaluator evaluator;
    FakeBatchState timing;
    FakeManager manager;
    CommandHost host;
};

TEST_F(UsualRun, EachFailedArgumentIsNamedInItsMessage)
{
    const RunCase cases[] = {
        {"pf", E_FAIL, "Parameter '<start>' is empty", ""},
        {"pf \"100\" 200", E_FAIL, "Parameter '<start>' is empty", ""},
        {"pf zz 200", E_FAIL, "Parameter '<start>' is invalid", ""},
        {"pf 0 100000000", E_FAIL, "Parameter '<end>' must be in range H'0 (0) to H'FFFFFFFF (4294967295)",
         ""},
        {"pf 0 10 200 word", E_FAIL, "Parameter '<count>' must be in range H'1 (1) to H'100 (256)", ""},
        {"pf 0 10 zz", E_FAIL, "Too many parameters", ""},
        {"pf 0 10 4 long x", E_FAIL, "Too many parameters", ""},
        {"pf 0 10", S_OK, "", "0..16 x1 byte"},
        {"pf 0 10 word", S_OK, "", "0..16 x1 word"},
        {"pf {0} 10 4 L \t", S_OK, "", "0..16 x4 long"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.line);
        ProbeCommand cmd(&host, manager, CCmdBaseTiming::TimingCheck::NotAroundDownload);
        manager.calls.clear();
        auto [hr, message] = Run(cmd, c.line);
        EXPECT_EQ(hr, c.hr);
        EXPECT_EQ(message, c.message);
        EXPECT_EQ(manager.calls, std::string(c.call).empty() ? std::vector<std::string>{}
                                                             : std::vector<std::string>{c.call});
    }
}

TEST_F(UsualRun, AFailingManagerIsExplainedByItsOwnText)
{
    ProbeCommand cmd(&host, manager, CCmdBaseTiming::TimingCheck::NotAroundDownload);
    manager.result = QE_NOT_CONNECTED;
    manager.texts[QE_NOT_CONNECTED] = "Not connected";
    EXPECT_EQ(Run(cmd, "pf 0 1"), std::make_pair(E_FAIL, std::string("Not connected")));
}

} // namespace
