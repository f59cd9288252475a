#include "row_tree.h"

#include <algorithm>

namespace kyr::panel {

namespace {

/// From this share of the rows on, counting all anew is faster than going up from each.
constexpr std::size_t shareToCountAll = 16;

} // namespace

void RowTree::clear()
{
    m_nodes.assign(1, Data{});
    m_nodes[none].depth = 0;
    m_nodes[none].flags = 0;
    m_root = none;
    m_free = none;
    m_unread = 0;
}

RowTree::Node RowTree::create(int depth, quint32 flags)
{
    Node node = m_free;
    if (node != none) {
        m_free = m_nodes[node].left;
    } else {
        node = Node(m_nodes.size());
        // Doubling would hold twice the memory of a scene that has just been opened.
        if (m_nodes.size() == m_nodes.capacity())
            m_nodes.reserve(m_nodes.size() + m_nodes.size() / 16 + 16);
        m_nodes.emplace_back();
    }
    Data data;
    data.size = 1;
    data.depth = quint32(depth) & 0x3ffffffu;
    data.flags = flags & 0x3fu;
    m_nodes[node] = data;
    m_unread += has(node, Unread) ? 1 : 0;
    return node;
}

void RowTree::destroy(const std::vector<Node>& rows)
{
    for (const Node node : rows) {
        m_unread -= has(node, Unread) ? 1 : 0;
        m_nodes[node].left = m_free;
        m_free = node;
    }
}

void RowTree::update(Node node)
{
    Data& data = m_nodes[node];
    Data& left = m_nodes[data.left];
    Data& right = m_nodes[data.right];
    const quint32 own = data.depth;
    data.size = 1 + left.size + right.size;
    data.selected = ((data.flags & Selected) != 0 ? 1u : 0u) + left.selected + right.selected;
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

RowTree::Node RowTree::build(const std::vector<Node>& rows)
{
    if (rows.empty())
        return none;
    const int top = depth(rows.front());
    std::vector<qint32> above; // closed rows above the children of each row on the way down
    for (const Node row : rows) {
        above.resize(std::size_t(depth(row) - top));
        const qint32 closed = above.empty() ? 0 : above.back();
        m_nodes[row].closed = closed;
        m_nodes[row].shift = 0;
        above.push_back(closed + (has(row, Expanded) ? 0 : 1));
    }
    const Node root = build(rows.data(), rows.size());
    m_nodes[root].up = none;
    return root;
}

RowTree::Node RowTree::build(const Node* rows, std::size_t count)
{
    if (count == 0)
        return none;
    const std::size_t middle = count / 2;
    const Node left = build(rows, middle);
    const Node right = build(rows + middle + 1, count - middle - 1);
    m_nodes[rows[middle]].left = left;
    m_nodes[rows[middle]].right = right;
    update(rows[middle]);
    return rows[middle];
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
    m_nodes[block].shift += closedAboveChildren(parent);
    const auto [front, back] = split(m_root, order);
    m_root = join(join(front, block), back);
    m_nodes[m_root].up = none;
}

RowTree::Node RowTree::cut(int order, int count)
{
    const auto [front, rest] = split(m_root, order);
    const auto [block, back] = split(rest, count);
    m_root = join(front, back);
    m_nodes[m_root].up = none;
    if (block != none)
        m_nodes[block].shift = 0;
    return block;
}

std::vector<RowTree::Node> RowTree::rowsOf(Node block) const
{
    std::vector<Node> rows;
    rows.reserve(m_nodes[block].size);
    for (Node node = first(block); node != none; node = next(node))
        rows.push_back(node);
    return rows;
}

void RowTree::shiftDepth(Node block, int delta)
{
    if (block == none || delta == 0)
        return;
    for (const Node node : rowsOf(block)) {
        Data& data = m_nodes[node];
        data.depth = quint32(int(data.depth) + delta) & 0x3ffffffu;
        data.minDepth = quint32(int(data.minDepth) + delta);
    }
}

void RowTree::set(Node node, Flag flag, bool on)
{
    if (flag == Unread && has(node, Unread) != on)
        m_unread += on ? 1 : -1;
    if (on)
        m_nodes[node].flags |= flag;
    else
        m_nodes[node].flags &= ~quint32(flag) & 0x3fu;
}

void RowTree::setExpanded(Node node, bool on)
{
    if (has(node, Expanded) == on)
        return;
    set(node, Expanded, on);
    shiftClosed(m_root, order(node) + 1, branchEnd(node), on ? -1 : 1);
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

void RowTree::setBranchExpanded(Node node, bool on)
{
    const int first = order(node) + 1;
    const std::vector<Node> rows = rowsOf(cut(first, branchEnd(node) - first));
    openOrClose(rows, on);
    insert(first, build(rows), node);
    if (!on && has(node, Unread))
        set(node, IgnoresWishes, true);
}

void RowTree::setAllExpanded(bool on)
{
    const std::vector<Node> rows = allRows();
    for (const Node row : rows)
        set(row, Expanded, false);
    openOrClose(rows, on);
    rebuild(rows);
}

/// For rows that are built into a block afterwards.
void RowTree::openOrClose(const std::vector<Node>& rows, bool on)
{
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const bool branch = i + 1 < rows.size() && depth(rows[i + 1]) > depth(rows[i]);
        if (branch || !on)
            set(rows[i], Expanded, on);
        if (has(rows[i], Unread))
            set(rows[i], IgnoresWishes, !on);
    }
}

int RowTree::closedAbove(Node node) const
{
    int closed = m_nodes[node].closed;
    for (; node != none; node = m_nodes[node].up)
        closed += m_nodes[node].shift;
    return closed;
}

int RowTree::closedAboveChildren(Node parent) const
{
    return parent == none ? 0 : closedAbove(parent) + (has(parent, Expanded) ? 0 : 1);
}

void RowTree::mark(const std::vector<Node>& rows, bool selected)
{
    for (const Node row : rows)
        set(row, Selected, selected);
    if (rows.size() > std::size_t(size()) / shareToCountAll) {
        countSelected(m_root);
        return;
    }
    for (const Node row : rows) {
        for (Node node = row; node != none; node = m_nodes[node].up)
            m_nodes[node].selected += selected ? 1u : ~0u;
    }
}

quint32 RowTree::countSelected(Node node)
{
    if (node == none)
        return 0;
    Data& data = m_nodes[node];
    data.selected =
        (has(node, Selected) ? 1u : 0u) + countSelected(data.left) + countSelected(data.right);
    return data.selected;
}

} // namespace kyr::panel
