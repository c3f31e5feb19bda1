#include "workbench/ProjectFileService.h"

#include <stdio.h>
#include <string.h>
#include <strings.h>

#include <algorithm>
#include <fstream>
#include <sstream>

#include "boundary/Ids.h"

namespace
{

// The header names the list and its count, so an empty entry or a list
// that was cut short is seen as such.
const char* const Sections[] = {"located", "searched", "not located"};

bool ReadSection(std::istream& in, const char* name, IQProjectFileService::List& list)
{
    std::string header;
    if (!std::getline(in, header) || header.rfind(name, 0) != 0 || header.size() <= strlen(name) ||
        header[strlen(name)] != ' ')
        return false;
    std::istringstream count(header.substr(strlen(name) + 1));
    size_t n = 0;
    if (!(count >> n) || !count.eof())
        return false;
    for (size_t i = 0; i < n; ++i) {
        std::string entry;
        if (!std::getline(in, entry))
            return false;
        list.push_back(std::move(entry));
    }
    return true;
}

bool Writable(const IQProjectFileService::List& list)
{
    return std::none_of(list.begin(), list.end(),
                        [](const std::string& s) { return s.find_first_of("\r\n") != std::string::npos; });
}

} // namespace

bool ProjectFileService::NoCaseLess::operator()(const std::string& a, const std::string& b) const
{
    return strcasecmp(a.c_str(), b.c_str()) < 0;
}

HRESULT ProjectFileService::QueryInterface(const Guid& iid, void** out)
{
    return AnswerFrom({Ids::IUnknown, Ids::ProjectFileService}, iid, static_cast<IQProjectFileService*>(this),
                      out);
}

HRESULT ProjectFileService::ReadFileList(const std::string& path, List& located, List& searched,
                                         List& notLocated)
{
    std::ifstream in(path, std::ios::binary);
    List lists[3];
    bool whole = in.is_open();
    for (int i = 0; whole && i < 3; ++i)
        whole = ReadSection(in, Sections[i], lists[i]);
    located.clear();
    searched.clear();
    notLocated.clear();
    if (!whole)
        return E_FAIL;
    located = std::move(lists[0]);
    searched = std::move(lists[1]);
    notLocated = std::move(lists[2]);
    return S_OK;
}

HRESULT ProjectFileService::WriteFileList(const std::string& path, const List& located, const List& searched,
                                          const List& notLocated)
{
    const List* lists[] = {&located, &searched, &notLocated};
    if (!std::all_of(std::begin(lists), std::end(lists), [](const List* l) { return Writable(*l); }))
        return E_INVALIDARG;
    // Written beside and renamed over, so a failure never leaves half a list.
    std::string temporary = path + ".new";
    {
        std::ofstream out(temporary, std::ios::binary | std::ios::trunc);
        for (int i = 0; i < 3; ++i) {
            out << Sections[i] << ' ' << lists[i]->size() << '\n';
            for (const auto& entry : *lists[i])
                out << entry << '\n';
        }
        out.flush();
        if (!out) {
            out.close();
            remove(temporary.c_str());
            return E_FAIL;
        }
    }
    if (rename(temporary.c_str(), path.c_str()) != 0) {
        remove(temporary.c_str());
        return E_FAIL;
    }
    return S_OK;
}

HRESULT ProjectFileService::AddProjectFile(const std::string& project, const std::string& path,
                                           std::string& fileId)
{
    if (project.empty() || path.empty())
        return E_INVALIDARG;
    Files& files = projects_[project];
    auto same = std::find_if(files.begin(), files.end(),
                             [&](const auto& f) { return strcasecmp(f.second.c_str(), path.c_str()) == 0; });
    if (same != files.end()) {
        fileId = same->first;
        return S_FALSE;
    }
    fileId = std::to_string(nextId_++);
    files.emplace_back(fileId, path);
    return S_OK;
}

HRESULT ProjectFileService::RemoveProjectFile(const std::string& project, const std::string& fileId)
{
    auto found = projects_.find(project);
    if (found == projects_.end())
        return E_FAIL;
    Files& files = found->second;
    auto file = std::find_if(files.begin(), files.end(), [&](const auto& f) { return f.first == fileId; });
    if (file == files.end())
        return E_FAIL;
    files.erase(file);
    return S_OK;
}

HRESULT ProjectFileService::GetProjectFiles(const std::string& project,
                                            std::vector<std::pair<std::string, std::string>>& files)
{
    auto found = projects_.find(project);
    files = found == projects_.end() ? Files{} : found->second;
    return S_OK;
}
