#include "component/symbols/CDataLabelArray.h"

#include <algorithm>
#include <exception>
#include <iterator>
#include <new>

namespace
{

auto Named(std::string_view name)
{
    return [name](const CDataLabel& label) { return label.NarrowName() == name; };
}

// Labels under one address hash have that very address.
bool AnyLabel(const CDataLabel&)
{
    return true;
}

} // namespace

CDataLabelArray::~CDataLabelArray()
{
    Clear();
}

bool CDataLabelArray::AddLabel(const LabelRecord& record, uint32_t moduleId)
{
    try {
        auto label = std::make_unique<CDataLabel>(record, moduleId);
        if (deferred_) {
            pending_.push_back(std::move(label));
            return true;
        }
        worker_.Wait();
        Insert(label.get());
        label.release();
        return true;
    } catch (const std::bad_alloc&) {
        return false;
    }
}

// Both keys or neither: a key whose twin could not be made is taken out again.
// The indexes get their room first, so that filing the label cannot fail.
void CDataLabelArray::Insert(CDataLabel* label)
{
    nameIndex_.Reserve(names_.size() + 1);
    addressIndex_.Reserve(addresses_.size() + 1);
    const auto named = names_.insert(CLabelKeyName(label));
    try {
        addresses_.insert(CLabelKeyAddress(label));
    } catch (const std::bad_alloc&) {
        names_.erase(named);
        throw;
    }
    Index(label);
}

void CDataLabelArray::Index(CDataLabel* label)
{
    const std::string_view name = label->NarrowName();
    const uint32_t nameHash = LabelHashIndex::NameHash(name);
    if (nameIndex_.Find(nameHash, Named(name)) == nullptr)
        nameIndex_.Insert(nameHash, label);
    const uint32_t addressHash = LabelHashIndex::AddressHash(label->Record.Address);
    if (addressIndex_.Find(addressHash, AnyLabel) == nullptr)
        addressIndex_.Insert(addressHash, label);
}

void CDataLabelArray::Unindex(NameOrder::const_iterator named)
{
    const auto next = std::next(named);
    CDataLabel* heir = next != names_.end() && next->Name() == named->Name() ? next->Label : nullptr;
    nameIndex_.Replace(LabelHashIndex::NameHash(named->Name()), named->Label, heir);
}

void CDataLabelArray::Unindex(AddressOrder::const_iterator at)
{
    const auto next = std::next(at);
    CDataLabel* heir = next != addresses_.end() && next->Address() == at->Address() ? next->Label : nullptr;
    addressIndex_.Replace(LabelHashIndex::AddressHash(at->Address()), at->Label, heir);
}

CDataLabel* CDataLabelArray::DetachByName(std::string_view name)
{
    const auto named = names_.lower_bound(name);
    if (named == names_.end() || named->Name() != name)
        return nullptr;
    CDataLabel* label = named->Label;
    Unindex(named);
    names_.erase(named);
    // Labels of one address stand side by side; only this label's own key goes.
    auto at = addresses_.lower_bound(label->Record.Address);
    while (at->Label != label)
        ++at;
    Unindex(at);
    addresses_.erase(at);
    ResetCursors();
    return label;
}

bool CDataLabelArray::RemoveLabel(std::string_view name)
{
    worker_.Wait();
    std::unique_ptr<CDataLabel> label(DetachByName(name));
    return label != nullptr;
}

HRESULT CDataLabelArray::ReplaceLabel(const LabelRecord& oldRecord, const LabelRecord& newRecord)
{
    worker_.Wait();
    ResetCursors();
    std::unique_ptr<CDataLabel> old(DetachByName(oldRecord.Name));
    if (!old)
        return QE_UNDEFINED_SYMBOL;
    // The replacement is wanted at once, even in deferred mode. If it cannot be
    // made, the old label is gone all the same.
    try {
        auto label = std::make_unique<CDataLabel>(newRecord, old->ModuleId);
        Insert(label.get());
        label.release();
    } catch (const std::bad_alloc&) {
    }
    return S_OK;
}

void CDataLabelArray::RemoveModuleLabels(uint32_t moduleId)
{
    worker_.Wait();
    // A load that failed takes back also what it added while deferred.
    std::erase_if(pending_, [moduleId](const auto& label) { return label->ModuleId == moduleId; });
    for (auto named = names_.begin(); named != names_.end();) {
        if (named->Label->ModuleId != moduleId) {
            ++named;
            continue;
        }
        Unindex(named);
        named = names_.erase(named);
    }
    for (auto at = addresses_.begin(); at != addresses_.end();) {
        CDataLabel* label = at->Label;
        if (label->ModuleId != moduleId) {
            ++at;
            continue;
        }
        Unindex(at);
        at = addresses_.erase(at);
        delete label;
    }
    ResetCursors();
}

void CDataLabelArray::ReassignModule(uint32_t oldId, uint32_t newId)
{
    // Callers change modules only while no worker runs; waiting costs nothing then.
    worker_.Wait();
    if (oldId == newId)
        return;
    for (const CLabelKeyName& key : names_) {
        if (key.Label->ModuleId == oldId)
            key.Label->ModuleId = newId;
    }
}

void CDataLabelArray::Clear()
{
    worker_.Wait();
    for (const CLabelKeyName& key : names_)
        delete key.Label;
    names_.clear();
    addresses_.clear();
    nameIndex_.Clear();
    addressIndex_.Clear();
    ResetCursors();
}

