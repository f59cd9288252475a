#pragma once

#include <QtGlobal>

#include <utility>
#include <vector>

namespace kyr::panel {

/// The rows of a tree in display order, in order-statistic trees of 32 bytes a row.
///
/// A *sequence* is the rows of one part of the tree, parents before their children, named by the
/// node of its search tree's root; `none` is the empty sequence. A row knows its depth only.
/// Parent, children and sibling numbers follow from depths: the children of a row are the rows one
/// deeper between it and the next row that is not deeper than itself, so no row keeps a list that a
/// large family would have to scan. Every operation is O(log n) unless it says otherwise.
///
/// Nodes stay the same while sequences are cut and joined. A collapsed row may keep the sequence of
/// its hidden descendants.
class RowTree
{
public:
    using Node = quint32;
    static constexpr Node none = 0;

    enum Flag : quint32
    {
        Expanded = 1,
        Selected = 2,
        /// Children read later start collapsed, whatever the source model wishes.
        IgnoresWishes = 4,
    };

    /// A row's place below its parent; `parent` is none for the top rows of a sequence.
    struct Place
    {
        Node parent = none;
        int number = 0;
    };

    RowTree();

    Node create(int depth, quint32 flags);
    /// Frees the rows of a sequence and all that they hide. O(k).
    void destroy(Node root);
    void clear();

    /// Joins fresh rows, given in display order, to one balanced sequence. O(k).
    Node build(const std::vector<Node>& rows);
    std::pair<Node, Node> split(Node root, int row);
    Node join(Node front, Node back);
    /// Takes `count` rows from `first` on out of the sequence and returns them as their own.
    Node cut(Node& root, int first, int count);
    void insert(Node& root, int row, Node block);

    int count(Node root) const { return int(m_nodes[root].size); }
    Node at(Node root, int row) const;
    int row(Node node) const { return position(node).second; }
    /// The sequence that holds the row, and its number in it.
    std::pair<Node, int> position(Node node) const;
    Node next(Node node) const;
    Node first(Node root) const;

    /// The child with the given number, none if there are not that many.
    Node child(Node parent, int number) const;
    Node topRow(Node root, int number) const;
    Place place(Node node) const;
    /// The first row after the descendants of `node`; none when they end the sequence.
    Node afterBranch(Node node) const;

    int depth(Node node) const { return int(m_nodes[node].depth); }
    /// Moves a sequence and all that it hides to another depth. O(k).
    void shiftDepth(Node root, int delta);
    bool has(Node node, Flag flag) const { return (m_nodes[node].flags & flag) != 0; }
    quint32 flags(Node node) const { return m_nodes[node].flags; }
    void set(Node node, Flag flag, bool on);
    void clearFlag(Flag flag);
    Node hidden(Node node) const { return m_nodes[node].hidden; }
    void setHidden(Node node, Node sequence) { m_nodes[node].hidden = sequence; }

    std::size_t bytesUsed() const { return m_nodes.capacity() * sizeof(Data); }

private:
    struct Data
    {
        Node left = none;
        Node right = none;
        Node up = none;
        Node hidden = none;
        quint32 size = 0;
        quint32 depth : 29;
        quint32 flags : 3;
        quint32 minDepth = ~0u; ///< Over the node and both its subtrees.
        quint32 minCount = 0;   ///< How many of these rows have that depth.
    };

    void update(Node node);
    Node build(const Node* rows, std::size_t count);
    Node findChild(Node root, quint32 depth, quint32 number) const;
    quint32 random(quint32 bound);

    std::vector<Data> m_nodes; ///< The first one stands for "none": no rows, infinitely deep.
    Node m_free = none;
    quint32 m_random = 2463534242u;
};

} // namespace kyr::panel
