#include "component/frame/SyncGroup.h"

void SyncGroup::SetPeers(IQDebuggerSync** peers, int32_t count)
{
    peers_ = peers;
    count_ = peers != nullptr ? count : 0;
}
