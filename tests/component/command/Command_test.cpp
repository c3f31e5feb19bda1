// A command as the workbench sees it: registration, names and the exchange of lines.
#include <gtest/gtest.h>

#include "boundary/ComUtils.h"
#include "boundary/Ids.h"
#include "support/TestCommands.h"

namespace
{

struct Reply {
    HRESULT hr;
    std::string message;
    std::string prompt = "untouched";
    VariantBool continuing = 0x1234;
    VariantBool pending = 0x1234;
};

Reply Execute(CCmd& cmd, const std::string& line, IQCmdCompletionSink* sink = nullptr)
{
    Reply r{};
    r.hr = cmd.ExecuteCommand(line, r.message, r.prompt, r.continuing, r.pending, sink);
    return r;
}

TEST(CommandRegistration, ProvidersAndHelpComeWithTheCommandAndGoWithIt)
{
    HelpRecordingRegistry host;
    {
        RecordingCommand cmd(&host, true, std::vector<std::string>{"initialise", "initialize", "in"},
                             "<no parameters>");
        IUnknown* self = static_cast<IQCmdClient2*>(&cmd);
        EXPECT_EQ(host.providers[Ids::IQCmdClient], std::vector<IUnknown*>{self});
        EXPECT_EQ(host.providers[Ids::IQCmdClient2], std::vector<IUnknown*>{self});
        EXPECT_EQ(host.log, (std::vector<std::string>{"register IQCmdClient", "register IQCmdClient2",
                                                      "add help initialise 0", "add help initialize 1",
                                                      "add help in 1"}));
        EXPECT_EQ(host.help.count({"initialise", "<no parameters>", 0}), 1u);
        host.log.clear();
    }
    EXPECT_EQ(host.log, (std::vector<std::string>{"remove help initialise 0", "remove help initialize 1",
                                                  "remove help in 1", "unregister IQCmdClient",
                                                  "unregister IQCmdClient2"}));
    EXPECT_TRUE(host.providers[Ids::IQCmdClient].empty() && host.providers[Ids::IQCmdClient2].empty() &&
                host.help.empty());
}

TEST(CommandRegistration, AMissingHelpServiceOrHostIsNoObstacle)
{
    HelpRecordingRegistry host(false);
    RecordingCommand helpless(&host, true, "go", "", "");
    EXPECT_EQ(host.providers[Ids::IQCmdClient2].size(), 1u);
    RecordingCommand alone(nullptr, true, "go", "", "");
    EXPECT_EQ(Execute(alone, "go x").hr, S_OK);
    EXPECT_EQ(alone.runTexts, std::vector<std::string>{"x"});
}

TEST(CommandLine, OnlyABlankEndsTheNameThatIsStripped)
{
    const struct {
        bool strip;
        const char* line;
        const char* runText;
    } cases[] = {
        {true, "md", ""},      {true, "md 100 20", "100 20"}, {true, "md  100", " 100"},
        {true, "md\t100", ""}, {true, "md\t100 20", "20"},    {false, "md 1 2", "md 1 2"},
    };
    HelpRecordingRegistry host;
    for (const auto& c : cases) {
        SCOPED_TRACE(c.line);
        RecordingCommand cmd(&host, c.strip, "md", "", "");
        EXPECT_EQ(host.help.size(), 1u) << "no abbreviation, no entry for one";
        Reply r = Execute(cmd, c.line);
        EXPECT_EQ(r.hr, S_OK);
        EXPECT_EQ(r.message, "done");
        EXPECT_EQ(cmd.runTexts, std::vector<std::string>{c.runText});
    }
}

TEST(CommandLine, ResultAndPendingComeBackAndTheSinkIsKept)
{
    struct Sink : IQCmdCompletionSink {
        HRESULT QueryInterface(const Guid&, void**) override { return E_NOINTERFACE; }
        TESSEL_NOT_REFCOUNTED
        HRESULT OnCommandComplete(const std::string&, HRESULT) override { return S_OK; }
    } sink;
    RecordingCommand cmd(nullptr, true, "go", "", "");
    cmd.startPending = true;
    cmd.result = E_FAIL;
    Reply r = Execute(cmd, "go", &sink);
    EXPECT_EQ(std::tie(r.hr, r.pending, r.continuing, r.prompt),
              std::make_tuple(E_FAIL, VariantBool{VARIANT_TRUE}, VariantBool{VARIANT_FALSE}, "untouched"));
    EXPECT_EQ(cmd.CompletionSink, &sink);

    cmd.startPending = false;
    r = Execute(cmd, "go");
    EXPECT_EQ(r.pending, VARIANT_FALSE) << "each line starts not pending";
    EXPECT_EQ(cmd.CompletionSink, nullptr);
}

TEST(CommandLine, ContinuationSendsWholeLinesUntilTheTerminator)
{
    RecordingCommand cmd(nullptr, true, std::vector<std::string>{"memory_edit"}, "", "edit>", ".");
    cmd.startContinuing = true;
    Reply r = Execute(cmd, "memory_edit 100");
    EXPECT_EQ(r.continuing, VARIANT_TRUE);
    EXPECT_EQ(r.prompt, "edit>");

    r = Execute(cmd, "memory_edit 55");
    EXPECT_EQ(r.continuing, VARIANT_TRUE);
    EXPECT_EQ(r.message, "more");
    r = Execute(cmd, ". ");
    EXPECT_EQ(r.continuing, VARIANT_TRUE) << "the terminator is compared exactly";
    r = Execute(cmd, ".");
    EXPECT_EQ(r.continuing, VARIANT_FALSE);
    EXPECT_EQ(r.prompt, "untouched");
    EXPECT_EQ(cmd.runTexts, std::vector<std::string>{"100"});
    EXPECT_EQ(cmd.continueLines, (std::vector<std::string>{"memory_edit 55", ". ", "."}));

    cmd.startContinuing = false;
    Execute(cmd, "memory_edit 200");
    EXPECT_EQ(cmd.runTexts.back(), "200") << "after the terminator lines go to Run again";
}

} // namespace
