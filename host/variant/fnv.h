#pragma once

#include <cstddef>
#include <cstdint>

namespace lumo {

/// 64-bit FNV-1a over `size` bytes; no bytes give the offset basis.
inline std::uint64_t fnv1a(const void* data, std::size_t size) noexcept
{
    const auto* bytes = static_cast<const unsigned char*>(data);
    std::uint64_t hash = 0xcbf29ce484222325u;
    for (std::size_t i = 0; i < size; ++i)
        hash = (hash ^ bytes[i]) * 0x100000001b3u;
    return hash;
}

} // namespace lumo
