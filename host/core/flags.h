#pragma once

#include <type_traits>

namespace vex {

/// Set of values of the enumeration `Enum`, whose enumerators are bit masks.
template <typename Enum>
class Flags
{
public:
    using Value = std::underlying_type_t<Enum>;

    constexpr Flags() noexcept = default;
    constexpr Flags(Enum flag) noexcept : m_bits(static_cast<Value>(flag)) {}
    static constexpr Flags fromBits(Value bits) noexcept
    {
        Flags flags;
        flags.m_bits = bits;
        return flags;
    }

    constexpr Value bits() const noexcept { return m_bits; }
    constexpr bool has(Enum flag) const noexcept
    {
        return (m_bits & static_cast<Value>(flag)) != 0;
    }

    friend constexpr Flags operator|(Flags a, Flags b) noexcept
    {
        return fromBits(static_cast<Value>(a.m_bits | b.m_bits));
    }
    friend constexpr bool operator==(Flags a, Flags b) noexcept { return a.m_bits == b.m_bits; }
    friend constexpr bool operator!=(Flags a, Flags b) noexcept { return a.m_bits != b.m_bits; }

private:
    Value m_bits = 0;
};

} // namespace vex
