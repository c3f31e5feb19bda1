// The simulator as a function-name platform, driven the way the debugger
// drives it: functions looked up by name and called as plain C functions.
#include <gtest/gtest.h>

#include <sstream>

#include "boundary/Ids.h"
#include "boundary/interfaces/PlatformFunctions.h"
#include "platform/catalog/DriverFactory.h"
#include "platform/catalog/PlatformList.h"
#include "platform/legacy/LegacyTargetDriver.h"
#include "platform/simdriver/InstalledPlatforms.h"
#include "workbench/Workbench.h"

namespace
{

struct Legacy : ::testing::Test {
    std::ostringstream out;
    Workbench workbench{out, nullptr, false};
    PlatformTable table = InstalledPlatforms();
    PlatformList list{table};
    DriverFactory factory{table};
    LegacyTargetDriver* driver = nullptr;
    IQPlatformFunctions* functions = nullptr;

    void SetUp() override
    {
        IUnknown* object = nullptr;
        ASSERT_EQ(factory.CreateTargetDriver("simulator-legacy", &workbench.Registry(), 0, 0, 0, &object),
                  S_OK);
        driver = static_cast<LegacyTargetDriver*>(static_cast<IQTargetCore*>(object));
        functions = GetServiceAs<IQPlatformFunctions>(&workbench.Registry(), Ids::IQPlatformFunctions);
        ASSERT_NE(functions, nullptr);
    }
    template <class Fn> Fn Function(const std::string& name)
    {
        void* pointer = nullptr;
        EXPECT_EQ(functions->GetFunction(name, pointer), S_OK) << name;
        return reinterpret_cast<Fn>(pointer);
    }
    std::string LastError()
    {
        std::string text;
        EXPECT_EQ(functions->GetLastErrorText(text), S_OK);
        return text;
    }
    // The error a function's result of 0 leaves behind.
    std::string Refused(int result) { return result == 0 ? LastError() : "succeeded"; }
    IUnknown* Service(const Guid& id)
    {
        IUnknown* service = nullptr;
        workbench.Registry().GetService(id, &service);
        return service;
    }
};

TEST_F(Legacy, OffersFunctionsAndTheMapsAreasInsteadOfPlatformMemory)
{
    EXPECT_TRUE(Service(Ids::ForwardTarget) != nullptr && Service(Ids::IQPlatformRegisters) != nullptr);
    for (const Guid& id : {Ids::IQPlatformMemory, Ids::IQPlatformMemory2, Ids::IQPlatformMemory3,
                           Ids::IQPlatformMemory4, Ids::IQPlatformMemory5})
        EXPECT_EQ(Service(id), nullptr);
    for (const char* name :
         {"IN1_Move", "IN1_Move2", "IN1_Move4", "IN1_Fill", "IN1_Get_MemNC", "IN1_Get_Mem2NC", "IN1_Put_Mem",
          "IN1_Put_Mem2", "IN1_Put_Mem4", "EXP_Eval", "EXP_Eval_FLOAT", "EXP_Eval_DOUBLE", "LOAD_ValToSym"})
        EXPECT_NE(Function<void*>(name), nullptr) << name;
    void* pointer = this;
    EXPECT_EQ(functions->GetFunction("IN1_Get_Mem4NC", pointer), E_FAIL);
    EXPECT_EQ(pointer, nullptr);
    EXPECT_EQ(LastError(), "Function IN1_Get_Mem4NC does not exist");

    // The areas are the memory map.
    auto* areas = static_cast<IQPlatformFreeRun*>(Service(Ids::IQPlatformFreeRun));
    ASSERT_NE(areas, nullptr);
    uint32_t count = 0;
    ASSERT_EQ(areas->GetAreaCount(count), S_OK);
    EXPECT_EQ(count, 4u);
    TargetAddress start = 0, end = 0;
    ASSERT_EQ(areas->GetAreaBounds(1, start, end), S_OK);
    EXPECT_EQ(std::pair(start.Value(), end.Value()), std::pair(0x20000000u, 0x2001FFFFu));
    ASSERT_EQ(areas->GetAreaBounds(0xFFFFFFFF, start, end), S_OK);
    EXPECT_EQ(std::pair(start.Value(), end.Value()), std::pair(0x08000000u, 0xE00FFFFFu));
    EXPECT_EQ(areas->GetAreaBounds(4, start, end), E_INVALIDARG);
}

TEST_F(Legacy, OnlyOneCanBeConnectedAtATime)
{
    IUnknown* second = functions;
    EXPECT_EQ(factory.CreateTargetDriver("simulator-legacy", &workbench.Registry(), 0, 0, 0, &second),
              E_FAIL);
    EXPECT_EQ(second, nullptr);
    EXPECT_EQ(Service(Ids::IQPlatformFunctions), functions) << "the first keeps its services";

    auto get = Function<PlatformMemoryAccessFn>("IN1_Get_MemNC");
    ASSERT_EQ(factory.ReleaseDriver(driver->Object(), -1), S_OK);
    EXPECT_TRUE(Service(Ids::IQPlatformFunctions) == nullptr && Service(Ids::IQPlatformFreeRun) == nullptr);
    uint8_t byte = 0;
    EXPECT_EQ(get(0x20000000, 1, &byte), 0) << "a function kept past the disconnection";

    IUnknown* again = nullptr;
    ASSERT_EQ(factory.CreateTargetDriver("simulator-legacy", &workbench.Registry(), 0, 0, 0, &again), S_OK);
    functions = GetServiceAs<IQPlatformFunctions>(&workbench.Registry(), Ids::IQPlatformFunctions);
    ASSERT_NE(functions, nullptr);
    EXPECT_EQ(LastError(), "No function-name target is connected");
}

TEST_F(Legacy, MemoryFunctionsMoveBytesInMemoryOrderFillAndMove)
{
    auto put4 = Function<PlatformMemoryAccessFn>("IN1_Put_Mem4");
    auto get2 = Function<PlatformMemoryAccessFn>("IN1_Get_Mem2NC");
    auto get = Function<PlatformMemoryAccessFn>("IN1_Get_MemNC");
    uint8_t bytes[8] = {1, 2, 3, 4, 5, 6, 7, 8};
    ASSERT_EQ(put4(0x20000100, 8, bytes), 1);
    uint8_t back[8] = {};
    ASSERT_EQ(get2(0x20000100, 8, back), 1);
    EXPECT_EQ(std::vector<uint8_t>(back, back + 8), std::vector<uint8_t>(bytes, bytes + 8));

    EXPECT_EQ(Refused(put4(0x20000100, 6, bytes)), "Length 6 is not a multiple of the access size 4");
    EXPECT_EQ(Refused(get(0x30000000, 1, back)), "Address H'30000000 is not mapped");
    EXPECT_EQ(Refused(get(0xFFFFFFFF, 2, back)), "The range runs past H'FFFFFFFF");

    // Fill and move.
    auto fill = Function<PlatformFillFn>("IN1_Fill");
    auto move = Function<PlatformMoveFn>("IN1_Move");
    auto move2 = Function<PlatformMoveFn>("IN1_Move2");
    ASSERT_EQ(fill(0x20000000, 0x20000009, 0x11223344, 4), 1);
    std::vector<uint8_t> filled(10);
    ASSERT_TRUE(driver->Target().ReadMemory(0x20000000, filled.size(), filled.data()));
    EXPECT_EQ(filled, (std::vector<uint8_t>{0x11, 0x22, 0x33, 0x44, 0x11, 0x22, 0x33, 0x44, 0x11, 0x22}))
        << "a big-endian target";
    EXPECT_EQ(Refused(fill(0x20000000, 0x20000007, 0, 5)), "Fill size 5 is not 1, 2, 3 or 4");

    // Overlapping, the destination above the source.
    ASSERT_EQ(move(0x20000000, 0x20000005, 0x20000002), 1);
    ASSERT_TRUE(driver->Target().ReadMemory(0x20000000, filled.size(), filled.data()));
    EXPECT_EQ(filled, (std::vector<uint8_t>{0x11, 0x22, 0x11, 0x22, 0x33, 0x44, 0x11, 0x22, 0x11, 0x22}));
    EXPECT_EQ(Refused(move2(0x20000000, 0x20000002, 0x20000100)),
              "Length 3 is not a multiple of the access size 2");
    EXPECT_EQ(Refused(move(0x2001FFF0, 0x2002000F, 0x20000000)), "Address H'20020000 is not mapped");
    ASSERT_EQ(move(0x20000000, 0x20000001, 0x20000100), 1);
    std::string text;
    EXPECT_EQ(functions->GetLastErrorText(text), E_FAIL) << "a success leaves no old error behind";
}

TEST_F(Legacy, EvalReadsExpressionsWithThePlatformsSymbolsAndReals)
{
    auto eval = Function<PlatformEvalFn>("EXP_Eval");
    auto toSymbol = Function<PlatformValToSymFn>("LOAD_ValToSym");
    driver->Platform().Symbols().Define("main", 0x08000100);
    struct Case {
        const char* text;
        int32_t radix;
        uint32_t value;
    };
    for (const Case& c :
         {Case{"10", 0, 0x10}, Case{"10", 10, 10}, Case{"10", 2, 2}, Case{"B'101", 16, 5},
          Case{"main+4", 0, 0x08000104}, Case{"-1", 10, 0xFFFFFFFF}, Case{"-2147483648", 10, 0x80000000}}) {
        uint32_t value = 0;
        EXPECT_EQ(eval(c.text, c.radix, 0, &value), 1) << c.text;
        EXPECT_EQ(value, c.value) << c.text;
    }
    struct Refusal {
        const char* text;
        int32_t radix;
        const char* error;
    };
    for (const Refusal& r : {Refusal{"nosuch", 0, "Undefined symbol"}, Refusal{"1+", 0, "Syntax error"},
                             Refusal{"1", 3, "Invalid radix 3"},
                             Refusal{"H'100000000", 0, "Result is too large for requested value"},
                             Refusal{"-2147483649", 10, "Result is too large for requested value"}}) {
        uint32_t value = 0x5A5A;
        EXPECT_EQ(Refused(eval(r.text, r.radix, 0, &value)), r.error) << r.text;
        EXPECT_EQ(value, 0x5A5Au) << "untouched";
    }
    EXPECT_STREQ(toSymbol(0, 0x08000100), "main");
    EXPECT_EQ(toSymbol(0, 0x08000104), nullptr);

    // Reals are read as numbers first (so decimal), or else as integer expressions, taken as signed.
    auto evalDouble = Function<PlatformEvalDoubleFn>("EXP_Eval_DOUBLE");
    auto evalFloat = Function<PlatformEvalFloatFn>("EXP_Eval_FLOAT");
    double wide = 0;
    const std::pair<const char*, double> reals[] = {
        {" 2.75 ", 2.75}, {"10", 10.0}, {"H'10+1", 17.0}, {"H'FFFFFFFF", -1.0}};
    for (const auto& [text, expected] : reals) {
        EXPECT_EQ(evalDouble(text, &wide), 1) << text;
        EXPECT_EQ(wide, expected) << text;
    }
    wide = 3;
    EXPECT_EQ(Refused(evalDouble("1e999", &wide)), "Result is too large for requested value")
        << "not read again as hexadecimal";
    EXPECT_EQ(wide, 3.0);

    float single = 0;
    ASSERT_EQ(evalFloat("-0.5", &single), 1);
    EXPECT_EQ(single, -0.5f);
    EXPECT_EQ(evalFloat("1e300", &single), 0);
    EXPECT_EQ(Refused(evalFloat("1.5.5", &single)), "Syntax error");
}

} // namespace
