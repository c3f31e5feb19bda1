#include <gtest/gtest.h>

#include <cmath>
#include <memory>

#include "component/frame/CDebuggerState.h"
#include "component/symbols/CPDEvaluator.h"
#include "support/FakePlatformFunctions.h"
#include "support/RecordingComponent.h"
#include "workbench/EvaluatorHost.h"
#include "workbench/ServiceRegistry.h"

namespace
{

using Calls = std::vector<std::string>;

// The text an operation gives, or "failed:" and what was in the out argument.
#define TEXT(call)                                                                                           \
    [&] {                                                                                                    \
        std::string t = "untouched";                                                                         \
        return evaluator->call == S_OK ? t : "failed:" + t;                                                  \
    }()

struct PdEvaluator : ::testing::Test {
    ServiceRegistry registry;
    EvaluatorHost host{registry};
    FakePlatformFunctions functions;
    FakeForwardTarget limits;
    std::vector<std::string> broadcasts;
    RecordingComponent events{"event", broadcasts};
    CDebuggerState state;
    std::unique_ptr<CPDEvaluator> evaluator;

    void SetUp() override
    {
        FakePd::Reset();
        registry.RegisterService(Ids::IQEvaluatorHost, &host);
        registry.RegisterService(Ids::IQPlatformFunctions, &functions);
        ASSERT_EQ(state.Initialise(&registry, 1), S_OK);
        registry.AddComponent(&events);
        evaluator = std::make_unique<CPDEvaluator>(&registry, state);
        evaluator->AttachPlatform();
    }
    void TearDown() override
    {
        evaluator.reset();
        registry.RemoveComponent(&events);
        state.Terminate(1);
    }
    IQEvaluator2* InFront() { return GetServiceAs<IQEvaluator2>(&registry, Ids::IQEvaluator2); }
    static const Calls& Made() { return FakePd::State().calls; }
};

TEST_F(PdEvaluator, NumbersAreWrittenWithTheRadixPrefixAtTheWidthOfTheirSize)
{
    EXPECT_EQ(TEXT(UInt32ToText(0x1234, 16, t)), "H'00001234");
    EXPECT_EQ(TEXT(UInt8ToText(static_cast<uint8_t>(0x12F), 16, t)), "H'2F");
    EXPECT_EQ(TEXT(UInt16ToText(10, 10, t)), "D'00010");
    EXPECT_EQ(TEXT(UInt16ToText(8, 8, t)), "O'000010");
    EXPECT_EQ(TEXT(UInt8ToText(5, 2, t)), "B'00000101");
    EXPECT_EQ(TEXT(AddressToText(0x10, 8, VARIANT_FALSE, t)), "O'00000000020");
    EXPECT_EQ(TEXT(AddressToTextHex(0xABCDEF, VARIANT_FALSE, t)), "H'00ABCDEF");
    // Signed values are written as their sign extension to 32 bits, wider than their width.
    EXPECT_EQ(TEXT(Int8ToText(-1, 16, t)), "H'FFFFFFFF");
    EXPECT_EQ(TEXT(Int16ToText(-2, 10, t)), "D'4294967294");
    EXPECT_EQ(TEXT(Int32ToText(-1, 8, t)), "O'37777777777");
    // 64-bit values: the width of 8 bytes, the low half only.
    EXPECT_EQ(TEXT(UInt64ToText(0x100000005ull, 16, t)), "H'0000000000000005");
    EXPECT_EQ(TEXT(Int64ToText(-1, 10, t)), "D'00000000004294967295");
    EXPECT_EQ(TEXT(UInt64ToText(1, 2, t)), "B'00000000000000000000000000000001");
    EXPECT_EQ(TEXT(FloatToText(2.75f, 16, t)), "H'00000002");
    EXPECT_EQ(TEXT(FloatToText(-2.75f, 16, t)), "H'FFFFFFFE");
    EXPECT_EQ(TEXT(DoubleToText(3e9, 10, t)), "D'00000000003000000000");
    EXPECT_EQ(TEXT(DoubleToText(std::nan(""), 16, t)), "H'0000000000000000");
    EXPECT_EQ(TEXT(DoubleToText(1e300, 16, t)), "H'00000000FFFFFFFF");
}

TEST_F(PdEvaluator, RadixZeroMeansTheCurrentOneAndAnUnknownRadixCannotBeWritten)
{
    evaluator->SetRadix(10);
    EXPECT_EQ(TEXT(UInt16ToText(10, 0, t)), "D'00010");
    EXPECT_EQ(TEXT(UInt32ToText(1, 7, t)), "failed:untouched");
    EXPECT_EQ(TEXT(Int64ToText(1, 36, t)), "failed:untouched");
    evaluator->SetRadix(5);
    EXPECT_EQ(TEXT(UInt8ToText(1, 0, t)), "failed:untouched");
}

TEST_F(PdEvaluator, SetRadixStoresAnyValueAndTellsEveryone)
{
    int32_t radix = 0;
    EXPECT_EQ(evaluator->GetRadix(radix), S_OK);
    EXPECT_EQ(radix, 16);
    events.onEvent = [](const Event& event) { EXPECT_EQ(event.id, Ids::EVENT_RADIX_CHANGED); };
    for (int32_t value : {8, 99}) {
        broadcasts.clear();
        EXPECT_EQ(evaluator->SetRadix(value), S_OK);
        EXPECT_EQ(broadcasts, Calls{"event:" + std::to_string(value)});
        evaluator->GetRadix(radix);
        EXPECT_EQ(radix, value);
    }
}

TEST_F(PdEvaluator, TextIsEvaluatedInTheRadixAskedOrThePlatformsDefault)
{
    std::vector<uint32_t> values(4);
    EXPECT_EQ(evaluator->TextToUInt32("10", values[0]), S_OK);
    EXPECT_EQ(evaluator->TextToAddressRadix("10", 8, values[1]), S_OK);
    EXPECT_EQ(evaluator->TextToUInt32Radix("10", 2, values[2]), S_OK);
    // A radix the platform has no digits for is left to its default (ten, here).
    EXPECT_EQ(evaluator->TextToUInt32Radix("10", 7, values[3]), S_OK);
    EXPECT_EQ(values, (std::vector<uint32_t>{16, 8, 2, 10}));
    evaluator->SetRadix(3);
    EXPECT_EQ(evaluator->TextToAddress("10", values[0]), S_OK);
    EXPECT_EQ(Made(), (Calls{"EXP_Eval 10 16 0", "EXP_Eval 10 8 0", "EXP_Eval 10 2 0", "EXP_Eval 10 0 0",
                             "EXP_Eval 10 0 0"}));
}

// What a parse into a T gives, as a wide value.
template <class T, class Parse> int64_t Parsed(Parse parse)
{
    T value{};
    EXPECT_EQ(parse(value), S_OK);
    return value;
}

TEST_F(PdEvaluator, ValuesAreCutToTheWidthOfTheOperation)
{
    auto& e = *evaluator;
    EXPECT_EQ(Parsed<uint8_t>([&](auto& v) { return e.TextToUInt8("1FF", v); }), 0xFF);
    EXPECT_EQ(Parsed<int8_t>([&](auto& v) { return e.TextToInt8Radix("80", 16, v); }), -128);
    EXPECT_EQ(Parsed<uint16_t>([&](auto& v) { return e.TextToUInt16("12345", v); }), 0x2345);
    EXPECT_EQ(Parsed<int16_t>([&](auto& v) { return e.TextToInt16("FFFF", v); }), -1);
    EXPECT_EQ(Parsed<int32_t>([&](auto& v) { return e.TextToInt32("FFFFFFFF", v); }), -1);
    EXPECT_EQ(Parsed<uint64_t>([&](auto& v) { return e.TextToUInt64("FFFFFFFF", v); }), 0xFFFFFFFF);
    // The high half of a 64-bit value is 0, not the sign.
    EXPECT_EQ(Parsed<int64_t>([&](auto& v) { return e.TextToInt64Radix("FFFFFFFF", 16, v); }), 0xFFFFFFFF);
}

TEST_F(PdEvaluator, AFailedEvaluationLeavesTheOutArgumentUntouched)
{
    // The fake platform writes garbage before it answers 0.
    uint32_t u32 = 7;
    int8_t i8 = 7;
    int64_t i64 = 7;
    float f = 7;
    double d = 7;
    EXPECT_EQ(evaluator->TextToUInt32("zz", u32), E_FAIL);
    EXPECT_EQ(evaluator->TextToInt8Radix("zz", 10, i8), E_FAIL);
    EXPECT_EQ(evaluator->TextToInt64("zz", i64), E_FAIL);
    EXPECT_EQ(evaluator->TextToFloat("zz", f), E_FAIL);
    EXPECT_EQ(evaluator->TextToDouble("zz", d), E_FAIL);
    EXPECT_EQ(u32 + i8 + i64, 21);
    EXPECT_EQ(f + d, 14.0);
}

TEST_F(PdEvaluator, FloatingTextGoesToItsOwnFunctions)
{
    float f = 0;
    double d = 0;
    EXPECT_EQ(evaluator->TextToFloat("2.5", f), S_OK);
    EXPECT_EQ(evaluator->TextToDouble("0.125", d), S_OK);
    EXPECT_EQ(std::make_pair(f, d), std::make_pair(2.5f, 0.125));
    EXPECT_EQ(Made(), (Calls{"EXP_Eval_FLOAT 2.5", "EXP_Eval_DOUBLE 0.125"}));
}

TEST_F(PdEvaluator, ASymbolReplacesTheNumberOnlyWhenAskedWithMinusOne)
{
    FakePd::State().symbols[0x100] = "main";
    EXPECT_EQ(TEXT(AddressToText(0x100, 16, VARIANT_TRUE, t)), "main");
    EXPECT_EQ(TEXT(FormatAddress(0x100, VARIANT_TRUE, VARIANT_FALSE, VARIANT_TRUE, t)), "main");
    EXPECT_EQ(TEXT(AddressToTextHex(0x104, VARIANT_TRUE, t)), "H'00000104");
    EXPECT_EQ(Made(), (Calls{"LOAD_ValToSym 0 0x100", "LOAD_ValToSym 0 0x100", "LOAD_ValToSym 0 0x104"}));
    FakePd::State().calls.clear();
    EXPECT_EQ(TEXT(AddressToText(0x100, 16, 1, t)), "H'00000100");
    EXPECT_EQ(TEXT(FormatAddress(0x100, 1, VARIANT_FALSE, VARIANT_FALSE, t)), "00000100");
    EXPECT_TRUE(Made().empty());
}

TEST_F(PdEvaluator, BetweenDetachAndAttachTextFailsAndNumbersHaveNoSymbols)
{
    FakePd::State().symbols[0x100] = "main";
    evaluator->DetachPlatform();
    uint32_t value = 7;
    float f = 7;
    EXPECT_EQ(evaluator->TextToUInt32("10", value), E_FAIL);
    EXPECT_EQ(evaluator->TextToFloat("1", f), E_FAIL);
    EXPECT_EQ(value, 7u);
    EXPECT_EQ(TEXT(AddressToText(0x100, 16, VARIANT_TRUE, t)), "H'00000100");
    EXPECT_TRUE(Made().empty());

    evaluator->AttachPlatform();
    EXPECT_EQ(TEXT(AddressToText(0x100, 16, VARIANT_TRUE, t)), "main");
    EXPECT_EQ(evaluator->TextToUInt32("10", value), S_OK);
}

TEST_F(PdEvaluator, FormatAddressSizesItselfByTheTargetsHighestAddress)
{
    evaluator->SetRadix(10); // not looked at: addresses are hexadecimal
    EXPECT_EQ(TEXT(FormatAddress(0x12, VARIANT_FALSE, VARIANT_TRUE, VARIANT_FALSE, t)), "00000012");
    registry.RegisterService(Ids::ForwardTarget, &limits);
    struct Case {
        uint32_t highest;
        const char* expected;
    };
    for (const Case& c : {Case{0xFF, "12"}, Case{0x100, "0012"}, Case{0xFFFF, "0012"},
                          Case{0xFFFFFF, "000012"}, Case{0x1000000, "00000012"}}) {
        limits.highest = c.highest;
        EXPECT_EQ(TEXT(FormatAddress(0x12, VARIANT_FALSE, VARIANT_TRUE, VARIANT_FALSE, t)), c.expected);
    }
    limits.highest = 0xFFFF;
    EXPECT_EQ(TEXT(FormatAddress(0x1000, VARIANT_FALSE, VARIANT_TRUE, VARIANT_FALSE, t)), "1000");
    EXPECT_EQ(TEXT(FormatAddress(0x1000, VARIANT_FALSE, VARIANT_FALSE, VARIANT_TRUE, t)), "H'00001000");
    EXPECT_EQ(TEXT(FormatAddress(0x1000, VARIANT_FALSE, 1, VARIANT_TRUE, t)), "H'00001000");
    limits.result = E_FAIL;
    EXPECT_EQ(TEXT(FormatAddress(0x12, VARIANT_FALSE, VARIANT_TRUE, VARIANT_TRUE, t)), "H'00000012");
    registry.UnregisterService(Ids::ForwardTarget, &limits);
}

TEST_F(PdEvaluator, IsTheWorkbenchsEvaluatorWhileAttachedAndNeverTakesAnothersPlace)
{
    EXPECT_EQ(InFront(), evaluator.get());
    evaluator->DetachPlatform();
    EXPECT_EQ(InFront(), nullptr);

    CPDEvaluator other(&registry, state);
    other.AttachPlatform();
    evaluator->DetachPlatform();
    EXPECT_EQ(InFront(), &other);
    evaluator->AttachPlatform();
    EXPECT_EQ(InFront(), evaluator.get());
    // Going away while attached leaves the place to the one it covered.
    evaluator.reset();
    EXPECT_EQ(InFront(), &other);
    other.DetachPlatform();
    EXPECT_EQ(InFront(), nullptr);
}

} // namespace
