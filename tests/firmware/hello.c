/* Prints "hello\n" through the three output calls, then exits with code 0. */
#include "semihost.h"

int main(void)
{
    static const char head[] = "hel";
    const uint32_t block[3] = {1, (uint32_t)head, 3};
    if (semihost_call(SYS_WRITE, block) != 0)
        return 2;
    const char l = 'l';
    semihost_call(SYS_WRITEC, &l);
    semihost_call(SYS_WRITE0, "o\n");
    /* An operation the simulator does not offer answers -1. */
    if (semihost_call(0x31, 0) != -1)
        return 3;
    return 0;
}
