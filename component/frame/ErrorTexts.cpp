#include "component/frame/ErrorTexts.h"

#include <map>
#include <vector>

#include "component/frame/StringTable.h"

namespace ErrorTexts
{
namespace
{

constexpr Row kRows[] = {
#define TESSEL_ERROR_ROW(code, id) {code, id},
#include "component/frame/ErrorRows.inc"
#undef TESSEL_ERROR_ROW
};

struct TableUse {
    int sessions = 0;
    std::vector<HRESULT> entered;
};

std::map<IQErrorTable*, TableUse>& Uses()
{
    static std::map<IQErrorTable*, TableUse> uses;
    return uses;
}

} // namespace

const Row* Rows()
{
    return kRows;
}
size_t RowCount()
{
    return sizeof(kRows) / sizeof(kRows[0]);
}

void Register(IQErrorTable* table)
{
    if (table == nullptr)
        return;
    TableUse& use = Uses()[table];
    ++use.sessions;
    for (const Row& row : kRows) {
        auto code = static_cast<HRESULT>(row.code);
        std::string existing;
        if (Succeeded(table->GetText(code, existing)))
            continue;
        if (Succeeded(table->AddText(code, StringTable::Load(row.stringId))))
            use.entered.push_back(code);
    }
}

void Unregister(IQErrorTable* table)
{
    auto it = Uses().find(table);
    if (table == nullptr || it == Uses().end())
        return;
    if (--it->second.sessions > 0)
        return;
    for (HRESULT code : it->second.entered)
        table->RemoveText(code);
    Uses().erase(it);
}

} // namespace ErrorTexts
