// A program at run time over the real ELF reader and the test firmware: its
// reader and module handle, its labels across a renewal, its file's status
// and its messages.
#include <gtest/gtest.h>

#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>

#include "component/frame/CDebuggerState.h"
#include "component/program/CQProgram.h"
#include "component/symbols/CVELLabelManager.h"
#include "platform/catalog/DriverFactory.h"
#include "platform/objfile/ElfReader.h"
#include "platform/objfile/ObjectCodes.h"
#include "support/FakePlatformMemory.h"
#include "support/FirmwareProgram.h"
#include "support/Recording.h"
#include "support/RecordingTask.h"
#include "support/TempFolder.h"

namespace
{

const std::string SensorsElf = std::string(TESSEL_FIRMWARE_DIR) + "/sensors.elf";

struct OwnerAnswers : ProgramOwner {
    bool UsesFunctionFamily() const override { return functionFamily; }
    std::string TargetPlatformName() const override { return platform; }
    int32_t DriverMode() const override { return 0; }
    bool functionFamily = false;
    std::string platform;
};

// A reader of the older generation, or without it one with no reader face at
// all; a handle is the reader itself.
template <bool Older> struct OtherReader final : PlatformDriver, IQObjectReader {
    explicit OtherReader(IQServiceRegistry*) {}
    IUnknown* Object() override { return this; }
    HRESULT QueryInterface(const Guid& iid, void** out) override
    {
        return AnswerFrom({Ids::IUnknown, Older ? Ids::IQObjectReader : Ids::IUnknown}, iid,
                          static_cast<IQObjectReader*>(this), out);
    }
    TESSEL_NOT_REFCOUNTED
    HRESULT CreateModule(IUnknown** handle, IQProgram*) override { return *handle = this, S_OK; }
    HRESULT DestroyModule(IUnknown*) override { return S_OK; }
};

template <class Reader> ReaderEntry ReaderEntryOf(const char* name, const char* platform = "")
{
    return {name, platform, [](IQServiceRegistry* registry) -> std::unique_ptr<PlatformDriver> {
                return std::make_unique<Reader>(registry);
            }};
}

class ProgramRig : public ::testing::Test
{
protected:
    ProgramRig() { registry.Provide(Ids::DriverFactory, &factory); }

    CQProgram Make(const std::string& file, const std::string& format = "elf")
    {
        return CQProgram(CDownloadModule(file, 0, format, 0, 0, 1, 0), {"ws", "proj", "session"}, owner,
                         &registry);
    }

