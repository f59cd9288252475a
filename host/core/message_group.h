#pragma once

#include <set>
#include <string>

namespace Zar {

/// Messages that belong together, such as those of one paste: what could be said again and again is
/// said once. Each thread has its own current group.
class MessageGroup
{
public:
    /// Makes a group the current one for its own lifetime; scopes nest.
    class Scope
    {
    public:
        explicit Scope(MessageGroup& group) noexcept : m_outer(current()) { current() = &group; }
        ~Scope() { current() = m_outer; }
        Scope(const Scope&) = delete;
        Scope& operator=(const Scope&) = delete;

    private:
        MessageGroup* m_outer;
    };

    /// Whether `key` comes for the first time in the current group; true when there is no group.
    static bool isFirst(const std::string& key)
    {
        return !current() || current()->m_keys.insert(key).second;
    }

private:
    static MessageGroup*& current() noexcept;

    std::set<std::string> m_keys;
};

} // namespace Zar
