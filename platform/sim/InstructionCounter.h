#pragma once
#include <atomic>
#include <cstdint>
#include <vector>

#include <unicorn/unicorn.h>

// Counts executed instructions per translated block rather than per instruction:
// the engine reports each block it enters, and the block's instruction count is
// decoded once and cached. A per-instruction hook would cost the simulator most of
// its speed. A block that is cut short (breakpoint, fault) is corrected with Uncount.
class InstructionCounter
{
public:
    InstructionCounter();

    // Runs on the simulator thread for every block entered while enabled.
    void OnBlock(uc_engine* uc, uint32_t address, uint32_t size);
    // Takes back the instructions of the last block entered that start at pc or
    // later, which never ran; nothing if pc lies outside that block.
    void Uncount(uc_engine* uc, uint32_t pc);
    // Where the last block entered starts: the best guess at a fault's PC when
    // nothing better is known.
    uint32_t LastBlock() const { return lastStart_; }

    void SetEnabled(bool enabled) { enabled_ = enabled; }
    void Add(uint64_t count) { Set(Total() + count); }
    void Set(uint64_t count) { total_.store(count, std::memory_order_relaxed); }
    // Safe from any thread; exact whenever the target is stopped.
    uint64_t Total() const { return total_.load(std::memory_order_relaxed); }
    // Drops cached block sizes after code was rewritten.
    void Forget();

private:
    struct Entry {
        uint32_t address = 1; // odd: matches no Thumb block
        uint32_t size = 0;
        uint32_t count = 0;
    };

    uint32_t Decode(uc_engine* uc, uint32_t address, uint32_t size, uint32_t from);

    std::vector<Entry> cache_;
    std::vector<uint8_t> code_;
    // Only the simulator thread adds, so a plain load and store suffice and keep the
    // per-block cost to a few instructions.
    std::atomic<uint64_t> total_{0};
    uint32_t lastStart_ = 0;
    uint32_t lastSize_ = 0;
    bool enabled_ = true;
};
