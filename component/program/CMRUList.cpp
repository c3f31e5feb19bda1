#include "component/program/CMRUList.h"

#include <algorithm>

#include "boundary/interfaces/Workbench.h"
#include "component/program/MRUValues.h"
#include "component/util/PathUtil.h"

namespace
{

// A damaged count must not make a load read without end; no list is used that long.
constexpr int32_t kMostEntriesRead = 256;

} // namespace

void CMRUList::Add(std::unique_ptr<CMRUObject> entry)
{
    if (!entry)
        return;
    auto same = std::find_if(entries_.begin(), entries_.end(),
                             [&](const auto& held) { return held->Compare(*entry) == 0; });
    if (same != entries_.end())
        entries_.erase(same);
    while (!entries_.empty() && static_cast<int64_t>(entries_.size()) >= MaxFiles)
        entries_.pop_back();
    entries_.insert(entries_.begin(), std::move(entry));
}

void CMRUList::Save(IQRecentListStore* store, const std::string& section) const
{
    if (store == nullptr)
        return;
    SaveHeader(*store, section);
    MRUValues::WriteNumber(*store, section, "MaxFiles", static_cast<uint32_t>(MaxFiles));
    MRUValues::WriteNumber(*store, section, "Files", static_cast<uint32_t>(entries_.size()));
    int number = 1;
    for (const auto& entry : entries_)
        entry->Save(*store, section, number++);
}

void CMRUList::Load(IQRecentListStore* store, const std::string& section)
{
    if (store == nullptr)
        return;
    entries_.clear();
    LoadHeader(*store, section);
    auto room = static_cast<uint32_t>(MaxFiles);
    if (MRUValues::ReadNumber(*store, section, "MaxFiles", room))
        MaxFiles = static_cast<int32_t>(room);
    uint32_t files = 0;
    MRUValues::ReadNumber(*store, section, "Files", files);
    int32_t count = std::clamp(static_cast<int32_t>(files), 0, kMostEntriesRead);
    for (int number = 1; number <= count; ++number) {
        auto entry = MakeEntry();
        entry->Load(*store, section, number);
        entries_.push_back(std::move(entry));
    }
}

std::vector<std::string> CMRUList::FillCombo() const
{
    std::vector<std::string> texts;
    for (const auto& entry : entries_)
        texts.push_back(entry->GetFileName());
    return texts;
}

void CMRUFileList::Add(std::unique_ptr<CMRUObject> entry)
{
    if (entry)
        Browse = PathUtil::DirectoryOf(entry->GetFileName());
    CMRUList::Add(std::move(entry));
}

void CMRUFileList::SaveHeader(IQRecentListStore& store, const std::string& section) const
{
    store.WriteValue(section, "Browse", Browse);
}

void CMRUFileList::LoadHeader(IQRecentListStore& store, const std::string& section)
{
    MRUValues::ReadText(store, section, "Browse", Browse);
}
