#pragma once
#include <cstdint>
#include <string>

#include "boundary/Guid.h"
#include "boundary/TargetAddress.h"

// The four words a caller reads of a breakpoint's state, each 0 or 1.
struct PCBreakState {
    uint32_t Planted = 0;
    uint32_t HasAddress = 0;
    uint32_t SourceBound = 0;
    uint32_t Enabled = 0;

    friend bool operator==(const PCBreakState&, const PCBreakState&) = default;
};

// One program-counter breakpoint as the user asked for it. It exists whether
// or not a target is connected; whether it stands in the platform is only the
// planted flag. Owned by the break manager, which is its only writer.
class CPCBreak
{
public:
    // The base interface's identity: a breakpoint that nobody in particular set.
    static constexpr Guid kNoOwner = "{00000000-0000-0000-C000-000000000046}"_guid;
    static constexpr int32_t kUserBreak = 0;
    // Hidden from lists, notices and the session store.
    static constexpr int32_t kTemporaryBreak = 1;

    virtual ~CPCBreak() = default;
    // Its own id goes with the object: a copy would share it.
    CPCBreak(const CPCBreak&) = delete;
    CPCBreak& operator=(const CPCBreak&) = delete;

    virtual std::string GetDisplayName() const = 0;
    virtual std::string GetFileName() const = 0;
    // Whether the breakpoint belongs to `module` for `operation`; some
    // operations store or forget the module on the way.
    virtual bool MatchModule(int32_t operation, uint32_t module) = 0;

    // Disabled while suspended, whatever the user's wish.
    bool GetEnabled() const { return enabled_ && !suspended_; }
    bool GetEnabledRaw() const { return enabled_; }
    PCBreakState GetState() const;
    PCBreakState GetStateRaw() const;

    // The id it had before any platform gave it one, unique among breakpoints
    // and kept for life, so that it can be made the id again once unplanted.
    uint32_t GetOwnId() const { return ownId_; }

    bool GetPlanted() const { return planted_; }
    void SetPlanted(bool planted) { planted_ = planted; }
    bool GetHasAddress() const { return hasAddress_; }
    void SetHasAddress(bool hasAddress) { hasAddress_ = hasAddress; }
    bool GetSourceBound() const { return sourceBound_; }
    void SetSourceBound(bool sourceBound) { sourceBound_ = sourceBound; }
    void SetEnabled(bool enabled) { enabled_ = enabled; }
    int32_t GetLine() const { return line_; }
    void SetLine(int32_t line) { line_ = line; }
    const std::string& GetText() const { return text_; }
    void SetText(std::string text) { text_ = std::move(text); }
    uint32_t GetId() const { return id_; }
    void SetId(uint32_t id) { id_ = id; }
    TargetAddress GetAddress() const { return address_; }
    void SetAddress(TargetAddress address) { address_ = address; }
    uint32_t GetModule() const { return module_; }
    void SetModule(uint32_t module) { module_ = module; }
    const Guid& GetOwner() const { return owner_; }
    void SetOwner(const Guid& owner) { owner_ = owner; }
    const std::string& GetOwnerName() const { return ownerName_; }
    void SetOwnerName(std::string name) { ownerName_ = std::move(name); }
    int32_t GetKind() const { return kind_; }
    void SetKind(int32_t kind) { kind_ = kind; }
    bool GetSuspended() const { return suspended_; }
    void SetSuspended(bool suspended) { suspended_ = suspended; }
    bool GetResolveFailed() const { return resolveFailed_; }
    void SetResolveFailed(bool failed) { resolveFailed_ = failed; }

protected:
    CPCBreak();

private:
    bool planted_ = false;
    bool hasAddress_ = false;
    bool sourceBound_ = false;
    bool enabled_ = true;
    int32_t line_ = -1;
    std::string text_;
    const uint32_t ownId_;
    uint32_t id_;
    TargetAddress address_;
    uint32_t module_ = 0;
    Guid owner_ = kNoOwner;
    std::string ownerName_;
    int32_t kind_ = kUserBreak;
    bool suspended_ = false;
    bool resolveFailed_ = false;
};
