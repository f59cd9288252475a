#include "row_tree.h"

#include <algorithm>

namespace kyr::panel {

RowTree::RowTree()
{
    static_assert(sizeof(Data) == 32, "two rows a cache line");
    clear();
}

void RowTree::clear()
{
    m_nodes.assign(1, Data{});
    m_free = none;
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
            m_nodes.reserve(m_nodes.size() + m_nodes.size() / 4 + 16);
        m_nodes.emplace_back();
    }
    Data data;
    data.size = 1;
    data.depth = quint32(depth) & 0x1fffffffu;
    data.flags = flags & 7u;
    data.minDepth = data.depth;
    data.minCount = 1;
    m_nodes[node] = data;
    return node;
}

void RowTree::destroy(Node root)
{
    std::vector<Node> waiting;
    const auto add = [&](Node node) {
        if (node != none)
            waiting.push_back(node);
    };
    add(root);
    while (!waiting.empty()) {
        const Node node = waiting.back();
        waiting.pop_back();
        add(m_nodes[node].left);
        add(m_nodes[node].right);
        add(m_nodes[node].hidden);
        m_nodes[node].left = m_free;
        m_free = node;
    }
}

void RowTree::update(Node node)
{
    Data& data = m_nodes[node];
    const Data& left = m_nodes[data.left];
    const Data& right = m_nodes[data.right];
    const quint32 own = data.depth;
    data.size = 1 + left.size + right.size;
    data.minDepth = std::min({own, left.minDepth, right.minDepth});
    data.minCount = (own == data.minDepth ? 1u : 0u) +
                    (left.minDepth == data.minDepth ? left.minCount : 0u) +
                    (right.minDepth == data.minDepth ? right.minCount : 0u);
    if (data.left != none)
        m_nodes[data.left].up = node;
    if (data.right != none)
        m_nodes[data.right].up = node;
}

RowTree::Node RowTree::build(const std::vector<Node>& rows)
{
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

std::pair<RowTree::Node, RowTree::Node> RowTree::split(Node root, int row)
{
    if (root == none)
        return {none, none};
    m_nodes[root].up = none;
    const int before = count(m_nodes[root].left);
    if (row <= before) {
        const auto [front, back] = split(m_nodes[root].left, row);
        m_nodes[root].left = back;
        update(root);
        return {front, root};
    }
    const auto [front, back] = split(m_nodes[root].right, row - before - 1);
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
        const Node right = join(m_nodes[front].right, back);
        m_nodes[front].right = right;
        update(front);
        return front;
    }
    const Node left = join(front, m_nodes[back].left);
    m_nodes[back].left = left;
    update(back);
    return back;
}

RowTree::Node RowTree::cut(Node& root, int first, int count)
{
    const auto [front, rest] = split(root, first);
    const auto [block, back] = split(rest, count);
    root = join(front, back);
    return block;
}

void RowTree::insert(Node& root, int row, Node block)
{
    const auto [front, back] = split(root, row);
    root = join(join(front, block), back);
}

RowTree::Node RowTree::at(Node root, int row) const
{
    Node node = root;
    while (node != none) {
        const int before = count(m_nodes[node].left);
        if (row == before)
            return node;
        if (row < before) {
            node = m_nodes[node].left;
        } else {
            row -= before + 1;
            node = m_nodes[node].right;
        }
    }
    return none;
}

std::pair<RowTree::Node, int> RowTree::position(Node node) const
{
    int row = count(m_nodes[node].left);
    for (Node up = m_nodes[node].up; up != none; up = m_nodes[node].up) {
        if (m_nodes[up].right == node)
            row += count(m_nodes[up].left) + 1;
        node = up;
    }
    return {node, row};
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

RowTree::Node RowTree::topRow(Node root, int number) const
{
    if (number < 0 || root == none)
        return none;
    return findChild(root, m_nodes[root].minDepth, quint32(number));
}

RowTree::Node RowTree::child(Node parent, int number) const
{
    if (number < 0)
        return none;
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

void RowTree::shiftDepth(Node root, int delta)
{
    if (root == none || delta == 0)
        return;
    std::vector<Node> waiting{root};
    while (!waiting.empty()) {
        const Node node = waiting.back();
        waiting.pop_back();
        Data& data = m_nodes[node];
        data.depth = quint32(int(data.depth) + delta) & 0x1fffffffu;
        data.minDepth = quint32(int(data.minDepth) + delta);
        for (const Node part : {data.left, data.right, data.hidden}) {
            if (part != none)
                waiting.push_back(part);
        }
    }
}

void RowTree::set(Node node, Flag flag, bool on)
{
    if (on)
        m_nodes[node].flags |= flag;
    else
        m_nodes[node].flags &= ~quint32(flag) & 7u;
}

void RowTree::clearFlag(Flag flag)
{
    for (Data& data : m_nodes)
        data.flags &= ~quint32(flag) & 7u;
}

} // namespace kyr::panel
