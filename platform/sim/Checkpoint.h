#pragma once
#include <cstdint>
#include <vector>

#include <unicorn/unicorn.h>

class SimEngine;

// The state a run can be replayed from: CPU registers, every region the firmware
// can write, and the instruction count. Regions the firmware cannot write (flash)
// and peripherals (which hold nothing) are left out.
class Checkpoint
{
public:
    explicit Checkpoint(SimEngine& engine);
    ~Checkpoint();
    Checkpoint(const Checkpoint&) = delete;
    Checkpoint& operator=(const Checkpoint&) = delete;

    bool Take();
    bool Restore();
    bool Valid() const { return valid_; }
    uint64_t Count() const { return count_; }

private:
    SimEngine& engine_;
    uc_context* context_ = nullptr;
    std::vector<std::vector<uint8_t>> memory_;
    uint64_t count_ = 0;
    bool valid_ = false;
};
