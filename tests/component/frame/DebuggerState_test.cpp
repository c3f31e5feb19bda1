// The debugger state meeting the workbench, leaving it, and picking its managers.
#include <gtest/gtest.h>

#include "component/frame/CUserPrompts.h"
#include "component/memory/CMemoryManager.h"
#include "component/session/CDyxSessionDataCommandSink.h"
#include "component/symbols/CLabelManager.h"
#include "component/symbols/CPDEvaluator.h"
#include "support/FakeRecentListStore.h"
#include "support/StateFixture.h"

namespace
{

using DebuggerState = StateFixture;

template <class T> std::vector<T> Reversed(std::vector<T> list)
{
    return std::vector<T>(list.rbegin(), list.rend());
}

const std::vector<Guid> kStateIds = {Ids::IQDebuggerState9, Ids::IQDebuggerState8, Ids::IQDebuggerState7,
                                     Ids::IQDebuggerState6, Ids::IQDebuggerState5, Ids::IQDebuggerState4,
                                     Ids::IQDebuggerState3, Ids::IQDebuggerState2, Ids::IQDebuggerState};
const std::vector<Guid> kMemoryIds = {Ids::IQMemoryManager,         Ids::IQMemoryManager2,
                                      Ids::IQMemoryManager3,        Ids::IQMemoryManager4,
                                      Ids::IQMemoryManager5,        Ids::IQMemoryManagerCmdLine,
                                      Ids::IQMemoryManagerCmdLine2, Ids::IQMemoryManagerCmdLine3,
                                      Ids::IQMemoryManagerCmdLine4, Ids::IQMemoryManagerCmdLine5};
const std::vector<Guid> kLabelIds = {Ids::IQLabelManager, Ids::IQLabelManager2, Ids::IQLabelManagerInternal};
const std::vector<Guid> kBreakIds = {Ids::IQPCBreakManager, Ids::IQPCBreakManager2, Ids::IQPCBreakManager3};

// The label manager's five commands, each offering its two command faces and
// its parameter text; going, each asks for the text first.
CallLog SymbolCommands(bool going = false)
{
    const CallLog faces = CommandFaces(going ? "UnregisterProvider" : "RegisterProvider", 1);
    const CallLog help = Each("GetService", {Ids::CommandHelpService});
    CallLog log;
    for (int i = 0; i < 5; ++i)
        log = log + (going ? help + faces : faces + help);
    return log;
}

TEST_F(DebuggerState, FalseFlagChangesNothing)
{
    EXPECT_EQ(state->Initialise(&registry, 0), S_OK);
    EXPECT_EQ(state->Terminate(0), S_OK);
    EXPECT_TRUE(log.empty());
    EXPECT_EQ(state->GetLabels(), nullptr);
}

TEST_F(DebuggerState, InitialiseFetchesThenRegistersInOrder)
{
    ASSERT_EQ(state->Initialise(&registry, 1), S_OK);
    EXPECT_EQ(log, CallLog{"QueryInterface HostExtras"} +
                       Each("GetService", {Ids::ErrorTable, Ids::PlatformList, Ids::DriverFactory,
                                           Ids::EditorService, Ids::SourceViewer, Ids::DisassemblyViewer}) +
                       Each("RegisterService", kStateIds) + Each("RegisterService", kLabelIds) +
                       SymbolCommands() + Each("RegisterService", kMemoryIds) +
                       Each("GetService", {Ids::ErrorTable, Ids::UserPromptTable}) +
                       Each("RegisterProvider", {Ids::IQPostMessageClient, Ids::IQFileMonitorClient}) +
                       Each("RegisterService", kBreakIds) +
                       Each("RegisterService",
                            {Ids::IQRunner, Ids::IQSourceManager, Ids::IQDebuggerApplicationServer}) +
                       Each("RegisterProvider", {Ids::IQStatusClient}));
    // The versions point at one face, the first version at the primary one.
    EXPECT_EQ(registry.Service(Ids::IQDebuggerState2), registry.Service(Ids::IQDebuggerState9));
    EXPECT_EQ(registry.Service(Ids::IQDebuggerState), static_cast<IQDebuggerState*>(state.get()));
    EXPECT_EQ(registry.Service(Ids::IQPCBreakManager3), state->GetBreakInterface());
    ASSERT_NE(state->GetLabels(), nullptr);
    EXPECT_FALSE(state->GetLabels()->IsPlatformFunctionFamily());
    EXPECT_FALSE(state->GetMemory()->IsPlatformFunctionFamily());
    EXPECT_EQ(state->GetEvaluator(), nullptr);
    void* labels = nullptr;
    EXPECT_EQ(state->QueryInterface(Ids::IQLabelManager2, &labels), S_OK);
    EXPECT_EQ(labels, state->GetLabelInterface()) << "the label faces are the label manager's";
}

TEST_F(DebuggerState, TerminateGivesEverythingBackInReverse)
{
    const size_t fixtureServices = registry.ServiceCount();
    ASSERT_EQ(state->Initialise(&registry, 1), S_OK);
    state->RegisterPrompts();
    state->RegisterErrorTexts();
    size_t mark = log.size();
    ASSERT_EQ(state->Terminate(1), S_OK);
    CallLog prompts;
    for (const char* name : {"Save memory", "Unload Program", "Load Program", "Initialize Target",
                             "Download modules after build", "Reload out-of-date download modules",
                             "Build out of date download modules", "Go when no programs downloaded",
                             "Command batch file does not exist"})
        prompts.push_back(std::string("DeletePrompt '") + name + "'");
    const CallLog expected =
        CallLog{"Broadcast {4A135B5C-8CD7-11D5-80DB-00C04F68EAD7}", "UnregisterProvider IQStatusClient",
                "GetService {374027C8-E512-4DB2-8531-38B08B323CF9}", "UnregisterService IQRunner"} +
        Each("UnregisterService", kBreakIds) +
        Each("UnregisterService", {Ids::IQSourceManager, Ids::IQDebuggerApplicationServer}) + prompts +
        Each("UnregisterProvider", {Ids::IQPostMessageClient, Ids::IQFileMonitorClient}) +
        Each("UnregisterService", Reversed(kStateIds)) + SymbolCommands(true) +
        Each("UnregisterService", Reversed(kLabelIds)) + Each("UnregisterService", Reversed(kMemoryIds)) +
        CallLog{"GetService ErrorTable"};
    EXPECT_EQ(Since(mark), expected);
    // The recording registry refuses an unregister of a pointer it does not
    // hold, so an empty registry proves every pointer matched.
    EXPECT_EQ(registry.ServiceCount(), fixtureServices) << "only the fixture's own services remain";
    EXPECT_EQ(registry.ProviderCount(), 0u);
    EXPECT_EQ(errors.Size(), 0u);
    EXPECT_TRUE(!state->GetLabels() && !state->GetMemory() && !state->GetRegistry());
}

// Notes what the state held when the family change reached the sink.
struct RecordingSink : CDyxSessionDataCommandSink {
    explicit RecordingSink(CDebuggerState& s) : state(s) {}
    void AddPlatformCommands() override { notes.push_back(Describe("add")); }
    void RemovePlatformCommands() override { notes.push_back(Describe("remove")); }
    std::string Describe(const char* what)
    {
        std::string labels =
            state.GetLabels() ? (state.GetLabels()->IsPlatformFunctionFamily() ? "PD" : "VEL") : "none";
        std::string memory =
            state.GetMemory() ? (state.GetMemory()->IsPlatformFunctionFamily() ? "PD" : "VEL") : "none";
        return std::string(what) + " labels=" + labels + " memory=" + memory +
               " evaluator=" + (state.GetEvaluator() ? "yes" : "no");
    }
    CDebuggerState& state;
    std::vector<std::string> notes;
};

TEST_F(DebuggerState, PlatformFamilyRebuildsManagersEveryTimeOnlyForFunctionPlatforms)
{
    ASSERT_EQ(state->Initialise(&registry, 1), S_OK);
    RecordingSink sink(*state);
    state->SetCommandSink(&sink);
    auto serials = [&] { return std::make_pair(state->GetLabels()->Serial(), state->GetMemory()->Serial()); };

    size_t mark = log.size();
    auto before = serials();
    state->SelectPlatformMode("");
    EXPECT_TRUE(Since(mark).empty()) << "an empty name is not asked about";
    state->SelectPlatformMode("sim");
    state->SelectPlatformMode("sim");
    EXPECT_EQ(serials(), before) << "the rich family twice keeps its managers";
    EXPECT_EQ(state->GetPlatformMode(), PLATFORM_MODE_VEL);

    state->SelectPlatformMode("pdsim");
    auto first = serials();
    EXPECT_NE(first.first, before.first);
    EXPECT_EQ(state->GetPlatformMode(), PLATFORM_MODE_PD);
    ASSERT_NE(state->GetEvaluator(), nullptr);
    uint64_t firstEvaluator = state->GetEvaluator()->Serial();
    state->SelectPlatformMode("pdsim");
    EXPECT_NE(serials().first, first.first) << "the function family is rebuilt at every call";
    EXPECT_NE(serials().second, first.second);
    EXPECT_NE(state->GetEvaluator()->Serial(), firstEvaluator);
    EXPECT_TRUE(state->UsesPlatformSymbols());

    state->SelectPlatformMode("sim");
    EXPECT_EQ(state->GetPlatformMode(), PLATFORM_MODE_VEL);
    EXPECT_EQ(state->GetEvaluator(), nullptr);
    EXPECT_FALSE(state->GetLabels()->IsPlatformFunctionFamily());

    // The sink hears of a change of family once each way: on the way in after
    // the new managers stand but before the evaluator, on the way out first.
    EXPECT_EQ(sink.notes, (std::vector<std::string>{"add labels=PD memory=PD evaluator=no",
                                                    "remove labels=PD memory=PD evaluator=yes"}));
    state->SetCommandSink(nullptr);
    state->Terminate(1);
}

TEST_F(DebuggerState, RadixIsRecordedAsACommandOnlyWhenItChanges)
{
    ASSERT_EQ(state->Initialise(&registry, 1), S_OK);
    state->SetRadix(16);
    EXPECT_TRUE(recorder.Lines().empty());
    EXPECT_EQ(evaluator.sets, 0);
    for (auto [radix, word] : {std::pair{2, "bin"}, {8, "oct"}, {10, "dec"}, {16, "hex"}}) {
        state->SetRadix(radix);
        EXPECT_EQ(recorder.Lines().back(), std::string("radix ") + word);
        EXPECT_EQ(evaluator.Radix(), radix);
    }
    state->SetRadix(7);
    EXPECT_EQ(evaluator.Radix(), 16) << "no such radix: nothing changes";
    recorder.SetLogging(false);
    state->SetRadix(2);
    EXPECT_EQ(recorder.Lines().size(), 4u);
    EXPECT_EQ(evaluator.Radix(), 2) << "with the log off the radix still changes";

    // In the function family the session's own evaluator holds the radix.
    state->SelectPlatformMode("pdsim");
    recorder.SetLogging(true);
    state->SetRadix(10);
    int32_t radix = 0;
    state->GetEvaluator()->GetRadix(radix);
    EXPECT_EQ(radix, 10);
    EXPECT_EQ(recorder.Lines().back(), "radix dec");
    EXPECT_EQ(log.back(), "Broadcast {34553FBB-CBBF-4EF1-BBAA-5C29633BF835}");
    state->Terminate(1);
}

TEST_F(DebuggerState, LookupsOutOfRangeFailWithANullPointer)
{
    IUnknown* program = reinterpret_cast<IUnknown*>(0x1);
    EXPECT_EQ(state->GetProgram(state->GetProgramCountA(), &program), E_FAIL);
    EXPECT_EQ(program, nullptr);
    std::string a = "x", b = "y";
    uint32_t low = 0, limit = 0xFFFFFFFF;
    EXPECT_EQ((std::vector<HRESULT>{state->GetProgramByName("main.elf", &program), state->IsConnectedA(),
                                    state->IsDisconnected(), state->IsTargetAbsent(), state->GetTargetKind(),
                                    state->GetTargetNames(a, b), state->ForwardToService(low, limit)}),
              (std::vector<HRESULT>{E_FAIL, E_FAIL, S_OK, S_OK, E_FAIL, S_FALSE, E_FAIL}));
}

} // namespace

