// Identities and list variants as they cross interfaces.
#include <gtest/gtest.h>

#include <unordered_set>

#include "boundary/ComUtils.h"
#include "boundary/Ids.h"

namespace
{

TEST(Guid, TextRoundTripsAndComparesByteByByte)
{
    constexpr Guid a = "{6E5BE760-CF7F-11D4-8BBB-D607EBD66972}"_guid;
    EXPECT_EQ(a.ToText(), "{6E5BE760-CF7F-11D4-8BBB-D607EBD66972}");
    Guid parsed;
    ASSERT_TRUE(Guid::TryParse("{6e5be760-cf7f-11d4-8bbb-d607ebd66972}", parsed));
    EXPECT_EQ(parsed, a);
    std::unordered_set<Guid> set{Ids::IQRunner, Ids::IQRunner2, Ids::IQRunner};
    EXPECT_EQ(set.size(), 2u);
}

TEST(Guid, MalformedTextIsRefused)
{
    for (const char* text :
         {"", "{6E5BE760-CF7F-11D4-8BBB-D607EBD6697}", "6E5BE760-CF7F-11D4-8BBB-D607EBD66972",
          "{6E5BE760-CF7F-11D4-8BBB-D607EBD6697G}", "{6E5BE760CCF7F-11D4-8BBB-D607EBD66972}"}) {
        Guid g = Ids::IQRunner;
        EXPECT_FALSE(Guid::TryParse(text, g)) << text;
        EXPECT_EQ(g, Ids::IQRunner) << "a refused text leaves the value alone";
    }
}

TEST(ComUtils, ListsRoundTrip)
{
    std::vector<std::string> strings{"main.elf", "", "C:\\work\\boot.hex"};
    Variant v = CComUtils::StringListToVariant(strings);
    EXPECT_EQ(v.Type(), 0x2008);
    EXPECT_EQ(CComUtils::VariantToStringList(v), strings);

    std::vector<uint32_t> numbers{0, 0xFFFFFFFFu, 0x08000000u};
    Variant n = CComUtils::NumberListToVariant(numbers);
    EXPECT_EQ(n.Type(), 0x2017);
    EXPECT_EQ(CComUtils::VariantToNumberList(n), numbers);
}

TEST(ComUtils, AnythingElseReadsAsAnEmptyList)
{
    Variant mixed = CComUtils::StringListToVariant({"a", "b"});
    mixed.Elements()[1] = Variant::UInt(3);
    const Variant cases[] = {
        Variant(),
        Variant::String("not a list"),
        Variant::UInt(7),
        Variant::Array(VT_ARRAY_BSTR),
        CComUtils::NumberListToVariant({1, 2}),
        mixed,
    };
    for (const auto& v : cases) {
        EXPECT_TRUE(CComUtils::VariantToStringList(v).empty()) << v.Type();
        EXPECT_TRUE(CComUtils::VariantToRecords(v, 2).empty()) << v.Type();
    }
    EXPECT_TRUE(CComUtils::VariantToNumberList(CComUtils::StringListToVariant({"1"})).empty());
}

TEST(ComUtils, RecordsNeedALengthThatDivides)
{
    Variant two = CComUtils::RecordsToVariant({{"boot.qdc", "0"}, {"after.qdc", "1"}});
    auto records = CComUtils::VariantToRecords(two, 2);
    ASSERT_EQ(records.size(), 2u);
    EXPECT_EQ(records[1][0], "after.qdc");
    EXPECT_TRUE(CComUtils::VariantToRecords(two, 3).empty()) << "4 strings are no list of threes";
    EXPECT_TRUE(CComUtils::VariantToRecords(two, 0).empty());
}

} // namespace
