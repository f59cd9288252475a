#include "bvh.h"

namespace editor {

namespace {

// A NaN would break the order that the splits rely on.
QVector3D sortingPoint(const Box& box)
{
    const QVector3D centre = box.centre();
    const bool finite =
        std::isfinite(centre.x()) && std::isfinite(centre.y()) && std::isfinite(centre.z());
    return finite ? centre : QVector3D();
}

} // namespace

Bvh::Bvh(std::vector<Box> boxes) : m_boxes(std::move(boxes))
{
    if (m_boxes.empty())
        return;
    std::vector<Entry> entries;
    entries.reserve(m_boxes.size());
    for (quint32 i = 0; i < m_boxes.size(); ++i)
        entries.push_back({sortingPoint(m_boxes[i]), i});

    m_order.resize(m_boxes.size());
    m_leafOf.resize(m_boxes.size());
    m_built = m_boxes.size();
    m_nodes.reserve(m_boxes.size());
    m_nodes.emplace_back();
    m_nodes.front().count = quint32(m_boxes.size());
    split(0, entries);
}

void Bvh::split(quint32 index, std::vector<Entry>& entries)
{
    const quint32 first = m_nodes[index].first;
    const quint32 count = m_nodes[index].count;
    if (count <= leafSize) {
        for (quint32 i = first; i < first + count; ++i) {
            m_order[i] = entries[i].index;
            m_leafOf[m_order[i]] = index;
        }
        m_nodes[index].box = boxOf(m_nodes[index]);
        return;
    }

    Box spread;
    for (quint32 i = first; i < first + count; ++i)
        spread.include(entries[i].centre);
    const QVector3D size = spread.size();
    const int axis = size.x() >= size.y() && size.x() >= size.z() ? 0
                     : size.y() >= size.z()                       ? 1
                                                                  : 2;
    const auto begin = entries.begin() + first;
    std::nth_element(
        begin, begin + count / 2, begin + count,
        [axis](const Entry& a, const Entry& b) { return a.centre[axis] < b.centre[axis]; });

    const quint32 left = quint32(m_nodes.size());
    m_nodes.push_back({{}, first, count / 2, index});
    m_nodes.push_back({{}, first + count / 2, count - count / 2, index});
    m_nodes[index].first = left;
    m_nodes[index].count = 0;
    split(left, entries);
    split(left + 1, entries);
    m_nodes[index].box = boxOf(m_nodes[index]);
}

Box Bvh::boxOf(const Node& node) const
{
    Box box;
    if (node.count == 0) {
        box = m_nodes[node.first].box;
        box.include(m_nodes[node.first + 1].box);
    } else {
        for (quint32 i = node.first; i < node.first + node.count; ++i)
            box.include(m_boxes[m_order[i]]);
    }
    return box;
}

Box Bvh::bounds() const
{
    Box box = m_nodes.empty() ? Box() : m_nodes.front().box;
    for (std::size_t i = m_built; i < m_order.size(); ++i)
        box.include(m_boxes[m_order[i]]);
    return box;
}

void Bvh::append(const Box& box)
{
    m_order.push_back(quint32(m_boxes.size()));
    m_leafOf.push_back(noParent);
    m_boxes.push_back(box);
}

void Bvh::update(quint32 index, const Box& box)
{
    m_boxes[index] = box;
    for (quint32 node = m_leafOf[index]; node != noParent; node = m_nodes[node].parent)
        m_nodes[node].box = boxOf(m_nodes[node]);
}

} // namespace editor
