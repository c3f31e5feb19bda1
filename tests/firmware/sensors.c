/* Samples the sensor from a loop, prints a line by semihosting and exits with
   the low byte of the sum. */
#include "semihost.h"
#include "sensor.h"

const char greeting[] = "sampling\n";
int32_t total = 0;

int main(void)
{
    semihost_call(SYS_WRITE0, greeting);
    for (uint16_t i = 0; i < 10; ++i)
        total += sensor_sample(i);
    mailbox[0] = (uint32_t)total;
    return (int)(total & 0xFF);
}