HRESULT CDataLabelArray::FindByAddress(LabelRecord& record)
{
    worker_.Wait();
    const CDataLabel* label = addressIndex_.Find(LabelHashIndex::AddressHash(record.Address), AnyLabel);
    if (label == nullptr)
        return QE_UNDEFINED_SYMBOL;
    record.Name = label->NarrowName();
    return S_OK;
}

HRESULT CDataLabelArray::FindByName(LabelRecord& record, uint32_t moduleId, bool exact)
{
    worker_.Wait();
    const std::string_view wanted = record.Name;
    const uint32_t hash = LabelHashIndex::NameHash(wanted);
    const CDataLabel* found = nullptr;
    if (exact) {
        found = FirstOfModule(nameIndex_.Find(hash, Named(wanted)), moduleId);
    } else {
        // Each case variant heads its own labels; the byte-wise least one that
        // has a label of the module comes first in name order.
        nameIndex_.Find(hash, [&](const CDataLabel& head) {
            const std::string_view name = head.NarrowName();
            if (LabelHashIndex::SameIgnoringCase(name, wanted) &&
                (found == nullptr || name < found->NarrowName())) {
                if (const CDataLabel* label = FirstOfModule(&head, moduleId))
                    found = label;
            }
            return false;
        });
    }
    if (found == nullptr)
        return QE_UNDEFINED_SYMBOL;
    record.Address = found->Record.Address;
    return S_OK;
}

const CDataLabel* CDataLabelArray::FirstOfModule(const CDataLabel* head, uint32_t moduleId) const
{
    if (head == nullptr || moduleId == 0 || head->ModuleId == moduleId)
        return head;
    const std::string_view name = head->NarrowName();
    for (auto named = names_.lower_bound(name); named != names_.end() && named->Name() == name; ++named) {
        if (named->Label->ModuleId == moduleId)
            return named->Label;
    }
    return nullptr;
}

size_t CDataLabelArray::GetCount()
{
    worker_.Wait();
    return names_.size();
}

const CDataLabel* CDataLabelArray::GetLabelByNameIndex(size_t index)
{
    worker_.Wait();
    const CLabelKeyName* key = nameCursor_.Seek(names_, index);
    return key != nullptr ? key->Label : nullptr;
}

const LabelRecord* CDataLabelArray::GetRecordByNameIndex(size_t index)
{
    const CDataLabel* label = GetLabelByNameIndex(index);
    return label != nullptr ? &label->Record : nullptr;
}

const LabelRecord* CDataLabelArray::GetRecordByAddressIndex(size_t index)
{
    worker_.Wait();
    const CLabelKeyAddress* key = addressCursor_.Seek(addresses_, index);
    return key != nullptr ? &key->Label->Record : nullptr;
}

void CDataLabelArray::SetDeferred(bool deferred)
{
    worker_.Wait();
    if (!deferred && deferred_) {
        try {
            worker_.Start([this] { SortInPending(); });
        } catch (const std::exception&) {
            // No thread to be had: sort them in now rather than lose them.
            SortInPending();
        }
    }
    deferred_ = deferred;
}

namespace
{

// Puts a batch of keys into an order as if they came one by one, oldest first:
// sorted (stably) first, each key then goes in just before the place found for
// the one before it, which costs one step instead of a walk down the tree as
// long as no older key lies between the two. What went in is listed, so that a
// failure can take it out again.
template <class Order>
void InsertBatch(Order& order, const std::vector<std::unique_ptr<CDataLabel>>& labels,
                 std::vector<typename Order::iterator>& inserted)
{
    std::vector<typename Order::value_type> keys;
    keys.reserve(labels.size());
    for (const auto& label : labels)
        keys.emplace_back(label.get());
    std::stable_sort(keys.begin(), keys.end(), order.value_comp());
    inserted.reserve(keys.size());
    auto place = order.end();
    for (size_t i = 0; i < keys.size(); ++i) {
        // The place is behind every key equal to this one.
        if (i == 0 || (place != order.end() && !order.value_comp()(keys[i], *place)))
            place = order.upper_bound(keys[i]);
        inserted.push_back(order.insert(place, keys[i]));
    }
}

} // namespace

void CDataLabelArray::SortInPending() noexcept
{
    std::vector<NameOrder::iterator> named;
    std::vector<AddressOrder::iterator> addressed;
    try {
        nameIndex_.Reserve(names_.size() + pending_.size());
        addressIndex_.Reserve(addresses_.size() + pending_.size());
        InsertBatch(names_, pending_, named);
        InsertBatch(addresses_, pending_, addressed);
        // Oldest first, so that each name and address is filed under its oldest label.
        constexpr size_t Ahead = 16;
        for (size_t i = 0; i < pending_.size(); ++i) {
            if (i + Ahead < pending_.size()) {
                const CDataLabel& later = *pending_[i + Ahead];
                nameIndex_.Prefetch(LabelHashIndex::NameHash(later.NarrowName()));
                addressIndex_.Prefetch(LabelHashIndex::AddressHash(later.Record.Address));
            }
            Index(pending_[i].release());
        }
    } catch (const std::bad_alloc&) {
        for (const auto& key : named)
            names_.erase(key);
        for (const auto& key : addressed)
            addresses_.erase(key);
        // Short of memory: one by one, and a label that fits in neither order is
        // dropped, as it could not be looked up anyway.
        for (std::unique_ptr<CDataLabel>& label : pending_) {
            try {
                Insert(label.get());
                label.release();
            } catch (const std::bad_alloc&) {
            }
        }
    }
    pending_.clear();
}

void CDataLabelArray::ResetCursors()
{
    nameCursor_.Reset();
    addressCursor_.Reset();
}
