// The three formats a save writes and a load and a verify read: through the
// reader the factory gives under each name, against the fake target memory,
// and against the cross tools' reading of the same files.
#include <random>

#include "ReaderRig.h"
#include "platform/objfile/ElfImage.h"
#include "platform/objfile/IhexFormat.h"
#include "platform/objfile/ObjectCodes.h"
#include "platform/objfile/SrecFormat.h"

namespace
{

struct Format {
    const char* typed; // as a user gives it: names match in any case
    const char* bfd;   // what objcopy calls it
};
const Format Formats[] = {{"SREC", "srec"}, {"iHex", "ihex"}, {"Elf", "elf32-littlearm"}};

bool HaveObjcopy()
{
    return !ToolOutput("command -v arm-none-eabi-objcopy").empty();
}

// Empty when the command succeeds.
std::string FailedCommand(const std::string& command)
{
    return ToolOutput(command + " && echo ok") == "ok\n" ? "" : command;
}

// An odd range across a 64 KiB line, which the HEX writer must not let a record cross.
constexpr uint32_t Start = 0x2000FFF3, Size = 0x231, End = Start + Size - 1;

std::vector<uint8_t> Pattern()
{
    std::mt19937 random(Size);
    std::vector<uint8_t> bytes(Size);
    for (auto& b : bytes)
        b = static_cast<uint8_t>(random());
    return bytes;
}

std::string Saved(const Format& f)
{
    return testing::TempDir() + "/saved." + f.bfd;
}

TEST(ObjectFormats, ASaveLoadsBackVerifiesReportsTheFirstDifferenceAndStopsAtACancel)
{
    for (const Format& f : Formats) {
        SCOPED_TRACE(f.typed);
        ReaderRig source(f.typed);
        source.memory.Poke(Start, Pattern());
        source.program.path = Saved(f);
        source.program.accessSize = 4;
        IQModuleLoader* saver = source.Loader();
        ASSERT_NE(saver, nullptr);
        RecordingTask save;
        save.start = Start;
        save.end = End;
        ASSERT_EQ(saver->Save(&save, 3), S_OK);
        EXPECT_EQ(std::tuple(save.status, save.finished, save.position, save.range),
                  std::tuple(TASK_DONE, 1, Size, Size));
        EXPECT_EQ(source.memory.log, std::vector{FakePlatformMemory::Line("ReadSized1", Start, End, 4)});

        // Loaded with an offset into a target that holds other bytes.
        ReaderRig target(f.typed);
        target.program.path = Saved(f);
        target.program.offset = 0x100;
        RecordingTask load;
        IQModuleLoader* loader = target.Loader();
        ASSERT_EQ(loader->Load(&load, 3), S_OK);
        EXPECT_EQ(target.memory.Bytes(Start + 0x100, Size), Pattern());
        EXPECT_EQ(target.program.areas,
                  (std::vector<std::pair<uint32_t, uint32_t>>{{Start + 0x100, End + 0x100}}));

        RecordingTask same, differs;
        EXPECT_EQ(saver->Verify(&same), S_OK);
        const uint8_t was = Pattern()[0x20];
        source.memory.Poke(Start + 0x20, {static_cast<uint8_t>(~was)});
        EXPECT_EQ(saver->Verify(&differs), OE_VERIFY_FAILED);
        EXPECT_EQ(std::pair(same.status, differs.status),
                  std::pair(int32_t{TASK_DONE}, int32_t{TASK_FAILED}));
        EXPECT_EQ(differs.mismatches, (std::vector<std::tuple<uint32_t, int32_t, int32_t>>{
                                          {Start + 0x20, static_cast<uint8_t>(~was), was}}));
        EXPECT_EQ(source.ErrorText(differs.result), "Verify failed");

        // A cancel given before the reader starts: it stops at its first look and touches nothing.
        target.memory.log.clear();
        for (int operation = 0; operation < 3; ++operation) {
            RecordingTask cancelled;
            cancelled.status = TASK_CANCELLED;
            const HRESULT hr = operation == 0   ? loader->Load(&cancelled, 3)
                               : operation == 1 ? loader->Verify(&cancelled)
                                                : loader->Save(&cancelled, 3);
            EXPECT_EQ(std::tuple(hr, cancelled.status, cancelled.finished),
                      std::tuple(OE_USER_ABORTED, int32_t{TASK_CANCELLED}, 1))
                << operation;
        }
        EXPECT_TRUE(target.memory.log.empty() && target.program.areas.empty());
    }
    if (!HaveObjcopy())
        GTEST_SKIP() << "arm-none-eabi-objcopy is not installed";
    for (const Format& f : Formats) {
        const std::string binary = Saved(f) + ".bin";
        EXPECT_EQ(FailedCommand(std::string("arm-none-eabi-objcopy -I ") + f.bfd + " -O binary " + Saved(f) +
                                " " + binary),
                  "");
        const std::string bytes = FileText(binary);
        EXPECT_EQ(std::vector<uint8_t>(bytes.begin(), bytes.end()), Pattern()) << f.typed;
    }
}

TEST(ObjectFormats, TheCrossToolsFilesOfTheFirmwareLoadAsItsElfDoes)
{
    if (!HaveObjcopy())
        GTEST_SKIP() << "arm-none-eabi-objcopy is not installed";
    ElfImage image;
    ASSERT_EQ(image.Open(Firmware), S_OK);
    for (const Format& f : {Formats[0], Formats[1]}) {
        ReaderRig rig(f.typed);
        rig.program.path = Saved(f) + ".firmware";
        ASSERT_EQ(FailedCommand(std::string("arm-none-eabi-objcopy -O ") + f.bfd + " " + Firmware + " " +
                                rig.program.path),
                  "");
        RecordingTask load;
        ASSERT_EQ(rig.Loader()->Load(&load, 3), S_OK) << f.typed;
        for (const LoadSegment& s : image.Segments())
            EXPECT_EQ(rig.memory.Bytes(s.address, s.bytes.size()), s.bytes) << f.typed;
    }
}

TEST(ObjectFormats, RecordsOfEveryKindGiveTheirDataAndStart)
{
    struct Case {
        HRESULT (*parse)(std::string_view, TextImage&);
        const char* text;
        std::vector<DataBlock> blocks;
        uint32_t entry;
    };
    const Case cases[] = {
        {ParseSrec,
         "S0060000686472BB\r\nS1061000010203e3\n\nS2062010030405BD  \nS30720000000AABB73\nS5030003F9\n"
         "S804201003C8\n",
         {{0x1000, {1, 2, 3}}, {0x201003, {4, 5}}, {0x20000000, {0xAA, 0xBB}}},
         0x201003},
        // Segment base, a linear base, a record that goes on across it joined to the one before;
        // the later start wins; nothing after the end record counts.
        {ParseIhex,
         ":020000021234B6\n:03001000010203E7\n:020000042000DA\n:02FFFE000405F8\n:020000042001D9\n"
         ":0100000006F9\n:0400000312340005AE\n:040000052000004196\n:00000001FF\nnot read\n",
         {{0x12350, {1, 2, 3}}, {0x2000FFFE, {4, 5, 6}}},
         0x20000041},
    };
    for (const Case& c : cases) {
        TextImage image;
        ASSERT_EQ(c.parse(c.text, image), S_OK) << c.text;
        EXPECT_EQ(image.blocks, c.blocks) << c.text;
        EXPECT_EQ(image.entry, c.entry);
    }
}

// Each damaged file follows a good data record: a load writes nothing of it.
TEST(ObjectFormats, DamagedFilesGiveTheirErrorAndWriteNothing)
{
    struct Case {
        const char* format;
        const char* damage;
        const char* text = "Incorrect object module format";
    };
    const Case cases[] = {
        {"srec", "S1061000010203E4"},       // checksum
        {"srec", "S10610000102G3E3"},       // character
        {"srec", "S10610000102"},           // cut short
        {"srec", "S1061000010203E"},        // odd digit
        {"srec", "S4030000FC"},             // record type
        {"srec", "X1061000010203E3"},       // no S
        {"srec", "S5030002FA"},             // count of data records
        {"srec", "S309FFFFFFFE01020304F1"}, // past the top of the address space
        {"ihex", ":03001000010203E8\n:00000001FF"},
        {"ihex", ":0300100001020ZE7\n:00000001FF"},
        {"ihex", ":030010000102\n:00000001FF"},
        {"ihex", ":00000006FA\n:00000001FF"},
        {"ihex", ":0100000420DB\n:00000001FF"}, // a base of one byte
        {"ihex", "03001000010203E7\n:00000001FF"},
        {"ihex", ""}, // no end record
        {"ihex", nullptr, "File not found"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.format) + ": " + (c.damage ? c.damage : "no file"));
        ReaderRig rig(c.format);
        rig.program.path = testing::TempDir() + "/damaged";
        std::remove(rig.program.path.c_str());
        if (c.damage != nullptr)
            std::ofstream(rig.program.path)
                << (c.format == std::string("srec") ? "S1061000010203E3\n" : ":03001000010203E7\n")
                << c.damage << "\n";
        RecordingTask load;
        const HRESULT hr = rig.Loader()->Load(&load, 3);
        EXPECT_EQ(hr, load.result);
        EXPECT_EQ(std::pair(load.status, rig.ErrorText(load.result)),
                  std::pair(int32_t{TASK_FAILED}, std::string(c.text)));
        EXPECT_TRUE(rig.memory.log.empty() && rig.program.areas.empty());
    }
    TextImage image;
    EXPECT_EQ(ParseSrec("", image), OE_MODULE_FORMAT);
}

