#include "platform/objfile/DebugData.h"

#include <algorithm>
#include <dwarf.h>
#include <elfutils/libdw.h>
#include <memory>
#include <strings.h>

#include "platform/objfile/ElfImage.h"
#include "platform/objfile/ObjectCodes.h"

namespace
{

struct DwarfCloser {
    void operator()(Dwarf* dwarf) const { dwarf_end(dwarf); }
};

// Deeper nesting than any compiler writes means the tree is damaged.
constexpr int MaxDepth = 64;

const char* DieName(Dwarf_Die* die)
{
    Dwarf_Attribute attr;
    return dwarf_formstring(dwarf_attr_integrate(die, DW_AT_name, &attr));
}

std::optional<uint32_t> FixedAddress(Dwarf_Die* die)
{
    Dwarf_Attribute attr;
    Dwarf_Op* ops = nullptr;
    size_t count = 0;
    if (dwarf_attr(die, DW_AT_location, &attr) == nullptr || dwarf_getlocation(&attr, &ops, &count) != 0 ||
        count != 1 || ops[0].atom != DW_OP_addr || ops[0].number > 0xFFFFFFFFu)
        return std::nullopt;
    return static_cast<uint32_t>(ops[0].number);
}

uint32_t TypeSize(Dwarf_Die* die)
{
    Dwarf_Attribute attr;
    Dwarf_Die type;
    Dwarf_Word size = 0;
    if (dwarf_formref_die(dwarf_attr_integrate(die, DW_AT_type, &attr), &type) == nullptr ||
        dwarf_aggregate_size(&type, &size) != 0 || size > 0xFFFFFFFFu)
        return 0;
    return static_cast<uint32_t>(size);
}

const char* BaseName(const std::string& path)
{
    const auto slash = path.find_last_of("/\\");
    return path.c_str() + (slash == std::string::npos ? 0 : slash + 1);
}

} // namespace

uint32_t DebugData::FileIndex(const char* name)
{
    for (uint32_t i = static_cast<uint32_t>(files_.size()); i-- > 0;)
        if (files_[i] == name)
            return i;
    files_.emplace_back(name);
    return static_cast<uint32_t>(files_.size() - 1);
}

HRESULT DebugData::Read(const ElfImage& image)
{
    *this = DebugData();
    std::unique_ptr<Dwarf, DwarfCloser> dwarf(dwarf_begin_elf(image.Handle(), DWARF_C_READ, nullptr));
    if (!dwarf)
        return image.HasSection(".debug_info") ? OE_MODULE_FORMAT : S_OK;

    auto walk = [this](auto& self, Dwarf_Die* parent, int depth) -> bool {
        Dwarf_Die child;
        if (depth > MaxDepth)
            return false;
        int more = dwarf_child(parent, &child);
        for (; more == 0; more = dwarf_siblingof(&child, &child)) {
            const int tag = dwarf_tag(&child);
            const char* name = DieName(&child);
            Dwarf_Addr low = 0, high = 0;
            if (tag == DW_TAG_subprogram && name != nullptr && dwarf_lowpc(&child, &low) == 0 &&
                dwarf_highpc(&child, &high) == 0 && low < high && high <= 0x100000000u)
                functions_.push_back({name, static_cast<uint32_t>(low), static_cast<uint32_t>(high)});
            if (tag == DW_TAG_variable && name != nullptr)
                if (auto address = FixedAddress(&child))
                    variables_.push_back({name, *address, TypeSize(&child)});
            if (dwarf_haschildren(&child) && !self(self, &child, depth + 1))
                return false;
        }
        return more >= 0;
    };

    Dwarf_CU* cu = nullptr;
    Dwarf_Die unit;
    int next;
    while ((next = dwarf_get_units(dwarf.get(), cu, &cu, nullptr, nullptr, &unit, nullptr)) == 0) {
        if (!walk(walk, &unit, 0))
            return OE_MODULE_FORMAT;
        Dwarf_Lines* lines = nullptr;
        size_t count = 0;
        if (dwarf_getsrclines(&unit, &lines, &count) != 0) {
            if (dwarf_hasattr(&unit, DW_AT_stmt_list))
                return OE_MODULE_FORMAT;
            continue;
        }
        for (size_t i = 0; i + 1 < count; ++i) {
            Dwarf_Line* line = dwarf_onesrcline(lines, i);
            Dwarf_Line* after = dwarf_onesrcline(lines, i + 1);
            Dwarf_Addr address = 0, nextAddress = 0;
            int number = 0;
            bool end = false;
            const char* file = dwarf_linesrc(line, nullptr, nullptr);
            if (line == nullptr || after == nullptr || dwarf_lineaddr(line, &address) != 0 ||
                dwarf_lineaddr(after, &nextAddress) != 0 || dwarf_lineno(line, &number) != 0 ||
                dwarf_lineendsequence(line, &end) != 0 || file == nullptr)
                return OE_MODULE_FORMAT;
            if (end || nextAddress <= address || nextAddress > 0x100000000u || number <= 0)
                continue;
            rows_.push_back({static_cast<uint32_t>(address), static_cast<uint32_t>(nextAddress - 1) + 1,
                             FileIndex(file), static_cast<uint32_t>(number)});
        }
    }
    if (next < 0)
        return OE_MODULE_FORMAT;
    std::stable_sort(rows_.begin(), rows_.end(),
                     [](const Row& a, const Row& b) { return a.address < b.address; });
    return S_OK;
}

std::optional<SourcePosition> DebugData::AddressSource(uint32_t address) const
{
    auto it = std::upper_bound(rows_.begin(), rows_.end(), address,
                               [](uint32_t a, const Row& row) { return a < row.address; });
    // Sequences may overlap where the linker dropped code: look back a little.
    for (int tries = 0; it != rows_.begin() && tries < 16; ++tries) {
        --it;
        if (address - it->address < it->next - it->address)
            return SourcePosition{files_[it->file], it->line};
    }
    return std::nullopt;
}

bool DebugData::FileMatches(uint32_t index, const std::string& file) const
{
    const std::string& known = files_[index];
    if (strcasecmp(known.c_str(), file.c_str()) == 0)
        return true;
    return file.find_first_of("/\\") == std::string::npos && strcasecmp(BaseName(known), file.c_str()) == 0;
}

std::vector<uint32_t> DebugData::LineAddresses(const std::string& file, uint32_t line) const
{
    std::vector<uint32_t> found;
    for (const Row& row : rows_)
        if (row.line == line && FileMatches(row.file, file))
            found.push_back(row.address);
    return found;
}

std::optional<std::pair<uint32_t, uint32_t>> DebugData::LineRange(const std::string& file,
                                                                  uint32_t line) const
{
    for (const Row& row : rows_)
        if (row.line == line && FileMatches(row.file, file))
            return std::make_pair(row.address, row.next - 1);
    return std::nullopt;
}

std::vector<uint32_t> DebugData::RowAddresses() const
{
    std::vector<uint32_t> addresses;
    addresses.reserve(rows_.size());
    for (const Row& row : rows_)
        addresses.push_back(row.address);
    return addresses;
}

const FunctionRange* DebugData::FindFunction(const std::string& name) const
{
    for (const auto& f : functions_)
        if (f.name == name)
            return &f;
    return nullptr;
}

const FunctionRange* DebugData::FunctionAt(uint32_t address) const
{
    for (const auto& f : functions_)
        if (address >= f.start && address < f.end)
            return &f;
    return nullptr;
}

const VariableInfo* DebugData::FindVariable(const std::string& name) const
{
    for (const auto& v : variables_)
        if (v.name == name)
            return &v;
    return nullptr;
}
