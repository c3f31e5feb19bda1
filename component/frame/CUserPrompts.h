#pragma once
#include <string>

#include "boundary/interfaces/Workbench.h"

// The workbench's table of questions a user can switch off, as the component
// uses it. A one-pointer wrapper: without the service every question answers no
// and every key is null.
class CUserPrompts
{
public:
    explicit CUserPrompts(IQServiceRegistry* registry);

    // Registers a question under the component's identity; a null key on failure.
    Guid Add(const std::string& name, bool enabledByDefault);
    void Delete(Guid& key);
    bool IsEnabled(const Guid& key) const;
    // True when the question was answered yes (a switched-off question is).
    bool AskYesNo(const Guid& key, const std::string& question) const;
    // Shown only while the question is on; the user may switch it off for good.
    void ShowWarning(const Guid& key, const std::string& text) const;
    bool Available() const { return table_ != nullptr; }

private:
    IQUserPromptTable* table_ = nullptr;
};
