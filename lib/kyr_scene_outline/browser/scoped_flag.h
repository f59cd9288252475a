#pragma once

namespace kyr {

/// Keeps a flag set for its own lifetime.
class ScopedFlag
{
public:
    explicit ScopedFlag(bool& flag) noexcept : m_flag(flag) { m_flag = true; }
    ~ScopedFlag() { m_flag = false; }
    ScopedFlag(const ScopedFlag&) = delete;
    ScopedFlag& operator=(const ScopedFlag&) = delete;

private:
    bool& m_flag;
};

} // namespace kyr
