#pragma once
#include "boundary/TargetAddress.h"

// One range a load wrote into the target, both ends inclusive.
struct CMemoryLoadData {
    TargetAddress Start;
    TargetAddress End;

    friend bool operator==(const CMemoryLoadData&, const CMemoryLoadData&) = default;
};
