// The two label managers over the recording registry, and the symbol file.
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "component/command/symbol/CCmdLabelSymbolAdd.h"
#include "component/command/symbol/CCmdLabelSymbolClear.h"
#include "component/frame/CDebuggerState.h"
#include "component/symbols/CPDLabelManager.h"
#include "component/symbols/CVELLabelManager.h"
#include "component/symbols/SymbolFile.h"
#include "support/RecordingEvaluator.h"
#include "support/FakePlatformFunctions.h"
#include "support/Recording.h"
#include "support/TempFolder.h"
#include "workbench/CommandRecorder.h"

namespace
{

using Strings = std::vector<std::string>;

struct LabelManager : ::testing::Test {
    CallLog log;
    RecordingRegistry registry{log};
    CommandRecorder recorder;
    CDebuggerState owner;
    TempFolder folder;
    std::unique_ptr<CVELLabelManager> labels;

    LabelManager()
    {
        registry.Provide(Ids::IQCommandRecorder, &recorder);
        labels = std::make_unique<CVELLabelManager>(&registry, owner);
    }
    void Add(const std::string& name, uint32_t address)
    {
        ASSERT_EQ(labels->AddLabel({name, address}), S_OK);
    }
    // The address found by name, or -1.
    int64_t Address(CLabelManager& manager, const std::string& name, int32_t exact = 1)
    {
        LabelRecord record{name};
        return manager.FindLabelByName(record, exact) == S_OK ? int64_t{record.Address.Value()} : -1;
    }
    std::string Write(const std::string& text)
    {
        const std::string path = folder / "labels.sym";
        std::ofstream(path, std::ios::binary) << text;
        return path;
    }
    std::string Saved()
    {
        const std::string path = folder / "saved.sym";
        EXPECT_EQ(SaveSymbolFile(*labels, path), S_OK);
        std::stringstream text;
        text << std::ifstream(path).rdbuf();
        return text.str();
    }
};

TEST_F(LabelManager, LogsWhatAUserDoesBeforeDoingIt)
{
    Add("main", 0x1a);
    labels->SetDeferred(true);
    Add("from_reader", 4);
    labels->SetDeferred(false);
    EXPECT_EQ(labels->RemoveLabel("absent"), E_FAIL);
    EXPECT_EQ(labels->RemoveLabel("main"), S_OK);
    labels->ClearLabelsQuietly();
    EXPECT_EQ(labels->ClearLabels(), S_OK);
    recorder.SetLogging(false);
    Add("unlogged", 1);
    EXPECT_EQ(recorder.Lines(),
              (Strings{"symbol_add main 0x1A", "symbol_clear absent", "symbol_clear main", "symbol_clear"}));
    uint32_t count = 0;
    EXPECT_EQ(labels->GetLabelCount(count), S_OK);
    EXPECT_EQ(count, 1u) << "only the label added after both clears";
}

TEST_F(LabelManager, ModulesKeepTheirOwnLabels)
{
    labels->SetCurrentModule(7);
    Add("_MAIN", 0x700);
    labels->SetCurrentModule(8);
    Add("helper", 0x800);
    labels->SetCurrentModule(0);
    Add("_main", 0x100);
    TargetAddress entry;
    EXPECT_TRUE(labels->GetEntryLabelAddress(7, entry));
    EXPECT_EQ(entry.Value(), 0x700u);
    EXPECT_FALSE(labels->GetEntryLabelAddress(8, entry)) << "another module's _main does not count";
    EXPECT_EQ(labels->ReplaceLabel({"absent"}, {"x"}), QE_UNDEFINED_SYMBOL);
    EXPECT_EQ(Address(*labels, "_main"), 0x100);
}

TEST_F(LabelManager, IndexesPastTheEndFailEachInItsOwnWay)
{
    Add("b", 1);
    Add("a", 2);
    const LabelRecord* record = nullptr;
    LabelRecord copy;
    ASSERT_EQ(labels->GetLabelPointer(0, record), S_OK);
    EXPECT_EQ(record->Name, "a");
    ASSERT_EQ(labels->GetRecordByAddressIndex(0, record), S_OK);
    EXPECT_EQ(record->Name, "b");
    EXPECT_EQ(
        (std::vector<HRESULT>{labels->GetLabelPointer(2, record), labels->GetRecordByNameIndex(2, record),
                              labels->GetRecordByAddressIndex(2, record), labels->GetLabelCopy(2, copy)}),
        (std::vector<HRESULT>{1, 1, 1, E_FAIL}));
    EXPECT_EQ(record->Name, "b") << "a failed call leaves the pointer alone";
}

TEST_F(LabelManager, SavesInAddressOrderOldestFirst)
{
    Add("second at 10", 0x10);
    Add("top", 0xFFFFFFFF);
    Add("first", 0x10);
    Add("Zero", 0);
    EXPECT_EQ(Saved(),
              "BEGIN\n00000000H Zero\n00000010H second at 10\n00000010H first\nffffffffH top\nEND\n");
    EXPECT_EQ(SaveSymbolFile(*labels, folder / "no" / "such.sym"), E_FAIL);
}

TEST_F(LabelManager, LoadsBothLineEndingsAndKeepsDuplicates)
{
    Add("kept", 5);
    const std::string path =
        Write("BEGIN\r\n0000aBcDH with blank\r\n00000005H kept\nEND\r\n00000001H after\n");
    ASSERT_EQ(LoadSymbolFile(*labels, path, &registry), S_OK);
    EXPECT_EQ(log.back(), "Broadcast " + IdName(Ids::EVENT_LABELS_CHANGED));
    EXPECT_EQ(Saved(), "BEGIN\n00000005H kept\n00000005H kept\n0000abcdH with blank\nEND\n");
    EXPECT_EQ(recorder.Lines().back(), "symbol_add kept 0x5") << "a load goes through AddLabel";
}

TEST_F(LabelManager, RefusesAFileThatDoesNotBeginExactly)
{
    for (const std::string text : {"begin\n00000001H a\nEND\n", "", " BEGIN\n"})
        EXPECT_EQ(LoadSymbolFile(*labels, Write(text), &registry), E_FAIL) << text;
    EXPECT_EQ(LoadSymbolFile(*labels, folder / "missing.sym", &registry), E_FAIL);
    EXPECT_EQ(LoadSymbolFile(*labels, Write("BEGIN\n00000002H cut\n"), nullptr), S_OK);
    EXPECT_EQ(Saved(), "BEGIN\n00000002H cut\nEND\n");
    EXPECT_EQ(LoadSymbolFile(*labels, Write("BEGIN\nEND\n"), &registry), S_OK);
    EXPECT_EQ(log.back(), "Broadcast " + IdName(Ids::EVENT_LABELS_CHANGED));
}

TEST_F(LabelManager, SymbolCommandsTellTheViewsOfAChangeOnly)
{
    RecordingEvaluator numbers;
    registry.Provide(Ids::IQEvaluator2, numbers.Service());
    CCmdLabelSymbolAdd add(owner, *labels, &registry);
    CCmdLabelSymbolClear clear(owner, *labels, &registry);
    const struct {
        CCmd& command;
        const char* line;
        HRESULT result;
        bool told;
    } cases[] = {
        {add, "main 100", S_OK, true},
        {add, "main 104", S_OK, true},
        // Found ignoring case, but the replacement is asked for by the name as typed.
        {add, "MAIN 108", E_FAIL, false},
        {add, "main", E_FAIL, false},
        {clear, "nosuch", S_OK, false},
        {clear, "main", S_OK, true},
        {clear, "main", S_OK, false},
        {clear, "", S_OK, true},
        {clear, "a b", E_FAIL, false},
    };
    for (const auto& c : cases) {
        const size_t before = log.size();
        std::string message;
        bool continuing = true;
        EXPECT_EQ(c.command.Run(c.line, message, continuing), c.result) << c.line;
        EXPECT_EQ(log.size() > before && log.back() == "Broadcast " + IdName(Ids::EVENT_LABELS_CHANGED),
                  c.told)
            << c.line;
    }
}

TEST_F(LabelManager, PlatformFamilyAsksThePlatformOnceAttached)
{
    FakePd::Reset();
    FakePd::State().symbols = {{0x100, "reset"}, {0x200, "main"}};
    FakePlatformFunctions functions;
    FakeFreeRun list;
    list.labels = {{"reset", 0x100}, {"main", 0x200}};
    CPDLabelManager pd(nullptr, owner);
    const LabelRecord* record = nullptr;
    uint32_t count = 0;
    LabelRecord byAddress{"", 0x200};
    EXPECT_EQ(pd.FindLabelByAddress(byAddress), E_FAIL);
    EXPECT_EQ(pd.GetLabelCount(count), E_FAIL);
    EXPECT_EQ(Address(pd, "main"), -1);

    registry.Provide(Ids::IQPlatformFunctions, &functions);
    registry.Provide(Ids::IQPlatformFreeRun, &list);
    CPDLabelManager attached(&registry, owner);
    EXPECT_EQ(attached.OnPlatformAttached(&registry), S_OK);
    EXPECT_EQ(attached.FindLabelByAddress(byAddress), S_OK);
    EXPECT_EQ(byAddress.Name, "main");
    byAddress.Address = 0x300;
    EXPECT_EQ(attached.FindLabelByAddress(byAddress), E_FAIL);
    EXPECT_EQ(Address(attached, "MAIN", 0), -1) << "the platform knows one spelling";
    EXPECT_EQ(Address(attached, "reset", 0), 0x100);
    EXPECT_EQ(attached.GetLabelCount(count), S_OK);
    EXPECT_EQ(count, 2u);
    EXPECT_EQ(attached.GetRecordByNameIndex(1, record), S_OK);
    EXPECT_EQ(record->Name, "main");
    EXPECT_EQ(attached.GetRecordByAddressIndex(0, record), E_FAIL);
    for (HRESULT changed : {attached.AddLabel({"x"}), attached.RemoveLabel("main"), attached.ClearLabels(),
                            attached.ReplaceLabel({"main"}, {"x"})})
        EXPECT_EQ(changed, E_FAIL);
    TargetAddress entry;
    EXPECT_FALSE(attached.GetEntryLabelAddress(0, entry));

    functions.Withhold("LOAD_SymToVal");
    EXPECT_EQ(attached.OnPlatformAttached(&registry), S_OK);
    EXPECT_EQ(Address(attached, "main"), -1) << "a platform without the function finds no name";
}

} // namespace
