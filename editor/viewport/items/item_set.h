#pragma once

#include <editor/viewport/camera/orbit_camera.h>
#include <editor/viewport/items/viewport_item.h>

#include <QHash>

namespace editor {

/// The items of a viewport with a spatial index: answers what is under a pointer or a rectangle.
/// Exact, to the triangle; needs no graphics.
class ItemSet
{
public:
    struct Hit
    {
        quint32 id;
        float depth; ///< along the camera's forward direction
        QVector3D point;
    };

    /// Distance in pixels from a marker's centre at which it is still hit.
    static constexpr float markerRadius = 10.0f;
    /// Share of its distance by which a marker is drawn nearer, so that the lamp around a light
    /// does not hide it.
    static constexpr float markerLift = 0.02f;

    /// Where items go: at the end of a branch, or before one of its children.
    struct Gap
    {
        quint32 parent;
        quint32 before = 0; ///< 0: behind the last one
    };

    /// Each item comes before those below it in the tree, branch by branch. One whose id is 0 or
    /// taken is left out. O(n log n).
    void assign(std::vector<ViewportItem> items);
    /// Puts a branch between the others and returns the indices of its items. Nothing when there is
    /// no room left, or no such place; then `assign` has to number all anew. Linear in the branch,
    /// O(log n) in the others but for moving n numbers.
    std::optional<std::vector<quint32>> insert(const std::vector<ViewportItem>& branch,
                                               const Gap& gap);
    /// Takes a branch out and returns the indices that its items had, which may be given anew.
    std::vector<quint32> remove(quint32 id);
    /// Replaces the item with that id, if there is one, and returns its index. What is below it
    /// stays the same. O(log n).
    std::optional<quint32> update(const ViewportItem& item);

    /// By index; items that are gone have left one behind without an id, which is not visible.
    const std::vector<ViewportItem>& items() const { return m_items; }
    std::size_t count() const { return m_order.size(); }
    /// In the order of the items; not above 2^24.
    quint32 placeOf(quint32 index) const { return m_places[index]; }
    /// How many items are in a range. O(log n).
    std::size_t countIn(const ItemRange& range) const;
    /// Calls `visit(index)` for each item in a range, in their order.
    template <typename Visit>
    void visitRange(const ItemRange& range, Visit visit) const
    {
        for (std::size_t at = orderAt(range.first);
             at < m_order.size() && m_places[m_order[at]] < range.end; ++at)
            visit(m_order[at]);
    }
    const ViewportItem* find(quint32 id) const;
    /// The item and all below it; empty for an unknown id. O(1).
    ItemRange branchOf(quint32 id) const;
    /// The branches of the items, in order, without those that lie in another one.
    std::vector<ItemRange> branchesOf(const std::vector<quint32>& ids) const;
    /// The indices of all items, neighbours in space near each other.
    const std::vector<quint32>& spatialOrder() const { return m_tree.order(); }
    /// Around every item, also hidden ones. O(1).
    Box bounds() const { return m_tree.bounds(); }
    /// Around the visible meshes or, without any, the visible markers. O(n).
    Box visibleBounds() const;
    /// How many visible items lie or reach too far out to be framed. O(n).
    int countOutOfFrameReach() const;
    /// Around the branches of the items.
    Box boundsOf(const std::vector<quint32>& ids) const;

    /// The nearest item that is drawn at a position.
    std::optional<Hit> pick(const OrbitCamera& camera, const QPointF& position) const;
    /// Every item at a position, also behind others, nearest first.
    std::vector<Hit> pickAll(const OrbitCamera& camera, const QPointF& position) const;
    /// The items drawn at least in part in a rectangle, also behind others, in their order.
    std::vector<quint32> idsWithin(const OrbitCamera& camera, const QRectF& rectangle) const;

private:
    /// Calls `visit(hit)` for each marker at a position.
    template <typename Visit>
    void visitMarkers(const OrbitCamera& camera, const QPointF& position, Visit visit) const;

    /// Of the first item at that place or behind it.
    std::size_t orderAt(quint32 place) const;
    quint32 take(const ViewportItem& item);

    std::vector<ViewportItem> m_items;
    std::vector<quint32> m_places;     // by item
    std::vector<quint32> m_branchEnds; // by item, a place
    std::vector<quint32> m_parents;    // by item
    std::vector<quint32> m_order;      // indices by place
    std::vector<quint32> m_free;       // indices of items that are gone
    QHash<quint32, quint32> m_indexOf;
    Bvh m_tree;
};

} // namespace editor
