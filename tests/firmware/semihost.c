#include "semihost.h"

__attribute__((section(".mailbox"), used)) volatile uint32_t mailbox[4];

void semihost_exit(int code)
{
    if (code == 0) {
        semihost_call(SYS_EXIT, (const void*)ADP_STOPPED_APPLICATION_EXIT);
    } else {
        const uint32_t block[2] = {ADP_STOPPED_APPLICATION_EXIT, (uint32_t)code};
        semihost_call(SYS_EXIT_EXTENDED, block);
    }
    for (;;) {
    }
}
