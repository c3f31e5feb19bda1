#include "workbench/BusyMark.h"

BusyMark::BusyMark(IQServiceRegistry* registry, const Guid& id) : registry_(registry), id_(id)
{
    // A mark never set must not be cleared: that would take away someone else's.
    if (registry_ != nullptr && Failed(registry_->SetBusy(id_)))
        registry_ = nullptr;
}

BusyMark::~BusyMark()
{
    if (registry_ != nullptr)
        registry_->ClearBusy(id_);
}
