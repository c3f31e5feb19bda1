#include "component/program/DownloadModuleList.h"

#include <cstdlib>
#include <strings.h>

#include "boundary/ComUtils.h"

namespace
{

constexpr size_t kStoredFields = 7;

// As the C library reads a decimal: leading digits only, anything else 0; the
// low 32 bits kept, so that "-1" is 0xFFFFFFFF.
uint32_t NumberOf(const std::string& text)
{
    return static_cast<uint32_t>(std::strtoll(text.c_str(), nullptr, 10));
}

int32_t SignedOf(const std::string& text)
{
    return static_cast<int32_t>(NumberOf(text));
}

bool SameKey(const std::string& a, const std::string& b)
{
    return strcasecmp(a.c_str(), b.c_str()) == 0;
}

} // namespace

bool ModuleKeyLess::operator()(const std::string& a, const std::string& b) const
{
    return strcasecmp(a.c_str(), b.c_str()) < 0;
}

bool MakeModuleKeyMap(const std::vector<CDownloadModule>& modules, ModuleKeyMap& map)
{
    bool duplicate = false;
    for (const auto& module : modules) {
        std::string key = module.Key();
        if (key.empty())
            continue;
        duplicate |= !map.emplace(std::move(key), module).second;
    }
    return duplicate;
}

void ReadModuleList(const Variant& stored, std::vector<CDownloadModule>& modules)
{
    modules.clear();
    for (const auto& r : CComUtils::VariantToRecords(stored, kStoredFields))
        modules.emplace_back(r[0], NumberOf(r[1]), r[2], SignedOf(r[3]), SignedOf(r[4]), SignedOf(r[5]),
                             SignedOf(r[6]));
}

void WriteModuleList(const std::vector<CDownloadModule>& modules, Variant& stored)
{
    std::vector<std::vector<std::string>> records;
    records.reserve(modules.size());
    for (const auto& m : modules)
        records.push_back({m.FileName, std::to_string(static_cast<int32_t>(m.Offset)), m.Format,
                           std::to_string(m.DebugOnly), std::to_string(m.Verify),
                           std::to_string(m.AccessSize), std::to_string(m.AutoDownload)});
    stored = CComUtils::RecordsToVariant(records);
}

ModuleEdit CheckModuleEdit(const CDownloadModule& edited, const CDownloadModule& opened,
                           const std::vector<CDownloadModule>* list,
                           const std::function<std::string(const std::string&)>& expand)
{
    if (list == nullptr)
        return ModuleEdit::Accepted;
    const std::string key = expand(edited.Key());
    if (SameKey(key, expand(opened.Key()))) {
        const bool flagsKept = edited.DebugOnly == opened.DebugOnly && edited.Verify == opened.Verify &&
                               edited.AutoDownload == opened.AutoDownload;
        return flagsKept ? ModuleEdit::Cancelled : ModuleEdit::Accepted;
    }
    for (const auto& module : *list)
        if (SameKey(key, expand(module.Key())))
            return ModuleEdit::AlreadyExists;
    return ModuleEdit::Accepted;
}
