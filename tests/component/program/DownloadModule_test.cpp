// A download module's identity and equality, its record and stored forms, and
// the checks of a list and of one edited entry.
#include <gtest/gtest.h>

#include "boundary/ComUtils.h"
#include "component/program/CDownloadModuleRecord4.h"
#include "component/program/DownloadModuleList.h"

namespace
{

using Modules = std::vector<CDownloadModule>;

CDownloadModule Download(const std::string& file, uint32_t offset = 0, const std::string& format = "elf",
                         int32_t accessSize = 1)
{
    return CDownloadModule(file, offset, format, 0, 0, accessSize, 0);
}

CDownloadModule WithFlags(CDownloadModule m, int32_t debugOnly, int32_t verify, int32_t autoDownload)
{
    m.DebugOnly = debugOnly;
    m.Verify = verify;
    m.AutoDownload = autoDownload;
    return m;
}

TEST(DownloadModuleKey, OneModuleUnlessFileOffsetFormatOrAccessSizeDiffer)
{
    EXPECT_EQ(Download("a.elf", 0x10, "Elf", 4).Key(), "a.elf16Elf4");
    EXPECT_EQ(Download("a.elf", 0xFFFFFFFF).Key(), "a.elf-1elf1");
    struct Case {
        CDownloadModule second;
        bool same;
    };
    const CDownloadModule first = Download("prog1", 6);
    for (const auto& [second, same] : {
             Case{Download("PROG1", 6, "ELF"), true},
             Case{Download("prog", 16), true}, // no separators: the digit moves into the offset
             Case{WithFlags(first, 1, 1, 1), true},
             Case{Download("prog1", 7), false},
             Case{Download("prog1", 6, "srec"), false},
             Case{Download("prog1", 6, "elf", 2), false},
         }) {
        ModuleKeyMap map;
        EXPECT_EQ(MakeModuleKeyMap({first, second}, map), same) << second.Key();
        if (same)
            EXPECT_EQ(map.begin()->second, first) << "the first of a key is kept";
        else
            EXPECT_EQ(map.size(), 2u);
    }
}

TEST(DownloadModuleEquality, AllSevenFieldsCaseSensitiveAndNotTheAssignedMark)
{
    const CDownloadModule base("a.elf", 1, "elf", 0, 0, 1, 0);
    CDownloadModule copy = base;
    EXPECT_EQ(std::pair(base.Assigned, copy.Assigned), std::pair(0, 1));
    EXPECT_EQ(copy, base);
    CDownloadModule assigned;
    assigned = base;
    EXPECT_EQ(assigned.Assigned, 1);

    const Modules differing{
        CDownloadModule("A.elf", 1, "elf", 0, 0, 1, 0), CDownloadModule("a.elf", 2, "elf", 0, 0, 1, 0),
        CDownloadModule("a.elf", 1, "ELF", 0, 0, 1, 0), CDownloadModule("a.elf", 1, "elf", 1, 0, 1, 0),
        CDownloadModule("a.elf", 1, "elf", 0, 1, 1, 0), CDownloadModule("a.elf", 1, "elf", 0, 0, 4, 0),
        CDownloadModule("a.elf", 1, "elf", 0, 0, 1, 1)};
    for (const auto& other : differing)
        EXPECT_FALSE(other == base) << other.Key();
}

TEST(DownloadModuleRecord4, AnOlderRecordsMissingFieldsTakeTheirDefaults)
{
    const CDownloadModule full("a.elf", 8, "elf", 1, 1, 4, 1);
    struct Case {
        int fields;
        int32_t verify, accessSize, autoDownload;
    };
    for (const auto& c : {Case{4, 0, 1, 0}, Case{5, 1, 1, 0}, Case{6, 1, 4, 0}, Case{7, 1, 4, 1}}) {
        auto record = CDownloadModuleRecord4::FromOlder(full, c.fields);
        ASSERT_TRUE(record);
        EXPECT_EQ(record->Module(),
                  CDownloadModule("a.elf", 8, "elf", 1, c.verify, c.accessSize, c.autoDownload))
            << c.fields;
    }
    EXPECT_FALSE(CDownloadModuleRecord4::FromOlder(full, 3));
}

TEST(ModuleVariant, WritesSevenSignedDecimalTextsAModuleAndReadsThemBack)
{
    const Modules modules{CDownloadModule("$(PROJDIR)/a.elf", 0xFFFFFFFF, "elf", 1, 0, 4, 1),
                          CDownloadModule("b.elf", 0x80000000, "srec", 0, 1, 1, 0)};
    Variant stored;
    WriteModuleList(modules, stored);
    EXPECT_EQ(CComUtils::VariantToStringList(stored),
              (std::vector<std::string>{"$(PROJDIR)/a.elf", "-1", "elf", "1", "0", "4", "1", "b.elf",
                                        "-2147483648", "srec", "0", "1", "1", "0"}));
    Modules read;
    ReadModuleList(stored, read);
    EXPECT_EQ(read, modules);

    WriteModuleList({}, stored);
    EXPECT_EQ(stored, Variant::Array(VT_ARRAY_BSTR));
    ReadModuleList(stored, read);
    EXPECT_TRUE(read.empty());
}

TEST(ModuleVariant, AnythingButSevenStringsAModuleReadsAsNoModulesAndNonNumbersAsZero)
{
    auto strings = CComUtils::StringListToVariant;
    const std::vector<std::string> seven{"a.elf", "0x10", "elf", "abc", "1", "4", "0"};
    std::vector<std::string> eight = seven;
    eight.push_back("b.elf");
    Variant numberInside = strings(seven);
    numberInside.Elements()[1] = Variant::UInt(16);
    for (const Variant& bad :
         {Variant(), Variant::String("a.elf"), Variant::Array(VT_ARRAY_UINT), strings(eight), numberInside}) {
        Modules read{Download("left over")};
        ReadModuleList(bad, read);
        EXPECT_TRUE(read.empty()) << bad.Type() << " " << bad.Elements().size();
    }
    Modules read;
    ReadModuleList(strings(seven), read);
    EXPECT_EQ(read, (Modules{CDownloadModule("a.elf", 0, "elf", 0, 1, 4, 0)}));
}

TEST(ModuleEditCheck, SameKeyIsItselfAnotherModulesExpandedKeyIsRefused)
{
    auto expand = [](std::string text) {
        const size_t at = text.find("$(PD)");
        return at == std::string::npos ? text : text.replace(at, 5, "/proj");
    };
    const CDownloadModule opened = Download("/proj/a.elf");
    const Modules list{opened, Download("/proj/b.elf"), Download("c.elf", 0x100)};
    struct Case {
        CDownloadModule edited;
        const Modules* list;
        ModuleEdit expected;
    };
    for (const auto& c : {
             Case{Download("/proj/b.elf"), nullptr, ModuleEdit::Accepted},
             Case{Download("/PROJ/A.ELF"), &list, ModuleEdit::Cancelled},
             Case{Download("$(PD)/a.elf"), &list, ModuleEdit::Cancelled},
             Case{WithFlags(opened, 0, 1, 0), &list, ModuleEdit::Accepted},
             Case{Download("$(PD)/B.elf"), &list, ModuleEdit::AlreadyExists},
             Case{Download("c.elf", 0x100), &list, ModuleEdit::AlreadyExists},
             Case{Download("c.elf", 0x200), &list, ModuleEdit::Accepted},
         })
        EXPECT_EQ(CheckModuleEdit(c.edited, opened, c.list, expand), c.expected) << c.edited.Key();
}

} // namespace
