#pragma once
#include "boundary/interfaces/Workbench.h"
#include "component/program/CMRUList.h"

// What the load, save and verify dialogs offer as used last. The lists belong
// to the component rather than to a session: read when it starts, written
// back when it ends, through the workbench's recent-list service.
struct RecentLists {
    CMRUProgramOpenList MruMemoryLoad{4};
    CMRUProgramOpenList MruProgramOpen{4};
    CMRUProgramSaveList MruProgramSave{4};
    CMRUProgramVerifyList MruProgramVerify{4};

    // Without the service the lists stay as they are.
    void Load(IQServiceRegistry* registry);
    void Save(IQServiceRegistry* registry) const;
};
