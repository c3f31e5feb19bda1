#ifndef TESSEL_FIRMWARE_SEMIHOST_H
#define TESSEL_FIRMWARE_SEMIHOST_H

#include <stdint.h>

enum {
    SYS_WRITEC = 0x03,
    SYS_WRITE0 = 0x04,
    SYS_WRITE = 0x05,
    SYS_EXIT = 0x18,
    SYS_EXIT_EXTENDED = 0x20,
    ADP_STOPPED_APPLICATION_EXIT = 0x20026,
};

static inline int semihost_call(int operation, const void* argument)
{
    register int r0 __asm__("r0") = operation;
    register const void* r1 __asm__("r1") = argument;
    __asm__ volatile("bkpt 0xab" : "+r"(r0) : "r"(r1) : "memory");
    return r0;
}

/* Shared between a test and the firmware; see link.ld. */
extern volatile uint32_t mailbox[4];

void semihost_exit(int code);

#endif
