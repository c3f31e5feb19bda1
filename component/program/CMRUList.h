#pragma once
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "component/program/CMRUObject.h"

struct IQRecentListStore;

// What was used last, most recent first, kept in a section of the recent-list
// store. The list owns its entries. Without a store nothing is read or written.
class CMRUList
{
public:
    explicit CMRUList(int32_t maxFiles) : MaxFiles(maxFiles) {}
    virtual ~CMRUList() = default;
    CMRUList(const CMRUList&) = delete;
    CMRUList& operator=(const CMRUList&) = delete;

    size_t Count() const { return entries_.size(); }
    void Save(IQRecentListStore* store, const std::string& section) const;
    // Replaces the list by what the section holds; a stored room replaces MaxFiles.
    void Load(IQRecentListStore* store, const std::string& section);
    // The texts a combo box of the list shows, in list order; the first is the one selected.
    std::vector<std::string> FillCombo() const;

    // The room: adding to a full list drops the oldest entries.
    int32_t MaxFiles;

protected:
    const CMRUObject& Entry(size_t index) const { return *entries_.at(index); }
    // An entry equal to the new one goes; the new one comes first.
    virtual void Add(std::unique_ptr<CMRUObject> entry);
    // An empty entry of the list's class, for reading.
    virtual std::unique_ptr<CMRUObject> MakeEntry() const = 0;
    // What a kind of list keeps before the room and the entries.
    virtual void SaveHeader(IQRecentListStore&, const std::string&) const {}
    virtual void LoadHeader(IQRecentListStore&, const std::string&) {}

private:
    std::vector<std::unique_ptr<CMRUObject>> entries_;
};

// A list of files that remembers the directory last used, for the next browse.
class CMRUFileList : public CMRUList
{
public:
    using CMRUList::CMRUList;

    std::string Browse;

protected:
    void Add(std::unique_ptr<CMRUObject> entry) override;
    void SaveHeader(IQRecentListStore& store, const std::string& section) const override;
    void LoadHeader(IQRecentListStore& store, const std::string& section) override;
};

// A list whose entries are all of one class: the one it makes when it reads
// and the only one it takes.
template <class EntryClass> class CMRUFileListOf : public CMRUFileList
{
public:
    using CMRUFileList::CMRUFileList;

    void Add(std::unique_ptr<EntryClass> entry) { CMRUFileList::Add(std::move(entry)); }
    const EntryClass& At(size_t index) const { return static_cast<const EntryClass&>(Entry(index)); }

protected:
    std::unique_ptr<CMRUObject> MakeEntry() const override { return std::make_unique<EntryClass>(); }
};

class CMRUProgramList : public CMRUFileListOf<CMRUProgram>
{
public:
    using CMRUFileListOf::CMRUFileListOf;
};

class CMRUProgramOpenList : public CMRUFileListOf<CMRUProgramOpen>
{
public:
    using CMRUFileListOf::CMRUFileListOf;
};

class CMRUProgramSaveList : public CMRUFileListOf<CMRUProgramSave>
{
public:
    using CMRUFileListOf::CMRUFileListOf;
};

class CMRUProgramVerifyList : public CMRUFileListOf<CMRUProgramVerify>
{
public:
    using CMRUFileListOf::CMRUFileListOf;
};
