#pragma once

#include <cstddef>
#include <memory>
#include <new>

namespace Zar::platform {

/// A block of bytes that a clipboard backend hands over, zeroed at first.
class GlobalBlock
{
public:
    /// Null when there is not enough memory.
    static std::unique_ptr<GlobalBlock> allocate(std::size_t size)
    {
        std::unique_ptr<char[]> bytes(new (std::nothrow) char[size]());
        if (!bytes)
            return nullptr;
        return std::unique_ptr<GlobalBlock>(new (std::nothrow) GlobalBlock(std::move(bytes), size));
    }

    char* data() noexcept { return m_bytes.get(); }
    const char* data() const noexcept { return m_bytes.get(); }
    std::size_t size() const noexcept { return m_size; }

private:
    GlobalBlock(std::unique_ptr<char[]> bytes, std::size_t size) noexcept
        : m_bytes(std::move(bytes)), m_size(size)
    {}

    std::unique_ptr<char[]> m_bytes;
    std::size_t m_size;
};

} // namespace Zar::platform
