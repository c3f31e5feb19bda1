// The session controller installing the texts: resource module, questions and
// error texts.
#include <gtest/gtest.h>

#include <filesystem>

#include "component/frame/CDllResource.h"
#include "component/frame/ErrorTexts.h"
#include "component/program/CDownloadModuleFileManager.h"
#include "component/session/CDyxSessionDataCtrl.h"
#include "support/StateFixture.h"
#include "support/TempFolder.h"

namespace fs = std::filesystem;

namespace
{

struct SessionCtrl : StateFixture {
    std::unique_ptr<CDyxSessionDataCtrl> ctrl =
        std::make_unique<CDyxSessionDataCtrl>(*state, state->GetRunner());
    TempFolder folder;
    const fs::path temp = folder.Path();

    void TearDown() override { CDyxSessionDataCtrl::OverrideModulePath(std::nullopt); }
    void Start()
    {
        ASSERT_EQ(state->Initialise(&registry, 1), S_OK);
        ASSERT_EQ(ctrl->Initialise(&registry, 1), S_OK);
    }
    void Stop()
    {
        state->Terminate(1);
        ctrl->Terminate(1);
    }
    // Puts a module, under the resource module's file name, in the folder of a
    // pretended component file.
    void PretendComponentBeside(const std::string& module)
    {
        fs::copy_file(BinaryDirectory() + "/resmods/resmod_" + module + ".dll", temp / "DebuggerExtRes.dll");
        CDyxSessionDataCtrl::OverrideModulePath((temp / "libtessel-debugger.so").string());
    }
};

TEST_F(SessionCtrl, InstallsTheModuleThenRegistersQuestionsInOrder)
{
    Start();
    ASSERT_NE(ctrl->Resource(), nullptr) << (messages.shown.empty() ? "" : messages.shown[0]);
    EXPECT_TRUE(messages.shown.empty());
    CallLog added;
    for (const auto& line : log)
        if (line.rfind("AddPrompt", 0) == 0)
            added.push_back(line);
    EXPECT_EQ(added, (CallLog{
                         "AddPrompt Component 'Load Program' 0",
                         "AddPrompt Component 'Unload Program' 0",
                         "AddPrompt Component 'Save memory' 0",
                         "AddPrompt Component 'Initialize Target' 1",
                         "AddPrompt Component 'Download modules after build' 1",
                         "AddPrompt Component 'Reload out-of-date download modules' 1",
                         "AddPrompt Component 'Build out of date download modules' 1",
                         "AddPrompt Component 'Go when no programs downloaded' 1",
                         "AddPrompt Component 'Command batch file does not exist' 1",
                         // The file manager's, for debug-only projects.
                         "AddPrompt Component 'Do not show Debug only workspace browse dialog on download' 0",
                         "AddPrompt Component 'Show message when cancelling directory browse dialog' 1",
                         "AddPrompt Component 'Show Dialog to search on OK for directory browse dialog' 1",
                     }));
    // The session's file list comes from the controller's file manager while it lives.
    ASSERT_NE(ctrl->FileManager(), nullptr);
    ctrl->FileManager()->SetDebugOnlyProjects({"blinky"});
    EXPECT_TRUE(ctrl->FileManager()->IsDebugOnlyProject("blinky"));
    Variant list;
    EXPECT_EQ(state->GetFileList(list), E_FAIL) << "no module of the project was downloaded";
    Stop();
    EXPECT_EQ(ctrl->Resource(), nullptr);
    EXPECT_EQ(state->AddDownloadFile("main.c"), E_FAIL) << "no file manager any more";
}

TEST_F(SessionCtrl, ErrorTableKeepsATextAnotherComponentEnteredFirst)
{
    const HRESULT taken = static_cast<HRESULT>(0x80040901u);
    errors.AddText(taken, "Another component's syntax error");
    Start();
    // The rows, and the memory manager's own text for a refused access.
    EXPECT_EQ(errors.Size(), ErrorTexts::RowCount() + 1);
    std::string text;
    EXPECT_EQ(errors.GetText(taken, text), S_OK);
    EXPECT_EQ(text, "Another component's syntax error");
    EXPECT_LT(state->GetErrorText(0x1234, text), 0) << "a code with no row has no text";

    Stop();
    EXPECT_EQ(errors.Size(), 1u) << "only what this component entered is removed";
    EXPECT_EQ(errors.GetText(taken, text), S_OK);
}

TEST_F(SessionCtrl, TwoSessionsShareTheTextsUntilTheLastLeaves)
{
    Start();
    CDebuggerState second;
    CDyxSessionDataCtrl secondCtrl(second, second.GetRunner());
    ASSERT_EQ(second.Initialise(&registry, 1), S_OK);
    ASSERT_EQ(secondCtrl.Initialise(&registry, 1), S_OK);
    Stop();
    EXPECT_EQ(errors.Size(), 102u) << "the rows and the second manager's text stay";
    second.Terminate(1);
    secondCtrl.Terminate(1);
    EXPECT_EQ(errors.Size(), 0u);
}

TEST_F(SessionCtrl, AWrongModuleIsReportedAndTheSessionRunsOnOwnTexts)
{
    // The module's own checks are the resource module tests'; here, that the
    // controller reports them and goes on.
    PretendComponentBeside("product100");
    Start();
    EXPECT_EQ(messages.shown, (std::vector<std::string>{"Incorrect version of Resources - exiting"}));
    EXPECT_EQ(ctrl->Resource(), nullptr);
    std::string text;
    EXPECT_EQ(errors.GetText(static_cast<HRESULT>(0x80040904u), text), S_OK);
    EXPECT_EQ(text, "Divide by zero");
    EXPECT_EQ(prompts.names.rbegin()->second, "Show Dialog to search on OK for directory browse dialog");
    Stop();
}

TEST_F(SessionCtrl, NoOwnFileNameGivesTheTwoMessages)
{
    CDyxSessionDataCtrl::OverrideModulePath(std::string());
    Start();
    EXPECT_EQ(messages.shown, (std::vector<std::string>{"Cannot obtain module. File name missing.\nPlease "
                                                        "read User Guide to create/install a new version.",
                                                        "Application will now exit"}));
    Stop();
}

} // namespace
