#pragma once
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "boundary/interfaces/Component.h"
#include "boundary/interfaces/PlatformMemory.h"
#include "boundary/interfaces/Workbench.h"

// One entry of the fake's memory map.
struct FakeArea {
    TargetAddress start;
    TargetAddress end;
    uint32_t byteOrder = 1;
    bool sized = false;
};

// A platform offering its memory through any of the five generations, to a
// manager through the registry or to a cache directly. Bytes
// follow from their address until written. Every access is logged as
// "<operation><generation> 0x<start>..0x<end>" (sized ones add " /<size>"),
// so that a test compares the whole conversation in one line. An access
// outside the map fails, which is how a walk that strays into a gap shows.
class FakePlatformMemory : public IQPlatformMemory2,
                           public IQPlatformMemory3,
                           public IQPlatformMemory4,
                           public IQPlatformMemory5,
                           public IQErrorReporter
{
public:
    static constexpr HRESULT kOutsideMap = MakeResult(0x80043092u);
    static constexpr HRESULT kVerifyFailed = MakeResult(0x80042022u);
    static constexpr HRESULT kDiffers = MakeResult(0x80042021u);

    explicit FakePlatformMemory(std::vector<FakeArea> areas, std::set<int> generations = {1, 2, 3, 4, 5});

    // Registers the generations it offers.
    void RegisterIn(IQServiceRegistry& registry);

    static uint8_t Derived(TargetAddress address)
    {
        return static_cast<uint8_t>((address.Value() * 2654435761u) >> 24);
    }
    uint8_t ByteAt(TargetAddress address) const;
    // One line of the log.
    static std::string Line(const std::string& name, TargetAddress start, TargetAddress end,
                            AccessSize size = 0);
    std::vector<uint8_t> Bytes(TargetAddress start, size_t count) const;
    void Poke(TargetAddress start, const std::vector<uint8_t>& bytes);

    std::vector<FakeArea> areas;
    std::vector<std::string> log;
    // A logged operation that answers this code instead of acting, by its
    // log name ("WriteVerified3").
    std::map<std::string, HRESULT> answers;
    // The tests of what it offers, one bit each in the order of the Can flags.
    uint32_t offered = 0x7F;
    // A verified write or fill that reaches this address reports a difference there.
    std::optional<TargetAddress> verifyFailsAt;
    // The flag of the last verified write or fill of the third generation.
    VariantBool verified = VARIANT_FALSE;
    uint32_t pageSize = 0x1000;
    HRESULT pageSizeResult = S_OK;

    // The first generation's face, for a cache that is handed it directly.
    IQPlatformMemory* AsFirst() { return &first_; }

    using A = TargetAddress;
    using In = const uint8_t*;
    using Out = uint8_t*;
    using VB = VariantBool;

    HRESULT QueryInterface(const Guid& iid, void** out) override;
    TESSEL_NOT_REFCOUNTED

    HRESULT CanCompare() override { return Can(0); }
    HRESULT CanCopy() override { return Can(1); }
    HRESULT CanFill() override { return Can(2); }
    HRESULT CanFind() override { return Can(3); }
    HRESULT CanFindAlternate() override { return Can(4); }
    HRESULT CanVerify() override { return Can(5); }
    HRESULT CanTest() override { return Can(6); }
    HRESULT GetAreaCount(uint32_t& count) override
    {
        count = static_cast<uint32_t>(areas.size());
        return S_OK;
    }
    HRESULT GetArea(uint32_t index, A& start, A& end, uint32_t& byteOrder, uint32_t& info, VB& sized,
                    VB& attribute1, VB& attribute2, VB& attribute3) override;
    HRESULT Read(A start, A end, Out buffer) override { return DoRead("Read2", start, end, 0, buffer); }
    HRESULT Write(A start, A end, In buffer) override { return DoWrite("Write2", start, end, 0, buffer); }
    HRESULT ReadSized(A start, A end, AccessSize size, Out buffer) override
    {
        return DoRead("ReadSized2", start, end, size, buffer);
    }
    HRESULT WriteSized(A start, A end, AccessSize size, In buffer) override
    {
        return DoWrite("WriteSized2", start, end, size, buffer);
    }
    HRESULT Compare(A start, A end, A to, AccessSize size, uint8_t& first, uint8_t& second, A& at) override;
    HRESULT Copy(A start, A end, A to, VB, AccessSize, uint8_t&, uint8_t&, A&) override
    {
        return DoCopy("Copy2", start, end, to);
    }
    HRESULT Fill(A start, A end, uint32_t length, In pattern) override
    {
        return Store("Fill2", start, end, 0, length, pattern);
    }
    HRESULT Find(A start, A end, uint32_t, uint32_t, uint32_t length, In pattern, In mask, A& at) override
    {
        return DoFind("Find2", start, end, length, pattern, mask, at);
    }
    HRESULT Verify(A start, A end, In) override { return Plain("Verify2", start, end); }
    HRESULT Test(A start, A end) override { return Plain("Test2", start, end); }
    HRESULT Refresh() override { return Plain("Refresh2", 0, 0); }
    HRESULT SetDownloadMode(uint32_t flag) override { return Plain("SetDownloadMode2", flag, flag); }
    HRESULT GetPageSize(uint32_t& size) override
    {
        size = pageSize;
        return pageSizeResult;
    }

    HRESULT FindEx(A start, A end, uint32_t, uint32_t, uint32_t, uint32_t length, In pattern, In mask,
                   A& at) override
    {
        return DoFind("FindEx3", start, end, length, pattern, mask, at);
    }
    HRESULT WriteVerified(A start, A end, VB verify, In buffer) override
    {
        verified = verify;
        return DoWrite("WriteVerified3", start, end, 0, buffer);
    }
    // Fails on a byte at verifyFailsAt, which keeps what it had.
    HRESULT FillVerified(A start, A end, VB, uint32_t length, In pattern) override;
    HRESULT WriteSizedVerified(A start, A end, VB verify, AccessSize size, In buffer) override
    {
        verified = verify;
        return DoWrite("WriteSizedVerified3", start, end, size, buffer);
    }

    HRESULT GetLongOperationsOffered(VB&) override { return E_NOTIMPL; }

    HRESULT WriteVerifiedReporting(A start, A end, VB, In buffer, VB& failed, A& at, int32_t& written,
                                   int32_t& found) override
    {
        return DoReporting("WriteReporting5", start, end, 0, buffer, failed, at, written, found);
    }
    HRESULT WriteSizedVerifiedReporting(A start, A end, VB, AccessSize size, In buffer, VB& failed, A& at,
                                        int32_t& written, int32_t& found) override
    {
        return DoReporting("WriteSizedReporting5", start, end, size, buffer, failed, at, written, found);
    }

    HRESULT GetErrorText(HRESULT code, std::string& text) override;

private:
    // The first generation has operations of the same names as the second;
    // its own face lets the log tell them apart.
    struct First : IQPlatformMemory {
        explicit First(FakePlatformMemory& owner) : p(owner) {}
        HRESULT QueryInterface(const Guid& iid, void** out) override { return p.QueryInterface(iid, out); }
        TESSEL_NOT_REFCOUNTED
        HRESULT GetMemoryInfo(Variant&) override { return E_NOTIMPL; }
        HRESULT GetAreaCount(uint32_t& count) override { return p.GetAreaCount(count); }
        HRESULT GetArea(uint32_t index, A& start, A& end, uint32_t& byteOrder, uint32_t& info,
                        uint32_t& flags) override;
        HRESULT Read(A start, A end, Out buffer) override { return p.DoRead("Read1", start, end, 0, buffer); }
        HRESULT Write(A start, A end, In buffer) override
        {
            return p.DoWrite("Write1", start, end, 0, buffer);
        }
        HRESULT ReadSized(A start, A end, AccessSize size, Out buffer) override
        {
            return p.DoRead("ReadSized1", start, end, size, buffer);
        }
        HRESULT WriteSized(A start, A end, AccessSize size, In buffer) override
        {
            return p.DoWrite("WriteSized1", start, end, size, buffer);
        }
        HRESULT Compare(A start, A end, A) override { return p.Plain("Compare1", start, end); }
        HRESULT Copy(A start, A end, A to) override { return p.DoCopy("Copy1", start, end, to); }
        HRESULT Fill(A start, A end, uint32_t length, In pattern) override
        {
            return p.Store("Fill1", start, end, 0, length, pattern);
        }
        HRESULT Find(A start, A end, uint32_t length, In pattern, A& at) override
        {
            return p.DoFind("Find1", start, end, length, pattern, nullptr, at);
        }
        HRESULT Verify(A start, A end, In) override { return p.Plain("Verify1", start, end); }
        HRESULT Test(A start, A end) override { return p.Plain("Test1", start, end); }
        HRESULT Refresh() override { return p.Plain("Refresh1", 0, 0); }
        HRESULT SetDownloadMode(uint32_t flag) override { return p.Plain("SetDownloadMode1", flag, flag); }
        FakePlatformMemory& p;
    };

    HRESULT Can(int bit) const { return (offered >> bit) & 1 ? S_OK : S_FALSE; }
    // Logs the call; a forced answer for it comes back in `forced`.
    bool Logged(const std::string& name, A start, A end, AccessSize size, HRESULT& forced);
    bool Mapped(A start, A end) const;
    HRESULT DoRead(const char* name, A start, A end, AccessSize size, Out buffer);
    HRESULT DoWrite(const char* name, A start, A end, AccessSize size, In buffer);
    HRESULT Store(const char* name, A start, A end, AccessSize size, uint64_t length, In pattern);
    HRESULT DoFind(const char* name, A start, A end, uint32_t length, In pattern, In mask, A& found);
    HRESULT DoCopy(const char* name, A start, A end, A destination);
    HRESULT DoReporting(const char* name, A start, A end, AccessSize size, In buffer, VB& failed, A& at,
                        int32_t& written, int32_t& found);
    // Logs the call and answers S_OK, or what it is told to.
    HRESULT Plain(const char* name, A start, A end, AccessSize size = 0);

    std::set<int> generations_;
    First first_{*this};
    std::map<TargetAddress, uint8_t> written_;
};
