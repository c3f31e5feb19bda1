#include "platform/sim/InstructionCounter.h"

#include "platform/sim/ThumbCode.h"

namespace
{
constexpr size_t kCacheSize = 4096; // a power of two
}

InstructionCounter::InstructionCounter() : cache_(kCacheSize) {}

void InstructionCounter::OnBlock(uc_engine* uc, uint32_t address, uint32_t size)
{
    if (!enabled_)
        return;
    lastStart_ = address;
    lastSize_ = size;
    Entry& entry = cache_[(address >> 1) & (kCacheSize - 1)];
    if (entry.address != address || entry.size != size)
        entry = Entry{address, size, Decode(uc, address, size, 0)};
    total_.store(total_.load(std::memory_order_relaxed) + entry.count, std::memory_order_relaxed);
}

void InstructionCounter::Uncount(uc_engine* uc, uint32_t pc)
{
    if (pc < lastStart_ || pc - lastStart_ >= lastSize_)
        return;
    const uint32_t notRun = Decode(uc, lastStart_, lastSize_, pc - lastStart_);
    const uint64_t total = Total();
    Set(total >= notRun ? total - notRun : 0);
    lastSize_ = 0;
}

void InstructionCounter::Forget()
{
    cache_.assign(kCacheSize, Entry{});
    lastSize_ = 0;
}

uint32_t InstructionCounter::Decode(uc_engine* uc, uint32_t address, uint32_t size, uint32_t from)
{
    code_.resize(size);
    if (size == 0 || uc_mem_read(uc, address, code_.data(), size) != UC_ERR_OK)
        return 0;
    return ThumbCode::Count(code_.data(), size, from);
}
