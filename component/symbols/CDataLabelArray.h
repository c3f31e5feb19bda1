#pragma once
#include <cstddef>
#include <cstdint>
#include <memory>
#include <set>
#include <string_view>
#include <vector>

#include "boundary/HResult.h"
#include "component/symbols/CDataLabel.h"
#include "component/symbols/CLabelKeyAddress.h"
#include "component/symbols/CLabelKeyName.h"
#include "component/symbols/IdleWorker.h"
#include "component/symbols/LabelHashIndex.h"
#include "component/symbols/OrderCursor.h"

// No label of that name or at that address ("Undefined symbol" in the error table).
constexpr HRESULT QE_UNDEFINED_SYMBOL = MakeResult(0x80041013u);

// The labels of the loaded programs, each kept once and ordered twice, by name
// and by address; both orders allow duplicates, and among equal keys the oldest
// comes first. Beside the orders, two hash indexes answer the lookups without
// a walk down a tree that outgrows the caches: one files the first label in
// name order of each distinct name, blind to case so that a name's case
// variants share a hash; the other files the oldest label at each address.
//
// A download adds its labels in deferred mode, where a label only joins a
// pending list; leaving deferred mode sorts them in on an idle-priority worker.
// There is no lock: every operation that reads or writes the orders or the
// pending list first waits for the worker, so the two threads never meet.
class CDataLabelArray
{
public:
    using CLabelKeyName = ::CLabelKeyName;
    using CLabelKeyAddress = ::CLabelKeyAddress;

    CDataLabelArray() = default;
    CDataLabelArray(const CDataLabelArray&) = delete;
    CDataLabelArray& operator=(const CDataLabelArray&) = delete;
    ~CDataLabelArray();

    // False when the label could not be made or stored; the store is unchanged then.
    bool AddLabel(const LabelRecord& record, uint32_t moduleId);
    // Removes the oldest label of this name; false when there is none.
    bool RemoveLabel(std::string_view name);
    // The label named by the old record gives way to one made from the new
    // record, with the old label's module; QE_UNDEFINED_SYMBOL when none is named so.
    HRESULT ReplaceLabel(const LabelRecord& oldRecord, const LabelRecord& newRecord);
    void RemoveModuleLabels(uint32_t moduleId);
    void ReassignModule(uint32_t oldId, uint32_t newId);
    // Pending labels stay: they belong to a load that is still running.
    void Clear();

    // Fills in the name of the oldest label at exactly this address.
    HRESULT FindByAddress(LabelRecord& record);
    // Fills in the address of the first label in name order whose name matches,
    // byte for byte when exact, else ignoring ASCII case; a module id other than
    // 0 admits only that module's labels.
    HRESULT FindByName(LabelRecord& record, uint32_t moduleId, bool exact);

    size_t GetCount();
    // nullptr when the index is at or above the count. Runs through an order by
    // rising index cost one step per element.
    const CDataLabel* GetLabelByNameIndex(size_t index);
    const LabelRecord* GetRecordByNameIndex(size_t index);
    const LabelRecord* GetRecordByAddressIndex(size_t index);

    void SetDeferred(bool deferred);

private:
    using NameOrder = std::multiset<CLabelKeyName, LabelNameOrder>;
    using AddressOrder = std::multiset<CLabelKeyAddress, LabelAddressOrder>;

    void Insert(CDataLabel* label);
    // Files a label that is younger than every stored one, if it heads its
    // name or its address. Cannot fail once the indexes have room.
    void Index(CDataLabel* label);
    // Before a key leaves its order: its label's place in the index, if it has
    // one, passes to the next label of that name or address.
    void Unindex(NameOrder::const_iterator named);
    void Unindex(AddressOrder::const_iterator at);
    // The first label in name order of the name that `head` heads which
    // belongs to the module; the head itself when the module is 0.
    const CDataLabel* FirstOfModule(const CDataLabel* head, uint32_t moduleId) const;
    CDataLabel* DetachByName(std::string_view name);
    void ResetCursors();
    void SortInPending() noexcept;

    NameOrder names_;
    OrderCursor<NameOrder> nameCursor_;
    AddressOrder addresses_;
    OrderCursor<AddressOrder> addressCursor_;
    LabelHashIndex nameIndex_;
    LabelHashIndex addressIndex_;
    std::vector<std::unique_ptr<CDataLabel>> pending_;
    bool deferred_ = false;
    // Declared last, so that it is waited for before what its job touches goes.
    IdleWorker worker_;
};
