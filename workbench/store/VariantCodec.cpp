#include "workbench/store/VariantCodec.h"

#include <algorithm>
#include <cstdint>
#include <utility>

namespace VariantCodec
{
namespace
{

constexpr uint8_t kMagic0 = 'T';
constexpr uint8_t kMagic1 = 'V';
constexpr uint8_t kHasText = 1;
constexpr uint8_t kHasNumber = 2;
constexpr uint8_t kHasElements = 4;
constexpr uint8_t kKnownFields = kHasText | kHasNumber | kHasElements;
// A node is at least a type byte and a fields byte; bounding counts by this
// keeps a forged count from reserving memory the blob cannot fill.
constexpr size_t kSmallestNode = 2;

// Whether the decoder would take the value back: lengths within 32 bits and
// at most kMaxDepth levels below this one.
bool Fits(const Variant& v, int depth)
{
    if (depth > kMaxDepth || v.Text().size() > UINT32_MAX || v.Elements().size() > UINT32_MAX)
        return false;
    return std::all_of(v.Elements().begin(), v.Elements().end(),
                       [depth](const Variant& e) { return Fits(e, depth + 1); });
}

void PutVarint(std::vector<uint8_t>& out, uint32_t n)
{
    while (n >= 0x80) {
        out.push_back(static_cast<uint8_t>(n | 0x80));
        n >>= 7;
    }
    out.push_back(static_cast<uint8_t>(n));
}

void PutNode(std::vector<uint8_t>& out, const Variant& v)
{
    uint8_t fields = 0;
    if (!v.Text().empty())
        fields |= kHasText;
    if (v.Number() != 0)
        fields |= kHasNumber;
    if (!v.Elements().empty())
        fields |= kHasElements;
    PutVarint(out, v.Type());
    out.push_back(fields);
    if (fields & kHasText) {
        PutVarint(out, static_cast<uint32_t>(v.Text().size()));
        out.insert(out.end(), v.Text().begin(), v.Text().end());
    }
    if (fields & kHasNumber)
        PutVarint(out, v.Number());
    if (fields & kHasElements) {
        PutVarint(out, static_cast<uint32_t>(v.Elements().size()));
        for (const Variant& e : v.Elements())
            PutNode(out, e);
    }
}

class Reader
{
public:
    explicit Reader(std::span<const uint8_t> bytes) : bytes_(bytes) {}

    size_t Left() const { return bytes_.size() - at_; }
    const std::string& Error() const { return error_; }

    bool Fail(std::string why)
    {
        if (error_.empty())
            error_ = std::move(why) + " at byte " + std::to_string(at_);
        return false;
    }

    bool Byte(uint8_t& b)
    {
        if (Left() == 0)
            return Fail("the value ends early");
        b = bytes_[at_++];
        return true;
    }

    bool Varint(uint32_t& n)
    {
        n = 0;
        for (int shift = 0; shift < 35; shift += 7) {
            uint8_t b = 0;
            if (!Byte(b))
                return false;
            if (shift == 28 && b > 0x0F)
                return Fail("a number exceeds 32 bits");
            n |= static_cast<uint32_t>(b & 0x7F) << shift;
            if ((b & 0x80) == 0)
                return true;
        }
        return Fail("a number exceeds 32 bits");
    }

    bool Node(Variant& out, int depth)
    {
        if (depth > kMaxDepth)
            return Fail("arrays are nested too deeply");
        uint32_t type = 0;
        uint8_t fields = 0;
        if (!Varint(type) || !Byte(fields))
            return false;
        if (type > 0xFFFF)
            return Fail("a type code exceeds 16 bits");
        if (fields & ~kKnownFields)
            return Fail("unknown field marks");
        if ((fields & kHasText) && type != VT_BSTR)
            return Fail("a text on a value that is not a string");
        if ((fields & kHasNumber) && type != VT_UINT)
            return Fail("a number on a value that is not a number");
        std::string text;
        uint32_t number = 0;
        std::vector<Variant> elements;
        if (fields & kHasText) {
            uint32_t length = 0;
            if (!Varint(length))
                return false;
            if (length > Left())
                return Fail("a text runs past the end");
            text.assign(reinterpret_cast<const char*>(bytes_.data() + at_), length);
            at_ += length;
        }
        if ((fields & kHasNumber) && !Varint(number))
            return false;
        if (fields & kHasElements) {
            uint32_t count = 0;
            if (!Varint(count))
                return false;
            if (count > Left() / kSmallestNode)
                return Fail("an element count runs past the end");
            elements.resize(count);
            for (Variant& e : elements)
                if (!Node(e, depth + 1))
                    return false;
        }
        out = Assemble(static_cast<uint16_t>(type), std::move(text), number, std::move(elements));
        return true;
    }

private:
    // The factories are the only way in: text belongs to a string, a number
    // to an unsigned, and elements may hang off any type.
    static Variant Assemble(uint16_t type, std::string text, uint32_t number, std::vector<Variant> elements)
    {
        Variant v = type == VT_BSTR   ? Variant::String(std::move(text))
                    : type == VT_UINT ? Variant::UInt(number)
                                      : Variant::Array(type);
        v.Elements() = std::move(elements);
        return v;
    }

    std::span<const uint8_t> bytes_;
    size_t at_ = 0;
    std::string error_;
};

} // namespace

std::optional<std::vector<uint8_t>> Encode(const Variant& value)
{
    if (!Fits(value, 0))
        return std::nullopt;
    std::vector<uint8_t> out{kMagic0, kMagic1, kVersion};
    PutNode(out, value);
    return out;
}

std::optional<Variant> Decode(std::span<const uint8_t> blob, std::string& error)
{
    Reader reader(blob);
    uint8_t m0 = 0, m1 = 0, version = 0;
    if (!reader.Byte(m0) || !reader.Byte(m1) || m0 != kMagic0 || m1 != kMagic1) {
        error = "not a stored value";
        return std::nullopt;
    }
    if (!reader.Byte(version) || version != kVersion) {
        error = "stored in an unknown encoding (version " + std::to_string(version) + ")";
        return std::nullopt;
    }
    Variant value;
    if (!reader.Node(value, 0)) {
        error = reader.Error();
        return std::nullopt;
    }
    if (reader.Left() != 0) {
        error = std::to_string(reader.Left()) + " bytes follow the value";
        return std::nullopt;
    }
    return value;
}

} // namespace VariantCodec
