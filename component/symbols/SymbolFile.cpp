#include "component/symbols/SymbolFile.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <memory>

#include "boundary/Event.h"
#include "boundary/Ids.h"
#include "component/symbols/CLabelManager.h"

namespace
{

// Takes a line of either ending, carriage return and line feed or a bare line feed.
bool ReadLine(std::istream& in, std::string& line)
{
    if (!std::getline(in, line))
        return false;
    if (!line.empty() && line.back() == '\r')
        line.pop_back();
    return true;
}

// Hexadecimal digits up to the first character that is none, so that the
// trailing "H" ends the number. Text that is no number gives 0.
TargetAddress ParseAddress(const std::string& text)
{
    return static_cast<uint32_t>(std::strtoul(text.c_str(), nullptr, 16));
}

} // namespace

HRESULT SaveSymbolFile(CLabelManager& labels, const std::string& path)
{
    std::unique_ptr<FILE, int (*)(FILE*)> file(std::fopen(path.c_str(), "w"), &std::fclose);
    if (!file)
        return E_FAIL;
    uint32_t count = 0;
    labels.GetLabelCount(count);
    std::fputs("BEGIN\n", file.get());
    for (uint32_t index = 0; index < count; ++index) {
        const LabelRecord* record = nullptr;
        if (labels.GetRecordByAddressIndex(index, record) != S_OK || record == nullptr)
            continue;
        std::fprintf(file.get(), "%08lxH %s\n", static_cast<unsigned long>(record->Address.Value()),
                     record->Name.c_str());
    }
    std::fputs("END\n", file.get());
    return S_OK;
}

HRESULT LoadSymbolFile(CLabelManager& labels, const std::string& path, IQServiceRegistry* registry)
{
    std::ifstream in(path, std::ios::binary);
    std::string line;
    if (!in || !ReadLine(in, line) || line != "BEGIN")
        return E_FAIL;
    while (ReadLine(in, line) && line != "END") {
        const size_t blank = line.find(' ');
        // A line with no name, such as an empty one, makes no label.
        if (blank == std::string::npos)
            continue;
        LabelRecord record;
        record.Name = line.substr(blank + 1);
        record.Address = ParseAddress(line.substr(0, blank));
        labels.AddLabel(record);
    }
    if (registry != nullptr)
        registry->Broadcast(Event{Ids::EVENT_LABELS_CHANGED, 0});
    return S_OK;
}
