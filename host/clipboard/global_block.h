#pragma once

#include <cstddef>
#include <cstdlib>
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
        // Unlike new[], takes zeroed pages as they come from the system, without a walk over them.
        Bytes bytes(static_cast<char*>(std::calloc(size, 1)));
        if (!bytes)
            return nullptr;
        return std::unique_ptr<GlobalBlock>(new (std::nothrow) GlobalBlock(std::move(bytes), size));
    }

    char* data() noexcept { return m_bytes.get(); }
    const char* data() const noexcept { return m_bytes.get(); }
    std::size_t size() const noexcept { return m_size; }

private:
    struct Free
    {
        void operator()(char* bytes) const noexcept { std::free(bytes); }
    };
    using Bytes = std::unique_ptr<char[], Free>;

    GlobalBlock(Bytes bytes, std::size_t size) noexcept : m_bytes(std::move(bytes)), m_size(size) {}

    Bytes m_bytes;
    std::size_t m_size;
};

} // namespace Zar::platform
