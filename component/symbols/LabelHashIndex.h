#pragma once
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "component/symbols/CDataLabel.h"

// Labels filed by a 32-bit hash that the owner computes, in one flat table with
// linear probing: a lookup that finds its label in its home slot costs one
// cache miss for the slot and one for the label, however many labels there
// are. Several labels may share a hash; the owner tells them apart. The index
// never owns a label.
class LabelHashIndex
{
public:
    // Blind to ASCII case, so that a name's case variants share a hash.
    static uint32_t NameHash(std::string_view name);
    // The equality that NameHash keeps: names equal but for ASCII case.
    static bool SameIgnoringCase(std::string_view a, std::string_view b);
    // Two addresses share a hash only when they are equal.
    static uint32_t AddressHash(TargetAddress address);

    // Room for `count` labels in all, so that inserting up to there cannot fail.
    // Throws std::bad_alloc, and the index is unchanged then.
    void Reserve(size_t count);
    // Throws std::bad_alloc only when it must grow and cannot; unchanged then.
    void Insert(uint32_t hash, CDataLabel* label);
    // The first label filed under `hash` for which `match` holds, or nullptr.
    template <class Match> CDataLabel* Find(uint32_t hash, Match match) const;
    // Files `heir` where `label` was, or takes `label` out when `heir` is
    // nullptr; nothing happens when `label` isn't filed. Never allocates.
    void Replace(uint32_t hash, const CDataLabel* label, CDataLabel* heir);
    void Clear();
    // Starts to fetch the slot where a lookup of `hash` begins, so that a run
    // of insertions waits for several cache misses at once. Only after Reserve.
    void Prefetch(uint32_t hash) const { __builtin_prefetch(slots_.data() + Home(hash)); }

private:
    struct Slot {
        uint32_t Hash = 0;
        CDataLabel* Label = nullptr;
    };

    size_t Home(uint32_t hash) const { return hash & (slots_.size() - 1); }
    size_t Next(size_t at) const { return (at + 1) & (slots_.size() - 1); }

    // A power of two in size and never more than three quarters full, so that
    // every probe ends at an empty slot after a few steps.
    std::vector<Slot> slots_;
    size_t count_ = 0;
};

template <class Match> CDataLabel* LabelHashIndex::Find(uint32_t hash, Match match) const
{
    if (slots_.empty())
        return nullptr;
    for (size_t at = Home(hash); slots_[at].Label != nullptr; at = Next(at)) {
        const Slot& slot = slots_[at];
        if (slot.Hash == hash && match(*slot.Label))
            return slot.Label;
    }
    return nullptr;
}
