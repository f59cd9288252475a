#pragma once

#include <QPointer>

namespace kyr {

/// Keeps a flag of `owner` set for its own lifetime. The owner may be destroyed meanwhile.
class ScopedFlag
{
public:
    ScopedFlag(bool& flag, QObject* owner) : m_flag(flag), m_owner(owner) { m_flag = true; }
    ~ScopedFlag()
    {
        if (m_owner)
            m_flag = false;
    }
    ScopedFlag(const ScopedFlag&) = delete;
    ScopedFlag& operator=(const ScopedFlag&) = delete;

private:
    bool& m_flag;
    const QPointer<QObject> m_owner;
};

} // namespace kyr
