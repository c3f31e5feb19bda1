#pragma once
#include <cstddef>
#include <cstdint>
#include <map>
#include <vector>

#include "boundary/Flags.h"
#include "boundary/HResult.h"

// Target memory behind the fake platform interfaces. Every byte is derived
// from its address until written, and every access is recorded, so that a test
// can tell a cache hit (no call) from a fetch and see exactly which ranges were
// asked for.
class FakeTarget
{
public:
    enum class Op {
        Read,
        ReadSized,
        Write,
        WriteSized,
        WriteVerified,
        WriteSizedVerified,
        WriteReporting,
        WriteSizedReporting
    };
    struct Call {
        Op op;
        int generation; // which interface generation was called
        TargetAddress start;
        TargetAddress end;
        AccessSize accessSize;
    };

    static uint8_t Pattern(TargetAddress address)
    {
        return static_cast<uint8_t>((address.Value() * 2654435761u) >> 24);
    }

    uint8_t ByteAt(TargetAddress address) const;
    HRESULT Read(Op op, int generation, TargetAddress start, TargetAddress end, AccessSize size,
                 uint8_t* buffer);
    HRESULT Write(Op op, int generation, TargetAddress start, TargetAddress end, AccessSize size,
                  const uint8_t* buffer);

    size_t CallCount() const { return calls.size(); }

    std::vector<Call> calls;
    // The next `failingReads` reads answer `failCode` and leave the buffer alone.
    int failingReads = 0;
    HRESULT failCode = E_FAIL;
    HRESULT writeResult = S_OK;

private:
    std::map<TargetAddress, uint8_t> written_;
};
