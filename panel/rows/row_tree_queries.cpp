// Where rows are in a row tree, and how many of a kind there are.

#include "row_tree.h"

#include <limits>

namespace kyr::panel {

RowTree::Node RowTree::at(int row) const
{
    Node node = row < 0 || row >= shownCount() ? none : m_root;
    while (node != none) {
        const Data& data = m_nodes[node];
        prefetch(data.right);
        const int above = shownIn(data.left);
        const int own = data.closed == 0 ? 1 : 0;
        if (row == above && own == 1)
            break;
        node = row < above ? data.left : data.right;
        row -= row < above ? 0 : above + own;
    }
    return node;
}

RowTree::Node RowTree::atOrder(int order) const
{
    Node node = m_root;
    while (node != none) {
        const int before = int(m_nodes[m_nodes[node].left].size);
        if (order == before)
            break;
        node = order < before ? m_nodes[node].left : m_nodes[node].right;
        order -= order < before ? 0 : before + 1;
    }
    return node;
}

RowTree::Position RowTree::position(Node node) const
{
    int order = int(m_nodes[m_nodes[node].left].size);
    int above = shownIn(m_nodes[node].left);
    bool shown = m_nodes[node].closed == 0;
    while (node != none) {
        if (m_nodes[node].shift > 0) {
            above = 0;
            shown = false;
        }
        // Which side a row is on is a guess; a branch that is not taken cannot be missed.
        const Node up = m_nodes[node].up;
        const int right = m_nodes[up].right == node ? 1 : 0;
        order += right * int(m_nodes[m_nodes[up].left].size + 1);
        above += right * (shownIn(m_nodes[up].left) + (m_nodes[up].closed == 0 ? 1 : 0));
        node = up;
    }
    return {order, above, shown};
}

int RowTree::row(Node node) const
{
    const Position found = node == none ? Position{0, 0, false} : position(node);
    return found.shown ? found.rowsAbove : -1;
}

int RowTree::nearestRow(Node node) const
{
    // All rows below a closed one are hidden, so the shown row before a hidden one hides it.
    const Position found = position(node);
    return found.shown ? found.rowsAbove : found.rowsAbove - 1;
}

int RowTree::rowsBefore(int order) const
{
    int rows = 0;
    for (Node node = m_root; node != none && m_nodes[node].shift == 0;) {
        const Node left = m_nodes[node].left;
        const int before = int(m_nodes[left].size);
        if (order <= before) {
            node = left;
            continue;
        }
        rows += shownIn(left) + (m_nodes[node].closed == 0 ? 1 : 0);
        order -= before + 1;
        node = m_nodes[node].right;
    }
    return rows;
}

int RowTree::selectedBefore(int order) const
{
    int rows = 0;
    for (Node node = m_root; node != none;) {
        const int before = int(m_nodes[m_nodes[node].left].size);
        if (order > before)
            rows += int(m_nodes[m_nodes[node].left].selected) +
                    (m_marks.has(node, RowMarks::Selected) ? 1 : 0);
        node = order <= before ? m_nodes[node].left : m_nodes[node].right;
        order -= order <= before ? 0 : before + 1;
    }
    return rows;
}

int RowTree::selectedIn(Range orders) const
{
    if (orders.count() == 0)
        return 0;
    if (!m_countsSelected)
        countSelected(m_root);
    m_countsSelected = true;
    return selectedBefore(orders.end) - selectedBefore(orders.first);
}

RowTree::Node RowTree::first(Node root) const
{
    while (m_nodes[root].left != none)
        root = m_nodes[root].left;
    return root;
}

/// The first node above that has this one on its other side.
RowTree::Node RowTree::upFrom(Node node, Node Data::*side) const
{
    Node up = m_nodes[node].up;
    while (up != none && m_nodes[up].*side == node) {
        node = up;
        up = m_nodes[node].up;
    }
    return up;
}

RowTree::Node RowTree::next(Node node) const
{
    const Node right = m_nodes[node].right;
    return right != none ? first(right) : upFrom(node, &Data::right);
}

RowTree::Node RowTree::findChild(Node node, quint32 depth, quint32 number) const
{
    while (node != none) {
        const Data& data = m_nodes[node];
        prefetch(data.right);
        const Data& left = m_nodes[data.left];
        const quint32 matches = left.minDepth == depth ? left.minCount : 0;
        // A shallower row on the left ends the siblings there: the child is before it or nowhere.
        const bool goesLeft = left.minDepth < depth || number < matches;
        const quint32 own = data.depth;
        if (!goesLeft && own <= depth && (own < depth || number == matches))
            return own < depth ? none : node;
        number -= goesLeft ? 0 : matches + (own == depth ? 1 : 0);
        node = goesLeft ? data.left : data.right;
    }
    return none;
}

RowTree::Node RowTree::child(Node parent, int number) const
{
    if (number < 0)
        return none;
    if (parent == none)
        return findChild(m_root, 0, quint32(number));
    const quint32 depth = m_nodes[parent].depth + 1u;
    quint32 left = quint32(number);
    for (Node node = parent; true;) {
        const Node piece = m_nodes[node].right;
        const Data& rows = m_nodes[piece];
        const quint32 matches = rows.minDepth == depth ? rows.minCount : 0;
        if (rows.minDepth < depth || left < matches)
            return findChild(piece, depth, left);
        left -= matches;
        node = upFrom(node, &Data::right);
        if (node == none || m_nodes[node].depth < depth)
            return none;
        if (m_nodes[node].depth == depth && left-- == 0)
            return node;
    }
}

RowTree::Place RowTree::place(Node node) const
{
    const quint32 depth = m_nodes[node].depth;
    quint32 number = 0;
    Node piece = m_nodes[node].left;
    // Walks backwards in whole subtrees until one holds a shallower row, the parent.
    while (m_nodes[piece].minDepth >= depth) {
        if (m_nodes[piece].minDepth == depth)
            number += m_nodes[piece].minCount;
        node = upFrom(node, &Data::left);
        if (node == none || m_nodes[node].depth < depth)
            return {node, int(number)};
        number += m_nodes[node].depth == depth ? 1 : 0;
        piece = m_nodes[node].left;
    }
    while (true) {
        const Data& right = m_nodes[m_nodes[piece].right];
        if (right.minDepth < depth) {
            piece = m_nodes[piece].right;
            continue;
        }
        number += right.minDepth == depth ? right.minCount : 0;
        if (m_nodes[piece].depth < depth)
            return {piece, int(number)};
        number += m_nodes[piece].depth == depth ? 1 : 0;
        piece = m_nodes[piece].left;
    }
}

RowTree::Node RowTree::afterBranch(Node node) const
{
    const quint32 depth = m_nodes[node].depth;
    Node piece = m_nodes[node].right;
    while (m_nodes[piece].minDepth > depth) {
        node = upFrom(node, &Data::right);
        if (node == none || m_nodes[node].depth <= depth)
            return node;
        piece = m_nodes[node].right;
    }
    while (true) {
        if (m_nodes[m_nodes[piece].left].minDepth <= depth)
            piece = m_nodes[piece].left;
        else if (m_nodes[piece].depth <= depth)
            return piece;
        else
            piece = m_nodes[piece].right;
    }
}

RowTree::Range RowTree::below(Node node) const
{
    return {node == none ? 0 : order(node) + 1, branchEnd(node)};
}

int RowTree::branchEnd(Node node) const
{
    const Node after = node == none ? none : afterBranch(node);
    return after == none ? size() : order(after);
}

int RowTree::orderOfChild(Node parent, int number) const
{
    const Node node = child(parent, number);
    return node == none ? branchEnd(parent) : order(node);
}

bool RowTree::hasBranch(Node node) const
{
    const Node below = next(node);
    return below != none && depth(below) > depth(node);
}

bool RowTree::showsChildren(Node parent) const
{
    return parent == none || (isOpen(parent) && position(parent).shown);
}

/// The lowest number of closed rows above, seen from above the node, and how many rows have it.
std::pair<int, int> RowTree::lowestIn(Node node, int first, int last) const
{
    if (first >= last || node == none)
        return {std::numeric_limits<int>::max() / 2, 0};
    const Data& data = m_nodes[node];
    if (first <= 0 && last >= int(data.size))
        return {data.shift, int(data.lowest)};
    const int before = int(m_nodes[data.left].size);
    std::pair<int, int> lowest = lowestIn(data.left, first, std::min(last, before));
    const auto add = [&lowest](const std::pair<int, int>& part) {
        if (part.first < lowest.first)
            lowest = part;
        else if (part.first == lowest.first)
            lowest.second += part.second;
    };
    if (first <= before && before < last)
        add({data.closed, 1});
    add(lowestIn(data.right, std::max(first - before - 1, 0), last - before - 1));
    return {lowest.first + data.shift, lowest.second};
}

int RowTree::countIfShown(Range orders) const
{
    return lowestIn(m_root, orders.first, orders.end).second;
}

} // namespace kyr::panel
