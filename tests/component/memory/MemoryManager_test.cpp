#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <vector>

#include "component/memory/CPDMemoryManager.h"
#include "support/FakePlatformFunctions.h"
#include "workbench/CommandRecorder.h"
#include "workbench/ErrorTableService.h"
#include "workbench/ServiceRegistry.h"

namespace
{

using Calls = std::vector<std::string>;
using Bytes = std::vector<uint8_t>;

struct PdMemory : ::testing::Test {
    ServiceRegistry registry;
    ErrorTableService errors;
    CommandRecorder recorder;
    FakePlatformFunctions functions;
    FakeFreeRun map;
    std::unique_ptr<CPDMemoryManagerDisableAble> manager;

    void SetUp() override
    {
        FakePd::Reset();
        registry.RegisterService(Ids::ErrorTable, &errors);
        registry.RegisterService(Ids::IQCommandRecorder, &recorder);
        registry.RegisterService(Ids::IQPlatformFunctions, &functions);
        registry.RegisterService(Ids::IQPlatformFreeRun, &map);
        manager = std::make_unique<CPDMemoryManagerDisableAble>(&registry);
    }
    void Attach()
    {
        ASSERT_EQ(manager->AttachPlatform(&registry), S_OK);
        FakePd::State().calls.clear();
    }
    static const Calls& Made() { return FakePd::State().calls; }
    static Bytes Memory(uint32_t from, uint32_t count)
    {
        const auto& memory = FakePd::State().memory;
        return Bytes(memory.begin() + from, memory.begin() + from + count);
    }
};

TEST_F(PdMemory, ReadsAndWritesGoToTheFunctionOfTheAccessSizeWithTheFullLength)
{
    struct Case {
        AccessSize size;
        const char* read;
        const char* write;
    };
    // 8 bytes have no function of their own: the third one takes the whole range.
    for (const Case& c : {Case{1, "IN1_Get_MemNC 0x10 16", "IN1_Put_Mem 0x10 16"},
                          Case{2, "IN1_Get_Mem2NC 0x10 16", "IN1_Put_Mem2 0x10 16"},
                          Case{4, "IN1_Get_MemNC 0x10 16", "IN1_Put_Mem4 0x10 16"},
                          Case{8, "IN1_Get_MemNC 0x10 16", "IN1_Put_Mem4 0x10 16"}}) {
        SCOPED_TRACE(c.size);
        FakePd::Reset();
        Attach();
        Bytes buffer(16);
        ASSERT_EQ(manager->ReadMemory(0x10, 0x1F, c.size, buffer.data()), S_OK);
        EXPECT_EQ(buffer, Memory(0x10, 16));
        Bytes data(16, 0x5A);
        ASSERT_EQ(manager->WriteMemory(0x10, 0x1F, c.size, data.data()), S_OK);
        EXPECT_EQ(Memory(0x10, 16), data);
        EXPECT_EQ(Made(), (Calls{c.read, c.write}));
    }
}

TEST_F(PdMemory, ValuesAreTurnedRoundElementByElement)
{
    Attach();
    struct Case {
        AccessSize size;
        TargetAddress end;
        Bytes expected;
    };
    for (const Case& c :
         {Case{1, 0x23, {0x20, 0x21, 0x22, 0x23}}, Case{2, 0x24, {0x21, 0x20, 0x23, 0x22, 0x24}},
          Case{4, 0x27, {0x23, 0x22, 0x21, 0x20, 0x27, 0x26, 0x25, 0x24}},
          Case{8, 0x27, {0x27, 0x26, 0x25, 0x24, 0x23, 0x22, 0x21, 0x20}}}) {
        SCOPED_TRACE(c.size);
        Bytes buffer(c.expected.size());
        ASSERT_EQ(manager->ReadMemoryValues(0x20, c.end, c.size, buffer.data()), S_OK);
        EXPECT_EQ(buffer, c.expected);
    }

    const Bytes values{1, 2, 3, 4, 5, 6};
    ASSERT_EQ(manager->WriteMemoryValues(0x40, 0x45, 4, values.data()), S_OK);
    EXPECT_EQ(Memory(0x40, 6), (Bytes{4, 3, 2, 1, 5, 6}));
    EXPECT_EQ(values, (Bytes{1, 2, 3, 4, 5, 6}));
}

TEST_F(PdMemory, FillBuildsItsNumberFromThePatternFirstByteLowest)
{
    Attach();
    const Bytes pattern{0x11, 0x22, 0x33, 0x44};
    const char* expected[] = {"IN1_Fill 0x100 0x107 0x11 1", "IN1_Fill 0x100 0x107 0x2211 2",
                              "IN1_Fill 0x100 0x107 0x332211 3", "IN1_Fill 0x100 0x107 0x44332211 4"};
    for (uint32_t length = 1; length <= 4; ++length) {
        FakePd::State().calls.clear();
        ASSERT_EQ(manager->FillMemory(0x100, 0x107, length, pattern.data()), S_OK);
        EXPECT_EQ(Made(), Calls{expected[length - 1]});
    }
    EXPECT_EQ(Memory(0x100, 8), (Bytes{0x11, 0x22, 0x33, 0x44, 0x11, 0x22, 0x33, 0x44}));
}

TEST_F(PdMemory, FillIsRecordedFirstAndAlwaysAsNoverify)
{
    Attach();
    const Bytes pattern{0x34, 0x12, 0x56, 0x78, 0x9A, 0xBC, 0xDE, 0xF0};
    manager->FillMemory(0x100, 0x10F, 2, pattern.data());
    manager->FillMemoryVerified(0x100, 0x10F, VARIANT_TRUE, 1, pattern.data());
    manager->FillMemory(0x100, 0x10F, 8, pattern.data());
    EXPECT_EQ(recorder.Lines(), (Calls{"memory_fill 0x100 0x10F 0x1234 word noverify",
                                       "memory_fill 0x100 0x10F 0x34 byte noverify",
                                       "memory_fill 0x100 0x10F 0xF0DEBC9A78561234 double noverify"}));
}

TEST_F(PdMemory, CopyPicksTheMoveOfItsAccessSizeAndClearsTheOutArguments)
{
    Attach();
    EXPECT_EQ(manager->CopyMemorySimple(0x10, 0x1F, 0x80), S_OK);
    EXPECT_EQ(Memory(0x80, 4), (Bytes{0x10, 0x11, 0x12, 0x13}));
    for (AccessSize size : {1, 2, 4, 8}) {
        uint8_t first = 0xAA, second = 0xAA;
        TargetAddress at = 0xAAAA;
        const HRESULT expected = size == 8 ? CPDMemoryManager::kCannotCopy : S_OK;
        EXPECT_EQ(manager->CopyMemory(0x10, 0x1F, 0x80, VARIANT_TRUE, size, first, second, at), expected);
        EXPECT_EQ(first + second + at.Value(), 0u);
    }
    EXPECT_EQ(Made(), (Calls{"IN1_Move 0x10 0x1F 0x80", "IN1_Move 0x10 0x1F 0x80", "IN1_Move2 0x10 0x1F 0x80",
                             "IN1_Move4 0x10 0x1F 0x80"}));
}

TEST_F(PdMemory, AreasComeFromThePlatformsMap)
{
    map.areas = {{0, 0xFF}, {0x1000, 0x1FFF}};
    Attach();
    uint32_t count = 0;
    TargetAddress start = 0, end = 0;
    EXPECT_EQ(manager->GetAreaCount(count), S_OK);
    EXPECT_EQ(count, 2u);
    EXPECT_EQ(manager->GetAreaBounds(1, start, end), S_OK);
    EXPECT_EQ(std::make_pair(start.Value(), end.Value()), std::make_pair(0x1000u, 0x1FFFu));

    registry.UnregisterService(Ids::IQPlatformFreeRun, &map);
    Attach();
    EXPECT_EQ(manager->GetAreaCount(count), E_FAIL);
    EXPECT_EQ(manager->GetAreaBounds(0, start, end), E_FAIL);
}

TEST_F(PdMemory, ErrorTextIsThePlatformsOrAGeneralOne)
{
    std::string text;
    EXPECT_EQ(manager->GetErrorText(CPDMemoryManager::kCannotRead, text), S_OK);
    EXPECT_EQ(text, "Target not responding");
    functions.errorTextFails = true;
    EXPECT_EQ(manager->GetErrorText(CPDMemoryManager::kCannotRead, text), S_OK);
    EXPECT_EQ(text, "Error accessing memory in target");
    registry.UnregisterService(Ids::IQPlatformFunctions, &functions);
    text.clear();
    EXPECT_EQ(manager->GetErrorText(0, text), S_OK);
    EXPECT_EQ(text, "Error accessing memory in target");
}

// Each way an operation can be refused before the platform is asked: by its
// arguments, by a function the platform lacks, or after a detach.
TEST_F(PdMemory, RefusalsMakeNoCall)
{
    const HRESULT kPatternTooLong = static_cast<HRESULT>(0x80043092u);
    const HRESULT read = CPDMemoryManager::kCannotRead, write = CPDMemoryManager::kCannotWrite;
    const HRESULT copy = CPDMemoryManager::kCannotCopy;
    Bytes buffer(16);
    const struct {
        const char* what;
        std::function<HRESULT(CPDMemoryManagerDisableAble&)> call;
        HRESULT refused;
    } rows[] = {
        {"read size 3", [&](auto& m) { return m.ReadMemory(0x10, 0x17, 3, buffer.data()); }, read},
        {"read size 16", [&](auto& m) { return m.ReadMemory(0x10, 0x17, 16, buffer.data()); }, read},
        {"write size 0", [&](auto& m) { return m.WriteMemory(0x10, 0x17, 0, buffer.data()); }, write},
        {"write size 3", [&](auto& m) { return m.WriteMemory(0x10, 0x17, 3, buffer.data()); }, write},
        {"fill of 8", [&](auto& m) { return m.FillMemory(0x100, 0x10F, 8, buffer.data()); }, kPatternTooLong},
        {"fill of 0", [&](auto& m) { return m.FillMemory(0x100, 0x10F, 0, buffer.data()); }, kPatternTooLong},
        {"read reversed", [&](auto& m) { return m.ReadMemory(0x20, 0x10, 1, buffer.data()); }, E_INVALIDARG},
        {"read everything", [&](auto& m) { return m.ReadMemory(0, 0xFFFFFFFF, 1, buffer.data()); },
         E_INVALIDARG},
        {"read nowhere", [&](auto& m) { return m.ReadMemory(0x10, 0x13, 1, nullptr); }, E_POINTER},
        {"values reversed", [&](auto& m) { return m.WriteMemoryValues(0x20, 0x10, 2, buffer.data()); },
         E_INVALIDARG},
        {"values from nowhere", [&](auto& m) { return m.WriteMemoryValues(0x10, 0x13, 2, nullptr); },
         E_POINTER},
        {"fill reversed", [&](auto& m) { return m.FillMemory(0x20, 0x10, 1, buffer.data()); }, E_INVALIDARG},
        {"fill of nothing", [&](auto& m) { return m.FillMemory(0x10, 0x20, 1, nullptr); }, E_POINTER},
        {"copy reversed", [&](auto& m) { return m.CopyMemorySimple(0x20, 0x10, 0); }, E_INVALIDARG},
    };
    Attach();
    for (const auto& row : rows)
        EXPECT_EQ(row.call(*manager), row.refused) << row.what;
    EXPECT_TRUE(Made().empty());

    // Without the word read, no read works at all, bytes included.
    for (const char* name : {"IN1_Get_Mem2NC", "IN1_Put_Mem4", "IN1_Move", "IN1_Fill"})
        functions.Withhold(name);
    map.areas = {{0, 0xFF}};
    for (bool detached : {false, true}) {
        SCOPED_TRACE(detached ? "detached" : "withheld");
        Attach();
        EXPECT_EQ(detached ? manager->DetachPlatform() : S_OK, S_OK);
        EXPECT_EQ(manager->ReadMemory(0x10, 0x13, 1, buffer.data()), read);
        EXPECT_EQ(manager->WriteMemory(0x10, 0x13, 1, buffer.data()), write);
        EXPECT_EQ(manager->CopyMemorySimple(0x10, 0x13, 0x20), copy);
        EXPECT_EQ(manager->FillMemory(0x10, 0x13, 1, buffer.data()), read);
        uint32_t count = 0;
        EXPECT_EQ(manager->GetAreaCount(count), detached ? E_FAIL : S_OK);
        EXPECT_TRUE(Made().empty());
    }
}

TEST_F(PdMemory, VerifiedAndReportingWritesDropVerifyAndClearFailed)
{
    Attach();
    IQMemoryManager5& five = *manager;
    const Bytes data{1, 2};
    VariantBool failed = VARIANT_TRUE;
    TargetAddress at = 7;
    int32_t written = 7, found = 7;
    EXPECT_EQ(five.WriteMemoryReporting(0x50, 0x51, VARIANT_TRUE, 1, data.data(), failed, at, written, found),
              S_OK);
    EXPECT_EQ(failed, VARIANT_FALSE);
    failed = VARIANT_TRUE;
    EXPECT_EQ(
        five.WriteMemoryValuesReporting(0x52, 0x53, VARIANT_TRUE, 2, data.data(), failed, at, written, found),
        S_OK);
    EXPECT_EQ(failed, VARIANT_FALSE);
    failed = VARIANT_TRUE;
    EXPECT_EQ(manager->FillMemoryEx(0x54, 0x55, VARIANT_TRUE, 1, data.data(), &failed, nullptr, nullptr,
                                    nullptr, 2),
              S_OK);
    EXPECT_EQ(failed, VARIANT_FALSE);
    EXPECT_EQ(Memory(0x50, 6), (Bytes{1, 2, 2, 1, 1, 1}));
    EXPECT_EQ(Made(), (Calls{"IN1_Put_Mem 0x50 2", "IN1_Put_Mem2 0x52 2", "IN1_Fill 0x54 0x55 0x1 1"}));
}

TEST_F(PdMemory, ClosedMemoryRefusesEveryWayToTheTargetAndNotesIt)
{
    Attach();
    manager->DisableMemory();
    EXPECT_FALSE(manager->WasAccessedWhileDisabled());
    const HRESULT code = manager->GetDisabledCode();

    IQMemoryManager5& five = *manager;
    Bytes buffer(16, 0x77);
    uint8_t first = 0, second = 0;
    TargetAddress at = 0;
    int32_t written = 0, found = 0;
    VariantBool failed = 0;
    const std::vector<HRESULT> answers{
        manager->ReadMemory(0x10, 0x1F, 1, buffer.data()),
        manager->ReadMemoryValues(0x10, 0x1F, 4, buffer.data()),
        five.ReadMemoryDirect(0x10, 0x1F, 1, buffer.data()),
        manager->WriteMemory(0x10, 0x1F, 1, buffer.data()),
        manager->WriteMemoryValues(0x10, 0x1F, 2, buffer.data()),
        five.WriteMemoryReporting(0x10, 0x1F, 0, 1, buffer.data(), failed, at, written, found),
        manager->WriteMemoryEx(0x10, 0x1F, 0, 1, buffer.data(), nullptr, nullptr, nullptr, nullptr, 0),
        manager->CopyMemorySimple(0x10, 0x1F, 0x80),
        five.CopyMemory(0x10, 0x1F, 0x80, 0, 1, first, second, at),
        manager->FillMemory(0x10, 0x1F, 1, buffer.data()),
        manager->FillMemoryEx(0x10, 0x1F, 0, 1, buffer.data(), nullptr, nullptr, nullptr, nullptr, 0)};
    EXPECT_EQ(answers, std::vector<HRESULT>(11, code));
    EXPECT_EQ(buffer, Bytes(16, 0x77)) << "no read filled the buffer";
    EXPECT_TRUE(Made().empty());
    EXPECT_TRUE(recorder.Lines().empty());
    EXPECT_TRUE(manager->WasAccessedWhileDisabled());

    manager->EnableMemory();
    EXPECT_FALSE(manager->WasAccessedWhileDisabled());
    EXPECT_EQ(manager->ReadMemory(0x10, 0x1F, 1, buffer.data()), S_OK);
}

TEST_F(PdMemory, TheCommandLineFacesGoRoundClosedMemory)
{
    Attach();
    manager->DisableMemory();
    IUnknown* unknown = static_cast<IQMemoryManager*>(manager.get());
    auto* five = QueryAs<IQMemoryManagerCmdLine5>(unknown, Ids::IQMemoryManagerCmdLine5);
    auto* one = QueryAs<IQMemoryManagerCmdLine>(unknown, Ids::IQMemoryManagerCmdLine);
    ASSERT_NE(five, nullptr);
    ASSERT_NE(one, nullptr);
    Bytes buffer(4);
    EXPECT_EQ(five->ReadMemoryValues(0x10, 0x13, 4, buffer.data()), S_OK);
    EXPECT_EQ(buffer, (Bytes{0x13, 0x12, 0x11, 0x10}));
    const uint8_t pattern = 0x99;
    EXPECT_EQ(one->FillMemory(0x30, 0x33, 1, &pattern), S_OK);
    EXPECT_EQ(Memory(0x30, 4), Bytes(4, 0x99));
    EXPECT_TRUE(manager->IsMemoryDisabled());
    EXPECT_FALSE(manager->WasAccessedWhileDisabled());
    // The ordinary face, even from inside a command, stays closed.
    EXPECT_EQ(manager->ReadMemory(0x10, 0x13, 1, buffer.data()), manager->GetDisabledCode());
}

} // namespace
