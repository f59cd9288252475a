#pragma once

#include <editor/viewport/render/draw_list.h>

#include <optional>

namespace editor {

/// The items of a whole scene with what a view works out from them.
struct PreparedItems
{
    /// All of it, on any thread. O(n log n).
    static PreparedItems from(std::vector<ViewportItem> items)
    {
        PreparedItems prepared;
        prepared.set.assign(std::move(items));
        prepared.drawList.emplace(prepared.set);
        return prepared;
    }

    ItemSet set;
    /// Without one, the first view that draws the items makes it.
    std::optional<DrawList> drawList;
};

} // namespace editor
