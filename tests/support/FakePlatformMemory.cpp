#include "FakePlatformMemory.h"

#include <cstdio>

#include "boundary/Ids.h"

FakePlatformMemory::FakePlatformMemory(std::vector<FakeArea> map, std::set<int> generations)
    : areas(std::move(map)), generations_(std::move(generations))
{
}

void FakePlatformMemory::RegisterIn(IQServiceRegistry& registry)
{
    if (generations_.count(1))
        registry.RegisterService(Ids::IQPlatformMemory, &first_);
    if (generations_.count(2))
        registry.RegisterService(Ids::IQPlatformMemory2, static_cast<IQPlatformMemory2*>(this));
    if (generations_.count(3))
        registry.RegisterService(Ids::IQPlatformMemory3, static_cast<IQPlatformMemory3*>(this));
    if (generations_.count(4))
        registry.RegisterService(Ids::IQPlatformMemory4, static_cast<IQPlatformMemory4*>(this));
    if (generations_.count(5))
        registry.RegisterService(Ids::IQPlatformMemory5, static_cast<IQPlatformMemory5*>(this));
}

HRESULT FakePlatformMemory::QueryInterface(const Guid& iid, void** out)
{
    if (out == nullptr)
        return E_POINTER;
    *out = nullptr;
    if (iid == Ids::IQPlatformMemory && generations_.count(1))
        *out = static_cast<IQPlatformMemory*>(&first_);
    else if ((iid == Ids::IUnknown || iid == Ids::IQPlatformMemory2) && generations_.count(2))
        *out = static_cast<IQPlatformMemory2*>(this);
    else if (iid == Ids::IQPlatformMemory3 && generations_.count(3))
        *out = static_cast<IQPlatformMemory3*>(this);
    else if (iid == Ids::IQPlatformMemory4 && generations_.count(4))
        *out = static_cast<IQPlatformMemory4*>(this);
    else if (iid == Ids::IQPlatformMemory5 && generations_.count(5))
        *out = static_cast<IQPlatformMemory5*>(this);
    else if (iid == Ids::IQErrorReporter)
        *out = static_cast<IQErrorReporter*>(this);
    return *out != nullptr ? S_OK : E_NOINTERFACE;
}

uint8_t FakePlatformMemory::ByteAt(TargetAddress address) const
{
    const auto it = written_.find(address);
    return it != written_.end() ? it->second : Derived(address);
}

std::vector<uint8_t> FakePlatformMemory::Bytes(TargetAddress start, size_t count) const
{
    std::vector<uint8_t> bytes(count);
    for (size_t i = 0; i < count; ++i)
        bytes[i] = ByteAt(start.WrappingAdd(static_cast<uint32_t>(i)));
    return bytes;
}

void FakePlatformMemory::Poke(TargetAddress start, const std::vector<uint8_t>& bytes)
{
    for (size_t i = 0; i < bytes.size(); ++i)
        written_[start.WrappingAdd(static_cast<uint32_t>(i))] = bytes[i];
}

std::string FakePlatformMemory::Line(const std::string& name, TargetAddress start, TargetAddress end,
                                     AccessSize size)
{
    char text[96];
    std::snprintf(text, sizeof text, "%s 0x%X..0x%X", name.c_str(), start.Value(), end.Value());
    return size != 0 ? text + (" /" + std::to_string(size)) : std::string(text);
}

bool FakePlatformMemory::Logged(const std::string& name, TargetAddress start, TargetAddress end,
                                AccessSize size, HRESULT& forced)
{
    log.push_back(Line(name, start, end, size));
    const auto it = answers.find(name);
    if (it == answers.end())
        return false;
    forced = it->second;
    return true;
}

bool FakePlatformMemory::Mapped(TargetAddress start, TargetAddress end) const
{
    for (uint64_t a = start.Value(); a <= end.Value(); ++a) {
        bool inside = false;
        for (const auto& area : areas)
            inside = inside || (area.start <= a && a <= area.end);
        if (!inside)
            return false;
    }
    return true;
}

HRESULT FakePlatformMemory::DoRead(const char* name, TargetAddress start, TargetAddress end, AccessSize size,
                                   uint8_t* buffer)
{
    HRESULT hr = S_OK;
    if (Logged(name, start, end, size, hr))
        return hr;
    if (!Mapped(start, end))
        return kOutsideMap;
    for (uint64_t a = start.Value(); a <= end.Value(); ++a)
        buffer[a - start.Value()] = ByteAt(TargetAddress(static_cast<uint32_t>(a)));
    return S_OK;
}

HRESULT FakePlatformMemory::DoWrite(const char* name, TargetAddress start, TargetAddress end, AccessSize size,
                                    const uint8_t* buffer)
{
    return Store(name, start, end, size, AddressRange(start, end).Size(), buffer);
}

// A write is a fill whose pattern is as long as the range.
HRESULT FakePlatformMemory::Store(const char* name, TargetAddress start, TargetAddress end, AccessSize size,
                                  uint64_t length, const uint8_t* pattern)
{
    HRESULT hr = S_OK;
    if (Logged(name, start, end, size, hr))
        return hr;
    if (!Mapped(start, end) || length == 0)
        return kOutsideMap;
    for (uint64_t a = start.Value(); a <= end.Value(); ++a)
        written_[TargetAddress(static_cast<uint32_t>(a))] = pattern[(a - start.Value()) % length];
    return S_OK;
}