namespace
{

// The recent lists are read once the questions exist and written back at the end,
// each under its own section.
TEST_F(DebuggerState, RecentListsComeFromTheStoreAndGoBackToIt)
{
    FakeRecentListStore recent;
    recent.values = {{{"MRU Program Save", "Files"}, "1"},
                     {{"MRU Program Save", "File1"}, "/fw/dump.bin"},
                     {{"MRU Program Save", "AddressEnd1"}, "-1"}};
    registry.Provide(Ids::RecentListService, &recent);
    StartSession();
    auto& lists = state->GetRecentLists();
    ASSERT_EQ(lists.MruProgramSave.Count(), 1u);
    EXPECT_EQ(lists.MruProgramSave.At(0).AddressEnd, 0xFFFFFFFFu);
    EXPECT_EQ(lists.MruProgramOpen.Count(), 0u);
    lists.MruProgramOpen.Add(std::make_unique<CMRUProgramOpen>("/fw/app.elf", "elf", 4, 0x8000));
    state->Terminate(1);
    for (const char* section :
         {"MRU Memory Load", "MRU Program Open", "MRU Program Save", "MRU Program Verify"})
        EXPECT_TRUE(recent.values.count(std::pair<std::string, std::string>(section, "Files"))) << section;
    EXPECT_EQ(recent.values[std::pair("MRU Program Open", "File1")], "/fw/app.elf");
    EXPECT_EQ(recent.values[std::pair("MRU Program Save", "File1")], "/fw/dump.bin");
}

} // namespace
