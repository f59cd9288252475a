#pragma once

#include <host/undo/change.h>

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace Zar {

/// This editor's undo: a journal of named steps and a place in it.
class ChangesController
{
public:
    void begin(std::string_view name);
    void end();
    void discard();

    void record(std::unique_ptr<IChange> change, std::string_view name);

    bool undo();
    bool redo();
    std::size_t stepCount() const noexcept { return m_steps.size(); }
    const std::string& lastName() const { return m_steps.back().name; }

private:
    struct Step
    {
        std::string name;
        std::vector<std::unique_ptr<IChange>> changes;

        void undo();
        void redo();
    };

    void close(Step step);

    std::vector<Step> m_steps;
    std::size_t m_place = 0;
    std::vector<Step> m_open;
    bool m_replaying = false;
};

} // namespace Zar
