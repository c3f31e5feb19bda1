#include "support/FakeMemoryManager.h"

#include <algorithm>
#include <cstdio>

#include "boundary/Ids.h"

namespace
{

uint64_t Value(TargetAddress address)
{
    return address.Value();
}
template <class T> uint64_t Value(T value)
{
    return static_cast<uint64_t>(value);
}

// The arguments of a logged call, in hexadecimal, each after a blank.
std::string Args()
{
    return "";
}
template <class T, class... Rest> std::string Args(T value, Rest... rest)
{
    char buffer[24];
    std::snprintf(buffer, sizeof buffer, " %llx", static_cast<unsigned long long>(Value(value)));
    return buffer + Args(rest...);
}

} // namespace

uint8_t FakeMemoryManager::Byte(TargetAddress address) const
{
    auto it = bytes_.find(address);
    return it != bytes_.end() ? it->second : static_cast<uint8_t>(address.Value());
}

void FakeMemoryManager::Poke(TargetAddress address, const std::vector<uint8_t>& bytes)
{
    for (uint8_t b : bytes) {
        bytes_[address] = b;
        address = address.WrappingAdd(1);
    }
}

std::vector<uint8_t> FakeMemoryManager::Peek(TargetAddress address, size_t count) const
{
    std::vector<uint8_t> out;
    for (size_t i = 0; i < count; ++i)
        out.push_back(Byte(address.WrappingAdd(static_cast<uint32_t>(i))));
    return out;
}

HRESULT FakeMemoryManager::QueryInterface(const Guid& iid, void** out)
{
    if (iid == Ids::IQErrorReporter) {
        *out = reports ? static_cast<IQErrorReporter*>(this) : nullptr;
        return reports ? S_OK : E_NOINTERFACE;
    }
    return AnswerFrom({Ids::IUnknown, Ids::IQMemoryManagerCmdLine5}, iid,
                      static_cast<IQMemoryManagerCmdLine5*>(this), out);
}

// A code it does not know still leaves a text behind, which a caller must not show.
HRESULT FakeMemoryManager::GetErrorText(HRESULT code, std::string& text)
{
    auto it = texts.find(code);
    text = it != texts.end() ? it->second : "no text";
    return it != texts.end() ? S_OK : E_FAIL;
}

HRESULT FakeMemoryManager::Unused()
{
    calls.push_back("unexpected");
    return E_NOTIMPL;
}

HRESULT FakeMemoryManager::Enter(const std::string& call)
{
    calls.push_back(call);
    auto it = fail.find(call.substr(0, call.find(' ')));
    return it != fail.end() ? it->second : S_OK;
}

bool FakeMemoryManager::Mapped(TargetAddress start, TargetAddress end) const
{
    return hasArea && start <= end && start >= areaStart && end <= areaEnd;
}

HRESULT FakeMemoryManager::GetAreaCount(uint32_t& count)
{
    count = hasArea ? 1 : 0;
    return S_OK;
}

HRESULT FakeMemoryManager::GetAreaBounds(uint32_t index, TargetAddress& start, TargetAddress& end)
{
    if (index != 0 && index != 0xFFFFFFFF)
        return E_INVALIDARG;
    start = hasArea ? areaStart : 0;
    end = hasArea ? areaEnd : 0;
    return S_OK;
}

HRESULT FakeMemoryManager::ReadMemoryValues(TargetAddress start, TargetAddress end, AccessSize accessSize,
                                            uint8_t* buffer)
{
    if (HRESULT hr = Enter("ReadMemoryValues" + Args(start, end, accessSize)); hr != S_OK)
        return hr;
    if (!Mapped(start, end))
        return NotMapped;
    // The target keeps the most significant byte first; the caller gets its own integers.
    const size_t length = AddressRange(start, end).Size();
    for (size_t i = 0; i < length; ++i)
        buffer[i] = Byte(start.WrappingAdd(static_cast<uint32_t>(i)));
    for (size_t i = 0; i + accessSize <= length; i += accessSize)
        std::reverse(buffer + i, buffer + i + accessSize);
    return S_OK;
}

