#include "platform/legacy/LegacyPlatform.h"

#include <algorithm>

#include "boundary/Ids.h"
#include "platform/legacy/LegacyFunctions.h"
#include "platform/sim/SimTarget.h"

namespace
{

LegacyPlatform* g_current = nullptr;

std::string& LastError()
{
    static std::string text;
    return text;
}

} // namespace

LegacyPlatform::LegacyPlatform(SimTarget& target) : target_(target), memory_(target)
{
    evaluator_.SetLabelLookup([this](std::string_view name) -> std::optional<uint64_t> {
        if (auto value = symbols_.Find(name))
            return *value;
        return std::nullopt;
    });
}

LegacyPlatform::~LegacyPlatform()
{
    if (g_current == this)
        g_current = nullptr;
}

bool LegacyPlatform::Bind()
{
    if (g_current != nullptr && g_current != this)
        return false;
    g_current = this;
    return true;
}

LegacyPlatform* LegacyPlatform::Current()
{
    return g_current;
}

void LegacyPlatform::SetLastError(std::string text)
{
    LastError() = std::move(text);
}

HRESULT LegacyPlatform::QueryInterface(const Guid& iid, void** out)
{
    if (out == nullptr)
        return E_POINTER;
    *out = nullptr;
    if (iid == Ids::IUnknown || iid == Ids::IQPlatformFunctions)
        *out = static_cast<IQPlatformFunctions*>(this);
    else if (iid == Ids::IQPlatformFreeRun)
        *out = static_cast<IQPlatformFreeRun*>(this);
    return *out != nullptr ? S_OK : E_NOINTERFACE;
}

HRESULT LegacyPlatform::GetFunction(const std::string& name, void*& pointer)
{
    pointer = LegacyFunction(name);
    if (pointer != nullptr)
        return S_OK;
    SetLastError("Function " + name + " does not exist");
    return E_FAIL;
}

HRESULT LegacyPlatform::GetLastErrorText(std::string& text)
{
    if (LastError().empty())
        return E_FAIL;
    text = LastError();
    return S_OK;
}

HRESULT LegacyPlatform::GetAreaCount(uint32_t& count)
{
    count = static_cast<uint32_t>(target_.Map().Regions().size());
    return S_OK;
}

HRESULT LegacyPlatform::GetAreaBounds(uint32_t index, TargetAddress& start, TargetAddress& end)
{
    const auto& regions = target_.Map().Regions();
    if (index == 0xFFFFFFFFu) {
        // Sorted and never overlapping: the first starts lowest, the last ends highest.
        start = regions.empty() ? 0 : regions.front().base;
        end = regions.empty() ? 0 : static_cast<TargetAddress>(regions.back().End() - 1);
        return S_OK;
    }
    if (index >= regions.size())
        return E_INVALIDARG;
    start = regions[index].base;
    end = static_cast<TargetAddress>(regions[index].End() - 1);
    return S_OK;
}
