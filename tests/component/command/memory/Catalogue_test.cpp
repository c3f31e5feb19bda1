// What every memory command shares: refusing what the platform cannot do.
#include "support/MemCmdFixture.h"

namespace
{

class Catalogue : public MemCmd
{
protected:
    // A platform lacking the operations of these bits of its offer: compare,
    // copy, fill, find, findAlternate, verify, test.
    void Without(std::initializer_list<int> bits)
    {
        platform.offered = 0x7F;
        for (int bit : bits)
            platform.offered &= ~(1u << bit);
        Reattach();
    }
};

TEST_F(Catalogue, OperationThePlatformLacksIsNotSupportedWithoutParsing)
{
    const struct {
        int lacking;
        const char* line;
    } rows[] = {
        {0, "mc 1000 1001 1800"}, {2, "mf 1000 1001 0"}, {1, "mv 1000 1001 1800"},
        {6, "mt 1000 1001"},      {6, "mt zz"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.line);
        Without({row.lacking});
        Reply reply = Line(row.line);
        EXPECT_EQ(reply.hr, S_OK);
        EXPECT_EQ(reply.message, "Command not supported");
        EXPECT_EQ(platform.log, Log{});
    }
    EXPECT_EQ(changes, 0);
}

TEST_F(Catalogue, FindNeedsEitherOfItsTwoOperations)
{
    Without({3});
    EXPECT_EQ(Line("mi 1000 1fff 12").message, "String found at memory address H'00001012");
    Without({4});
    EXPECT_EQ(Line("mi 1000 1fff 12").message, "String found at memory address H'00001012");
    Without({3, 4});
    EXPECT_EQ(Line("mi 1000 1fff 12").message, "Command not supported");
}

TEST_F(Catalogue, WithoutAManagerNoCommandRuns)
{
    registry.UnregisterService(Ids::IQMemoryManagerCmdLine5, GetServiceAs<IQMemoryManagerCmdLine5>(
                                                                 &registry, Ids::IQMemoryManagerCmdLine5));
    for (const char* line : {"mc 1000 1001 1800", "md 1000", "me 1000", "mf 1000 1001 0", "mi 1000 1001 0",
                             "mv 1000 1001 1800", "mt 1000 1001"}) {
        SCOPED_TRACE(line);
        Reply reply = Line(line);
        EXPECT_EQ(reply.hr, S_OK);
        EXPECT_EQ(reply.message, "Command not supported");
        EXPECT_FALSE(reply.continuing);
    }
}

TEST_F(Catalogue, AnEmptyMapLetsOnlyAddressZeroPass)
{
    platform.areas = {};
    Reattach();
    EXPECT_EQ(Line("mt 0 1").message, "Parameter '<end>' must be in range H'0 (0) to H'0 (0)");
    EXPECT_EQ(Line("mt 0 0").message, "Test successful");
}

} // namespace