HRESULT FakeMemoryManager::WriteMemoryValuesVerified(TargetAddress start, TargetAddress end,
                                                     VariantBool verify, AccessSize accessSize,
                                                     const uint8_t* buffer)
{
    if (HRESULT hr = Enter("WriteMemoryValuesVerified" + Args(start, end, verify, accessSize)); hr != S_OK)
        return hr;
    if (!Mapped(start, end))
        return NotMapped;
    std::vector<uint8_t> bytes(buffer, buffer + accessSize);
    std::reverse(bytes.begin(), bytes.end());
    Poke(start, bytes);
    return S_OK;
}

HRESULT FakeMemoryManager::CompareMemory(TargetAddress start, TargetAddress end, TargetAddress destination,
                                         AccessSize accessSize, uint8_t& first, uint8_t& second,
                                         TargetAddress& address)
{
    if (HRESULT hr = Enter("CompareMemory" + Args(start, end, destination, accessSize)); hr != S_OK)
        return hr;
    for (uint64_t a = start.Value(); a <= end.Value(); ++a) {
        auto there = destination.WrappingAdd(static_cast<uint32_t>(a - start.Value()));
        if (Byte(TargetAddress(static_cast<uint32_t>(a))) != Byte(there)) {
            first = Byte(TargetAddress(static_cast<uint32_t>(a)));
            second = Byte(there);
            address = TargetAddress(static_cast<uint32_t>(a));
            return Differs;
        }
    }
    return S_OK;
}

HRESULT FakeMemoryManager::CopyMemory(TargetAddress start, TargetAddress end, TargetAddress destination,
                                      VariantBool verify, AccessSize accessSize, uint8_t&, uint8_t&,
                                      TargetAddress&)
{
    if (HRESULT hr = Enter("CopyMemory" + Args(start, end, destination, verify, accessSize)); hr != S_OK)
        return hr;
    Poke(destination, Peek(start, AddressRange(start, end).Size()));
    return S_OK;
}

HRESULT FakeMemoryManager::FindMemory(TargetAddress start, TargetAddress end, uint32_t flag1, uint32_t flag2,
                                      uint32_t patternLength, const uint8_t* pattern, const uint8_t* mask,
                                      TargetAddress& address)
{
    std::string call = "FindMemory" + Args(start, end, flag1, flag2) + " ";
    for (uint32_t i = 0; i < patternLength; ++i) {
        char pair[8];
        std::snprintf(pair, sizeof pair, "%02x/%02x", pattern[i], mask[i]);
        call += (i ? "," : "") + std::string(pair);
    }
    if (HRESULT hr = Enter(call); hr != S_OK)
        return hr;
    for (uint64_t a = start.Value(); a + patternLength - 1 <= end.Value(); ++a) {
        bool match = true;
        for (uint32_t i = 0; i < patternLength && match; ++i)
            match = (Byte(TargetAddress(static_cast<uint32_t>(a + i))) & mask[i]) == (pattern[i] & mask[i]);
        if (match) {
            address = TargetAddress(static_cast<uint32_t>(a));
            return S_OK;
        }
    }
    return NotFound;
}

HRESULT FakeMemoryManager::FillMemoryReporting(TargetAddress start, TargetAddress end, VariantBool verify,
                                               uint32_t patternLength, const uint8_t* pattern,
                                               VariantBool& failed, TargetAddress& address, int32_t& written,
                                               int32_t& found)
{
    if (HRESULT hr = Enter("FillMemoryReporting" + Args(start, end, verify, patternLength)); hr != S_OK) {
        failed = ToVariantBool(fillMismatch);
        address = fillMismatchAddress;
        written = fillWritten;
        found = fillFound;
        return hr;
    }
    std::vector<uint8_t> element(pattern, pattern + patternLength);
    std::reverse(element.begin(), element.end());
    for (uint64_t a = start.Value(); a + patternLength - 1 <= end.Value(); a += patternLength)
        Poke(TargetAddress(static_cast<uint32_t>(a)), element);
    return S_OK;
}

HRESULT FakeMemoryManager::TestMemory(TargetAddress start, TargetAddress end)
{
    return Enter("TestMemory" + Args(start, end));
}
