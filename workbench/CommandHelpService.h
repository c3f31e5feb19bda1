#pragma once
#include <string>
#include <vector>

#include "boundary/interfaces/Command.h"

// Parameter help for every command name the components register, full names
// and aliases alike, in the order they arrive.
class CommandHelpService final : public IQCommandHelpService
{
public:
    struct Entry {
        std::string name;
        std::string parameterText;
        bool isAlias;
    };

    HRESULT QueryInterface(const Guid& iid, void** out) override;
    TESSEL_NOT_REFCOUNTED
    HRESULT AddCommandHelp(const std::string& name, const std::string& parameterText,
                           int32_t isAlias) override;
    HRESULT RemoveCommandHelp(const std::string& name, const std::string& parameterText,
                              int32_t isAlias) override;

    const std::vector<Entry>& Entries() const { return entries_; }
    // The help of one name, full or alias, compared without regard to case.
    const Entry* Find(const std::string& name) const;

private:
    std::vector<Entry> entries_;
};
