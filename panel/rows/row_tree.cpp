#include "row_tree.h"

#include <algorithm>
#include <limits>

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

RowTree::Node RowTree::at(int row) const
{
    Node node = m_root;
    if (row < 0 || row >= shownCount())
        return none;
    while (node != none && m_nodes[node].shift == 0) {
        const int above = shownIn(m_nodes[node].left);
        if (row < above) {
            node = m_nodes[node].left;
            continue;
        }
        row -= above;
        if (m_nodes[node].closed == 0 && row-- == 0)
            return node;
        node = m_nodes[node].right;
    }
    return none;
}

RowTree::Node RowTree::atOrder(int order) const
{
    Node node = m_root;
    while (node != none) {
        const int before = int(m_nodes[m_nodes[node].left].size);
        if (order == before)
            return node;
        if (order < before) {
            node = m_nodes[node].left;
        } else {
            order -= before + 1;
            node = m_nodes[node].right;
        }
    }
    return none;
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
        const Node up = m_nodes[node].up;
        if (up != none && m_nodes[up].right == node) {
            order += int(m_nodes[m_nodes[up].left].size) + 1;
            above += shownIn(m_nodes[up].left) + (m_nodes[up].closed == 0 ? 1 : 0);
        }
        node = up;
    }
    return {order, above, shown};
}

int RowTree::row(Node node) const
{
    if (node == none)
        return -1;
    const Position found = position(node);
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
    Node node = m_root;
    while (node != none && m_nodes[node].shift == 0) {
        const int before = int(m_nodes[m_nodes[node].left].size);
        if (order <= before) {
            node = m_nodes[node].left;
            continue;
        }
        rows += shownIn(m_nodes[node].left) + (m_nodes[node].closed == 0 ? 1 : 0);
        order -= before + 1;
        node = m_nodes[node].right;
    }
    return rows;
}

RowTree::Node RowTree::first(Node root) const
{
    while (m_nodes[root].left != none)
        root = m_nodes[root].left;
    return root;
}

RowTree::Node RowTree::next(Node node) const
{
    if (m_nodes[node].right != none)
        return first(m_nodes[node].right);
    Node up = m_nodes[node].up;
    while (up != none && m_nodes[up].right == node) {
        node = up;
        up = m_nodes[node].up;
    }
    return up;
}

RowTree::Node RowTree::findChild(Node node, quint32 depth, quint32 number) const
{
    while (node != none) {
        const Data& left = m_nodes[m_nodes[node].left];
        const quint32 matches = left.minDepth == depth ? left.minCount : 0;
        // A shallower row on the left ends the family there: the child is before it or nowhere.
        if (left.minDepth < depth || number < matches) {
            node = m_nodes[node].left;
            continue;
        }
        number -= matches;
        const quint32 own = m_nodes[node].depth;
        if (own < depth)
            return none;
        if (own == depth && number-- == 0)
            return node;
        node = m_nodes[node].right;
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
    Node node = parent;
    while (node != none) {
        const Node piece = m_nodes[node].right;
        const Data& rows = m_nodes[piece];
        const quint32 matches = rows.minDepth == depth ? rows.minCount : 0;
        if (rows.minDepth < depth || left < matches)
            return findChild(piece, depth, left);
        left -= matches;
        while (m_nodes[node].up != none && m_nodes[m_nodes[node].up].right == node)
            node = m_nodes[node].up;
        node = m_nodes[node].up;
        if (node == none || m_nodes[node].depth < depth)
            return none;
        if (m_nodes[node].depth == depth && left-- == 0)
            return node;
    }
    return none;
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
        while (m_nodes[node].up != none && m_nodes[m_nodes[node].up].left == node)
            node = m_nodes[node].up;
        node = m_nodes[node].up;
        if (node == none || m_nodes[node].depth < depth)
            return {node, int(number)};
        if (m_nodes[node].depth == depth)
            ++number;
        piece = m_nodes[node].left;
    }
    while (true) {
        const Data& right = m_nodes[m_nodes[piece].right];
        if (right.minDepth < depth) {
            piece = m_nodes[piece].right;
            continue;
        }
        if (right.minDepth == depth)
            number += right.minCount;
        if (m_nodes[piece].depth < depth)
            return {piece, int(number)};
        if (m_nodes[piece].depth == depth)
            ++number;
        piece = m_nodes[piece].left;
    }
}

RowTree::Node RowTree::afterBranch(Node node) const
{
    const quint32 depth = m_nodes[node].depth;
    Node piece = m_nodes[node].right;
    while (m_nodes[piece].minDepth > depth) {
        while (m_nodes[node].up != none && m_nodes[m_nodes[node].up].right == node)
            node = m_nodes[node].up;
        node = m_nodes[node].up;
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
    return parent == none || (has(parent, Expanded) && position(parent).shown);
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

/// The lowest number of closed rows above, seen from above the node, and how many rows have it.
std::pair<int, int> RowTree::lowestIn(Node node, int first, int last) const
{
    constexpr int infinite = std::numeric_limits<int>::max() / 2;
    if (first >= last || node == none)
        return {infinite, 0};
    const Data& data = m_nodes[node];
    if (first <= 0 && last >= int(data.size))
        return {data.shift, int(data.lowest)};
    const int before = int(m_nodes[data.left].size);
    std::pair<int, int> lowest{infinite, 0};
    const auto add = [&lowest](const std::pair<int, int>& part) {
        if (part.first < lowest.first)
            lowest = part;
        else if (part.first == lowest.first)
            lowest.second += part.second;
    };
    add(lowestIn(data.left, first, std::min(last, before)));
    if (first <= before && before < last)
        add({data.closed, 1});
    add(lowestIn(data.right, std::max(first - before - 1, 0), last - before - 1));
    return {lowest.first + data.shift, lowest.second};
}

int RowTree::countToOpen(Node node) const
{
    const int first = order(node) + 1;
    return countIfShown(first, branchEnd(node) - first);
}

int RowTree::countIfShown(int order, int count) const
{
    return lowestIn(m_root, order, order + count).second;
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

int RowTree::selectedBefore(int order) const
{
    int count = 0;
    Node node = m_root;
    while (node != none) {
        const int before = int(m_nodes[m_nodes[node].left].size);
        if (order <= before) {
            node = m_nodes[node].left;
            continue;
        }
        count += int(m_nodes[m_nodes[node].left].selected) + (has(node, Selected) ? 1 : 0);
        order -= before + 1;
        node = m_nodes[node].right;
    }
    return count;
}

int RowTree::selectedBelow(Node node) const
{
    return selectedBefore(branchEnd(node)) - selectedBefore(order(node) + 1);
}

} // namespace kyr::panel
