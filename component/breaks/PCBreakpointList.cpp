#include "component/breaks/PCBreakpointList.h"

#include <cstdlib>

#include "boundary/ComUtils.h"
#include "component/breaks/CPCBreakAddress.h"
#include "component/breaks/CPCBreakSource.h"

namespace
{

constexpr size_t kStoredFields = 6;
// What an owner is written as when it has no text.
constexpr const char* kNoOwnerText = "0";

// As the C library reads a decimal: leading digits only, anything else 0; the
// low 32 bits kept, so that "-65536" is 0xFFFF0000.
int32_t NumberOf(const std::string& text)
{
    return static_cast<int32_t>(static_cast<uint32_t>(std::strtoll(text.c_str(), nullptr, 10)));
}

CPCBreakpoint StoredFormOf(const CPCBreak& pcBreak)
{
    const bool source = pcBreak.GetSourceBound();
    return CPCBreakpoint(pcBreak.GetEnabledRaw(), source ? pcBreak.GetLine() : -1,
                         source ? pcBreak.GetText() : std::string(), pcBreak.GetAddress(),
                         pcBreak.GetOwner().ToText(), pcBreak.GetOwnerName());
}

} // namespace

std::vector<CPCBreakpoint> BuildStoredBreakpoints(const PCBreakArray& breaks)
{
    std::vector<CPCBreakpoint> out;
    for (auto it = breaks.rbegin(); it != breaks.rend(); ++it)
        if ((*it)->GetKind() != CPCBreak::kTemporaryBreak)
            out.push_back(StoredFormOf(**it));
    return out;
}

void WriteBreakpointList(const std::vector<CPCBreakpoint>& breakpoints, Variant& stored)
{
    std::vector<std::vector<std::string>> records;
    records.reserve(breakpoints.size());
    for (const auto& b : breakpoints)
        records.push_back({b.GetFile(), std::to_string(b.GetLine()),
                           std::to_string(static_cast<int32_t>(b.GetAddress().Value())),
                           std::to_string(b.GetEnabled()),
                           b.GetOwnerText().empty() ? kNoOwnerText : b.GetOwnerText(), b.GetOwnerName()});
    stored = CComUtils::RecordsToVariant(records);
}

void ReadBreakpointList(const Variant& stored, std::vector<CPCBreakpoint>& breakpoints)
{
    breakpoints.clear();
    for (const auto& r : CComUtils::VariantToRecords(stored, kStoredFields))
        breakpoints.emplace_back(NumberOf(r[3]), NumberOf(r[1]), r[0], static_cast<uint32_t>(NumberOf(r[2])),
                                 r[4], r[5]);
}

std::unique_ptr<CPCBreak> MakeStoredBreak(const CPCBreakpoint& breakpoint)
{
    const bool source = !breakpoint.GetFile().empty();
    std::unique_ptr<CPCBreak> made;
    if (source)
        made = std::make_unique<CPCBreakSource>(breakpoint.GetFile(), breakpoint.GetLine());
    else
        made = std::make_unique<CPCBreakAddress>(breakpoint.GetAddress());
    made->SetKind(CPCBreak::kUserBreak);
    made->SetPlanted(false);
    made->SetHasAddress(!source);
    made->SetSourceBound(source);
    made->SetEnabled(breakpoint.GetEnabled() != 0);
    Guid owner;
    made->SetOwner(Guid::TryParse(breakpoint.GetOwnerText(), owner) ? owner : CPCBreak::kNoOwner);
    made->SetOwnerName(breakpoint.GetOwnerName());
    return made;
}
