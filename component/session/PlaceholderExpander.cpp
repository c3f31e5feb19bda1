#include "component/session/PlaceholderExpander.h"

#include <pwd.h>
#include <strings.h>
#include <unistd.h>

#include <ctime>
#include <filesystem>

#include "boundary/Ids.h"
#include "boundary/interfaces/Workspace.h"

namespace
{

constexpr PlaceholderExpander::Entry kTable[] = {
    {1, "FULLFILE", "FF", 50005},     {2, "FILENAME", "FN", 50006},     {3, "FILELEAF", "FL", 50007},
    {4, "FILEDIR", "FD", 50008},      {5, "EXTENSION", "EX", 50009},    {6, "VELDIR", "VD", 50010},
    {7, "TEMPDIR", "TD", 50011},      {8, "WORKSPDIR", "WD", 50012},    {9, "WORKSPNAME", "WN", 50013},
    {10, "PROJDIR", "PD", 50014},     {11, "PROJECTNAME", "PN", 50015}, {12, "CONFIGNAME", "CN", 50016},
    {13, "CONFIGDIR", "CD", 50017},   {14, "TCINSTALL", "TI", 50018},   {15, "EXEDIR", "ED", 50019},
    {16, "EXENAME", "EN", 50020},     {17, "WINDIR", "WR", 50021},      {18, "WINSYSDIR", "WS", 50022},
    {19, "LINE", "LN", 50023},        {20, "TOOLDIR", "TD", 50024},     {21, "VEL_HWND", "VH", 50025},
    {22, "VEL_ID", "VI", 50026},      {23, "TIME", "TM", 50027},        {24, "DATE_TEXT", "DT", 50028},
    {25, "DATE_DMY", "DD", 50029},    {26, "DATE_MDY", "DM", 50030},    {27, "DATE_YMD", "DY", 50031},
    {28, "USER", "UR", 50032},        {29, "CURSOR", "CU", 50033},      {30, "PAGENO", "PN", 50034},
    {31, "LEFT", "LT", 50035},        {32, "CENTRE", "CR", 50036},      {33, "RIGHT", "RT", 50037},
    {34, "USERINPUT***", "UI***", 0}, {35, "DEVICEDETAILS", "DE", 0},
};

// A table name ending in "***" matches any name that starts with what stands before the stars.
bool NameMatches(const char* tableName, const std::string& name)
{
    std::string t = tableName;
    if (t.size() > 3 && t.compare(t.size() - 3, 3, "***") == 0) {
        t.resize(t.size() - 3);
        return name.size() >= t.size() && strncasecmp(name.c_str(), t.c_str(), t.size()) == 0;
    }
    return strcasecmp(t.c_str(), name.c_str()) == 0;
}

std::string Now(const char* format)
{
    std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    char buffer[128];
    size_t n = std::strftime(buffer, sizeof buffer, format, &local);
    return std::string(buffer, n);
}

std::string UserName()
{
    std::string name;
    if (const passwd* pw = getpwuid(geteuid()); pw != nullptr && pw->pw_name != nullptr)
        name = pw->pw_name;
    else if (const char* env = std::getenv("USER"))
        name = env;
    if (name.size() > 200)
        name.resize(200);
    return name;
}

std::string NotExpanded(const PlaceholderExpander::Entry& entry)
{
    std::string name = entry.longName;
    if (name.size() > 3 && name.compare(name.size() - 3, 3, "***") == 0)
        name.resize(name.size() - 3);
    return "$(" + name + ")";
}

template <class Call> std::string Ask(IQWorkspaceInfo* info, Call call)
{
    std::string value;
    if (info == nullptr || call(info, value) != S_OK)
        return {};
    return value;
}

} // namespace

PlaceholderExpander::PlaceholderExpander(IQServiceRegistry* registry)
    : info_(GetServiceAs<IQWorkspaceInfo>(registry, Ids::IQWorkspaceInfo)),
      custom_(GetServiceAs<IQCustomPlaceholders>(registry, Ids::CustomPlaceholders))
{
}

const PlaceholderExpander::Entry* PlaceholderExpander::Table()
{
    return kTable;
}
size_t PlaceholderExpander::TableSize()
{
    return sizeof(kTable) / sizeof(kTable[0]);
}

const PlaceholderExpander::Entry* PlaceholderExpander::Lookup(const std::string& name)
{
    for (const auto& e : kTable)
        if (NameMatches(e.longName, name))
            return &e;
    for (const auto& e : kTable)
        if (NameMatches(e.shortName, name))
            return &e;
    return nullptr;
}

std::string PlaceholderExpander::Expand(const std::string& text, const std::string& file) const
{
    return ExpandFor(text, {}, {}, {}, file);
}

