#include <gtest/gtest.h>

#include "support/MemoryRig.h"

namespace
{

using CanTest = HRESULT (CVELMemoryManager::*)();
const CanTest kCans[] = {&CVELMemoryManager::GetCanCompare,       &CVELMemoryManager::GetCanCopy,
                         &CVELMemoryManager::GetCanFill,          &CVELMemoryManager::GetCanFind,
                         &CVELMemoryManager::GetCanFindAlternate, &CVELMemoryManager::GetCanVerify,
                         &CVELMemoryManager::GetCanTest};

TEST(MemoryAttach, WhatIsOfferedComesFromTheSecondGeneration)
{
    for (uint32_t bit = 0; bit < 7; ++bit) {
        MemoryHost host;
        FakePlatformMemory platform({{0x1000, 0x1FFF}});
        platform.offered = 1u << bit;
        platform.RegisterIn(host.registry);
        CVELMemoryManager manager(&host.registry);
        ASSERT_EQ(manager.AttachPlatform(&host.registry), S_OK);
        uint32_t asked = 0;
        for (const auto can : kCans)
            EXPECT_EQ((manager.*can)(), asked++ == bit ? S_OK : S_FALSE)
                << "offered " << bit << ", asked " << asked - 1;
    }
}

TEST(MemoryAttach, TheFirstGenerationAloneOffersNothingButReadAndWrite)
{
    MemoryRig rig({{0x1000, 0x1FFF}}, {1});
    for (const auto can : kCans)
        EXPECT_EQ((rig.manager.*can)(), 1);
    uint8_t a = 0, b = 0;
    TargetAddress at = 0;
    EXPECT_EQ(rig.manager.CompareMemory(0x1000, 0x100F, 0x1800, 1, a, b, at), E_FAIL);
    EXPECT_EQ(rig.manager.FindMemoryEx(0x1000, 0x100F, 0, 0, 0, 1, &a, nullptr, at), E_FAIL);
    EXPECT_EQ(rig.manager.CompareMemorySimple(0x1000, 0x100F, 0x1800), S_OK);
    EXPECT_EQ(rig.platform.log, (Log{"Compare1 0x1000..0x100F"}));
}

TEST(MemoryAttach, AreaBoundsOfTheWholeMap)
{
    MemoryRig empty({});
    TargetAddress start = 1, end = 1;
    EXPECT_EQ(empty.manager.GetAreaBounds(0xFFFFFFFF, start, end), S_OK);
    EXPECT_EQ(std::make_pair(start.Value(), end.Value()), std::make_pair(0u, 0u));

    MemoryRig rig({{0x2000, 0x2FFF}, {0x1000, 0x10FF}, {0x8000, 0x80FF}});
    EXPECT_EQ(rig.manager.GetAreaBounds(0xFFFFFFFF, start, end), S_OK);
    EXPECT_EQ(std::make_pair(start.Value(), end.Value()), std::make_pair(0x1000u, 0x80FFu));
    EXPECT_EQ(rig.manager.GetAreaBounds(1, start, end), S_OK);
    EXPECT_EQ(start, 0x1000u);
    EXPECT_EQ(rig.manager.GetAreaBounds(3, start, end), E_INVALIDARG);
}

TEST(MemoryAttach, ReloadReadsTheMapAnewAndDetachForgetsThePlatform)
{
    MemoryRig rig({{0x1000, 0x1FFF}});
    rig.Read(0x1000, 4);
    rig.platform.areas.push_back({0x4000, 0x4FFF});
    ASSERT_EQ(rig.manager.ReloadAreas(), S_OK);
    uint32_t count = 0;
    rig.manager.GetAreaCount(count);
    EXPECT_EQ(count, 2u);
    rig.Read(0x1000, 4);
    EXPECT_EQ(rig.platform.log, (Log{"Read2 0x1000..0x1FFF", "Refresh2 0x0..0x0", "Read2 0x1000..0x1FFF"}));

    ASSERT_EQ(rig.manager.DetachPlatform(), S_OK);
    HRESULT hr = S_OK;
    rig.Read(0x1000, 4, 1, &hr);
    EXPECT_EQ(hr, E_FAIL);
    EXPECT_EQ(rig.manager.GetCanTest(), S_FALSE);
    rig.manager.GetAreaCount(count);
    EXPECT_EQ(count, 0u);
}

TEST(MemoryAttach, ErrorTextsAndDownloadModeComeFromThePlatform)
{
    MemoryRig rig({{0x1000, 0x1FFF}});
    std::string text;
    EXPECT_EQ(rig.manager.GetErrorText(MakeResult(0x80043092u), text), S_OK);
    EXPECT_EQ(text, "platform says 0x80043092");
    // The manager's own codes are the error table's, not the platform's.
    rig.errors.AddText(CVELMemoryManager::kWriteOutsideMap, "Not enough memory");
    EXPECT_EQ(rig.manager.GetErrorText(CVELMemoryManager::kWriteOutsideMap, text), S_OK);
    EXPECT_EQ(text, "Not enough memory");
    EXPECT_EQ(rig.manager.SetDownloadMode(true), S_OK);
    EXPECT_EQ(rig.manager.SetDownloadMode(false), S_OK);
    EXPECT_EQ(rig.platform.log,
              (Log{"SetDownloadMode2 0xFFFFFFFF..0xFFFFFFFF", "SetDownloadMode2 0x0..0x0"}));

    rig.manager.DetachPlatform();
    EXPECT_EQ(rig.manager.GetErrorText(E_FAIL, text), E_FAIL);
    EXPECT_EQ(rig.manager.SetDownloadMode(true), E_FAIL);
}

TEST(MemoryRecording, OperationsAreRecordedAsTheCommandsThatDoTheSame)
{
    MemoryRig rig({{0x1000, 0x1FFF}});
    uint8_t a = 0, b = 0;
    TargetAddress at = 0;
    rig.manager.CompareMemorySimple(0x1000, 0x10FF, 0x1800);
    rig.manager.CompareMemory(0x1000, 0x10FF, 0x1800, 4, a, b, at);
    rig.manager.CopyMemorySimple(0x1000, 0x10FF, 0x1A00);
    rig.manager.CopyMemory(0x1000, 0x10FF, 0x1800, VARIANT_TRUE, 2, a, b, at);
    rig.manager.CopyMemory(0x1000, 0x10FF, 0x1800, 1, 3, a, b, at);
    const Bytes pattern{0x0A, 0xB0, 0x01, 0x00};
    rig.manager.FillMemory(0x1000, 0x10FF, 4, pattern.data());
    rig.manager.FillMemoryVerified(0x1000, 0x10FF, VARIANT_TRUE, 2, pattern.data());
    rig.manager.FillMemoryVerified(0x1000, 0x10FF, VARIANT_TRUE, 8, Bytes(8, 0xF0).data());
    EXPECT_EQ(rig.recorder.Lines(), (std::vector<std::string>{
                                        "memory_compare 0x1000 0x10FF 0x1800",
                                        "memory_compare 0x1000 0x10FF 0x1800 long",
                                        "memory_move 0x1000 0x10FF 0x1A00 noverify byte",
                                        "memory_move 0x1000 0x10FF 0x1800 verify word",
                                        "memory_move 0x1000 0x10FF 0x1800 noverify ",
                                        "memory_fill 0x1000 0x10FF 0x01B0A long noverify",
                                        "memory_fill 0x1000 0x10FF 0xB0A word verify",
                                        "memory_fill 0x1000 0x10FF 0xF0F0F0F0F0F0F0F0 double verify",
                                    }));
}

} // namespace
