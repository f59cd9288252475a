#pragma once

namespace vex::Profiler {

/// Hooks through which a profiler follows named scopes. Each may be null and is then skipped.
struct HookTable
{
    void (*scopeBegin)(const char* name) = nullptr;
    void (*scopeEnd)() = nullptr;
    void (*frameMark)() = nullptr;
    /// The pair for scopes inside value handling, which a profiler may want to leave out.
    void (*valueScopeBegin)(const char* name) = nullptr;
    void (*valueScopeEnd)() = nullptr;
};

extern HookTable g_hooks;

/// Runs the general scope hooks around its own lifetime.
class Scope
{
public:
    explicit Scope(const char* name)
    {
        if (g_hooks.scopeBegin)
            g_hooks.scopeBegin(name);
    }
    ~Scope()
    {
        if (g_hooks.scopeEnd)
            g_hooks.scopeEnd();
    }
    Scope(const Scope&) = delete;
    Scope& operator=(const Scope&) = delete;
};

/// Runs the value scope hooks around its own lifetime.
class ValueScope
{
public:
    explicit ValueScope(const char* name)
    {
        if (g_hooks.valueScopeBegin)
            g_hooks.valueScopeBegin(name);
    }
    ~ValueScope()
    {
        if (g_hooks.valueScopeEnd)
            g_hooks.valueScopeEnd();
    }
    ValueScope(const ValueScope&) = delete;
    ValueScope& operator=(const ValueScope&) = delete;
};

} // namespace vex::Profiler
