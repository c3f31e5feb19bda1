#pragma once
#include <cstdint>

#include "boundary/Guid.h"

// An event: an identity and a 32-bit parameter, sent through the service registry.
struct Event {
    Guid id;
    int32_t param = 0;
};
