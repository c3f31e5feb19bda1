#include "component/frame/RecentLists.h"

#include "boundary/Ids.h"
#include "component/frame/StringTable.h"

namespace
{

IQRecentListStore* StoreOf(IQServiceRegistry* registry)
{
    return GetServiceAs<IQRecentListStore>(registry, Ids::RecentListService);
}

} // namespace

void RecentLists::Load(IQServiceRegistry* registry)
{
    IQRecentListStore* store = StoreOf(registry);
    if (store == nullptr)
        return;
    MruMemoryLoad.Load(store, StringTable::Load(57636));
    MruProgramOpen.Load(store, StringTable::Load(57637));
    MruProgramSave.Load(store, StringTable::Load(57638));
    MruProgramVerify.Load(store, StringTable::Load(57639));
}

void RecentLists::Save(IQServiceRegistry* registry) const
{
    IQRecentListStore* store = StoreOf(registry);
    if (store == nullptr)
        return;
    MruMemoryLoad.Save(store, StringTable::Load(57636));
    MruProgramOpen.Save(store, StringTable::Load(57637));
    MruProgramSave.Save(store, StringTable::Load(57638));
    MruProgramVerify.Save(store, StringTable::Load(57639));
}
