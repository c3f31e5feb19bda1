#pragma once
#include <cstdint>

#include "boundary/interfaces/Debugger.h"

// The sessions that run in step with this one: the list the session host
// hands over (this session's own entry included) and its two switches.
class SyncGroup
{
public:
    explicit SyncGroup(IQDebuggerSync* self) : self_(self) {}

    // The list stays the caller's.
    void SetPeers(IQDebuggerSync** peers, int32_t count);
    void SetInStep(bool on) { inStep_ = on; }
    void SetActive(bool on) { active_ = on; }
    bool IsActive() const { return active_; }

    // Calls every peer but this session, from the head of the list, when the
    // sessions run in step and, if asked, this session is the active one.
    template <class Call> void Tell(bool needActive, Call call) const
    {
        if (!inStep_ || (needActive && !active_) || peers_ == nullptr)
            return;
        for (int32_t i = 0; i < count_; ++i)
            if (peers_[i] != nullptr && peers_[i] != self_)
                call(peers_[i]);
    }

private:
    IQDebuggerSync* self_;
    IQDebuggerSync** peers_ = nullptr;
    int32_t count_ = 0;
    bool inStep_ = false;
    bool active_ = false;
};
