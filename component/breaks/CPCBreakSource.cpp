#include "component/breaks/CPCBreakSource.h"

#include "component/util/MessageFormat.h"

namespace
{

// Stored names may come from either kind of system, so both separators count.
struct NameParts {
    std::string Base;
    std::string Extension;
};

NameParts SplitName(const std::string& path)
{
    const auto slash = path.find_last_of("/\\");
    const std::string name = slash == std::string::npos ? path : path.substr(slash + 1);
    const auto dot = name.find_last_of('.');
    if (dot == std::string::npos)
        return {name, {}};
    return {name.substr(0, dot), name.substr(dot)};
}

} // namespace

CPCBreakSource::CPCBreakSource(std::string file, int32_t line)
{
    SetText(std::move(file));
    SetLine(line);
    SetPlanted(false);
}

std::string CPCBreakSource::GetDisplayName() const
{
    const NameParts parts = SplitName(GetText());
    return FormatMessageText(57646, parts.Base.c_str(), parts.Extension.c_str(), GetLine());
}

bool CPCBreakSource::MatchModule(int32_t operation, uint32_t module)
{
    switch (operation) {
    case 1:
        if (GetModule() == 0)
            SetModule(module);
        return GetModule() == module;
    case 2:
        SetModule(module);
        return true;
    case 3:
        if (module == GetModule())
            SetHasAddress(false);
        return false;
    default:
        return false;
    }
}
