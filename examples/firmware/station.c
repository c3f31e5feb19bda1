/* A small weather station: it samples three sensors, keeps a moving average
   of each in a table, and reports over the debugger's console (semihosting).
   Built for any Cortex-M with flash at 0x08000000 and RAM at 0x20000000. */
#include <stdint.h>

#define SAMPLES 8

struct channel {
    const char* name;
    int32_t history[SAMPLES];
    int32_t average;
    uint32_t count;
};

/* What is worth looking at from the debugger: the channels, a calibration
   table in flash, and a counter of rounds. */
struct channel channels[3] = {{.name = "temperature"}, {.name = "humidity"}, {.name = "pressure"}};
const int16_t calibration[4] = {-12, 3, 250, 1013};
volatile uint32_t rounds;

static int semihost(int operation, const void* argument)
{
    register int r0 __asm__("r0") = operation;
    register const void* r1 __asm__("r1") = argument;
    __asm__ volatile("bkpt 0xab" : "+r"(r0) : "r"(r1) : "memory");
    return r0;
}

static void print(const char* text)
{
    semihost(0x04, text);
}

static void print_number(int32_t value)
{
    char digits[12];
    char* at = digits + sizeof digits;
    uint32_t magnitude = value < 0 ? (uint32_t)-value : (uint32_t)value;
    *--at = '\0';
    do {
        *--at = (char)('0' + magnitude % 10);
        magnitude /= 10;
    } while (magnitude != 0);
    if (value < 0)
        *--at = '-';
    print(at);
}

/* A made-up sensor: a slow wave around the calibration point. */
static int32_t sample(unsigned channel, uint32_t round)
{
    int32_t wave = (int32_t)((round * 7 + channel * 13) % 21) - 10;
    return calibration[channel + 1] + wave;
}

int32_t moving_average(struct channel* c, int32_t value)
{
    c->history[c->count % SAMPLES] = value;
    c->count++;
    uint32_t n = c->count < SAMPLES ? c->count : SAMPLES;
    int32_t sum = 0;
    for (uint32_t i = 0; i < n; ++i)
        sum += c->history[i];
    c->average = sum / (int32_t)n;
    return c->average;
}

int main(void)
{
    print("station: starting\n");
    for (rounds = 0; rounds < 16; ++rounds)
        for (unsigned i = 0; i < 3; ++i)
            moving_average(&channels[i], sample(i, rounds));
    for (unsigned i = 0; i < 3; ++i) {
        print(channels[i].name);
        print(" ");
        print_number(channels[i].average);
        print("\n");
    }
    return 0;
}
