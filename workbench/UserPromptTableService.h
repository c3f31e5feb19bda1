#pragma once
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "boundary/interfaces/Store.h"
#include "boundary/interfaces/Workbench.h"

// Questions a user can switch off. A switched-off question answers yes without
// being asked; an enabled one is put to the message box with yes as default.
//
// With a registry, what the user switched on or off is kept in the workspace's
// store (IQTargetRegistry, while one is registered) under the prompt's owner
// and name, as keys change from run to run: a prompt added again in a later
// run starts as the user left it, not as its default.
class UserPromptTableService final : public IQUserPromptTable
{
public:
    struct PromptInfo {
        Guid key;
        Guid owner;
        std::string name;
        bool enabled;
    };

    explicit UserPromptTableService(IQMessageBox* box, IQServiceRegistry* registry = nullptr);
    UserPromptTableService(const UserPromptTableService&) = delete;
    UserPromptTableService& operator=(const UserPromptTableService&) = delete;

    HRESULT QueryInterface(const Guid& iid, void** out) override;
    TESSEL_NOT_REFCOUNTED

    HRESULT AddPrompt(const Guid& owner, const std::string& name, VariantBool defaultEnabled,
                      Guid& key) override;
    HRESULT DeletePrompt(Guid key) override;
    // 1 when enabled, 0 when switched off or unknown: callers test for non-zero.
    HRESULT IsPromptEnabled(Guid key) override;
    HRESULT AskYesNo(Guid key, const std::string& question, VariantBool& answer) override;
    HRESULT SetPromptEnabled(Guid key, int32_t enabled) override;
    HRESULT AskYesNoReload(Guid key, const std::string& question, VariantBool& answer) override;

    // A warning the user can switch off: shown while the prompt is enabled, then
    // the choice to see it again, yes by default (and so in batch mode). A no
    // switches the prompt off. S_FALSE when it was off and nothing was shown.
    HRESULT ShowWarning(Guid key, const std::string& text) override;

    // In order of addition, for a settings view.
    std::vector<PromptInfo> List() const;
    // Answers how many prompts went.
    size_t RemoveAllOf(const Guid& owner);

private:
    PromptInfo* Find(const Guid& key);
    HRESULT Ask(const Guid& key, const std::string& question, VariantBool& answer);
    Guid NextKey();
    IQTargetRegistry* Store() const;
    static std::string StoreKey(const PromptInfo& prompt);

    IQMessageBox* box_;
    IQServiceRegistry* registry_;
    std::vector<PromptInfo> prompts_;
    uint64_t serial_ = 0;
};
