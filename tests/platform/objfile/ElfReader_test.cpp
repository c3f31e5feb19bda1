// The reader as the platform hands it out: through the factory, with a task,
// a program and the target's memory; and what it does with bad files.
#include <cstdlib>
#include <random>

#include "ReaderRig.h"
#include "component/frame/CDebuggerState.h"
#include "component/symbols/CVELLabelManager.h"
#include "platform/objfile/DebugData.h"
#include "platform/objfile/ElfImage.h"
#include "platform/objfile/ObjectCodes.h"

namespace
{

std::vector<uint8_t> FirmwareBytes(const std::string& file = Firmware)
{
    const std::string text = FileText(file);
    return {text.begin(), text.end()};
}

uint32_t Count(CVELLabelManager& labels)
{
    uint32_t count = 0;
    labels.GetLabelCount(count);
    return count;
}

class ElfReaderFace : public ::testing::Test, public ReaderRig
{
protected:
    ElfReaderFace() : ReaderRig("ELF") {}
    void SetUp() override { ASSERT_NE(loader = Loader(), nullptr); }
    template <class T> T* Face(const Guid& id) { return QueryAs<T>(handle, id); }

    CDebuggerState owner;
    // The real label manager, which registers itself where the reader looks.
    CVELLabelManager labels{&registry, owner};
    RecordingTask task;
    IQModuleLoader* loader = nullptr;
};

TEST_F(ElfReaderFace, LoadWritesTheSegmentsReportsAreasLabelsAndAnswersForItsDebugData)
{
    ElfImage image;
    ASSERT_EQ(image.Open(Firmware), S_OK);
    ASSERT_EQ(loader->Load(&task, 3), S_OK);
    EXPECT_EQ(std::tuple(task.status, task.finished, task.position), std::tuple(TASK_DONE, 1, task.range));
    // The file's bytes of each segment, nothing beyond them: zeroed data and
    // regions left uninitialised keep what the target holds.
    std::vector<std::pair<uint32_t, uint32_t>> areas;
    for (const auto& s : image.Segments()) {
        if (s.bytes.empty())
            continue;
        areas.push_back({s.address, s.address + static_cast<uint32_t>(s.bytes.size()) - 1});
        EXPECT_EQ(memory.Bytes(s.address, s.bytes.size()), s.bytes);
        const TargetAddress behind = s.address + static_cast<uint32_t>(s.bytes.size());
        if (s.memSize > s.bytes.size()) {
            EXPECT_EQ(memory.Bytes(behind, 1), std::vector<uint8_t>{FakePlatformMemory::Derived(behind)});
        }
    }
    EXPECT_EQ(program.areas, areas);
    EXPECT_EQ(Count(labels), image.Symbols().size());

    TargetAddress main = 0, start = 0, end = 0;
    ASSERT_EQ(Face<IQLineTable>(Ids::IQLineTable)->FindFunction("main", main), S_OK);
    std::string file;
    uint32_t line = 0;
    auto* info = Face<IQDebugInfo>(Ids::IQDebugInfo);
    ASSERT_EQ(info->GetAddressSource(main, file, line), S_OK);
    EXPECT_NE(file.find("sensors.c"), std::string::npos);
    ASSERT_EQ(info->GetSourceAddress("SENSORS.C", line, start), S_OK);
    EXPECT_EQ(start, main);
    EXPECT_EQ(Face<IQLineTable>(Ids::IQLineTable)->GetLineRange("sensors.c", line, start, end), S_OK);
    EXPECT_LE(start.Value(), end.Value());
    uint16_t holds = 0, holdsNot = 1;
    EXPECT_TRUE(info->HoldsAddress(main, holds) == S_OK && info->HoldsAddress(0x40000000, holdsNot) == S_OK);
    EXPECT_EQ(std::make_pair(holds, holdsNot), std::make_pair(uint16_t{0xFFFF}, uint16_t{0}));
}

TEST_F(ElfReaderFace, DebugDataOnlyTouchesNoMemoryAndGivesVariablesAsTheFileSetsThem)
{
    registry.Provide(Ids::IQPlatformMemory, nullptr);
    ASSERT_EQ(loader->Load(&task, 1), S_OK);
    EXPECT_TRUE(memory.log.empty() && program.areas.empty());
    uint32_t size = 0;
    std::string data, type, value;
    int32_t kind = 0;
    auto* variables = Face<IQModuleVariables>(Ids::IQModuleVariables);
    ASSERT_EQ(variables->GetVariable("last_reading", size, data, kind, type, value), S_OK);
    // {channel 7, value -1}, most significant byte first.
    ASSERT_EQ(size, 8u);
    EXPECT_EQ(data.substr(0, 4), std::string(4, '\xFF'));
    EXPECT_EQ(data.substr(6), std::string("\x00\x07", 2));
    EXPECT_EQ(variables->GetVariable("nothing", size, data, kind, type, value), OE_NOT_FOUND);
}

TEST_F(ElfReaderFace, FailureAndCancelFinishTheTaskOnceAndLeaveNothing)
{
    struct Case {
        std::string path;
        int32_t presetStatus;
        int32_t status;
        HRESULT result;
    };
    for (const Case& c : {Case{"/nonexistent.elf", TASK_RUNNING, TASK_FAILED, QE_FILE_NOT_FOUND},
                          Case{"/dev/null", TASK_RUNNING, TASK_FAILED, OE_MODULE_FORMAT},
                          Case{Firmware, TASK_CANCELLED, TASK_CANCELLED, OE_USER_ABORTED}}) {
        program.path = Firmware;
        RecordingTask good, task;
        ASSERT_EQ(loader->Load(&good, 3), S_OK);
        program.path = c.path;
        task.status = c.presetStatus;
        memory.log.clear();
        labels.ClearLabelsQuietly();
        EXPECT_EQ(loader->Load(&task, 3), c.result) << c.path;
        EXPECT_EQ(std::pair(task.status, task.finished), std::pair(c.status, 1)) << c.path;
        EXPECT_TRUE(memory.log.empty() && Count(labels) == 0 && program.areas.empty()) << c.path;
        TargetAddress address = 0;
        EXPECT_EQ(Face<IQLineTable>(Ids::IQLineTable)->FindFunction("main", address), OE_FUNCTION_NOT_FOUND);
    }
    std::string text;
    ASSERT_EQ(QueryAs<IQErrorReporter>(reader, Ids::IQErrorReporter)->GetErrorText(OE_USER_ABORTED, text),
              S_OK);
    EXPECT_EQ(text, "User aborted");
    EXPECT_EQ(reader->DestroyModule(handle), S_OK);
    EXPECT_EQ(reader->DestroyModule(handle), E_FAIL);
}

// Damaged files: each byte patch names the header field it breaks.
TEST(ElfErrors, EachDamageGivesItsCodeAndText)
{
    struct Case {
        const char* what;
        size_t at;
        std::vector<uint8_t> bytes;
        size_t keep; // 0: the whole file
        HRESULT code;
        const char* text;
    };
    const Case cases[] = {
        {"not ELF", 0, {'#', '!'}, 0, OE_MODULE_FORMAT, "Incorrect object module format"},
        {"truncated header", 0, {}, 20, OE_MODULE_FORMAT, "Incorrect object module format"},
        {"wrong machine", 18, {62, 0}, 0, OE_MODULE_CPU, "Incorrect object module cpu"},
        {"relocatable", 16, {1, 0}, 0, OE_MODULE_NOT_ABSOLUTE, "Object module not absolute format"},
        {"version", 20, {2}, 0, OE_MODULE_VERSION, "Incorrect object module version"},
        {"shoff past the end", 32, {0, 0, 0, 0x7F}, 0, OE_MODULE_FORMAT, "Incorrect object module format"},
        {"phoff past the end", 28, {0, 0, 0, 0x7F}, 0, OE_MODULE_FORMAT, "Incorrect object module format"},
    };
    for (const Case& c : cases) {
        auto bytes = FirmwareBytes();
        std::copy(c.bytes.begin(), c.bytes.end(), bytes.begin() + static_cast<std::ptrdiff_t>(c.at));
        if (c.keep != 0)
            bytes.resize(c.keep);
        ElfImage image;
        EXPECT_EQ(image.OpenBytes(bytes), c.code) << c.what;
        EXPECT_TRUE(image.Segments().empty() && image.Symbols().empty()) << c.what;
        EXPECT_EQ(ObjectCodeText(c.code), c.text) << c.what;
    }
}

// The 64-bit container of the same firmware, as the host's objcopy makes it
// (it leaves the machine empty), reads as the 32-bit original.
TEST(ElfErrors, Elf64CopyReadsAsTheOriginal)
{
    const std::string copy = testing::TempDir() + "/sensors64.elf";
    ASSERT_EQ(std::system(("objcopy -I elf32-little -O elf64-little " + Firmware + " " + copy).c_str()), 0);
    auto bytes = FirmwareBytes(copy);
    ASSERT_GT(bytes.size(), 20u);
    bytes[18] = 40; // EM_ARM
    ElfImage wide, narrow;
    DebugData wideDebug, narrowDebug;
    ASSERT_EQ(wide.OpenBytes(bytes), S_OK);
    ASSERT_TRUE(narrow.Open(Firmware) == S_OK && narrowDebug.Read(narrow) == S_OK);
    ASSERT_EQ(wideDebug.Read(wide), S_OK);
    ASSERT_EQ(wide.Segments().size(), narrow.Segments().size());
    for (size_t i = 0; i < wide.Segments().size(); ++i)
        EXPECT_EQ(wide.Segments()[i].bytes, narrow.Segments()[i].bytes);
    ASSERT_EQ(wide.Symbols().size(), narrow.Symbols().size());
    for (size_t i = 0; i < wide.Symbols().size(); ++i)
        EXPECT_EQ(wide.Symbols()[i].address, narrow.Symbols()[i].address) << narrow.Symbols()[i].name;
    EXPECT_EQ(wideDebug.RowAddresses(), narrowDebug.RowAddresses());
}

// Truncated and bit-flipped copies: an error from the table, or a result that
// holds together; never a crash (the sanitizer build runs this too).
TEST(ElfErrors, TruncatedAndFlippedCopiesNeverCrash)
{
    const auto original = FirmwareBytes();
    std::mt19937 random(20261123);
    auto check = [](std::vector<uint8_t> bytes) {
        ElfImage image;
        HRESULT hr = image.OpenBytes(std::move(bytes));
        DebugData debug;
        if (Succeeded(hr))
            hr = debug.Read(image);
        if (Failed(hr)) {
            EXPECT_FALSE(ObjectCodeText(hr).empty());
            return;
        }
        for (const auto& s : image.Segments())
            EXPECT_LE(s.bytes.size(), s.memSize);
        for (uint32_t a : debug.RowAddresses())
            EXPECT_TRUE(debug.AddressSource(a).has_value());
    };
    for (size_t keep = 0; keep < original.size(); keep += 1 + keep / 8)
        check({original.begin(), original.begin() + static_cast<std::ptrdiff_t>(keep)});
    // Every other round flips inside the headers at either end, where the tables are.
    for (int round = 0; round < 3000; ++round) {
        auto bytes = original;
        for (int flips = 1 + round % 4; flips > 0; --flips) {
            size_t at = random() % (round % 2 ? 512 : bytes.size());
            if (round % 4 == 3)
                at = bytes.size() - 1 - at;
            bytes[at] ^= static_cast<uint8_t>(1u << (random() % 8));
        }
        check(std::move(bytes));
    }
}

} // namespace
