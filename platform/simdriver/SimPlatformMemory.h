#pragma once
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "boundary/interfaces/Component.h"
#include "boundary/interfaces/PlatformMemory.h"

class SimTarget;
struct SimResult;

// The simulated target's memory as the platform offers it: the debugger reads
// and writes any mapped byte while the target is halted, flash included (that
// is how a download reaches it). The simulator has no bus widths, so a sized
// access moves the same bytes as a plain one, and every whole-range operation
// works byte by byte whatever access size it is given.
//
// A failure answers one of the codes below; GetErrorText gives its text, with
// the details of the last failure (the address, the bytes) when the code asked
// about is that failure's. An operation that writes checks first that its whole
// range is mapped, so a refused one has changed nothing. Main thread only.
//
// The whole-range operations (compare, copy, fill, find, verify, test) are in
// SimMemoryOperations.cpp; the rest in SimPlatformMemory.cpp.
class SimPlatformMemory final : public IQPlatformMemory,
                                public IQPlatformMemory2,
                                public IQPlatformMemory3,
                                public IQPlatformMemory5,
                                public IQErrorReporter
{
public:
    explicit SimPlatformMemory(SimTarget& target) : target_(target) {}

    HRESULT QueryInterface(const Guid& iid, void** out) override;
    TESSEL_NOT_REFCOUNTED

    HRESULT GetErrorText(HRESULT code, std::string& text) override;

    // The variant's name, as text.
    HRESULT GetMemoryInfo(Variant& info) override;
    // One area a region of the map, in address order.
    HRESULT GetAreaCount(uint32_t& count) override;
    // info is the region's kind: 0 flash, 1 RAM, 2 peripheral; no flags are set.
    HRESULT GetArea(uint32_t index, TargetAddress& start, TargetAddress& end, uint32_t& byteOrder,
                    uint32_t& info, uint32_t& flags) override;
    HRESULT GetArea(uint32_t index, TargetAddress& start, TargetAddress& end, uint32_t& byteOrder,
                    uint32_t& info, VariantBool& sized, VariantBool& attribute1, VariantBool& attribute2,
                    VariantBool& attribute3) override;

    HRESULT Read(TargetAddress start, TargetAddress end, uint8_t* buffer) override;
    HRESULT Write(TargetAddress start, TargetAddress end, const uint8_t* buffer) override;
    HRESULT ReadSized(TargetAddress start, TargetAddress end, AccessSize size, uint8_t* buffer) override;
    HRESULT WriteSized(TargetAddress start, TargetAddress end, AccessSize size,
                       const uint8_t* buffer) override;

    HRESULT CanCompare() override { return S_OK; }
    HRESULT CanCopy() override { return S_OK; }
    HRESULT CanFill() override { return S_OK; }
    HRESULT CanFind() override { return S_OK; }
    HRESULT CanFindAlternate() override { return S_OK; }
    HRESULT CanVerify() override { return S_OK; }
    HRESULT CanTest() override { return S_OK; }

    HRESULT Compare(TargetAddress start, TargetAddress end, TargetAddress destination) override;
    // The first difference: `first` at `address` in the source, `second` at the
    // same offset in the destination; kCompareFailed.
    HRESULT Compare(TargetAddress start, TargetAddress end, TargetAddress destination, AccessSize size,
                    uint8_t& first, uint8_t& second, TargetAddress& address) override;
    HRESULT Copy(TargetAddress start, TargetAddress end, TargetAddress destination) override;
    // Overlapping ranges copy as if through a buffer. With `verify`, a byte that
    // does not read back gives kVerifyFailed: `first` written and `second` found
    // at `address` in the destination.
    HRESULT Copy(TargetAddress start, TargetAddress end, TargetAddress destination, VariantBool verify,
                 AccessSize size, uint8_t& first, uint8_t& second, TargetAddress& address) override;
    // The pattern repeats from start to end; when the range is not a whole
    // number of patterns, the last one is cut short at end.
    HRESULT Fill(TargetAddress start, TargetAddress end, uint32_t patternLength,
                 const uint8_t* pattern) override;
    HRESULT FillVerified(TargetAddress start, TargetAddress end, VariantBool verify, uint32_t patternLength,
                         const uint8_t* pattern) override;
    // The lowest address at or after start where the whole pattern, inside
    // start..end, matches under the mask (a null mask compares every bit).
    // Only mapped memory is searched: a match never spans a gap in the map.
    // Nothing found is kFindFailed. The flags are not used.
    HRESULT Find(TargetAddress start, TargetAddress end, uint32_t patternLength, const uint8_t* pattern,
                 TargetAddress& found) override;
    HRESULT Find(TargetAddress start, TargetAddress end, uint32_t flag1, uint32_t flag2,
                 uint32_t patternLength, const uint8_t* pattern, const uint8_t* mask,
                 TargetAddress& address) override;
    HRESULT FindEx(TargetAddress start, TargetAddress end, uint32_t flag1, uint32_t flag2, uint32_t flag3,
                   uint32_t patternLength, const uint8_t* pattern, const uint8_t* mask,
                   TargetAddress& address) override;
    HRESULT Verify(TargetAddress start, TargetAddress end, const uint8_t* data) override;
    // Destructive: writes three patterns over the range, reading each back, and
    // leaves the last one there.
    HRESULT Test(TargetAddress start, TargetAddress end) override;
    // Nothing is cached here.
    HRESULT Refresh() override { return S_OK; }
    // Remembered only: the simulator writes flash the same way in either mode.
    HRESULT SetDownloadMode(uint32_t flag) override;
    HRESULT GetPageSize(uint32_t& size) override;

    HRESULT WriteVerified(TargetAddress start, TargetAddress end, VariantBool verify,
                          const uint8_t* buffer) override;
    HRESULT WriteSizedVerified(TargetAddress start, TargetAddress end, VariantBool verify, AccessSize size,
                               const uint8_t* buffer) override;
    HRESULT WriteVerifiedReporting(TargetAddress start, TargetAddress end, VariantBool verify,
                                   const uint8_t* buffer, VariantBool& failed, TargetAddress& address,
                                   int32_t& written, int32_t& found) override;
    HRESULT WriteSizedVerifiedReporting(TargetAddress start, TargetAddress end, VariantBool verify,
                                        AccessSize size, const uint8_t* buffer, VariantBool& failed,
                                        TargetAddress& address, int32_t& written, int32_t& found) override;

    bool DownloadMode() const { return downloadMode_; }
    // What the last failure said beyond its code, such as "Address H'30000000
    // is not mapped"; the function-name platform reports it as its own text.
    const std::string& LastFailureDetail() const { return lastDetail_; }

    // Codes of the error table.
    static constexpr HRESULT kInvalidAddress = static_cast<HRESULT>(0x80042010u);
    static constexpr HRESULT kInvalidParameter = static_cast<HRESULT>(0x80042019u);
    static constexpr HRESULT kCompareFailed = static_cast<HRESULT>(0x80042020u);
    static constexpr HRESULT kFindFailed = static_cast<HRESULT>(0x80042021u);
    static constexpr HRESULT kVerifyFailed = static_cast<HRESULT>(0x80042022u);
    static constexpr HRESULT kStartAboveEnd = static_cast<HRESULT>(0x80043083u);
    static constexpr HRESULT kCannotRead = static_cast<HRESULT>(0x80043092u);
    static constexpr HRESULT kCannotWrite = static_cast<HRESULT>(0x80043093u);
    static constexpr HRESULT kCannotCopy = static_cast<HRESULT>(0x80043094u);

private:
    // Bytes from start to end inclusive; 0 when the range is reversed. The whole
    // address space is one byte more than 32 bits can count, so the count is 64-bit.
    static uint64_t Length(TargetAddress start, TargetAddress end)
    {
        const auto range = AddressRange::Between(start, end);
        return range ? range->Size() : 0;
    }
    HRESULT Fail(HRESULT code, std::string detail = {});
    HRESULT FailAccess(HRESULT code, const SimResult& result);
    // kStartAboveEnd for a reversed range; otherwise S_OK.
    HRESULT CheckRange(TargetAddress start, TargetAddress end);
    // A source range and a destination of its length: ordered, inside the
    // address space, and mapped (else `code`).
    HRESULT CheckPair(TargetAddress start, TargetAddress end, TargetAddress destination, HRESULT code);
    // `code` naming the first byte of start..end that no region maps.
    HRESULT CheckMapped(TargetAddress start, TargetAddress end, HRESULT code);
    HRESULT ReadChunk(TargetAddress address, size_t length, uint8_t* buffer, HRESULT code);
    HRESULT WriteChunk(TargetAddress address, size_t length, const uint8_t* buffer, HRESULT code);
    // Writes the pattern over start..end, or, with check, reads it back.
    HRESULT FillPass(TargetAddress start, TargetAddress end, uint32_t patternLength, const uint8_t* pattern,
                     bool check);
    HRESULT FindIn(TargetAddress start, TargetAddress end, uint32_t patternLength, const uint8_t* pattern,
                   const uint8_t* mask, std::optional<TargetAddress>& found);

    SimTarget& target_;
    bool downloadMode_ = false;
    HRESULT lastCode_ = S_OK;
    std::string lastDetail_;
};
