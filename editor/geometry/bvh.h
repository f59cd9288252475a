#pragma once

#include <editor/geometry/convex_volume.h>
#include <editor/geometry/ray.h>

#include <array>
#include <vector>

namespace editor {

/// Bounding volume hierarchy over boxes that are known by their index. Built by median splits,
/// so its depth never exceeds log2 of the count. Empty boxes are allowed and never visited.
class Bvh
{
public:
    Bvh() = default;
    /// O(n log n).
    explicit Bvh(std::vector<Box> boxes);

    std::size_t size() const { return m_boxes.size(); }
    const Box& box(quint32 index) const { return m_boxes[index]; }
    /// All indices, such that neighbours in space are near each other.
    const std::vector<quint32>& order() const { return m_order; }
    Box bounds() const;

    /// Adds a box, whose index is the count so far. Those that were added are looked at one by one
    /// until `rebuild`.
    void append(const Box& box);
    std::size_t appendedCount() const { return m_order.size() - m_built; }
    /// O(n log n).
    void rebuild() { *this = Bvh(std::move(m_boxes)); }

    /// Moves one box. O(log n); after many long moves a fresh tree answers faster.
    void update(quint32 index, const Box& box);

    /// Calls `visit(index, limit)` for boxes that the ray enters before `limit`, roughly nearest
    /// first. `visit` may lower `limit` to skip all that lies behind.
    template <typename Visit>
    void visitRay(const Ray& ray, float limit, Visit visit) const;

    /// Calls `visit(index, overlap)` for boxes that may meet the volume until it returns false.
    template <typename Visit>
    void visitVolume(const ConvexVolume& volume, Visit visit) const;

private:
    static constexpr quint32 leafSize = 4;
    static constexpr quint32 noParent = ~quint32(0);
    using Stack = std::array<quint32, 64>;

    // A leaf holds m_order[first .. first + count); other nodes have children first and first + 1.
    struct Node
    {
        Box box;
        quint32 first = 0;
        quint32 count = 0;
        quint32 parent = noParent;
    };

    struct Entry
    {
        QVector3D centre;
        quint32 index;
    };

    void split(quint32 node, std::vector<Entry>& entries);
    Box boxOf(const Node& node) const;

    std::vector<Box> m_boxes;
    std::vector<Node> m_nodes;
    std::vector<quint32> m_order; // those that were added behind the others
    std::vector<quint32> m_leafOf;
    std::size_t m_built = 0;
};

template <typename Visit>
void Bvh::visitRay(const Ray& ray, float limit, Visit visit) const
{
    for (std::size_t i = m_built; i < m_order.size(); ++i) {
        if (entryDistance(ray, m_boxes[m_order[i]], limit))
            visit(m_order[i], limit);
    }
    if (m_nodes.empty())
        return;
    Stack stack;
    std::size_t depth = 0;
    stack[depth++] = 0;
    while (depth > 0) {
        const Node& node = m_nodes[stack[--depth]];
        if (!entryDistance(ray, node.box, limit))
            continue;
        if (node.count > 0) {
            for (quint32 i = node.first; i < node.first + node.count; ++i) {
                if (entryDistance(ray, m_boxes[m_order[i]], limit))
                    visit(m_order[i], limit);
            }
            continue;
        }
        const auto left = entryDistance(ray, m_nodes[node.first].box, limit);
        const auto right = entryDistance(ray, m_nodes[node.first + 1].box, limit);
        const bool leftFirst = left && right && *left <= *right;
        if (left && !leftFirst)
            stack[depth++] = node.first;
        if (right)
            stack[depth++] = node.first + 1;
        if (leftFirst)
            stack[depth++] = node.first;
    }
}

template <typename Visit>
void Bvh::visitVolume(const ConvexVolume& volume, Visit visit) const
{
    using Overlap = ConvexVolume::Overlap;
    for (std::size_t i = m_built; i < m_order.size(); ++i) {
        const Overlap overlap = volume.overlap(m_boxes[m_order[i]]);
        if (overlap != Overlap::None && !visit(m_order[i], overlap))
            return;
    }
    if (m_nodes.empty())
        return;
    Stack stack;
    std::size_t depth = 0;
    stack[depth++] = 0;
    while (depth > 0) {
        const Node& node = m_nodes[stack[--depth]];
        if (volume.overlap(node.box) == Overlap::None)
            continue;
        if (node.count == 0) {
            stack[depth++] = node.first;
            stack[depth++] = node.first + 1;
            continue;
        }
        for (quint32 i = node.first; i < node.first + node.count; ++i) {
            const Overlap overlap = volume.overlap(m_boxes[m_order[i]]);
            if (overlap != Overlap::None && !visit(m_order[i], overlap))
                return;
        }
    }
}

} // namespace editor
