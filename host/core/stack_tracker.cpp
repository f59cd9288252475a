#include "stack_tracker.h"

namespace Zar {
namespace {

struct Entry
{
    const char* name;
    const char* file;
    unsigned line;
};

std::vector<Entry>& stack()
{
    static thread_local std::vector<Entry> entries;
    return entries;
}

} // namespace

void StackTracker::push(const char* name, const char* file, unsigned line)
{
    stack().push_back({name, file, line});
}

void StackTracker::pop() noexcept
{
    if (!stack().empty())
        stack().pop_back();
}

std::vector<std::string> StackTracker::entries()
{
    std::vector<std::string> names;
    for (const Entry& entry : stack())
        names.emplace_back(entry.name);
    return names;
}

} // namespace Zar
