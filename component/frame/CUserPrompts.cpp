#include "component/frame/CUserPrompts.h"

#include "boundary/Ids.h"

CUserPrompts::CUserPrompts(IQServiceRegistry* registry)
    : table_(GetServiceAs<IQUserPromptTable>(registry, Ids::UserPromptTable))
{
}

Guid CUserPrompts::Add(const std::string& name, bool enabledByDefault)
{
    Guid key{};
    if (table_ == nullptr ||
        Failed(table_->AddPrompt(Ids::Component, name, ToVariantBool(enabledByDefault), key)))
        return Guid{};
    return key;
}

void CUserPrompts::Delete(Guid& key)
{
    if (table_ != nullptr && !key.IsNull())
        table_->DeletePrompt(key);
    key = Guid{};
}

bool CUserPrompts::IsEnabled(const Guid& key) const
{
    return table_ != nullptr && table_->IsPromptEnabled(key) != 0;
}

bool CUserPrompts::AskYesNo(const Guid& key, const std::string& question) const
{
    VariantBool answer = VARIANT_FALSE;
    if (table_ == nullptr || Failed(table_->AskYesNo(key, question, answer)))
        return false;
    return answer != 0;
}

void CUserPrompts::ShowWarning(const Guid& key, const std::string& text) const
{
    if (table_ != nullptr)
        table_->ShowWarning(key, text);
}
