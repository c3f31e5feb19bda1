// Memory kept closed while a connection's batch files run: views read 0xFF,
// the batch's own commands reach the target, and the views are told to read
// again only if one of them was turned away.
#include <gtest/gtest.h>

#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

#include "boundary/interfaces/Command.h"
#include "component/memory/CMemoryManager.h"
#include "support/FakeStore.h"
#include "support/StateFixture.h"

namespace fs = std::filesystem;

namespace
{

struct QuietCommandLine : IQCommandLineService {
    HRESULT QueryInterface(const Guid&, void** out) override
    {
        *out = nullptr;
        return E_NOINTERFACE;
    }
    TESSEL_NOT_REFCOUNTED
    HRESULT RunBatchFile(const std::string&) override { return S_OK; }
    HRESULT GetQuotingVersion(int32_t& v) override
    {
        v = 65535;
        return S_OK;
    }
};

struct MemoryHold : StateFixture {
    FakeStore store{log};
    QuietCommandLine commandLine;
    fs::path dir;

    void SetUp() override
    {
        char pattern[] = "/tmp/tessel-hold-XXXXXX";
        ASSERT_NE(mkdtemp(pattern), nullptr);
        dir = pattern;
        std::ofstream(dir / "boot.qdc") << "md 0x20000000\n";
        registry.Provide(Ids::IQDebugSettingsStore, static_cast<IQDebugSettingsStore*>(&store));
        registry.Provide(Ids::IQTargetRegistry, static_cast<IQTargetRegistry*>(&store));
        registry.Provide(Ids::CommandLineService, &commandLine);
        ASSERT_EQ(state->Initialise(&registry, 1), S_OK);
        registry.deliverTo = state.get();
        state->RegisterPrompts();
        state->SetSessionKey("boards", "blinky", "Debug", "default");
        store.text["platform"] = "sim";
    }
    void TearDown() override
    {
        state->Terminate(1);
        fs::remove_all(dir);
    }
    // What a memory view gets for four bytes through the ordinary face.
    std::vector<uint8_t> ViewRead()
    {
        std::vector<uint8_t> bytes(4, 0x11);
        EXPECT_EQ(state->GetMemoryInterface()->ReadMemory(0x20000000, 0x20000003, 1, bytes.data()), S_OK);
        return bytes;
    }
    size_t MemoryChangedCount() const
    {
        return std::count(log.begin(), log.end(), "Broadcast " + Ids::EVENT_MEMORY_CHANGED.ToText());
    }
};

TEST_F(MemoryHold, ViewsReadFFUntilTheBatchIsOverThenReadAgain)
{
    store.number["disablemem"] = 1;
    state->SetCommandFiles({{(dir / "boot.qdc").string(), 0}});
    ASSERT_EQ(state->Connect(), S_OK);
    CMemoryManager* memory = state->GetMemory();
    ASSERT_TRUE(memory->IsMemoryDisabled()) << "closed while the batch has not run";
    EXPECT_EQ(ViewRead(), std::vector<uint8_t>(4, 0xFF));

    // The batch's commands go round the closed state.
    void* face = nullptr;
    ASSERT_EQ(memory->QueryInterface(Ids::IQMemoryManagerCmdLine5, &face), S_OK);
    std::vector<uint8_t> bytes(4, 0x11);
    static_cast<IQMemoryManagerCmdLine5*>(face)->ReadMemory(0x20000000, 0x20000003, 1, bytes.data());
    EXPECT_NE(bytes, std::vector<uint8_t>(4, 0xFF));
    EXPECT_TRUE(memory->IsMemoryDisabled()) << "a command opens memory only for its own call";

    const size_t before = MemoryChangedCount();
    state->OnEvent(Event{Ids::EVENT_BATCH_FINISHED, 0});
    EXPECT_FALSE(memory->IsMemoryDisabled());
    EXPECT_EQ(MemoryChangedCount(), before + 1) << "the view that was turned away reads again";
}

TEST_F(MemoryHold, NoViewReadMeansNoNewsAfterTheBatch)
{
    store.number["disablemem"] = 1;
    state->SetCommandFiles({{(dir / "boot.qdc").string(), 0}});
    ASSERT_EQ(state->Connect(), S_OK);
    const size_t before = MemoryChangedCount();
    state->OnEvent(Event{Ids::EVENT_BATCH_FINISHED, 0});
    EXPECT_FALSE(state->GetMemory()->IsMemoryDisabled());
    EXPECT_EQ(MemoryChangedCount(), before);
}

TEST_F(MemoryHold, WithoutAConnectionFileTheOptionChangesNothing)
{
    store.number["disablemem"] = 1;
    ASSERT_EQ(state->Connect(), S_OK);
    EXPECT_FALSE(state->GetMemory()->IsMemoryDisabled());
    EXPECT_FALSE(state->GetMemory()->WasAccessedWhileDisabled());
}

TEST_F(MemoryHold, AFailedConnectionLeavesMemoryOpen)
{
    store.number["disablemem"] = 1;
    store.text["platform"] = "nosuch";
    state->SetCommandFiles({{(dir / "boot.qdc").string(), 0}});
    EXPECT_NE(state->Connect(), S_OK);
    EXPECT_FALSE(state->GetMemory()->IsMemoryDisabled()) << "nothing is left to wait for";
}

} // namespace
