#include <gtest/gtest.h>

#include <algorithm>

#include "support/MemoryRig.h"

namespace
{

// Whether each operation turns four-byte elements round between memory and
// the buffer, by the area's byte order (1 ours, 2 the other, 3 unknown) and
// sized access. The plain forms give the most significant byte first; the
// ...Values forms give this system's own integers.
struct OrderCase {
    uint32_t byteOrder;
    bool sized;
    bool readReverses;
    bool readValuesReverses;
    bool writeReverses;
    bool writeValuesReverses;
};

const OrderCase kOrderCases[] = {
    {1, false, true, false, true, false}, {2, false, false, true, false, true},
    {3, false, false, true, true, true},  {1, true, false, false, false, false},
    {2, true, false, true, false, true},
};

Bytes Maybe(bool reversed, Bytes bytes)
{
    if (reversed)
        std::reverse(bytes.begin(), bytes.end());
    return bytes;
}

TEST(ByteOrder, ElementsAreTurnedRoundByAreaAndOperation)
{
    const Bytes memory{0x11, 0x22, 0x33, 0x44};
    const Bytes value{0xA1, 0xA2, 0xA3, 0xA4};
    for (const auto& c : kOrderCases) {
        SCOPED_TRACE(testing::Message() << "order " << c.byteOrder << (c.sized ? " sized" : " plain"));
        MemoryRig rig({{0x1000, 0x1FFF, c.byteOrder, c.sized}});
        rig.platform.Poke(0x1000, memory);
        Bytes out(4);
        ASSERT_EQ(rig.manager.ReadMemory(0x1000, 0x1003, 4, out.data()), S_OK);
        EXPECT_EQ(out, Maybe(c.readReverses, memory)) << "ReadMemory";
        ASSERT_EQ(rig.manager.ReadMemoryValues(0x1000, 0x1003, 4, out.data()), S_OK);
        EXPECT_EQ(out, Maybe(c.readValuesReverses, memory)) << "ReadMemoryValues";
        ASSERT_EQ(rig.manager.ReadMemoryValuesDirect(0x1000, 0x1003, 4, out.data()), S_OK);
        EXPECT_EQ(out, Maybe(c.readValuesReverses, memory)) << "ReadMemoryValuesDirect";

        ASSERT_EQ(rig.manager.WriteMemory(0x1004, 0x1007, 4, value.data()), S_OK);
        EXPECT_EQ(rig.platform.Bytes(0x1004, 4), Maybe(c.writeReverses, value)) << "WriteMemory";
        ASSERT_EQ(rig.manager.WriteMemoryValues(0x1008, 0x100B, 4, value.data()), S_OK);
        EXPECT_EQ(rig.platform.Bytes(0x1008, 4), Maybe(c.writeValuesReverses, value)) << "WriteMemoryValues";
        EXPECT_EQ(value, (Bytes{0xA1, 0xA2, 0xA3, 0xA4})) << "the caller's buffer is left alone";
    }
}

TEST(ByteOrder, AChunkSpanningTwoAreasIsTurnedByEachAreasOrder)
{
    MemoryRig rig({{0x1000, 0x1003, 1}, {0x1004, 0x1007, 2}});
    rig.platform.Poke(0x1000, {1, 2, 3, 4, 5, 6, 7, 8});
    EXPECT_EQ(rig.Read(0x1000, 8, 4), (Bytes{4, 3, 2, 1, 5, 6, 7, 8}));
}

} // namespace
