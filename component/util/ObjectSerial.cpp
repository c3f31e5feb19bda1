#include "component/util/ObjectSerial.h"

#include <atomic>

uint64_t NextObjectSerial()
{
    static std::atomic<uint64_t> next{1};
    return next++;
}
