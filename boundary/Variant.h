#pragma once
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

// The small variant of the boundary: what the store keeps and what lists cross
// interfaces as. Only the type codes the system uses exist.
enum VariantType : uint16_t {
    VT_EMPTY = 0,
    VT_BSTR = 8,
    VT_VARIANT = 12,
    VT_UINT = 0x17,
    VT_ARRAY = 0x2000,
    VT_ARRAY_BSTR = VT_ARRAY | VT_BSTR, // 0x2008: strings, elements are VT_BSTR variants
    VT_ARRAY_UINT = VT_ARRAY | VT_UINT, // 0x2017: unsigned 32-bit numbers
};

class Variant
{
public:
    Variant() = default;
    static Variant String(std::string s)
    {
        Variant v;
        v.type_ = VT_BSTR;
        v.text_ = std::move(s);
        return v;
    }
    static Variant UInt(uint32_t n)
    {
        Variant v;
        v.type_ = VT_UINT;
        v.number_ = n;
        return v;
    }
    // An array variant of the given type code; the caller fills Elements().
    static Variant Array(uint16_t type, std::vector<Variant> elements = {})
    {
        Variant v;
        v.type_ = type;
        v.elements_ = std::move(elements);
        return v;
    }

    uint16_t Type() const { return type_; }
    bool IsArray() const { return (type_ & VT_ARRAY) != 0; }
    const std::string& Text() const { return text_; }
    uint32_t Number() const { return number_; }
    const std::vector<Variant>& Elements() const { return elements_; }
    std::vector<Variant>& Elements() { return elements_; }

    friend bool operator==(const Variant&, const Variant&) = default;

private:
    uint16_t type_ = VT_EMPTY;
    std::string text_;
    uint32_t number_ = 0;
    std::vector<Variant> elements_;
};
