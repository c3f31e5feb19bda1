// Unsigned number arguments: empty, unevaluable and out-of-range values.
#include <gtest/gtest.h>

#include "boundary/Ids.h"
#include "component/command/CArgNumberUnsigned.h"
#include "component/command/CCmdEvaluator.h"
#include "support/CommandFakes.h"
#include "support/RecordingEvaluator.h"

namespace
{

constexpr uint64_t Max32 = 0xFFFFFFFF;

struct NumberCase {
    bool required;
    const char* token;
    int32_t quoteKind;
    bool result;
    int32_t error;
    uint64_t value;
    bool usedDefault;
};

IQServiceRegistry* Serving(HelpRecordingRegistry& host, RecordingEvaluator& evaluator)
{
    host.RegisterService(Ids::IQEvaluator2, evaluator.Service());
    return &host;
}

class NumberArgs : public ::testing::Test
{
protected:
    RecordingEvaluator evaluator;
    HelpRecordingRegistry host;
    CCmdEvaluator proxy{Serving(host, evaluator)};
};

TEST_F(NumberArgs, EmptyQuotedUnevaluableAndOutOfRangeTokens)
{
    // Default 7, range 0x10..0xFFFFFFFF, radix of the session (16).
    const NumberCase cases[] = {
        {true, "20", 0, true, 0, 0x20, false},
        {true, "10", 0, true, 0, 0x10, false},
        {false, "FFFFFFFF", 0, true, 0, Max32, false},
        {true, "", 0, false, 2, 7, true},
        {false, "", 0, true, 0, 7, true},
        {true, "\"20\"", 1, false, 2, 7, true},
        {false, "\"20\"", 1, true, 0, 7, true},
        {true, "zz", 0, false, 4, 7, true},
        {false, "zz", 0, true, 0, 7, true},
        {true, "F", 0, false, 1, 0xF, false},
        {false, "F", 0, false, 1, 0xF, false},
        {false, "100000000", 0, false, 1, 0x100000000, false},
        {true, "10000000000000000", 0, false, 4, 7, true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.token) + (c.required ? " required" : " optional"));
        CArgNumberUnsigned arg(c.required, 0, &proxy, 7, 0x10, Max32);
        const bool result = arg.Parse(c.token, c.quoteKind);
        EXPECT_EQ(std::tie(result, arg.Error, arg.Value, arg.UsedDefault, arg.Raw),
                  std::make_tuple(c.result, c.error, c.value, c.usedDefault,
                                  std::string(c.quoteKind == 0 ? c.token : "")));
    }
}

TEST_F(NumberArgs, AGivenRadixOverridesTheSessionsOne)
{
    CArgNumberUnsigned arg(true, 10, &proxy, 0, 0, Max32);
    ASSERT_TRUE(arg.Parse("10", 0));
    EXPECT_EQ(arg.Value, 10u);
    EXPECT_FALSE(arg.Parse("A", 0));
    EXPECT_EQ(arg.Error, 4);
}

TEST(NumberArgsWithoutEvaluator, NothingEvaluates)
{
    HelpRecordingRegistry host;
    CCmdEvaluator proxy(&host);
    EXPECT_FALSE(proxy.Available());
    CArgNumberUnsigned required(true, 0, &proxy, 3, 0, Max32), optional(false, 0, nullptr, 3, 0, Max32);
    EXPECT_FALSE(required.Parse("1", 0));
    EXPECT_EQ(required.Error, 4);
    EXPECT_TRUE(optional.Parse("1", 0));
    EXPECT_TRUE(optional.UsedDefault);
    EXPECT_EQ(optional.Value, 3u);
}

} // namespace
