#include "workbench/UserPromptTableService.h"

#include <algorithm>
#include <new>
#include <utility>

#include "boundary/Ids.h"

namespace
{

// Keys share a fixed front so they are never null and are easy to tell from
// other identities in a dump; the back eight bytes count up.
constexpr Guid kKeyPrefix = "{C3E1A5F0-7D24-4B9E-0000-000000000000}"_guid;

constexpr const char* kShowAgain = "Show this warning again?";

} // namespace

UserPromptTableService::UserPromptTableService(IQMessageBox* box, IQServiceRegistry* registry)
    : box_(box), registry_(registry)
{
}

HRESULT UserPromptTableService::QueryInterface(const Guid& iid, void** out)
{
    return AnswerFrom({Ids::IUnknown, Ids::UserPromptTable}, iid, static_cast<IQUserPromptTable*>(this), out);
}

HRESULT UserPromptTableService::AddPrompt(const Guid& owner, const std::string& name,
                                          VariantBool defaultEnabled, Guid& key)
{
    // A nameless prompt could never be told apart in a settings view.
    if (name.empty())
        return E_INVALIDARG;
    try {
        const Guid fresh = NextKey();
        PromptInfo prompt{fresh, owner, name, FromVariantBool(defaultEnabled)};
        int32_t kept = 0;
        if (IQTargetRegistry* store = Store();
            store != nullptr && store->GetNumber(StoreKey(prompt), kept) == S_OK)
            prompt.enabled = kept != 0;
        prompts_.push_back(std::move(prompt));
        key = fresh;
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    }
    return S_OK;
}

HRESULT UserPromptTableService::DeletePrompt(Guid key)
{
    auto it =
        std::find_if(prompts_.begin(), prompts_.end(), [&](const PromptInfo& p) { return p.key == key; });
    if (it == prompts_.end())
        return E_FAIL;
    prompts_.erase(it);
    return S_OK;
}

HRESULT UserPromptTableService::IsPromptEnabled(Guid key)
{
    const PromptInfo* prompt = Find(key);
    return prompt != nullptr && prompt->enabled ? 1 : 0;
}

HRESULT UserPromptTableService::AskYesNo(Guid key, const std::string& question, VariantBool& answer)
{
    return Ask(key, question, answer);
}

HRESULT UserPromptTableService::SetPromptEnabled(Guid key, int32_t enabled)
{
    PromptInfo* prompt = Find(key);
    if (prompt == nullptr)
        return E_FAIL;
    prompt->enabled = enabled != 0;
    // The choice holds for this run whatever the store says; a store that
    // cannot write has told its reader why.
    if (IQTargetRegistry* store = Store()) {
        try {
            store->SetNumber(StoreKey(*prompt), prompt->enabled ? 1 : 0);
        } catch (const std::bad_alloc&) {
            return S_OK;
        }
    }
    return S_OK;
}

HRESULT UserPromptTableService::ShowWarning(Guid key, const std::string& text)
{
    const PromptInfo* prompt = Find(key);
    if (prompt == nullptr)
        return E_FAIL;
    if (!prompt->enabled)
        return S_FALSE;
    if (box_ == nullptr)
        return E_POINTER;
    HRESULT hr = box_->ShowMessage(text, MessageIcon::Warning);
    VariantBool again = VARIANT_TRUE;
    if (Succeeded(hr))
        hr = box_->AskYesNo(kShowAgain, VARIANT_TRUE, again);
    if (Succeeded(hr) && !FromVariantBool(again))
        SetPromptEnabled(key, 0);
    return Failed(hr) ? hr : S_OK;
}

HRESULT UserPromptTableService::AskYesNoReload(Guid key, const std::string& question, VariantBool& answer)
{
    return Ask(key, question, answer);
}

std::vector<UserPromptTableService::PromptInfo> UserPromptTableService::List() const
{
    return prompts_;
}

size_t UserPromptTableService::RemoveAllOf(const Guid& owner)
{
    return std::erase_if(prompts_, [&](const PromptInfo& p) { return p.owner == owner; });
}

UserPromptTableService::PromptInfo* UserPromptTableService::Find(const Guid& key)
{
    auto it =
        std::find_if(prompts_.begin(), prompts_.end(), [&](const PromptInfo& p) { return p.key == key; });
    return it == prompts_.end() ? nullptr : &*it;
}

HRESULT UserPromptTableService::Ask(const Guid& key, const std::string& question, VariantBool& answer)
{
    answer = VARIANT_FALSE;
    const PromptInfo* prompt = Find(key);
    if (prompt == nullptr)
        return E_FAIL;
    if (!prompt->enabled) {
        answer = VARIANT_TRUE;
        return S_OK;
    }
    if (box_ == nullptr)
        return E_POINTER;
    VariantBool reply = VARIANT_FALSE;
    const HRESULT hr = box_->AskYesNo(question, VARIANT_TRUE, reply);
    if (Failed(hr))
        return hr;
    answer = ToVariantBool(FromVariantBool(reply));
    return hr;
}

IQTargetRegistry* UserPromptTableService::Store() const
{
    return GetServiceAs<IQTargetRegistry>(registry_, Ids::IQTargetRegistry);
}

std::string UserPromptTableService::StoreKey(const PromptInfo& prompt)
{
    return "UserPrompt\\" + prompt.owner.ToText() + "\\" + prompt.name;
}

Guid UserPromptTableService::NextKey()
{
    Guid key = kKeyPrefix;
    uint64_t serial = ++serial_;
    for (size_t i = 16; i-- > 8;) {
        key.bytes[i] = static_cast<uint8_t>(serial & 0xFF);
        serial >>= 8;
    }
    return key;
}
