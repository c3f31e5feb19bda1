// Loading the resource module and checking what it says of itself.
#include <gtest/gtest.h>

#include <dlfcn.h>

#include "component/frame/CDllResource.h"
#include "component/frame/StringTable.h"
#include "support/Recording.h"

namespace
{

std::string Resmod(const std::string& name)
{
    return BinaryDirectory() + "/resmods/resmod_" + name + ".dll";
}

struct LoadCase {
    const char* module;
    const char* expectedError; // %s stands for the file name; empty: loads
};

TEST(DllResource, ChecksTypeThenVersionsAsNumbersAndProductAsText)
{
    const LoadCase cases[] = {
        {"good", ""},
        {"notype", "Dll %s is not a resources Dll"},
        {"wrongtype", "Dll %s is not a resources Dll"},
        {"product100", "Incorrect version of Resources - exiting"},
        {"interface20", "Incorrect version of Resources - exiting"},
        {"ordinal2", "Incorrect version of Resources - exiting"},
        {"noversion", "Cannot read the interface version of resource DLL %s"},
        {"absent", "Error loading resource DLL %s"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.module);
        std::string file = Resmod(c.module);
        std::string error;
        auto module = CDllResource::Load(file, error);
        std::string expected = c.expectedError;
        if (auto at = expected.find("%s"); at != std::string::npos)
            expected.replace(at, 2, file);
        EXPECT_EQ(error, expected);
        EXPECT_EQ(module != nullptr, expected.empty());
    }
}

TEST(DllResource, TooSmallBufferIsRetriedOnceWithAClearedBufferOfTheNamedSize)
{
    std::string file = Resmod("smallbuffer");
    std::string error;
    auto module = CDllResource::Load(file, error);
    ASSERT_TRUE(module) << error;
    using CountFn = int32_t (*)();
    auto calls = reinterpret_cast<CountFn>(dlsym(module->Handle(), "ResmodProductCalls"));
    auto lastSize = reinterpret_cast<CountFn>(dlsym(module->Handle(), "ResmodLastProductSize"));
    auto cleared = reinterpret_cast<CountFn>(dlsym(module->Handle(), "ResmodLastBufferCleared"));
    ASSERT_TRUE(calls && lastSize && cleared);
    EXPECT_EQ((std::vector<int32_t>{calls(), lastSize(), cleared()}), (std::vector<int32_t>{2, 2000, 1}));
    EXPECT_EQ(module->ProductVersion(), "1.0");
}

TEST(DllResource, InstalledModuleTellsItsVersionsAndIsTheSourceOfTextsUntilItGoes)
{
    ASSERT_EQ(StringTable::Load(57640), "Tessel Debugger");
    std::string error;
    auto module = CDllResource::Load(Resmod("good"), error);
    ASSERT_TRUE(module);
    EXPECT_EQ(module->InterfaceVersionText(), "1.0");
    EXPECT_EQ(module->OrdinalVersionText(), "1");
    EXPECT_TRUE(module->InterfaceAtLeast(0, 9) && module->InterfaceAtLeast(1, 0) &&
                module->InterfaceEquals(1, 0));
    EXPECT_FALSE(module->InterfaceAtLeast(1, 1));
    EXPECT_EQ(StringTable::Load(57640), "Tessel Debugger (from module)");
    // A number the module lacks falls back on the component's own table.
    EXPECT_EQ(StringTable::Load(5051), "Load Program");

    CDllResource copy(*module);
    EXPECT_NE(copy.Handle(), nullptr);
    EXPECT_EQ(copy.FileName(), module->FileName());
    module.reset();
    EXPECT_EQ(StringTable::Load(57640), "Tessel Debugger");
    // The copy holds its own handle: still usable after the original went.
    EXPECT_EQ(copy.LoadText(57640).value_or(""), "Tessel Debugger (from module)");
}

} // namespace
