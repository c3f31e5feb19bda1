#pragma once
#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>

#include "boundary/Flags.h"
#include "boundary/HResult.h"
#include "component/memory/CMemoryArea.h"

// An area's ByteOrder: 1 says the target keeps integers as this system does.
inline constexpr uint32_t kOwnByteOrder = 1;
inline constexpr uint32_t kOtherByteOrder = 2;

// A buffer holds end - start + 1 bytes, and elements of no size cannot be
// walked: E_POINTER for no buffer, E_INVALIDARG for a reversed range or a
// zero size, else S_OK.
HRESULT CheckRange(TargetAddress start, TargetAddress end, const void* buffer, uint32_t accessSize = 1);

// The sizes a sized cache exists for; another size is served as the nearest
// one that divides it.
AccessSize NormalSize(AccessSize accessSize);

// The first area that holds `address`, or null.
const CMemoryArea* FindArea(std::span<const CMemoryArea> areas, TargetAddress address);
// The area with the lowest start above `address`, or null.
const CMemoryArea* FindNextArea(std::span<const CMemoryArea> areas, TargetAddress address);

// The part of a range that lies in one area. `offset` is where its bytes
// stand in the caller's buffer, counted from the range's start.
struct WalkChunk {
    const CMemoryArea& area;
    TargetAddress start;
    TargetAddress end;
    size_t offset;

    size_t Length() const { return AddressRange(start, end).Size(); }
};

// Reads skip the gaps of the memory map; fills and finds must not.
enum class GapRule { Skip, Stop };

struct WalkResult {
    HRESULT hr = S_OK;
    // The last step found no area: a write did not reach all it was given.
    bool endedInGap = false;
};

// Cuts start..end along the memory map and hands each piece to `treat`, in
// ascending order; a failing piece ends the walk with its result. A gap is
// skipped by a whole number of `accessSize` elements, so that the buffer
// keeps its element boundaries; its bytes are not handed to anyone.
WalkResult WalkRange(std::span<const CMemoryArea> areas, TargetAddress start, TargetAddress end,
                     AccessSize accessSize, GapRule gaps,
                     const std::function<HRESULT(const WalkChunk&)>& treat);

// Reverses each whole element of `accessSize` bytes; a tail shorter than an
// element stays as it is.
void ReverseElements(uint8_t* data, size_t length, AccessSize accessSize);
