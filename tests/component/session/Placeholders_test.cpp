// Placeholders in stored file names.
#include <gtest/gtest.h>

#include "boundary/interfaces/Workspace.h"
#include "component/session/PlaceholderExpander.h"
#include "support/Recording.h"

namespace
{

struct FakeWorkspace : IQWorkspaceInfo, IQCustomPlaceholders {
    using In = const std::string&;
    using Out = std::string&;
    FAKE_WITHOUT_INTERFACES
    static HRESULT Give(Out out, In v)
    {
        out = v;
        return v.empty() ? E_FAIL : S_OK;
    }
    HRESULT GetInstallDirectory(Out d) override { return Give(d, "/opt/tessel"); }
    HRESULT GetTempDirectory(Out d) override { return Give(d, "/tmp"); }
    HRESULT GetActiveConfiguration(Out n) override { return Give(n, "Debug"); }
    HRESULT GetActiveProject(Out n) override { return Give(n, "blinky"); }
    HRESULT GetActiveWorkspace(Out n) override { return Give(n, open ? "boards" : ""); }
    HRESULT GetConfigurationName(In, In, In c, Out n) override { return Give(n, c); }
    HRESULT GetProjectName(In, In p, Out n) override { return Give(n, p); }
    HRESULT GetWorkspaceName(In w, Out n) override { return Give(n, w); }
    // A directory under /work, none without a workspace.
    static std::string Under(In w, const std::string& rest) { return w.empty() ? "" : "/work/" + w + rest; }
    HRESULT GetConfigurationDirectory(In w, In p, In c, Out d) override
    {
        return Give(d, Under(w, "/" + p + "/" + c));
    }
    HRESULT GetProjectDirectory(In w, In p, Out d) override { return Give(d, Under(w, "/" + p)); }
    HRESULT GetWorkspaceDirectory(In w, Out d) override { return Give(d, Under(w, "")); }
    HRESULT IsWorkspaceOpen() override { return open ? S_OK : S_FALSE; }
    // clang-format off
    HRESULT GetGlobalPlaceholders(Map& map) override { map = global; return S_OK; }
    HRESULT GetWorkspacePlaceholders(In, Map& map) override { map = local; return S_OK; }
    // clang-format on
    bool open = true;
    Map global{
        {"BOARD", "stm32"}, {"FILENAME", "custom loses"}, {"LOOP", "$(LOOP)"}, {"A", "$(B)"}, {"B", "b"}};
    Map local{{"BOARD", "local loses"}, {"PROBE", "swd"}};
};

struct Placeholders : ::testing::Test {
    CallLog log;
    RecordingRegistry registry{log};
    FakeWorkspace workspace;
    Placeholders()
    {
        registry.Provide(Ids::IQWorkspaceInfo, static_cast<IQWorkspaceInfo*>(&workspace));
        registry.Provide(Ids::CustomPlaceholders, static_cast<IQCustomPlaceholders*>(&workspace));
    }
};

TEST_F(Placeholders, TableNamesExpandLongOrShortInAnyCase)
{
    PlaceholderExpander expander(&registry);
    const std::string file = "/src/app/main.c";
    const std::pair<const char*, const char*> cases[] = {
        {"$(FULLFILE)", "/src/app/main.c"},
        {"$(fn)", "main.c"},
        {"$(FileLeaf).o", "main.o"},
        {"$(FD)/x", "/src/app/x"},
        {"$(EXTENSION)", ".c"},
        {"$(WORKSPDIR)/out", "/work/boards/out"},
        {"$(PD)", "/work/boards/blinky"},
        {"$(PN)-$(CN)", "blinky-Debug"},
        {"$(TD)", "/tmp"},
        {"$(VELDIR)", "/opt/tessel"},
        {"$(LINE) $(ED)", "$(LINE) $(EXEDIR)"},
        {"$(USERINPUT:Board?)", "$(USERINPUT:Board?)"},
        {"$(WINDIR)", "$(WINDIR)"},
        {"$(BOARD)-$(PROBE)", "stm32-swd"},
        {"$(FILENAME)", "main.c"},
    };
    for (const auto& [text, expected] : cases)
        EXPECT_EQ(expander.Expand(text, file), expected) << text;
}

TEST_F(Placeholders, WhatCannotExpandStaysOrVanishesAndValuesAreNotExpandedAgain)
{
    PlaceholderExpander expander(&registry);
    const std::pair<const char*, const char*> cases[] = {
        {"a$$(FN)b", "a$$(FN)b"}, {"$(FN", "$(FN"},         {"x$()y", "xy"},
        {"x$(NOSUCH)y", "xy"},    {"$(FN)", "$(FILENAME)"}, {"$(", "$("},
        {"$(LOOP)!", "$(LOOP)!"}, {"$(A)$(B)", "$(B)b"}, // values are not expanded again
    };
    for (const auto& [text, expected] : cases)
        EXPECT_EQ(expander.Expand(text), expected) << text << " (no file given)";
}

TEST_F(Placeholders, NamesGivenExplicitlyWinOverTheActiveOnes)
{
    PlaceholderExpander expander(&registry);
    EXPECT_EQ(expander.ExpandFor("$(WD)|$(PN)|$(CN)", "lab", "motor", "Release"), "/work/lab|motor|Release");
    EXPECT_EQ(expander.ExpandFor("$(PN)", "", "", ""), "blinky");
}

TEST_F(Placeholders, WithoutAWorkspaceOnlyTheTableAnswers)
{
    workspace.open = false;
    PlaceholderExpander expander(&registry);
    EXPECT_EQ(expander.Expand("$(WD)$(BOARD)"), "$(WORKSPDIR)");
    PlaceholderExpander bare(nullptr);
    EXPECT_EQ(bare.Expand("$(PROJDIR)/$(FN)", "a/b.c"), "$(PROJDIR)/b.c");
}

} // namespace