TEST(ObjectFormats, ASaveThatCannotBeDoneSaysWhy)
{
    struct Case {
        std::string path;
        uint32_t end;
        const char* text;
    };
    for (const Case& c : {Case{"/nonexistent/folder/file", End, "File Write error"},
                          Case{Saved(Formats[0]), Start - 1, "Invalid parameter"}}) {
        ReaderRig rig("srec");
        rig.program.path = c.path;
        RecordingTask save;
        save.start = Start;
        save.end = c.end;
        const HRESULT hr = rig.Loader()->Save(&save, 3);
        EXPECT_EQ(hr, save.result);
        EXPECT_EQ(std::pair(save.status, rig.ErrorText(save.result)),
                  std::pair(int32_t{TASK_FAILED}, std::string(c.text)));
    }
}

// A load that verifies hears of a byte that did not take.
TEST(ObjectFormats, ALoadThatVerifiesReportsWhatDidNotStick)
{
    ReaderRig rig("ihex");
    rig.program.path = testing::TempDir() + "/stuck.hex";
    std::ofstream(rig.program.path) << ":020000042000DA\n:03001000010203E7\n:00000001FF\n";
    rig.program.verify = true;
    rig.memory.answers["WriteSized1"] = S_OK;
    RecordingTask load;
    EXPECT_EQ(rig.Loader()->Load(&load, 3), OE_VERIFY_FAILED);
    EXPECT_EQ(load.mismatches, (std::vector<std::tuple<uint32_t, int32_t, int32_t>>{
                                   {0x20000010, FakePlatformMemory::Derived(0x20000010), 1}}));
}

} // namespace
