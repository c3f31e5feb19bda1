/* A made-up sensor: each sample depends on the one before. */
#include "sensor.h"

volatile uint32_t sample_count;
struct reading last_reading = {7, -1};
static int32_t drift = 3;

int32_t sensor_sample(uint16_t channel)
{
    drift = drift * 5 + channel;
    last_reading.channel = channel;
    last_reading.value = drift % 1000;
    ++sample_count;
    return last_reading.value;
}
