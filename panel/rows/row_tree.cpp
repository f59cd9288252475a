#include "row_tree.h"

#include <algorithm>

namespace kyr::panel {

namespace {

/// From this share of the rows on, counting all anew is faster than going up from each.
constexpr std::size_t shareToCountAll = 16;

} // namespace

void RowTree::update(Node node)
{
    Data& data = m_nodes[node];
    Data& left = m_nodes[data.left];
    Data& right = m_nodes[data.right];
    const quint32 own = data.depth;
    data.size = 1 + left.size + right.size;
    data.selected =
        (m_marks.has(node, RowMarks::Selected) ? 1u : 0u) + left.selected + right.selected;
    data.minDepth = std::min({own, left.minDepth, right.minDepth});
    data.minCount = (own == data.minDepth ? 1u : 0u) +
                    (left.minDepth == data.minDepth ? left.minCount : 0u) +
                    (right.minDepth == data.minDepth ? right.minCount : 0u);
    qint32 lowest = data.closed;
    if (data.left != none)
        lowest = std::min(lowest, left.shift);
    if (data.right != none)
        lowest = std::min(lowest, right.shift);
    data.shift += lowest;
    data.closed -= lowest;
    data.lowest = data.closed == 0 ? 1 : 0;
    for (const Node part : {data.left, data.right}) {
        if (part == none)
            continue;
        m_nodes[part].up = node;
        m_nodes[part].shift -= lowest;
        data.lowest += quint32(shownIn(part));
    }
}

/// Writes the node's shift into what it is for.
void RowTree::push(Node node)
{
    Data& data = m_nodes[node];
    if (data.shift == 0)
        return;
    data.closed += data.shift;
    for (const Node part : {data.left, data.right}) {
        if (part != none)
            m_nodes[part].shift += data.shift;
    }
    data.shift = 0;
}

RowTree::Node RowTree::build(const std::vector<Row>& rows)
{
    if (rows.empty())
        return none;
    // Doubling would hold twice the memory of a scene that has just been opened.
    if (m_marks.size() > m_nodes.capacity())
        m_nodes.reserve(std::max(m_marks.size(), m_nodes.size() + m_nodes.size() / 16));
    if (m_marks.size() > m_nodes.size())
        m_nodes.resize(m_marks.size());
    std::vector<qint32> above; // closed rows above the children of each row on the way down
    for (const Row& row : rows) {
        above.resize(std::size_t(row.depth - rows.front().depth));
        const qint32 closed = above.empty() ? 0 : above.back();
        m_nodes[row.node].depth = quint32(row.depth);
        m_nodes[row.node].closed = closed;
        m_nodes[row.node].shift = 0;
        above.push_back(closed + (isOpen(row.node) ? 0 : 1));
    }
    const Node root = build(rows.data(), rows.size());
    m_nodes[root].up = none;
    return root;
}

RowTree::Node RowTree::build(const Row* rows, std::size_t count)
{
    if (count == 0)
        return none;
    const std::size_t middle = count / 2;
    const Node left = build(rows, middle);
    const Node right = build(rows + middle + 1, count - middle - 1);
    m_nodes[rows[middle].node].left = left;
    m_nodes[rows[middle].node].right = right;
    update(rows[middle].node);
    return rows[middle].node;
}

void RowTree::rebuild(const std::vector<Row>& rows)
{
    takeApart(m_root);
    m_root = build(rows);
    m_countsSelected = true;
}

std::pair<RowTree::Node, RowTree::Node> RowTree::split(Node root, int order)
{
    if (root == none)
        return {none, none};
    push(root);
    m_nodes[root].up = none;
    const int before = int(m_nodes[m_nodes[root].left].size);
    if (order <= before) {
        const auto [front, back] = split(m_nodes[root].left, order);
        m_nodes[root].left = back;
        update(root);
        return {front, root};
    }
    const auto [front, back] = split(m_nodes[root].right, order - before - 1);
    m_nodes[root].right = front;
    update(root);
    return {root, back};
}

quint32 RowTree::random(quint32 bound)
{
    m_random ^= m_random << 13;
    m_random ^= m_random >> 17;
    m_random ^= m_random << 5;
    return quint32((quint64(m_random) * bound) >> 32);
}

RowTree::Node RowTree::join(Node front, Node back)
{
    if (front == none || back == none)
        return front == none ? back : front;
    // Each row is the root with equal chance, which keeps the expected height logarithmic without
    // a priority stored in every row.
    const quint32 frontSize = m_nodes[front].size;
    if (random(frontSize + m_nodes[back].size) < frontSize) {
        push(front);
        const Node right = join(m_nodes[front].right, back);
        m_nodes[front].right = right;
        update(front);
        return front;
    }
    push(back);
    const Node left = join(front, m_nodes[back].left);
    m_nodes[back].left = left;
    update(back);
    return back;
}

void RowTree::insert(int order, Node block, Node parent)
{
    if (block == none)
        return;
    if (parent != none) {
        m_nodes[block].shift += isOpen(parent) ? 0 : 1;
        for (Node node = parent; node != none; node = m_nodes[node].up)
            m_nodes[block].shift += m_nodes[node].shift;
        m_nodes[block].shift += m_nodes[parent].closed;
    }
    // The block's root comes to be that of a subtree with the chance of its share of the rows, so
    // that a few rows change one way down.
    Node above = none;
    Node* place = &m_root;
    while (*place != none &&
           random(m_nodes[*place].size + m_nodes[block].size) >= m_nodes[block].size)
        place = &stepDown(above = *place, order);
    const auto [front, back] = split(*place, order);
    push(block);
    const Node left = join(front, m_nodes[block].left);
    const Node right = join(m_nodes[block].right, back);
    m_nodes[block].left = left;
    m_nodes[block].right = right;
    update(block);
    put(*place, block, above);
}

/// The child where that order is, which is counted from there on then.
RowTree::Node& RowTree::stepDown(Node node, int& order)
{
    push(node);
    const int before = int(m_nodes[m_nodes[node].left].size);
    if (order <= before)
        return m_nodes[node].left;
    order -= before + 1;
    return m_nodes[node].right;
}

void RowTree::put(Node& place, Node subtree, Node above)
{
    place = subtree;
    m_nodes[subtree].up = subtree == none ? none : above;
    for (; above != none; above = m_nodes[above].up)
        update(above);
}

RowTree::Node RowTree::cut(Range orders)
{
    if (orders.count() == 0)
        return none;
    const auto isOnOneSide = [&](Node node) {
        const int before = int(m_nodes[m_nodes[node].left].size);
        return orders.end <= before || orders.first > before;
    };
    Node above = none;
    Node* place = &m_root;
    while (isOnOneSide(*place)) {
        const int count = orders.count();
        place = &stepDown(above = *place, orders.first);
        orders.end = orders.first + count;
    }
    const auto [front, rest] = split(*place, orders.first);
    const auto [block, back] = split(rest, orders.count());
    put(*place, join(front, back), above);
    m_nodes[block].shift = 0;
    return block;
}

std::vector<RowTree::Row> RowTree::rowsOf(Node block) const
{
    std::vector<Row> rows;
    rows.reserve(m_nodes[block].size);
    for (Node node = first(block); node != none; node = next(node))
        rows.push_back({node, depth(node)});
    return rows;
}

std::vector<RowTree::Row> RowTree::takeApart(Node block)
{
    std::vector<Row> rows = rowsOf(block);
    for (const Row& row : rows)
        m_nodes[row.node] = Data();
    return rows;
}

void RowTree::shiftDepth(Node block, int delta)
{
    if (block == none || delta == 0)
        return;
    for (const Row& row : rowsOf(block)) {
        m_nodes[row.node].depth += quint32(delta);
        m_nodes[row.node].minDepth += quint32(delta);
    }
}

void RowTree::opened(Node node, Range below, bool on)
{
    if (contains(node))
        shiftClosed(m_root, below.first, below.end, on ? -1 : 1);
}

void RowTree::shiftClosed(Node node, int first, int last, int delta)
{
    if (first >= last || node == none)
        return;
    Data& data = m_nodes[node];
    if (first <= 0 && last >= int(data.size)) {
        data.shift += delta;
        return;
    }
    const int before = int(m_nodes[data.left].size);
    if (first < before)
        shiftClosed(data.left, first, std::min(last, before), delta);
    if (first <= before && before < last)
        data.closed += delta;
    if (last > before + 1)
        shiftClosed(data.right, std::max(first - before - 1, 0), last - before - 1, delta);
    update(node);
}

void RowTree::setBranchOpen(Node node, bool on)
{
    const int first = order(node) + 1;
    const std::vector<Row> rows = takeApart(cut(below(node)));
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const bool branch = i + 1 < rows.size() && rows[i + 1].depth > rows[i].depth;
        if (branch || !on)
            m_marks.set(rows[i].node, m_closedBy, !on);
    }
    insert(first, build(rows), node);
}

