#include "paste_step.h"

#include <host/core/debug_message.h>

#include <exception>

namespace kyr::properties {
namespace {

// A callback that threw once may do so again; the rest is taken back all the same.
template <typename Action>
void attempt(Action action) noexcept
{
    try {
        action();
    } catch (const std::exception& error) {
        Zar::DebugMessageHelper(0, 5).message("Paste properties: while taking back: %s",
                                              error.what());
    } catch (...) {
        Zar::DebugMessageHelper(0, 5).message("Paste properties: error while taking back");
    }
}

} // namespace

PasteStep::PasteStep(IAssetSelection& selection, PasteProgress& progress)
    : m_selection(selection)
    , m_progress(progress)
    , m_selectedBefore(selection.objects())
    , m_controller(selection.changesController().lock())
    , m_scope(std::in_place, "Paste property values from clipboard to selected items",
              m_controller.get())
{
    m_progress.keepsEarlier = !m_controller;
}

PasteStep::~PasteStep()
{
    if (!m_scope)
        return;
    auto& earlier = m_progress.earlier;
    for (auto value = earlier.rbegin(); value != earlier.rend(); ++value)
        attempt([value] { value->first.set(value->second, SetterFlag::Replay); });
    attempt([this] { m_scope->discard(); });
    attempt([this] {
        if (m_selection.objects() != m_selectedBefore)
            m_selection.setSelection(m_selectedBefore, false);
    });
}

void PasteStep::keep()
{
    m_scope.reset();
}

} // namespace kyr::properties
