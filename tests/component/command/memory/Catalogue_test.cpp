// What every memory command shares: refusing what the platform cannot do,
// and the message for each kind of bad line.
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

TEST_F(Catalogue, EachBadLineIsRefusedByItsParseAloneNamingItsParameter)
{
    registry.UnregisterService(Ids::IQMemoryManagerCmdLine5, static_cast<IQMemoryManagerCmdLine5*>(&manager));
    const std::string map = "must be in range H'1000 (4096) to H'1FFF (8191)";
    const struct {
        const char* line;
        std::string message;
    } rows[] = {
        {"mc", "Parameter '<start>' is empty"},
        {"mc zz", "Parameter '<start>' is invalid"},
        {"mc fff 1010 1800", "Parameter '<start>' " + map},
        {"mc 1000", "Parameter '<end>' is empty"},
        {"mc 1000 2000", "Parameter '<end>' " + map},
        {"mc 1000 1010", "Parameter '<dest>' is empty"},
        {"mc 1000 1010 2000", "Parameter '<dest>' " + map},
        {"mc 1000 1010 1800 word x", "Too many parameters"},
        {"mc 1000 1010 1800 qq", "Too many parameters"},
        {"md", "Parameter '<address>' is empty"},
        {"md \"1000\"", "Parameter '<address>' is empty"},
        {"md 2000", "Parameter '<address>' " + map},
        {"md 1000 4001", "Parameter is invalid"},
        {"md 1000 4001 word", "Parameter '<length>' must be in range H'0 (0) to H'4000 (16384)"},
        {"md 1000 10 word x", "Parameter is invalid"},
        {"md 1000 qq", "Parameter is invalid"},
        {"me", "Parameter '<address>' is empty"},
        {"me 1000 word verify x", "Parameter is invalid"},
        {"mf 1000", "Parameter '<end>' is empty"},
        {"mf 1000 1010", "Parameter '<data>' is empty"},
        {"mf 1000 1010 \"5\"", "Parameter '<data>' is empty"},
        {"mf 1000 1010 5 long noverify x", "Too many parameters"},
        {"mi", "Not enough parameters"},
        {"mi 1000", "Not enough parameters"},
        {"mi 1000 2000 12", "Not enough parameters"},
        {"mi 1000 1010", "Parameter '<string>' is empty"},
        {"mi 1000 1010 12 byte x", "Too many parameters"},
        {"mi 1000 1010 zz", "Parameter '<string>' is invalid"},
        {"mi 1000 1010 \"12\"", "Parameter '<string>' is invalid"},
        {"mv 1000 1010", "Parameter '<dest>' is empty"},
        {"mv 1000 1010 1800 noverify long x", "Too many parameters"},
        {"mv 1000 1010 1800 long noverify", "Too many parameters"},
        {"mt 1000", "Parameter '<end>' is empty"},
        {"mt 1000 1001 x", "Too many parameters"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.line);
        const CmdRefusal refusal = Parse(row.line, AddressRange(0x1000, 0x1FFF));
        EXPECT_EQ(refusal.Result, E_FAIL);
        EXPECT_EQ(refusal.Message, row.message);
    }
}

TEST_F(Catalogue, AnEmptyMapLetsOnlyAddressZeroPass)
{
    manager.hasArea = false;
    EXPECT_EQ(Line("mt 0 1").message, "Parameter '<end>' must be in range H'0 (0) to H'0 (0)");
    EXPECT_EQ(Line("mt 0 0").message, "Test successful");
}

} // namespace
