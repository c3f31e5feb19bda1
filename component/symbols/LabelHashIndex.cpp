#include "component/symbols/LabelHashIndex.h"

#include <algorithm>

namespace
{

char FoldCase(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

// A bijection that spreads neighbouring numbers over the whole table.
uint32_t Scramble(uint32_t hash)
{
    hash = (hash ^ (hash >> 16)) * 0x85ebca6bu;
    hash = (hash ^ (hash >> 13)) * 0xc2b2ae35u;
    return hash ^ (hash >> 16);
}

} // namespace

uint32_t LabelHashIndex::NameHash(std::string_view name)
{
    uint32_t hash = 2166136261u;
    for (const char c : name)
        hash = (hash ^ static_cast<unsigned char>(FoldCase(c))) * 16777619u;
    return Scramble(hash);
}

bool LabelHashIndex::SameIgnoringCase(std::string_view a, std::string_view b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return FoldCase(x) == FoldCase(y); });
}

uint32_t LabelHashIndex::AddressHash(TargetAddress address)
{
    return Scramble(address.Value());
}

void LabelHashIndex::Reserve(size_t count)
{
    size_t size = slots_.empty() ? 16 : slots_.size();
    while (count > size / 4 * 3)
        size *= 2;
    if (size == slots_.size())
        return;
    std::vector<Slot> old(size);
    old.swap(slots_);
    for (const Slot& slot : old) {
        if (slot.Label == nullptr)
            continue;
        size_t at = Home(slot.Hash);
        while (slots_[at].Label != nullptr)
            at = Next(at);
        slots_[at] = slot;
    }
}

void LabelHashIndex::Insert(uint32_t hash, CDataLabel* label)
{
    Reserve(count_ + 1);
    size_t at = Home(hash);
    while (slots_[at].Label != nullptr)
        at = Next(at);
    slots_[at] = {hash, label};
    ++count_;
}

void LabelHashIndex::Replace(uint32_t hash, const CDataLabel* label, CDataLabel* heir)
{
    if (slots_.empty())
        return;
    size_t hole = Home(hash);
    while (slots_[hole].Label != label) {
        if (slots_[hole].Label == nullptr)
            return;
        hole = Next(hole);
    }
    if (heir != nullptr) {
        slots_[hole].Label = heir;
        return;
    }
    // No tombstone: a later label of the run whose home lies at or before the
    // hole moves into it, so that no probe meets an empty slot before its label.
    const size_t mask = slots_.size() - 1;
    for (size_t at = Next(hole); slots_[at].Label != nullptr; at = Next(at)) {
        const size_t fromHome = (at - Home(slots_[at].Hash)) & mask;
        if (fromHome >= ((at - hole) & mask)) {
            slots_[hole] = slots_[at];
            hole = at;
        }
    }
    slots_[hole] = {};
    --count_;
}

void LabelHashIndex::Clear()
{
    std::vector<Slot>().swap(slots_);
    count_ = 0;
}
