#pragma once
#include <cstdint>
#include <optional>
#include <ostream>

// An address in the target's 32-bit address space. It is no number: moving
// by an offset says whether it wraps round at the top (as the target's own
// address arithmetic does) or must stay inside the space. Interfaces carry it
// as 32 bits.
class TargetAddress
{
public:
    static constexpr uint64_t SpaceSize = uint64_t{1} << 32;

    constexpr TargetAddress() = default;
    // Implicit, so that a 32-bit word from an interface or a literal passes
    // through; nothing turns an address back into a number unasked.
    constexpr TargetAddress(uint32_t value) : value_(value) {}

    static constexpr TargetAddress Top() { return TargetAddress(0xFFFFFFFFu); }

    constexpr uint32_t Value() const { return value_; }

    // Modulo 2^32: stepping past the top comes round at 0, and back from 0 at the top.
    constexpr TargetAddress WrappingAdd(uint32_t offset) const { return TargetAddress(value_ + offset); }
    constexpr TargetAddress WrappingSub(uint32_t offset) const { return TargetAddress(value_ - offset); }
    // Nothing when the step would leave the address space.
    constexpr std::optional<TargetAddress> CheckedAdd(uint64_t offset) const
    {
        if (offset >= SpaceSize || uint64_t{value_} + offset >= SpaceSize)
            return std::nullopt;
        return TargetAddress(static_cast<uint32_t>(value_ + offset));
    }
    // The distance from base up to this address, modulo 2^32: an address
    // below base gives a distance of more than half the space.
    constexpr uint32_t OffsetFrom(TargetAddress base) const { return value_ - base.value_; }
    // The nearest multiple of unit at or below, and at or above (nothing past the top).
    constexpr TargetAddress AlignedDown(uint32_t unit) const { return TargetAddress(value_ - value_ % unit); }
    constexpr std::optional<TargetAddress> AlignedUp(uint32_t unit) const
    {
        const uint32_t rest = value_ % unit;
        return rest == 0 ? std::optional<TargetAddress>(*this) : CheckedAdd(unit - rest);
    }

    constexpr auto operator<=>(const TargetAddress&) const = default;

private:
    uint32_t value_ = 0;
};

inline std::ostream& operator<<(std::ostream& out, TargetAddress address)
{
    const auto flags = out.flags();
    out << "0x" << std::hex << std::uppercase << address.Value();
    out.flags(flags);
    return out;
}

// The addresses first..last, both inclusive, so never empty; the size of the
// whole space, 2^32, needs 64 bits.
class AddressRange
{
public:
    // last must not lie below first; Between checks it.
    constexpr AddressRange(TargetAddress first, TargetAddress last) : first_(first), last_(last) {}

    static constexpr AddressRange Whole() { return AddressRange(TargetAddress(0), TargetAddress::Top()); }
    // Nothing for a reversed pair.
    static constexpr std::optional<AddressRange> Between(TargetAddress first, TargetAddress last)
    {
        if (last < first)
            return std::nullopt;
        return AddressRange(first, last);
    }
    // size bytes from first; nothing for none or for a range past the top.
    static constexpr std::optional<AddressRange> Sized(TargetAddress first, uint64_t size)
    {
        if (size == 0)
            return std::nullopt;
        const auto last = first.CheckedAdd(size - 1);
        if (!last)
            return std::nullopt;
        return AddressRange(first, *last);
    }

    constexpr TargetAddress First() const { return first_; }
    constexpr TargetAddress Last() const { return last_; }
    constexpr uint64_t Size() const { return uint64_t{last_.Value()} - first_.Value() + 1; }

    constexpr bool Contains(TargetAddress address) const { return first_ <= address && address <= last_; }
    constexpr bool Contains(const AddressRange& other) const
    {
        return Contains(other.first_) && Contains(other.last_);
    }
    // The addresses both hold, or nothing.
    constexpr std::optional<AddressRange> Overlap(const AddressRange& other) const
    {
        const TargetAddress first = first_ < other.first_ ? other.first_ : first_;
        const TargetAddress last = last_ < other.last_ ? last_ : other.last_;
        return Between(first, last);
    }
    // Cut at the end to a whole number of units; nothing when not one fits.
    constexpr std::optional<AddressRange> WholeUnits(uint32_t unit) const
    {
        const uint64_t size = Size() - Size() % unit;
        return Sized(first_, size);
    }

    constexpr bool operator==(const AddressRange&) const = default;

private:
    TargetAddress first_;
    TargetAddress last_;
};
