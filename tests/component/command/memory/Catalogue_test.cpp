// What every memory command shares: refusing what the platform cannot do.
#include "support/MemCmdFixture.h"

namespace
{

using Catalogue = MemCmd;

TEST_F(Catalogue, OperationThePlatformLacksIsNotSupportedWithoutParsing)
{
    const struct {
        const char* lacking;
        const char* line;
    } rows[] = {
        {"compare", "mc 1000 1001 1800"}, {"fill", "mf 1000 1001 0"}, {"copy", "mv 1000 1001 1800"},
        {"test", "mt 1000 1001"},         {"test", "mt zz"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.line);
        manager.lacking = {row.lacking};
        Reply reply = Line(row.line);
        EXPECT_EQ(reply.hr, S_OK);
        EXPECT_EQ(reply.message, "Command not supported");
    }
    EXPECT_TRUE(manager.calls.empty());
    EXPECT_EQ(changes, 0);
}

TEST_F(Catalogue, FindNeedsEitherOfItsTwoOperations)
{
    manager.lacking = {"find"};
    EXPECT_EQ(Line("mi 1000 1fff 12").message, "String found at memory address H'00001012");
    manager.lacking = {"findAlternate"};
    EXPECT_EQ(Line("mi 1000 1fff 12").message, "String found at memory address H'00001012");
    manager.lacking = {"find", "findAlternate"};
    EXPECT_EQ(Line("mi 1000 1fff 12").message, "Command not supported");
}

TEST_F(Catalogue, WithoutAManagerNoCommandRuns)
{
    registry.UnregisterService(Ids::IQMemoryManagerCmdLine5, static_cast<IQMemoryManagerCmdLine5*>(&manager));
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
    manager.hasArea = false;
    EXPECT_EQ(Line("mt 0 1").message, "Parameter '<end>' must be in range H'0 (0) to H'0 (0)");
    EXPECT_EQ(Line("mt 0 0").message, "Test successful");
}

} // namespace
