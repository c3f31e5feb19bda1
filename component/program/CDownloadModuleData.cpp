#include "component/program/CDownloadModuleData.h"

#include <algorithm>

bool CDownloadModuleData::IsLocated(const std::string& path) const
{
    auto found = FileStates.find(path);
    return found != FileStates.end() && found->second == 1;
}

bool CDownloadModuleData::IsActive(const std::string& modulePath) const
{
    return std::any_of(ActiveModules.begin(), ActiveModules.end(),
                       [&](const std::string& m) { return FileManagerSearch::Same(m, modulePath); });
}

void CDownloadModuleData::SetActive(const std::string& modulePath, bool active)
{
    ActiveModules.erase(
        std::remove_if(ActiveModules.begin(), ActiveModules.end(),
                       [&](const std::string& m) { return FileManagerSearch::Same(m, modulePath); }),
        ActiveModules.end());
    if (active)
        ActiveModules.push_back(modulePath);
}

std::vector<std::string> CDownloadModuleData::WithState(int state) const
{
    std::vector<std::string> out;
    for (const auto& [path, value] : FileStates)
        if (value == state)
            out.push_back(path);
    return out;
}

std::vector<std::string> CDownloadModuleData::Search(std::vector<std::string>& pending,
                                                     const std::string& directory, bool subdirectories)
{
    std::vector<std::string> found;
    auto taken = [this](const std::string& path) { return IsLocated(path); };
    std::vector<std::string> rest;
    for (auto& name : pending) {
        if (auto path = FileManagerSearch::Find(name, directory, subdirectories, taken)) {
            FileStates.erase(name);
            DuplicateCounts.erase(name);
            FileStates[*path] = 1;
            found.push_back(*path);
        } else {
            rest.push_back(std::move(name));
        }
    }
    pending = std::move(rest);
    int& flag = SearchDirectories[directory];
    flag = flag == 1 || subdirectories ? 1 : 0;
    LastDirectory = directory;
    return found;
}

void CDownloadModuleData::MarkNotLocated(const std::vector<std::string>& names)
{
    std::map<std::string, int, NoCaseLess> seen;
    for (const auto& name : names) {
        auto [entry, first] = seen.emplace(name, 0);
        if (++entry->second == 1) {
            FileStates[name] = 0;
            DuplicateCounts.erase(name);
        } else {
            DuplicateCounts[entry->first] = entry->second - 1;
        }
    }
}

void CDownloadModuleData::Unlocate(const std::string& path)
{
    if (IsLocated(path))
        FileStates.erase(path);
}
