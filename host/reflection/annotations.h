#pragma once

#include <host/core/string_ref.h>
#include <host/variant/variant.h>

#include <string>
#include <utility>
#include <vector>

namespace kyr {

/// Named values attached to a property. Finding one is linear in them.
class Annotations
{
public:
    /// Where an annotation was found; invalid past the end.
    class untyped_iterator
    {
    public:
        untyped_iterator() noexcept = default;
        explicit untyped_iterator(const lumo::Variant* value) noexcept : m_value(value) {}
        bool isValid() const noexcept { return m_value != nullptr; }
        const lumo::Variant* get() const noexcept { return m_value; }

    private:
        const lumo::Variant* m_value = nullptr;
    };

    /// The first annotation of that name; invalid when there is none.
    untyped_iterator find(Zar::StringRef name) const
    {
        for (const auto& [key, value] : m_entries) {
            if (key == name)
                return untyped_iterator(&value);
        }
        return {};
    }

    void add(std::string name, lumo::Variant value)
    {
        m_entries.emplace_back(std::move(name), std::move(value));
    }

    /// Adds `value` under the name of its own meta type, the name a typed look-up asks for.
    template <typename T>
    void add(T value)
    {
        lumo::Variant variant(std::move(value));
        std::string name = variant.type().name();
        add(std::move(name), std::move(variant));
    }

private:
    std::vector<std::pair<std::string, lumo::Variant>> m_entries;
};

} // namespace kyr
