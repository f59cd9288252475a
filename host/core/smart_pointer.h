#pragma once

#include <host/core/debug_message.h>
#include <host/core/safe_reference_count.h>

#include <cstddef>
#include <type_traits>
#include <utility>

namespace Zar {

/// Tag of the constructor that takes over a reference instead of adding one.
struct AdoptReference
{};

/// Intrusive pointer over `SafeReferenceCount`: one pointer wide, thread-safe count.
template <typename T>
class SmartPointer
{
public:
    using element_type = T;

    SmartPointer() noexcept = default;
    SmartPointer(std::nullptr_t) noexcept {}

    SmartPointer(T* object) noexcept : m_object(object)
    {
        if (m_object)
            m_object->incRef();
    }

    /// Takes over a reference that the caller holds. A count of 0 is reported: there is none.
    SmartPointer(T* object, AdoptReference) : m_object(object)
    {
        if (m_object && m_object->refCount() == 0)
            DebugMessageHelper::devCriticalMessage("adopting an object that nobody references");
    }

    SmartPointer(const SmartPointer& other) noexcept : SmartPointer(other.m_object) {}

    SmartPointer(SmartPointer&& other) noexcept : m_object(std::exchange(other.m_object, nullptr))
    {}

    template <typename U, typename = std::enable_if_t<std::is_convertible_v<U*, T*>>>
    SmartPointer(const SmartPointer<U>& other) noexcept : SmartPointer(other.get())
    {}

    template <typename U, typename = std::enable_if_t<std::is_convertible_v<U*, T*>>>
    SmartPointer(SmartPointer<U>&& other) noexcept : m_object(other.release())
    {}

    ~SmartPointer()
    {
        if (m_object)
            m_object->decRef();
    }

    SmartPointer& operator=(SmartPointer other) noexcept
    {
        std::swap(m_object, other.m_object);
        return *this;
    }

    T* get() const noexcept { return m_object; }
    T& operator*() const noexcept { return *m_object; }
    T* operator->() const noexcept { return m_object; }
    explicit operator bool() const noexcept { return m_object != nullptr; }

    /// Hands the reference to the caller and leaves the pointer empty.
    [[nodiscard]] T* release() noexcept { return std::exchange(m_object, nullptr); }

    friend bool operator==(const SmartPointer& a, const SmartPointer& b) noexcept
    {
        return a.m_object == b.m_object;
    }
    friend bool operator!=(const SmartPointer& a, const SmartPointer& b) noexcept
    {
        return a.m_object != b.m_object;
    }

private:
    T* m_object = nullptr;
};

} // namespace Zar
