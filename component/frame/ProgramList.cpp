#include "component/frame/ProgramList.h"

#include <strings.h>

#include <algorithm>

namespace
{

bool SameKey(const std::string& a, const std::string& b)
{
    return strcasecmp(a.c_str(), b.c_str()) == 0;
}

} // namespace

CQProgram* ProgramList::At(int32_t index) const
{
    return index >= 0 && index < Count() ? programs_[static_cast<size_t>(index)].get() : nullptr;
}

int32_t ProgramList::Insert(const CQProgram& program, int32_t index, IQServiceRegistry* services)
{
    if (index < 0 || index > Count())
        index = Count();
    auto copy = std::make_unique<CQProgram>(program);
    CQProgram& entered = *copy;
    programs_.insert(programs_.begin() + index, std::move(copy));
    entered.Open(services);
    return index;
}

std::unique_ptr<CQProgram> ProgramList::Take(int32_t index)
{
    if (At(index) == nullptr)
        return nullptr;
    auto program = std::move(programs_[static_cast<size_t>(index)]);
    programs_.erase(programs_.begin() + index);
    return program;
}

std::optional<int32_t>
ProgramList::FindByKey(const std::string& key,
                       const std::function<std::string(const std::string&)>& expand) const
{
    for (int32_t i = 0; i < Count(); ++i)
        if (SameKey(At(i)->Key(), key))
            return i;
    const std::string wanted = expand(key);
    for (int32_t i = 0; i < Count(); ++i)
        if (SameKey(expand(At(i)->Key()), wanted))
            return i;
    return std::nullopt;
}

bool ProgramList::InOrderOf(const std::vector<CDownloadModule>& modules) const
{
    if (modules.size() != programs_.size())
        return false;
    for (size_t i = 0; i < modules.size(); ++i)
        if (!SameKey(programs_[i]->Key(), modules[i].Key()))
            return false;
    return true;
}

bool ProgramList::ArrangeAs(const std::vector<CDownloadModule>& modules)
{
    if (InOrderOf(modules))
        return false;
    std::vector<std::unique_ptr<CQProgram>> arranged;
    for (const CDownloadModule& module : modules) {
        auto it = std::find_if(programs_.begin(), programs_.end(), [&](const auto& program) {
            return program && program->Key() == module.Key();
        });
        if (it != programs_.end())
            arranged.push_back(std::move(*it));
    }
    for (auto& program : programs_)
        if (program)
            arranged.push_back(std::move(program));
    programs_ = std::move(arranged);
    return true;
}
