#include "platform/sim/Checkpoint.h"

#include "platform/sim/SimEngine.h"

namespace
{

bool Saved(const SimRegion& region)
{
    return region.kind != RegionKind::Peripheral && region.Allows(kAccessWrite);
}

} // namespace

Checkpoint::Checkpoint(SimEngine& engine) : engine_(engine)
{
    if (uc_context_alloc(engine_.Handle(), &context_) != UC_ERR_OK)
        context_ = nullptr;
    for (const SimRegion& region : engine_.Map().Regions())
        if (Saved(region))
            memory_.emplace_back(region.size);
}

Checkpoint::~Checkpoint()
{
    if (context_)
        uc_context_free(context_);
}

bool Checkpoint::Take()
{
    valid_ = false;
    if (!context_ || uc_context_save(engine_.Handle(), context_) != UC_ERR_OK)
        return false;
    auto saved = memory_.begin();
    for (const SimRegion& region : engine_.Map().Regions()) {
        if (!Saved(region))
            continue;
        if (uc_mem_read(engine_.Handle(), region.base, saved->data(), saved->size()) != UC_ERR_OK)
            return false;
        ++saved;
    }
    count_ = engine_.Counter().Total();
    valid_ = true;
    return true;
}

bool Checkpoint::Restore()
{
    if (!valid_ || uc_context_restore(engine_.Handle(), context_) != UC_ERR_OK)
        return false;
    auto saved = memory_.begin();
    for (const SimRegion& region : engine_.Map().Regions()) {
        if (!Saved(region))
            continue;
        if (uc_mem_write(engine_.Handle(), region.base, saved->data(), saved->size()) != UC_ERR_OK)
            return false;
        ++saved;
    }
    engine_.Counter().Set(count_);
    return true;
}