    PlatformTable table{{},
                        {ReaderEntryOf<ElfReader>("elf"), ReaderEntryOf<ElfReader>("pdelf", "pdsim"),
                         ReaderEntryOf<OtherReader<true>>("old"),
                         ReaderEntryOf<OtherReader<false>>("faceless")}};
    DriverFactory factory{table};
    CallLog log;
    RecordingRegistry registry{log};
    OwnerAnswers owner;
};

TEST_F(ProgramRig, OpenMakesReaderAndHandleOfEitherFamilyOrFailsLeavingNothingHeld)
{
    struct Case {
        std::string format;
        bool functionFamily;
        std::string platform;
        bool opens;
    };
    for (const auto& c :
         {Case{"elf", false, "", true}, Case{"ELF", true, "pdsim", true}, Case{"pdelf", true, "pdsim", true},
          Case{"pdelf", true, "other", false}, Case{"old", false, "", true},
          Case{"faceless", false, "", false}, Case{"nosuch", false, "", false}}) {
        owner.functionFamily = c.functionFamily;
        owner.platform = c.platform;
        CQProgram program = Make(SensorsElf, c.format);
        EXPECT_EQ(program.Open(&registry), c.opens) << c.format;
        EXPECT_EQ(std::tuple(program.IsOpen(), program.ModuleId() != 0, factory.Alive()),
                  std::tuple(c.opens, c.opens, c.opens ? 1u : 0u))
            << c.format;
        std::string path;
        EXPECT_EQ(std::pair(program.GetFilePath(path), path), std::pair(S_OK, SensorsElf)) << c.format;
        program.Close(&registry);
        EXPECT_EQ(std::tuple(program.ModuleHandle(), program.ModuleId(), factory.Alive()),
                  std::tuple(nullptr, 0u, 0u))
            << c.format;
    }
}

TEST_F(ProgramRig, TheReaderReportsAreasAndSourcesToItAndRenewKeepsTheLabelsWithTheModule)
{
    FakePlatformMemory memory{{{0x08000000, 0x0800FFFF}, {0x20000000, 0x2000FFFF}}, {1}};
    memory.RegisterIn(registry);
    CDebuggerState state;
    CVELLabelManager labels{&registry, state};
    CQProgram program = Make(SensorsElf);
    ASSERT_TRUE(program.Open(&registry));
    std::vector<std::string> files;
    EXPECT_EQ(program.GetSourceFiles(files), E_FAIL) << "no debug data before a load";

    labels.SetCurrentModule(program.ModuleId());
    RecordingTask task;
    ASSERT_EQ(QueryAs<IQModuleLoader>(program.ModuleHandle(), Ids::IQModuleLoader)->Load(&task, 3), S_OK);
    labels.SetCurrentModule(0);
    ASSERT_GE(program.Areas().Count(), 1u);
    EXPECT_EQ(program.Areas().At(0)->Start, FirmwareProgram::kFlashBase);
    ASSERT_EQ(program.GetSourceFiles(files), S_OK);
    EXPECT_NE(std::find_if(files.begin(), files.end(),
                           [](const std::string& f) { return f.ends_with("sensors.c"); }),
              files.end());

    program.SetLoaded(true);
    const uint32_t before = program.ModuleId();
    program.Renew(labels);
    LabelRecord main{"main"};
    EXPECT_TRUE(program.IsOpen() && program.ModuleId() != before && program.IsLoaded() == E_FAIL);
    EXPECT_TRUE(labels.FindLabelInModule(main, program.ModuleId(), true));
    EXPECT_FALSE(labels.FindLabelInModule(main, before, true));
}

TEST_F(ProgramRig, ATouchedFileIsOutOfDateOnceCheckFileOnlyClearsLoadedAndAMissingFileChangesNothing)
{
    TempFolder folder;
    const std::string file = folder.WriteFile("copy.elf", "unchanged bytes");
    auto touch = [&](long nanoseconds) {
        timespec times[2]{{0, UTIME_OMIT}, {1000, nanoseconds}};
        ASSERT_EQ(utimensat(AT_FDCWD, file.c_str(), times, 0), 0);
    };
    CQProgram program = Make(file);
    EXPECT_FALSE(program.IsOutOfDate()) << "the status was taken when it was made";
    touch(5);
    program.SetLoaded(true);
    program.CheckFile();
    EXPECT_EQ(program.IsLoaded(), E_FAIL);
    EXPECT_TRUE(program.IsOutOfDate()) << "CheckFile leaves the status";
    EXPECT_FALSE(program.IsOutOfDate());
    touch(6);
    EXPECT_TRUE(program.IsOutOfDate()) << "within the same second";

    std::filesystem::remove(file);
    program.SetLoaded(true);
    program.CheckFile();
    EXPECT_FALSE(program.IsOutOfDate());
    EXPECT_EQ(program.IsLoaded(), S_OK);
}

TEST_F(ProgramRig, MessagesAreTheReadersTextWithTheFileBehind)
{
    CQProgram open = Make(SensorsElf), nameless = Make(""), closed = Make(SensorsElf);
    ASSERT_TRUE(open.Open(&registry) && nameless.Open(&registry));
    const std::string file = "User aborted\r\n\r\nFile: " + SensorsElf;
    struct Case {
        std::string text, expected;
    };
    for (const auto& [text, expected] : {
             Case{open.MakeErrorText(OE_USER_ABORTED), file},
             Case{open.MakeErrorTextAt(OE_USER_ABORTED, 0x1234),
                  "User aborted\r\n\r\nFile:\r\n" + SensorsElf + "\r\nAddress:\r\n0x00001234"},
             Case{open.MakeVerifyErrorText(OE_USER_ABORTED, 0x08000004, -1, 7),
                  file + "\r\nAddress: 0x08000004\r\nValue in memory: -1\r\nValue in file: 7"},
             Case{open.MakeErrorText(MakeResult(0x8004FFFFu)), ""},
             Case{nameless.MakeErrorText(OE_USER_ABORTED), "User aborted"},
             Case{closed.MakeErrorText(OE_USER_ABORTED), ""},
         })
        EXPECT_EQ(text, expected);
}

TEST_F(ProgramRig, FaceOfTheProgramAndWhatACopyTakes)
{
    CQProgram debugOnly(CDownloadModule("$(NOSUCH)a.elf", 0x100, "elf", 1, 0, 4, 1), {}, owner, &registry);
    CQProgram transfer = CQProgram::ForTransfer("b.elf", 0, "elf", 2, {}, owner, &registry);
    EXPECT_EQ(std::pair(debugOnly.LoadMode(), transfer.LoadMode()), std::pair(1, 2));
    EXPECT_EQ(debugOnly.Key(), "$(NOSUCH)a.elf256elf4");

    struct Case {
        std::string name, format;
        std::optional<uint32_t> offset;
        bool matches;
    };
    for (const auto& c :
         {Case{"$(nosuch)A.ELF", "ELF", 0x100, true}, Case{"a.elf", "elf", std::nullopt, true},
          Case{"a.elf", "elf", 0x101, false}, Case{"a.elf", "srec", std::nullopt, false},
          Case{"b.elf", "elf", std::nullopt, false}})
        EXPECT_EQ(debugOnly.Matches(c.name, c.format, c.offset), c.matches) << c.name << " " << c.format;

    for (const Guid& id : {Ids::IQProgram, Ids::IQProgram2, Ids::IQProgram3})
        EXPECT_EQ(QueryAs<IQProgram3>(&debugOnly, id), &debugOnly);
    IQProgram3* face = &debugOnly;
    EXPECT_EQ(face->SetVerify(VARIANT_TRUE), S_OK);
    EXPECT_EQ(face->IsVerifyOff(), S_FALSE);
    EXPECT_EQ(face->AddArea(0x20, 0x10), E_INVALIDARG);
    ASSERT_EQ(face->AddArea(0x10, 0x20), S_OK);
    TargetAddress start = 7, end = 7;
    EXPECT_EQ(face->GetArea(1, start, end), S_OK);
    EXPECT_EQ(std::pair(start, end), std::pair(TargetAddress(7), TargetAddress(7))) << "nothing written";

    ASSERT_TRUE(debugOnly.Open(&registry));
    debugOnly.SetLoaded(true);
    CQProgram copy = debugOnly;
    EXPECT_EQ(
        std::tuple(copy.IsOpen(), copy.Areas().Count(), copy.IsLoaded(), copy.IsVerifyOff(), copy.Key()),
        std::tuple(false, 0u, S_OK, S_FALSE, debugOnly.Key()));
}

} // namespace
