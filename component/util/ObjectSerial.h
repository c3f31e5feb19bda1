#pragma once
#include <cstdint>

#include "boundary/Unknown.h"

// Each replaceable manager carries a serial number, so that a caller can tell a
// rebuilt manager from the one it replaced even when it lands at the same address.
uint64_t NextObjectSerial();
