#pragma once

#include <host/core/smart_pointer.h>
#include <host/core/string_ref.h>

#include <cstddef>
#include <memory>
#include <string>
#include <utility>

namespace Zar {

/// Immutable bytes with a tag that says what they are. Thread-safe.
class BinaryBlock : public SafeReferenceCount
{
public:
    /// Copies the bytes. With a parent they must be a part of the parent's bytes, and are shared
    /// with it instead.
    BinaryBlock(const void* data, std::size_t length, StringRef tag,
                SmartPointer<BinaryBlock> parent = nullptr)
        : m_tag(tag), m_parent(std::move(parent))
    {
        if (!m_parent)
            m_own.assign(static_cast<const char*>(data), length);
        m_bytes = m_parent ? StringRef(static_cast<const char*>(data), length) : StringRef(m_own);
    }
    BinaryBlock(std::string bytes, StringRef tag)
        : m_tag(tag), m_own(std::move(bytes)), m_bytes(m_own)
    {}
    /// Shares bytes that live as long as `owner`.
    BinaryBlock(std::shared_ptr<const void> owner, StringRef bytes, StringRef tag)
        : m_tag(tag), m_owner(std::move(owner)), m_bytes(bytes)
    {}

    const char* data() const noexcept { return m_bytes.data(); }
    /// In bytes.
    std::size_t length() const noexcept { return m_bytes.size(); }
    StringRef bytes() const noexcept { return m_bytes; }
    const std::string& tag() const noexcept { return m_tag; }

private:
    std::string m_tag;
    SmartPointer<BinaryBlock> m_parent;
    std::shared_ptr<const void> m_owner;
    std::string m_own;
    StringRef m_bytes;
};

} // namespace Zar
