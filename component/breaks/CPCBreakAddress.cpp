#include "component/breaks/CPCBreakAddress.h"

#include "component/util/MessageFormat.h"

CPCBreakAddress::CPCBreakAddress(TargetAddress address)
{
    SetAddress(address);
    SetLine(-1);
    SetText(AddressText(address));
    SetPlanted(true);
}

std::string CPCBreakAddress::AddressText(TargetAddress address)
{
    return FormatMessageText(57645, address.Value());
}

bool CPCBreakAddress::MatchModule(int32_t operation, uint32_t module)
{
    switch (operation) {
    case 0:
    case 4:
        return true;
    case 2:
        SetModule(module);
        return true;
    case 3:
        if (module == GetModule())
            SetSourceBound(false);
        return false;
    default:
        return false;
    }
}
