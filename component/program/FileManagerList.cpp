#include "component/program/FileManagerList.h"

#include <cstdlib>

#include "component/util/PathUtil.h"

namespace FileManagerList
{

namespace
{

constexpr const char* Suffix = "_files.qdd";

bool ParseTime(const std::string& text, CFileTime& time)
{
    if (text.size() != 16 || text.find_first_not_of("0123456789abcdefABCDEF") != std::string::npos)
        return false;
    time = CFileTime::FromValue(std::strtoull(text.c_str(), nullptr, 16));
    return true;
}

} // namespace

std::string PathFor(const std::string& modulePath)
{
    std::string name = FileManagerSearch::FileName(modulePath);
    auto dot = name.find_last_of('.');
    std::string stem = dot == std::string::npos || dot == 0 ? name : name.substr(0, dot);
    return PathUtil::Join(PathUtil::DirectoryOf(modulePath), stem + Suffix);
}

bool Write(IQProjectFileService* service, const CDownloadModuleData& data)
{
    if (service == nullptr || data.ListFileName.empty())
        return false;
    IQProjectFileService::List located{data.ModuleTime.Text(), PathUtil::DirectoryOf(data.ListFileName)};
    for (auto& path : data.Located())
        located.push_back(std::move(path));
    IQProjectFileService::List searched;
    for (const auto& [directory, flag] : data.SearchDirectories)
        searched.push_back(directory + (flag == 1 ? '1' : '0'));
    return Succeeded(service->WriteFileList(data.ListFileName, located, searched, data.NotLocated()));
}

bool Read(IQProjectFileService* service, const std::string& path, CDownloadModuleData& data,
          std::string& moduleDirectory)
{
    IQProjectFileService::List located, searched, notLocated;
    CFileTime time;
    if (service == nullptr || Failed(service->ReadFileList(path, located, searched, notLocated)) ||
        located.size() < 2 || !ParseTime(located[0], time))
        return false;
    moduleDirectory = located[1];
    data.ModuleTime = time;
    data.ListFileName = path;
    for (size_t i = 2; i < located.size(); ++i)
        data.FileStates[located[i]] = 1;
    for (const auto& name : notLocated)
        data.FileStates.emplace(name, 0);
    for (const auto& entry : searched)
        if (entry.size() >= 2)
            data.SearchDirectories[entry.substr(0, entry.size() - 1)] = entry.back() == '1' ? 1 : 0;
    return true;
}

} // namespace FileManagerList
