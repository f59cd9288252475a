#pragma once

#include <host/variant/value_stream.h>

#include <array>
#include <type_traits>

namespace lumo {

/// Two components; as text "x y".
struct Vector2
{
    float x = 0;
    float y = 0;
};

/// Three components; as text "x y z".
struct Vector3
{
    float x = 0;
    float y = 0;
    float z = 0;
};

/// Four components; as text "x y z w".
struct Vector4
{
    float x = 0;
    float y = 0;
    float z = 0;
    float w = 0;
};

/// Linear, not clamped, alpha not premultiplied.
struct Color
{
    float r = 0;
    float g = 0;
    float b = 0;
    float a = 1;
};

inline std::array<float, 2> components(const Vector2& v) noexcept
{
    return {v.x, v.y};
}
inline std::array<float, 3> components(const Vector3& v) noexcept
{
    return {v.x, v.y, v.z};
}
inline std::array<float, 4> components(const Vector4& v) noexcept
{
    return {v.x, v.y, v.z, v.w};
}
inline std::array<float, 4> components(const Color& c) noexcept
{
    return {c.r, c.g, c.b, c.a};
}

/// The types above.
template <typename T>
inline constexpr bool isFloatTuple = false;
template <>
inline constexpr bool isFloatTuple<Vector2> = true;
template <>
inline constexpr bool isFloatTuple<Vector3> = true;
template <>
inline constexpr bool isFloatTuple<Vector4> = true;
template <>
inline constexpr bool isFloatTuple<Color> = true;

template <>
inline constexpr bool isPlainValue<Vector2> = true;
template <>
inline constexpr bool isPlainValue<Vector3> = true;
template <>
inline constexpr bool isPlainValue<Vector4> = true;
template <>
inline constexpr bool isPlainValue<Color> = true;

template <typename T, typename = std::enable_if_t<isFloatTuple<T>>>
bool operator==(const T& a, const T& b) noexcept
{
    return components(a) == components(b);
}
template <typename T, typename = std::enable_if_t<isFloatTuple<T>>>
bool operator!=(const T& a, const T& b) noexcept
{
    return !(a == b);
}

} // namespace lumo
