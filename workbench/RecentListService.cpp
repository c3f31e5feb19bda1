#include "workbench/RecentListService.h"

#include "boundary/Ids.h"
#include "boundary/interfaces/Store.h"

namespace
{

std::string StoreKey(const std::string& section, const std::string& key)
{
    return section + "\\" + key;
}

} // namespace

HRESULT RecentListService::QueryInterface(const Guid& iid, void** out)
{
    return AnswerFrom({Ids::IUnknown, Ids::RecentListService}, iid, static_cast<IQRecentListStore*>(this),
                      out);
}

HRESULT RecentListService::WriteValue(const std::string& section, const std::string& key,
                                      const std::string& value)
{
    auto* store = GetServiceAs<IQTargetRegistry>(&registry_, Ids::IQTargetRegistry);
    if (store == nullptr)
        return E_FAIL;
    return store->SetString(StoreKey(section, key), value);
}

HRESULT RecentListService::ReadValue(const std::string& section, const std::string& key, std::string& value)
{
    value.clear();
    auto* store = GetServiceAs<IQTargetRegistry>(&registry_, Ids::IQTargetRegistry);
    // The store answers S_FALSE for a key it does not hold.
    if (store == nullptr || store->GetString(StoreKey(section, key), value) != S_OK)
        return E_FAIL;
    return S_OK;
}
