// memory_compare, memory_move, memory_test and memory_find: one manager call
// each, made as the line says, and what the user reads of its outcome.
#include "support/MemCmdFixture.h"

namespace
{

using Transfer = MemCmd;

TEST_F(Transfer, OneCallALineAndItsOutcome)
{
    const auto differs = [this] { manager.Poke(0x1105, {0xEE}); };
    const auto silent = [this] {
        manager.Poke(0x1105, {0xEE});
        manager.reports = false;
    };
    const auto unmapped = [this](const char* operation) {
        return [this, operation] { manager.fail[operation] = FakeMemoryManager::NotMapped; };
    };
    const char* const outside = "Address outside the memory map";
    const char* const find = "FindMemory 1000 1fff ffffffff ffffffff ";
    const struct {
        std::function<void()> setUp;
        const char* line;
        HRESULT hr;
        const char* message; // nullptr: not looked at
        std::string call;
        int changes;
    } rows[] = {
        {nullptr, "mc 1000 100f 1100", S_OK, "Compare successful", "CompareMemory 1000 100f 1100 1", 0},
        {differs, "mc 1000 100f 1100 word", S_OK, "Memory differs. Address: 00001005",
         "CompareMemory 1000 100f 1100 2", 0},
        // Without an explanation of the code there is no address either.
        {silent, "mc 1000 100f 1100", S_OK, "Unknown error code -2147213280",
         "CompareMemory 1000 100f 1100 1", 0},
        // Verify comes before the mode, and a move always tells of the change.
        {nullptr, "mv 1000 1003 1800 noverify long", S_OK, "", "CopyMemory 1000 1003 1800 0 4", 1},
        {nullptr, "mv 1000 1003 1800 word", S_OK, "", "CopyMemory 1000 1003 1800 ffff 2", 1},
        {unmapped("CopyMemory"), "mv 1000 1003 1800", S_OK, outside, "CopyMemory 1000 1003 1800 ffff 1", 1},
        // A test fails as an error and always tells of the change.
        {nullptr, "mt 1000 1fff", S_OK, "Test successful", "TestMemory 1000 1fff", 1},
        {unmapped("TestMemory"), "mt 1000 1fff", E_FAIL, outside, "TestMemory 1000 1fff", 1},
        // The pattern is the value padded to the mode, most significant first.
        {nullptr, "mi 1000 1fff 12", S_OK, nullptr, find + std::string("12/ff"), 0},
        {nullptr, "mi 1000 1fff { 12 }", S_OK, nullptr, find + std::string("12/ff"), 0},
        {nullptr, "mi 1000 1fff 1234 word", S_OK, nullptr, find + std::string("12/ff,34/ff"), 0},
        {nullptr, "mi 1000 1fff 1234 long", S_OK, nullptr, find + std::string("00/ff,00/ff,12/ff,34/ff"), 0},
        {nullptr, "mi 1000 1fff 1234 single", S_OK, nullptr, find + std::string("00/ff,00/ff,12/ff,34/ff"),
         0},
        {nullptr, "mi 1000 1fff 1234 d", S_OK, nullptr,
         find + std::string("00/ff,00/ff,00/ff,00/ff,00/ff,00/ff,12/ff,34/ff"), 0},
        {nullptr, "mi 1000 1fff 41 ascii", S_OK, nullptr, find + std::string("41/ff"), 0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.line);
        manager = FakeMemoryManager();
        if (row.setUp)
            row.setUp();
        const int before = changes;
        const Reply reply = Line(row.line);
        EXPECT_EQ(reply.hr, row.hr);
        if (row.message != nullptr) {
            EXPECT_EQ(reply.message, row.message);
        }
        EXPECT_EQ(manager.calls.back(), row.call);
        EXPECT_EQ(changes - before, row.changes);
    }
}

TEST_F(Transfer, FindReadsTheValueInTheSessionRadix)
{
    evaluator.radix = 10;
    Line("mi 4096 8191 18");
    EXPECT_EQ(manager.calls.back(), "FindMemory 1000 1fff ffffffff ffffffff 12/ff");
}

} // namespace
