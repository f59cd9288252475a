#pragma once

#include <editor/document/scene_document.h>
#include <editor/viewport/items/viewport_item.h>

#include <unordered_set>

namespace editor {

/// What a view shows alone: some objects with all below them. The scene does not change by it.
class Isolation
{
public:
    bool isActive() const noexcept { return !m_tops.empty(); }
    void start(const SceneObjects& tops);
    void end();

    /// Works out what is below the objects now. Linear in that.
    void update(const SceneDocument& document);
    /// Hides the item unless it is part of what is shown, as of the last update.
    void apply(ViewportItem& item) const;

private:
    std::vector<quint32> m_tops;
    std::unordered_set<quint32> m_shown;
};

} // namespace editor