HRESULT FakePlatformMemory::DoFind(const char* name, TargetAddress start, TargetAddress end, uint32_t length,
                                   const uint8_t* pattern, const uint8_t* mask, TargetAddress& found)
{
    HRESULT hr = S_OK;
    if (Logged(name, start, end, 0, hr))
        return hr;
    for (uint64_t a = start.Value(); a + length - 1 <= end.Value(); ++a) {
        bool match = true;
        for (uint32_t i = 0; i < length && match; ++i) {
            const uint8_t m = mask != nullptr ? mask[i] : 0xFF;
            match = (ByteAt(TargetAddress(static_cast<uint32_t>(a + i))) & m) == (pattern[i] & m);
        }
        if (match) {
            found = TargetAddress(static_cast<uint32_t>(a));
            return S_OK;
        }
    }
    return S_FALSE;
}

HRESULT FakePlatformMemory::DoCopy(const char* name, TargetAddress start, TargetAddress end,
                                   TargetAddress destination)
{
    HRESULT hr = S_OK;
    if (Logged(name, start, end, 0, hr))
        return hr;
    const auto bytes = Bytes(start, AddressRange(start, end).Size());
    Poke(destination, bytes);
    return S_OK;
}

HRESULT FakePlatformMemory::Compare(TargetAddress start, TargetAddress end, TargetAddress destination,
                                    AccessSize size, uint8_t& first, uint8_t& second, TargetAddress& at)
{
    HRESULT hr = S_OK;
    if (Logged("Compare2", start, end, size, hr))
        return hr;
    for (uint64_t i = 0; i < AddressRange(start, end).Size(); ++i) {
        at = start.WrappingAdd(static_cast<uint32_t>(i));
        first = ByteAt(at);
        second = ByteAt(destination.WrappingAdd(static_cast<uint32_t>(i)));
        if (first != second)
            return kDiffers;
    }
    return S_OK;
}

HRESULT FakePlatformMemory::FillVerified(TargetAddress start, TargetAddress end, VariantBool verify,
                                         uint32_t length, const uint8_t* pattern)
{
    verified = verify;
    const HRESULT hr = Store("FillVerified3", start, end, 0, length, pattern);
    if (hr != S_OK || !verifyFailsAt || *verifyFailsAt < start || *verifyFailsAt > end)
        return hr;
    written_[*verifyFailsAt] = 0;
    return kVerifyFailed;
}

HRESULT FakePlatformMemory::DoReporting(const char* name, TargetAddress start, TargetAddress end,
                                        AccessSize size, const uint8_t* buffer, VariantBool& failed,
                                        TargetAddress& address, int32_t& written, int32_t& found)
{
    const HRESULT hr = DoWrite(name, start, end, size, buffer);
    if (hr != S_OK || !verifyFailsAt || *verifyFailsAt < start || *verifyFailsAt > end)
        return hr;
    // A stuck byte: it keeps what it had, whatever was written.
    failed = VARIANT_TRUE;
    address = *verifyFailsAt;
    written = buffer[verifyFailsAt->OffsetFrom(start)];
    found = 0;
    written_[*verifyFailsAt] = 0;
    return kVerifyFailed;
}

HRESULT FakePlatformMemory::Plain(const char* name, TargetAddress start, TargetAddress end, AccessSize size)
{
    HRESULT hr = S_OK;
    Logged(name, start, end, size, hr);
    return hr;
}

HRESULT FakePlatformMemory::GetArea(uint32_t index, TargetAddress& start, TargetAddress& end,
                                    uint32_t& byteOrder, uint32_t& info, VariantBool& sized,
                                    VariantBool& attribute1, VariantBool& attribute2, VariantBool& attribute3)
{
    if (index >= areas.size())
        return E_INVALIDARG;
    start = areas[index].start;
    end = areas[index].end;
    byteOrder = areas[index].byteOrder;
    info = 0;
    sized = areas[index].sized ? VARIANT_TRUE : VARIANT_FALSE;
    attribute1 = attribute2 = attribute3 = VARIANT_FALSE;
    return S_OK;
}

HRESULT FakePlatformMemory::GetErrorText(HRESULT code, std::string& text)
{
    char buffer[48];
    std::snprintf(buffer, sizeof buffer, "platform says 0x%X", static_cast<uint32_t>(code));
    text = buffer;
    return S_OK;
}

// Bit 1 alone says sized too; the attribute bits must not.
HRESULT FakePlatformMemory::First::GetArea(uint32_t index, TargetAddress& start, TargetAddress& end,
                                           uint32_t& byteOrder, uint32_t& info, uint32_t& flags)
{
    VariantBool sized = VARIANT_FALSE, unused = VARIANT_FALSE;
    const HRESULT hr = p.GetArea(index, start, end, byteOrder, info, sized, unused, unused, unused);
    flags = sized ? 0x2 : 0x34;
    return hr;
}
