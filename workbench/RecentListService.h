#pragma once
#include <string>

#include "boundary/interfaces/Workbench.h"

// The recent lists of the components, kept in the workspace's store as global
// texts under "section\key": they belong to no session. It works while a store
// is registered (IQTargetRegistry) and fails without one.
class RecentListService final : public IQRecentListStore
{
public:
    explicit RecentListService(IQServiceRegistry& registry) : registry_(registry) {}
    RecentListService(const RecentListService&) = delete;
    RecentListService& operator=(const RecentListService&) = delete;

    HRESULT QueryInterface(const Guid& iid, void** out) override;
    TESSEL_NOT_REFCOUNTED

    HRESULT WriteValue(const std::string& section, const std::string& key, const std::string& value) override;
    // E_FAIL for a value never written.
    HRESULT ReadValue(const std::string& section, const std::string& key, std::string& value) override;

private:
    IQServiceRegistry& registry_;
};
