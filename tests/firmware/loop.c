/* Compute-bound: CRC-32 over a pseudo-random buffer, many passes. The CRC lands in
   mailbox[0] and its low byte is the exit code. */
#include "semihost.h"

enum { BUFFER_SIZE = 1024, PASSES = 256 };

static uint8_t buffer[BUFFER_SIZE];

static uint32_t crc32(uint32_t crc, const uint8_t* data, uint32_t size)
{
    for (uint32_t i = 0; i < size; ++i) {
        crc ^= data[i];
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc >> 1) ^ (0xEDB88320u & (0u - (crc & 1u)));
    }
    return crc;
}

int main(void)
{
    uint32_t seed = 12345;
    for (uint32_t i = 0; i < BUFFER_SIZE; ++i) {
        seed = seed * 1103515245u + 12345u;
        buffer[i] = (uint8_t)(seed >> 24);
    }
    uint32_t crc = 0xFFFFFFFFu;
    for (int pass = 0; pass < PASSES; ++pass)
        crc = crc32(crc, buffer, BUFFER_SIZE);
    crc = ~crc;
    mailbox[0] = crc;
    return (int)(crc & 0xFFu);
}
