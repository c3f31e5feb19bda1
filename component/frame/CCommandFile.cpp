#include "component/frame/CCommandFile.h"

#include <cstdlib>

#include "boundary/ComUtils.h"
#include "component/frame/StringTable.h"

std::vector<CCommandFile> CCommandFile::Read(const Variant& stored)
{
    std::vector<CCommandFile> files;
    for (const auto& record : CComUtils::VariantToRecords(stored, 2))
        files.emplace_back(record[0], static_cast<int32_t>(std::atoi(record[1].c_str())));
    return files;
}

Variant CCommandFile::Write(const std::vector<CCommandFile>& files)
{
    std::vector<std::vector<std::string>> records;
    records.reserve(files.size());
    for (const auto& f : files)
        records.push_back({f.entry_, std::to_string(f.timing_)});
    return CComUtils::RecordsToVariant(records);
}

int32_t CCommandFile::BatchStateOf(int32_t timing)
{
    static constexpr int32_t kStates[] = {1, 2, 3, 5};
    return timing >= 0 && timing <= 3 ? kStates[timing] : 0;
}

std::string CCommandFile::TimingTextOfState(int32_t batchState)
{
    switch (batchState) {
    case 1:
        return StringTable::Load(50041);
    case 2:
        return StringTable::Load(50042);
    case 3:
        return StringTable::Load(50043);
    case 5:
        return StringTable::Load(50044);
    default:
        return {};
    }
}