void RowTree::setAllOpen(bool on)
{
    Node last = none;
    for (Node node = on ? first(m_root) : none; node != none; node = next(node)) {
        if (last != none && depth(node) > depth(last))
            m_marks.set(last, m_closedBy, false);
        last = node;
    }
    // Each row hides all below it, or none: then the counts follow from what a node has anyway.
    for (Node node = 1; node < m_nodes.size(); ++node) {
        Data& data = m_nodes[node];
        if (data.size == 0)
            continue;
        if (!on)
            m_marks.set(node, m_closedBy, true);
        const quint32 above = data.up == none ? 0 : m_nodes[data.up].minDepth;
        data.shift = on ? 0 : qint32(data.minDepth - above);
        data.closed = on ? 0 : qint32(data.depth - data.minDepth);
        data.lowest = on ? data.size : data.minCount;
    }
}

void RowTree::selected(const std::vector<Node>& rows, bool on)
{
    m_countsSelected = m_countsSelected && rows.size() <= std::size_t(size()) / shareToCountAll;
    for (auto row = rows.begin(); m_countsSelected && row != rows.end(); ++row) {
        for (Node node = contains(*row) ? *row : none; node != none; node = m_nodes[node].up)
            m_nodes[node].selected += on ? 1u : ~0u;
    }
}

quint32 RowTree::countSelected(Node node) const
{
    if (node == none)
        return 0;
    Data& data = m_nodes[node];
    data.selected = (m_marks.has(node, RowMarks::Selected) ? 1u : 0u) + countSelected(data.left) +
                    countSelected(data.right);
    return data.selected;
}

} // namespace kyr::panel
