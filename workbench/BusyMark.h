#pragma once
#include "boundary/interfaces/Workbench.h"

// Holds a busy mark for one scope, so an early return or a failure path cannot
// leave the workbench marked busy.
class BusyMark
{
public:
    BusyMark(IQServiceRegistry* registry, const Guid& id);
    ~BusyMark();
    BusyMark(const BusyMark&) = delete;
    BusyMark& operator=(const BusyMark&) = delete;

    // False when there was no registry or it refused the mark.
    bool Held() const { return registry_ != nullptr; }

private:
    IQServiceRegistry* registry_;
    Guid id_;
};
