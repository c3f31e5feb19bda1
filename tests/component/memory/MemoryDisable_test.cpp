#include <gtest/gtest.h>

#include "support/MemoryRig.h"

namespace
{

using ReadOp = HRESULT (CVELMemoryManager::*)(TargetAddress, TargetAddress, AccessSize, uint8_t*);

TEST(MemoryDisabled, ViewsReadAllOnesWithoutReachingTheTarget)
{
    const ReadOp reads[] = {&CVELMemoryManager::ReadMemory, &CVELMemoryManager::ReadMemoryValues,
                            &CVELMemoryManager::ReadMemoryDirect, &CVELMemoryManager::ReadMemoryValuesDirect};
    for (const auto read : reads) {
        MemoryRig rig({{0x1000, 0x1FFF}});
        rig.manager.DisableMemory();
        EXPECT_FALSE(rig.manager.WasAccessedWhileDisabled());
        Bytes out(16, 0);
        EXPECT_EQ((rig.manager.*read)(0x1000, 0x100F, 4, out.data()), S_OK);
        EXPECT_EQ(out, Bytes(16, 0xFF));
        EXPECT_TRUE(rig.manager.WasAccessedWhileDisabled());
        EXPECT_TRUE(rig.platform.log.empty());
        rig.manager.EnableMemory();
        EXPECT_FALSE(rig.manager.WasAccessedWhileDisabled());
        EXPECT_EQ(rig.Read(0x1000, 16), rig.platform.Bytes(0x1000, 16));
    }
}

TEST(MemoryDisabled, EverythingElseIsRefusedWithItsOwnText)
{
    MemoryRig rig({{0x1000, 0x1FFF}});
    rig.manager.DisableMemory();
    const HRESULT refused = rig.manager.GetDisabledCode();
    ASSERT_NE(refused, E_FAIL);
    std::string text;
    ASSERT_EQ(rig.errors.GetText(refused, text), S_OK);
    EXPECT_EQ(text, "Memory access has been disabled.");

    const Bytes data(4, 1);
    uint8_t a = 0, b = 0;
    TargetAddress at = 0;
    VariantBool failed = 0;
    int32_t w = 0, f = 0;
    const std::vector<HRESULT> answers{
        rig.manager.WriteMemory(0x1000, 0x1003, 1, data.data()),
        rig.manager.WriteMemoryValuesReporting(0x1000, 0x1003, 0, 1, data.data(), failed, at, w, f),
        rig.manager.FillMemory(0x1000, 0x1003, 1, data.data()),
        rig.manager.CopyMemorySimple(0x1000, 0x1003, 0x1800),
        rig.manager.CompareMemory(0x1000, 0x1003, 0x1800, 1, a, b, at),
        rig.manager.FindMemory(0x1000, 0x1003, 0, 0, 1, data.data(), nullptr, at),
        rig.manager.TestMemory(0x1000, 0x1003),
        rig.manager.RefreshMemory()};
    EXPECT_EQ(answers, std::vector<HRESULT>(8, refused));
    EXPECT_TRUE(rig.platform.log.empty());
    EXPECT_TRUE(rig.recorder.Lines().empty()) << "a refused operation is not recorded";
    EXPECT_TRUE(rig.manager.WasAccessedWhileDisabled());
}

TEST(MemoryDisabled, TheCommandLineGoesRoundIt)
{
    MemoryRig rig({{0x1000, 0x1FFF}});
    auto* line = QueryAs<IQMemoryManagerCmdLine5>(static_cast<IQMemoryManager*>(&rig.manager),
                                                  Ids::IQMemoryManagerCmdLine5);
    ASSERT_NE(line, nullptr);
    rig.manager.DisableMemory();
    Bytes out(16);
    EXPECT_EQ(line->ReadMemory(0x1000, 0x100F, 1, out.data()), S_OK);
    EXPECT_EQ(out, rig.platform.Bytes(0x1000, 16));
    const uint8_t pattern = 7;
    EXPECT_EQ(line->FillMemory(0x1000, 0x100F, 1, &pattern), S_OK);
    EXPECT_EQ(rig.platform.Bytes(0x1000, 16), Bytes(16, 7));
    EXPECT_TRUE(rig.manager.IsMemoryDisabled()) << "closed again after each call";
    EXPECT_FALSE(rig.manager.WasAccessedWhileDisabled());
    EXPECT_EQ(rig.Read(0x1000, 4), Bytes(4, 0xFF)) << "the ordinary face stays closed";
}

TEST(MemoryDisabled, AttachingDuringAConnectionIsNoAccessByAView)
{
    MemoryHost host;
    FakePlatformMemory platform({{0x1000, 0x1FFF}});
    platform.RegisterIn(host.registry);
    CVELMemoryManagerDisableAble manager(&host.registry);
    manager.DisableMemory();
    EXPECT_EQ(manager.AttachPlatform(&host.registry), S_OK);
    EXPECT_FALSE(manager.WasAccessedWhileDisabled());
}

} // namespace
