// The reader on the test firmware agrees with the cross tools on the same file.
#include <algorithm>
#include <gtest/gtest.h>
#include <map>
#include <set>
#include <sstream>

#include "ReaderRig.h"
#include "platform/objfile/DebugData.h"
#include "platform/objfile/ElfImage.h"

namespace
{

// The same firmware in both byte orders.
class ElfAgainstTools : public ::testing::TestWithParam<const char*>
{
protected:
    const std::string Firmware = std::string(TESSEL_FIRMWARE_DIR) + "/" + GetParam();

    void SetUp() override
    {
        ASSERT_EQ(image.Open(Firmware), S_OK);
        ASSERT_EQ(debug.Read(image), S_OK);
        EXPECT_EQ(image.BigEndian(), Firmware.find("-be") != std::string::npos);
    }
    ElfImage image;
    DebugData debug;
};

TEST_P(ElfAgainstTools, LoadSegmentsAsReadelfShowsThem)
{
    std::set<std::tuple<uint32_t, uint32_t, uint32_t>> expected, seen;
    std::istringstream lines(ToolOutput("arm-none-eabi-readelf -lW " + Firmware));
    for (std::string line; std::getline(lines, line);) {
        std::istringstream words(line);
        std::string type, offset, virt, phys, fileSize, memSize;
        if (words >> type >> offset >> virt >> phys >> fileSize >> memSize && type == "LOAD")
            expected.insert({std::stoul(phys, nullptr, 16), std::stoul(fileSize, nullptr, 16),
                             std::stoul(memSize, nullptr, 16)});
    }
    for (const auto& s : image.Segments())
        seen.insert({s.address, static_cast<uint32_t>(s.bytes.size()), s.memSize});
    EXPECT_FALSE(expected.empty());
    EXPECT_EQ(seen, expected);
}

TEST_P(ElfAgainstTools, SymbolsAsNmListsThem)
{
    std::multiset<std::pair<std::string, uint32_t>> expected, seen;
    std::istringstream lines(ToolOutput("arm-none-eabi-nm " + Firmware));
    for (std::string line; std::getline(lines, line);) {
        std::istringstream words(line);
        std::string value, kind, name;
        if (!(words >> value >> kind >> name))
            continue;
        uint32_t address = std::stoul(value, nullptr, 16);
        // nm shows a Thumb function's value with bit 0 set; labels hold the code address.
        if (kind == "T" || kind == "t")
            address &= ~1u;
        expected.insert({name, address});
    }
    for (const auto& s : image.Symbols())
        seen.insert({s.name, s.address});
    EXPECT_GT(expected.size(), 10u);
    EXPECT_EQ(seen, expected);
}

TEST_P(ElfAgainstTools, LineTableAgreesWithAddr2lineOnEveryRow)
{
    const auto addresses = debug.RowAddresses();
    ASSERT_GT(addresses.size(), 10u);
    std::ostringstream command;
    command << "arm-none-eabi-addr2line -e " << Firmware;
    for (uint32_t a : addresses)
        command << " 0x" << std::hex << a;
    std::istringstream answers(ToolOutput(command.str()));
    for (uint32_t a : addresses) {
        std::string answer;
        ASSERT_TRUE(std::getline(answers, answer));
        answer = answer.substr(0, answer.find(" (discriminator"));
        const auto position = debug.AddressSource(a);
        ASSERT_TRUE(position) << std::hex << a;
        EXPECT_EQ(position->file + ":" + std::to_string(position->line), answer) << std::hex << a;
        // And back: the line's addresses hold this one's row start.
        bool found = false;
        for (uint32_t back : debug.LineAddresses(position->file, position->line))
            found |= debug.AddressSource(back)->line == position->line;
        EXPECT_TRUE(found);
    }
}

TEST_P(ElfAgainstTools, FunctionsVariablesAndFilesOfTheFirmware)
{
    const FunctionRange* sample = debug.FindFunction("sensor_sample");
    ASSERT_NE(sample, nullptr);
    EXPECT_EQ(debug.FunctionAt(sample->end - 2), sample);
    EXPECT_NE(debug.FunctionAt(sample->end), sample);
    EXPECT_TRUE(std::ranges::any_of(image.Symbols(), [&](const auto& s) {
        return s.name == "sensor_sample" && s.address == sample->start;
    }));

    const std::map<std::string, uint32_t> sizes = {
        {"total", 4}, {"last_reading", 8}, {"sample_count", 4}, {"greeting", 10}};
    for (const auto& [name, size] : sizes) {
        const VariableInfo* v = debug.FindVariable(name);
        ASSERT_NE(v, nullptr) << name;
        EXPECT_EQ(v->size, size) << name;
    }
    std::set<std::string> names;
    for (const auto& f : debug.SourceFiles())
        names.insert(f.substr(f.find_last_of('/') + 1));
    EXPECT_TRUE(names.count("sensors.c") && names.count("sensor.c"));
    EXPECT_FALSE(debug.LineAddresses("sensor.c", 10).empty());
}

INSTANTIATE_TEST_SUITE_P(ByteOrders, ElfAgainstTools, ::testing::Values("sensors.elf", "sensors-be.elf"));

} // namespace
