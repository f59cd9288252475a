#pragma once

#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string>
#include <string_view>
#include <type_traits>

namespace lumo {

namespace detail {

template <typename T>
inline constexpr bool isWideCharacter =
    std::is_same_v<T, wchar_t> || std::is_same_v<T, char16_t> || std::is_same_v<T, char32_t>;

template <typename T>
using BitsOf = std::conditional_t<sizeof(T) == sizeof(std::uint32_t), std::uint32_t, std::uint64_t>;

constexpr std::string_view nanOpening = "nan(";

template <typename T>
void appendNan(std::string& text, T number)
{
    constexpr T usual = std::numeric_limits<T>::quiet_NaN();
    if (std::memcmp(&number, &usual, sizeof number) == 0) {
        text += "nan";
        return;
    }
    BitsOf<T> bits;
    std::memcpy(&bits, &number, sizeof bits);
    char buffer[16];
    const std::to_chars_result result = std::to_chars(buffer, buffer + sizeof buffer, bits, 16);
    text.append(nanOpening).append(buffer, result.ptr).append(")");
}

/// False for anything but the bits of a NaN.
template <typename T>
bool nanFromText(std::string_view text, T& number)
{
    if (text.back() != ')')
        return false;
    BitsOf<T> bits = 0;
    const char* end = text.data() + text.size() - 1;
    const std::from_chars_result result =
        std::from_chars(text.data() + nanOpening.size(), end, bits, 16);
    std::memcpy(&number, &bits, sizeof number);
    return result.ec == std::errc() && result.ptr == end && std::isnan(number);
}
} // namespace detail

/// Types with a number text: bool, all integers, float and double.
template <typename T>
inline constexpr bool isNumber = (std::is_integral_v<T> && !detail::isWideCharacter<T>) ||
                                 std::is_same_v<T, float> || std::is_same_v<T, double>;

/// Appends the shortest text that reads back as the same number to the last bit, whatever the
/// locale: "true" and "false", decimal integers, "0.1", "1e+30", "inf", "nan". Any other NaN than
/// the usual one has its bits with it: "nan(7fc00001)".
template <typename T>
void appendNumber(std::string& text, T number)
{
    static_assert(isNumber<T>);
    if constexpr (std::is_same_v<T, bool>) {
        text += number ? "true" : "false";
    } else {
        if constexpr (std::is_floating_point_v<T>) {
            if (std::isnan(number)) {
                detail::appendNan(text, number);
                return;
            }
        }
        char buffer[32];
        const std::to_chars_result result = std::to_chars(buffer, buffer + sizeof buffer, number);
        text.append(buffer, result.ptr);
    }
}

template <typename T>
std::string textOfNumber(T number)
{
    std::string text;
    appendNumber(text, number);
    return text;
}

/// Sets `number` from a text that is one number from end to end. False, with `number` as it was,
/// for any other text and for a number out of range.
template <typename T>
bool numberFromText(std::string_view text, T& number)
{
    static_assert(isNumber<T>);
    if constexpr (std::is_same_v<T, bool>) {
        if (text != "true" && text != "false")
            return false;
        number = text == "true";
        return true;
    } else {
        T read{};
        if constexpr (std::is_floating_point_v<T>) {
            // The standard library takes any such text, and drops the bits.
            if (text.substr(0, detail::nanOpening.size()) == detail::nanOpening) {
                const bool ok = detail::nanFromText(text, read);
                if (ok)
                    std::memcpy(&number, &read, sizeof number);
                return ok;
            }
        }
        const char* end = text.data() + text.size();
        const std::from_chars_result result = std::from_chars(text.data(), end, read);
        if (result.ec != std::errc() || result.ptr != end)
            return false;
        number = read;
        return true;
    }
}

} // namespace lumo
