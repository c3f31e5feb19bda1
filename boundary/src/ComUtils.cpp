#include "boundary/ComUtils.h"

namespace CComUtils {

Variant StringListToVariant(const std::vector<std::string>& list)
{
    std::vector<Variant> elements;
    elements.reserve(list.size());
    for (const auto& s : list)
        elements.push_back(Variant::String(s));
    return Variant::Array(VT_ARRAY_BSTR, std::move(elements));
}

std::vector<std::string> VariantToStringList(const Variant& v)
{
    std::vector<std::string> out;
    if (v.Type() != VT_ARRAY_BSTR)
        return out;
    out.reserve(v.Elements().size());
    for (const auto& e : v.Elements()) {
        if (e.Type() != VT_BSTR)
            return {};
        out.push_back(e.Text());
    }
    return out;
}

Variant NumberListToVariant(const std::vector<uint32_t>& list)
{
    std::vector<Variant> elements;
    elements.reserve(list.size());
    for (uint32_t n : list)
        elements.push_back(Variant::UInt(n));
    return Variant::Array(VT_ARRAY_UINT, std::move(elements));
}

std::vector<uint32_t> VariantToNumberList(const Variant& v)
{
    std::vector<uint32_t> out;
    if (v.Type() != VT_ARRAY_UINT)
        return out;
    out.reserve(v.Elements().size());
    for (const auto& e : v.Elements()) {
        if (e.Type() != VT_UINT)
            return {};
        out.push_back(e.Number());
    }
    return out;
}

Variant RecordsToVariant(const std::vector<std::vector<std::string>>& records)
{
    std::vector<std::string> flat;
    for (const auto& r : records)
        flat.insert(flat.end(), r.begin(), r.end());
    return StringListToVariant(flat);
}

std::vector<std::vector<std::string>> VariantToRecords(const Variant& v, size_t width)
{
    auto flat = VariantToStringList(v);
    if (width == 0 || flat.size() % width != 0)
        return {};
    std::vector<std::vector<std::string>> out;
    out.reserve(flat.size() / width);
    for (size_t i = 0; i < flat.size(); i += width)
        out.emplace_back(flat.begin() + static_cast<long>(i), flat.begin() + static_cast<long>(i + width));
    return out;
}

} // namespace CComUtils
