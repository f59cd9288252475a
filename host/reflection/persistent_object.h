#pragma once

#include <host/reflection/reflected_object.h>

#include <functional>

namespace kyr {

/// Durable reference to an object. It does not keep the object alive: `object()` is invalid once
/// the object is gone, and valid again when an undo brings the same object back into the scene.
class PersistentObject
{
public:
    PersistentObject() noexcept = default;
    explicit PersistentObject(const ReflectedObject& object) noexcept
        : m_topLevel(object.topLevel()), m_object(object.get())
    {}

    ReflectedObject object() const
    {
        std::shared_ptr<IReflected> topLevel = m_topLevel.lock();
        return topLevel ? ReflectedObject(std::move(topLevel), m_object) : ReflectedObject();
    }

    /// Tells two objects apart for as long as both live; never to be dereferenced.
    const void* identity() const noexcept { return m_object; }

    friend bool operator==(const PersistentObject& a, const PersistentObject& b) noexcept
    {
        return a.m_object == b.m_object && !a.m_topLevel.owner_before(b.m_topLevel) &&
               !b.m_topLevel.owner_before(a.m_topLevel);
    }
    friend bool operator!=(const PersistentObject& a, const PersistentObject& b) noexcept
    {
        return !(a == b);
    }

private:
    std::weak_ptr<IReflected> m_topLevel;
    IReflected* m_object = nullptr;
};

} // namespace kyr

namespace std {

/// By identity, like the comparison.
template <>
struct hash<kyr::PersistentObject>
{
    std::size_t operator()(const kyr::PersistentObject& object) const noexcept
    {
        return std::hash<const void*>()(object.identity());
    }
};

} // namespace std
