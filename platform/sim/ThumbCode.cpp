#include "platform/sim/ThumbCode.h"

uint32_t ThumbCode::Count(const uint8_t* block, size_t size, size_t from)
{
    uint32_t count = 0;
    size_t offset = 0;
    while (offset < size) {
        const unsigned length = offset + 1 < size ? Length(Halfword(block + offset)) : 2;
        if (offset >= from)
            ++count;
        offset += length;
    }
    return count;
}
