#pragma once
#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <tuple>
#include <vector>

#include "boundary/Ids.h"
#include "boundary/interfaces/Component.h"
#include "boundary/interfaces/Platform.h"
#include "boundary/interfaces/PlatformFunctions.h"

// A platform driven by function name: plain C functions over one static
// target memory. Function pointers carry no state, so every function writes
// to the one file-static record below; each fixture resets it.
namespace FakePd
{

constexpr uint32_t kMemorySize = 0x400;

struct Record {
    // Byte i starts as the low byte of i, so a read shows where it came from.
    std::array<uint8_t, kMemorySize> memory{};
    // "name arguments...", in call order.
    std::vector<std::string> calls;
    // Every function answers 0, and the evaluating ones scribble on their
    // out argument first, as a careless platform might.
    bool fail = false;
    std::map<uint32_t, std::string> symbols;
};

Record& State();
void Reset();

} // namespace FakePd

// Hands out the functions by name, all of them unless withheld.
class FakePlatformFunctions final : public IQPlatformFunctions
{
public:
    FakePlatformFunctions();
    HRESULT QueryInterface(const Guid& iid, void** out) override
    {
        return AnswerFrom({Ids::IUnknown, Ids::IQPlatformFunctions}, iid, this, out);
    }
    TESSEL_NOT_REFCOUNTED
    HRESULT GetFunction(const std::string& name, void*& pointer) override;
    HRESULT GetLastErrorText(std::string& text) override
    {
        return errorTextFails ? E_FAIL : (text = lastError, S_OK);
    }

    void Withhold(const std::string& name) { offered_.erase(name); }

    std::string lastError = "Target not responding";
    bool errorTextFails = false;

private:
    std::map<std::string, void*> offered_;
};

// The memory areas and the label list of a platform driven by function name.
class FakeFreeRun final : public IQPlatformFreeRun
{
public:
    HRESULT QueryInterface(const Guid& iid, void** out) override
    {
        return AnswerFrom({Ids::IUnknown, Ids::IQPlatformFreeRun}, iid, this, out);
    }
    TESSEL_NOT_REFCOUNTED
    HRESULT GetAreaCount(uint32_t& count) override
    {
        return count = static_cast<uint32_t>(areas.size()), S_OK;
    }
    HRESULT GetAreaBounds(uint32_t index, TargetAddress& start, TargetAddress& end) override
    {
        if (index >= areas.size())
            return E_INVALIDARG;
        std::tie(start, end) = areas[index];
        return S_OK;
    }

    // Past the end the platform answers 1, not an error code.
    HRESULT GetLabelPointer(uint32_t index, const LabelRecord*& record) override
    {
        return index < labels.size() ? (record = &labels[index], S_OK) : 1;
    }
    HRESULT GetLabelCount(uint32_t& count) override
    {
        return count = static_cast<uint32_t>(labels.size()), S_OK;
    }

    std::vector<std::pair<TargetAddress, TargetAddress>> areas;
    std::vector<LabelRecord> labels;
};

// The target's address limits, as the debugger state forwards them.
class FakeForwardTarget final : public IQForwardTarget
{
public:
    HRESULT QueryInterface(const Guid& iid, void** out) override
    {
        return AnswerFrom({Ids::IUnknown, Ids::ForwardTarget}, iid, this, out);
    }
    TESSEL_NOT_REFCOUNTED
    HRESULT Forward(uint32_t& low, uint32_t& limit) override
    {
        low = 0;
        limit = highest;
        return result;
    }
    uint32_t highest = 0xFFFFFFFF;
    HRESULT result = S_OK;
};
