#include "component/program/CMRUObject.h"

#include <strings.h>

#include <initializer_list>

#include "boundary/interfaces/Workbench.h"
#include "component/program/MRUValues.h"

using MRUValues::Numbered;
using MRUValues::ReadNumber;
using MRUValues::ReadText;
using MRUValues::WriteNumber;

namespace
{

int CompareNumbers(uint32_t a, uint32_t b)
{
    return a < b ? -1 : (a > b ? 1 : 0);
}

// Entries of one list are of one class; an entry of another is told apart by its file alone.
template <class Entry>
int CompareWithin(const Entry& self, const CMRUObject& other, std::initializer_list<uint32_t Entry::*> fields)
{
    int order = self.CMRUFile::Compare(other);
    const auto* same = dynamic_cast<const Entry*>(&other);
    if (order != 0 || same == nullptr)
        return order;
    for (auto field : fields) {
        if (int byField = CompareNumbers(self.*field, same->*field); byField != 0)
            return byField;
    }
    return 0;
}

} // namespace

int CMRUFile::Compare(const CMRUObject& other) const
{
    int order = strcasecmp(FileName.c_str(), other.GetFileName().c_str());
    return order < 0 ? -1 : (order > 0 ? 1 : 0);
}

void CMRUFile::Save(IQRecentListStore& store, const std::string& section, int number) const
{
    store.WriteValue(section, Numbered("File", number), FileName);
}

void CMRUFile::Load(IQRecentListStore& store, const std::string& section, int number)
{
    ReadText(store, section, Numbered("File", number), FileName);
}

void CMRUProgram::Save(IQRecentListStore& store, const std::string& section, int number) const
{
    store.WriteValue(section, Numbered("Format", number), Format);
    WriteNumber(store, section, Numbered("AccessSize", number), AccessSize);
    CMRUFile::Save(store, section, number);
}

void CMRUProgram::Load(IQRecentListStore& store, const std::string& section, int number)
{
    ReadText(store, section, Numbered("Format", number), Format);
    ReadNumber(store, section, Numbered("AccessSize", number), AccessSize);
    CMRUFile::Load(store, section, number);
}

int CMRUProgramAtOffset::Compare(const CMRUObject& other) const
{
    return CompareWithin(*this, other, {&CMRUProgramAtOffset::Address});
}

void CMRUProgramAtOffset::Save(IQRecentListStore& store, const std::string& section, int number) const
{
    WriteNumber(store, section, Numbered("Address", number), Address);
    CMRUProgram::Save(store, section, number);
}

void CMRUProgramAtOffset::Load(IQRecentListStore& store, const std::string& section, int number)
{
    ReadNumber(store, section, Numbered("Address", number), Address);
    CMRUProgram::Load(store, section, number);
}

int CMRUProgramSave::Compare(const CMRUObject& other) const
{
    return CompareWithin(*this, other, {&CMRUProgramSave::AddressStart, &CMRUProgramSave::AddressEnd});
}

void CMRUProgramSave::Save(IQRecentListStore& store, const std::string& section, int number) const
{
    WriteNumber(store, section, Numbered("AddressStart", number), AddressStart);
    WriteNumber(store, section, Numbered("AddressEnd", number), AddressEnd);
    CMRUProgram::Save(store, section, number);
}

void CMRUProgramSave::Load(IQRecentListStore& store, const std::string& section, int number)
{
    ReadNumber(store, section, Numbered("AddressStart", number), AddressStart);
    ReadNumber(store, section, Numbered("AddressEnd", number), AddressEnd);
    CMRUProgram::Load(store, section, number);
}