std::string PlaceholderExpander::ExpandFor(const std::string& text, const std::string& workspace,
                                           const std::string& project, const std::string& configuration,
                                           const std::string& file) const
{
    Names names{workspace, project, configuration, file};
    if (names.workspace.empty())
        names.workspace =
            Ask(info_, [](IQWorkspaceInfo* i, std::string& v) { return i->GetActiveWorkspace(v); });
    if (names.project.empty())
        names.project = Ask(info_, [](IQWorkspaceInfo* i, std::string& v) { return i->GetActiveProject(v); });
    if (names.configuration.empty())
        names.configuration =
            Ask(info_, [](IQWorkspaceInfo* i, std::string& v) { return i->GetActiveConfiguration(v); });

    std::string out = text;
    size_t position = 0;
    for (int round = 0; round < kMaxRounds; ++round) {
        if (out.size() < 4)
            break;
        // The first "$(" from the position that has no "$" directly in front.
        size_t open = out.find("$(", position);
        while (open != std::string::npos && open > 0 && out[open - 1] == '$')
            open = out.find("$(", open + 1);
        if (open == std::string::npos)
            break;
        size_t close = out.find(')', open + 2);
        if (close == std::string::npos)
            break;
        std::string name = out.substr(open + 2, close - open - 2);
        std::string value = ValueOf(name, names);
        out = out.substr(0, open) + value + out.substr(close + 1);
        position = open + value.size();
    }
    return out;
}

std::string PlaceholderExpander::ValueOf(const std::string& name, const Names& names) const
{
    if (const Entry* entry = Lookup(name))
        return TableValue(*entry, name, names);
    return CustomValue(name, names.workspace);
}

std::string PlaceholderExpander::TableValue(const Entry& entry, const std::string& written,
                                            const Names& names) const
{
    namespace fs = std::filesystem;
    const fs::path file(names.file);
    auto needsFile = [&](std::string value) { return names.file.empty() ? NotExpanded(entry) : value; };
    auto fromInfo = [&](auto call) {
        std::string v = Ask(info_, call);
        return v.empty() ? NotExpanded(entry) : v;
    };
    const std::string& ws = names.workspace;
    const std::string& pr = names.project;
    const std::string& cf = names.configuration;
    switch (entry.index) {
    case 1:
        return needsFile(names.file);
    case 2:
        return needsFile(file.filename().string());
    case 3:
        return needsFile(file.stem().string());
    case 4:
        return needsFile(file.parent_path().string());
    case 5:
        return needsFile(file.extension().string());
    case 6:
        return fromInfo([](IQWorkspaceInfo* i, std::string& v) { return i->GetInstallDirectory(v); });
    case 7:
        return fromInfo([](IQWorkspaceInfo* i, std::string& v) { return i->GetTempDirectory(v); });
    case 8:
        return fromInfo([&](IQWorkspaceInfo* i, std::string& v) { return i->GetWorkspaceDirectory(ws, v); });
    case 9:
        return fromInfo([&](IQWorkspaceInfo* i, std::string& v) { return i->GetWorkspaceName(ws, v); });
    case 10:
        return fromInfo(
            [&](IQWorkspaceInfo* i, std::string& v) { return i->GetProjectDirectory(ws, pr, v); });
    case 11:
        return fromInfo([&](IQWorkspaceInfo* i, std::string& v) { return i->GetProjectName(ws, pr, v); });
    case 12:
        return fromInfo(
            [&](IQWorkspaceInfo* i, std::string& v) { return i->GetConfigurationName(ws, pr, cf, v); });
    case 13:
        return fromInfo(
            [&](IQWorkspaceInfo* i, std::string& v) { return i->GetConfigurationDirectory(ws, pr, cf, v); });
    case 23:
        return Now("%H:%M:%S");
    case 24:
        return Now("%B %d, %Y");
    case 25:
        return Now("%d/%m/%Y");
    case 26:
        return Now("%m/%d/%Y");
    case 27:
        return Now("%Y/%m/%d");
    case 28:
        return UserName();
    case 34:
        return "$(" + written + ")";
    default:
        // Windows directories have no counterpart here, and the rest belong to
        // other tools: the placeholder stays as written.
        return NotExpanded(entry);
    }
}

std::string PlaceholderExpander::CustomValue(const std::string& name, const std::string& workspace) const
{
    if (custom_ == nullptr || info_ == nullptr || info_->IsWorkspaceOpen() != S_OK)
        return {};
    auto find = [&](const IQCustomPlaceholders::Map& map) -> std::string {
        for (const auto& [key, value] : map)
            if (strcasecmp(key.c_str(), name.c_str()) == 0)
                return value;
        return {};
    };
    IQCustomPlaceholders::Map map;
    if (custom_->GetGlobalPlaceholders(map) == S_OK) {
        if (auto v = find(map); !v.empty())
            return v;
    }
    map.clear();
    if (custom_->GetWorkspacePlaceholders(workspace, map) == S_OK)
        return find(map);
    return {};
}
