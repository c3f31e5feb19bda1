#ifndef TESSEL_FIRMWARE_SENSOR_H
#define TESSEL_FIRMWARE_SENSOR_H

#include <stdint.h>

/* A reading and the running state a debugger looks at. */
struct reading {
    uint16_t channel;
    int32_t value;
};

extern volatile uint32_t sample_count;
extern struct reading last_reading;

int32_t sensor_sample(uint16_t channel);

#endif
