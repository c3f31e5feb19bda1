#pragma once
#include <map>
#include <set>
#include <string>
#include <vector>

#include "boundary/interfaces/Component.h"
#include "boundary/interfaces/MemoryManager.h"

// A memory manager over one area of a big-endian target. A byte nobody wrote
// holds the low byte of its address. Every call the commands make is logged
// as one line ("ReadMemoryValues 1000 10ff 1"); an operation fails on request,
// and the codes it fails with are explained only while reports is set.
class FakeMemoryManager : public IQMemoryManagerCmdLine5, public IQErrorReporter
{
public:
    static constexpr HRESULT NotMapped = static_cast<HRESULT>(0x80042010);
    static constexpr HRESULT Differs = static_cast<HRESULT>(0x80042020);
    static constexpr HRESULT NotFound = static_cast<HRESULT>(0x80042030);

    TargetAddress areaStart = 0x1000;
    TargetAddress areaEnd = 0x1FFF;
    bool hasArea = true;
    bool reports = true;
    std::map<HRESULT, std::string> texts{{NotMapped, "Address outside the memory map"},
                                         {Differs, "Memory differs"},
                                         {NotFound, "Pattern not found"}};
    // "compare", "copy", "fill", "find", "findAlternate", "test"
    std::set<std::string> lacking;
    // operation name -> result it gives at once
    std::map<std::string, HRESULT> fail;
    // What FillMemoryReporting tells of a verify failure, when it fails.
    bool fillMismatch = false;
    TargetAddress fillMismatchAddress = 0;
    int32_t fillWritten = 0, fillFound = 0;
    std::vector<std::string> calls;

    uint8_t Byte(TargetAddress address) const;
    void Poke(TargetAddress address, const std::vector<uint8_t>& bytes);
    std::vector<uint8_t> Peek(TargetAddress address, size_t count) const;

    HRESULT QueryInterface(const Guid& iid, void** out) override;
    TESSEL_NOT_REFCOUNTED
    HRESULT GetErrorText(HRESULT code, std::string& text) override;

    HRESULT GetCanCompare() override { return Can("compare"); }
    HRESULT GetCanCopy() override { return Can("copy"); }
    HRESULT GetCanFill() override { return Can("fill"); }
    HRESULT GetCanFind() override { return Can("find"); }
    HRESULT GetCanFindAlternate() override { return Can("findAlternate"); }
    HRESULT GetCanVerify() override { return S_OK; }
    HRESULT GetCanTest() override { return Can("test"); }
    HRESULT GetAreaCount(uint32_t& count) override;
    HRESULT GetAreaBounds(uint32_t index, TargetAddress& start, TargetAddress& end) override;
    HRESULT ReadMemoryValues(TargetAddress start, TargetAddress end, AccessSize accessSize,
                             uint8_t* buffer) override;
    HRESULT WriteMemoryValuesVerified(TargetAddress start, TargetAddress end, VariantBool verify,
                                      AccessSize accessSize, const uint8_t* buffer) override;
    HRESULT CompareMemory(TargetAddress start, TargetAddress end, TargetAddress destination,
                          AccessSize accessSize, uint8_t& first, uint8_t& second,
                          TargetAddress& address) override;
    HRESULT CopyMemory(TargetAddress start, TargetAddress end, TargetAddress destination, VariantBool verify,
                       AccessSize accessSize, uint8_t& first, uint8_t& second,
                       TargetAddress& address) override;
    HRESULT FindMemory(TargetAddress start, TargetAddress end, uint32_t flag1, uint32_t flag2,
                       uint32_t patternLength, const uint8_t* pattern, const uint8_t* mask,
                       TargetAddress& address) override;
    HRESULT FillMemoryReporting(TargetAddress start, TargetAddress end, VariantBool verify,
                                uint32_t patternLength, const uint8_t* pattern, VariantBool& failed,
                                TargetAddress& address, int32_t& written, int32_t& found) override;
    HRESULT TestMemory(TargetAddress start, TargetAddress end) override;

    // Slots the commands have no business calling: each logs "unexpected".
    using A = TargetAddress;
    using Out = uint8_t*;
    using In = const uint8_t*;
    HRESULT ReadMemory(A, A, AccessSize, Out) override { return Unused(); }
    HRESULT WriteMemory(A, A, AccessSize, In) override { return Unused(); }
    HRESULT FillMemory(A, A, uint32_t, In) override { return Unused(); }
    HRESULT VerifyMemory(A, A, In) override { return Unused(); }
    HRESULT RefreshMemory() override { return Unused(); }
    HRESULT RefreshMemoryAgain() override { return Unused(); }
    HRESULT WriteMemoryValues(A, A, AccessSize, In) override { return Unused(); }
    HRESULT ReadMemoryDirect(A, A, AccessSize, Out) override { return Unused(); }
    HRESULT ReadMemoryValuesDirect(A, A, AccessSize, Out) override { return Unused(); }
    HRESULT SetCacheEnabled(VariantBool) override { return Unused(); }
    HRESULT GetCacheEnabled() override { return Unused(); }
    HRESULT FindMemoryEx(A, A, uint32_t, uint32_t, uint32_t, uint32_t, In, In, A&) override
    {
        return Unused();
    }
    HRESULT WriteMemoryVerified(A, A, VariantBool, AccessSize, In) override { return Unused(); }
    HRESULT FillMemoryVerified(A, A, VariantBool, uint32_t, In) override { return Unused(); }
    HRESULT VerifyMemoryReporting(A, A, In, A&, VariantBool&) override { return Unused(); }
    HRESULT WriteMemoryReporting(A, A, VariantBool, AccessSize, In, VariantBool&, A&, int32_t&,
                                 int32_t&) override
    {
        return Unused();
    }
    HRESULT WriteMemoryValuesReporting(A, A, VariantBool, AccessSize, In, VariantBool&, A&, int32_t&,
                                       int32_t&) override
    {
        return Unused();
    }

private:
    HRESULT Can(const char* operation) const { return lacking.count(operation) ? 1 : S_OK; }
    HRESULT Unused();
    // Logs the call; gives the result asked for in fail, else S_OK.
    HRESULT Enter(const std::string& call);
    bool Mapped(TargetAddress start, TargetAddress end) const;

    std::map<TargetAddress, uint8_t> bytes_;
};
