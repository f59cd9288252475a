#pragma once

#include <charconv>
#include <string>
#include <string_view>
#include <type_traits>

namespace lumo {

namespace detail {
template <typename T>
inline constexpr bool isWideCharacter =
    std::is_same_v<T, wchar_t> || std::is_same_v<T, char16_t> || std::is_same_v<T, char32_t>;
}

/// Types with a number text: bool, all integers, float and double.
template <typename T>
inline constexpr bool isNumber = (std::is_integral_v<T> && !detail::isWideCharacter<T>) ||
                                 std::is_same_v<T, float> || std::is_same_v<T, double>;

/// Appends the shortest text that reads back as the same number, whatever the locale:
/// "true" and "false", decimal integers, "0.1", "1e+30", "inf", "nan".
template <typename T>
void appendNumber(std::string& text, T number)
{
    static_assert(isNumber<T>);
    if constexpr (std::is_same_v<T, bool>) {
        text += number ? "true" : "false";
    } else {
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
        const char* end = text.data() + text.size();
        const std::from_chars_result result = std::from_chars(text.data(), end, read);
        if (result.ec != std::errc() || result.ptr != end)
            return false;
        number = read;
        return true;
    }
}

} // namespace lumo
