#pragma once

#include <QtGlobal>

#include <utility>
#include <vector>

namespace kyr::panel {

/// The rows of a tree in display order, parents before their children, in one order-statistic tree
/// of 44 bytes a row.
///
/// A row knows its depth and how many closed rows are above it; a row with none is *shown*. Parent,
/// children and sibling numbers follow from depths: the children of a row are the rows one deeper
/// between it and the next row that is not deeper than itself, so no row keeps a list that many
/// siblings would have to be scanned in. Numbers of shown rows are called rows, numbers over all of
/// them orders. Every operation is O(log n) unless it says otherwise, whatever the depth.
///
/// Nodes keep their number while rows come and go. A *block* is rows taken out or not yet put in,
/// named by the root of its search tree: branches of siblings.
class RowTree
{
public:
    using Node = quint32;
    static constexpr Node none = 0;

    enum Flag : quint32
    {
        Expanded = 1,
        Selected = 2,
        Unread = 4,            ///< Its children were never read.
        IgnoresWishes = 8,     ///< Children read later start closed, whatever the scene wishes.
        ClosedWhileFound = 16, ///< The user closed it among what a filter found.
        Leads = 32,            ///< Shows only because of rows below it.
    };

    /// A row's place below its parent; `parent` is none for top rows.
    struct Place
    {
        Node parent = none;
        int number = 0;
    };
    struct Position
    {
        int order = 0;
        int rowsAbove = 0; ///< Shown ones.
        bool shown = true;
    };

    RowTree() { clear(); }

    Node create(int depth, quint32 flags);
    void destroy(const std::vector<Node>& rows);
    void clear();
    void reserve(std::size_t rows) { m_nodes.reserve(rows + 1); }

    /// Makes a block of rows that are given in display order. O(k).
    Node build(const std::vector<Node>& rows);
    /// Shows these rows and no others. O(n).
    void rebuild(const std::vector<Node>& rows) { m_root = build(rows); }
    void insert(int order, Node block, Node parent);
    Node cut(int order, int count);
    /// In display order. O(k).
    std::vector<Node> rowsOf(Node block) const;
    std::vector<Node> allRows() const { return rowsOf(m_root); }

    int size() const { return int(m_nodes[m_root].size); }
    int shownCount() const { return shownIn(m_root); }
    /// How many rows, in blocks too, have children that were never read.
    int unreadCount() const { return m_unread; }
    Node at(int row) const;
    Node atOrder(int order) const;
    Position position(Node node) const;
    int order(Node node) const { return position(node).order; }
    /// -1 below a closed row.
    int row(Node node) const;
    /// That of the row itself or of the closed one that hides it.
    int nearestRow(Node node) const;
    /// How many shown rows come before an order.
    int rowsBefore(int order) const;
    Node next(Node node) const;

    /// The child with the given number, none if there are not that many; `parent` may be none.
    Node child(Node parent, int number) const;
    Place place(Node node) const;
    /// The first row after the descendants of `node`; none when they are the last.
    Node afterBranch(Node node) const;
    /// The order of that row.
    int branchEnd(Node node) const;
    /// Where the child with the number is or would go.
    int orderOfChild(Node parent, int number) const;
    bool hasBranch(Node node) const;

    int depth(Node node) const { return int(m_nodes[node].depth); }
    int childDepth(Node parent) const { return parent == none ? 0 : depth(parent) + 1; }
    bool showsChildren(Node parent) const;
    /// Moves a block to another depth. O(k).
    void shiftDepth(Node block, int delta);
    bool has(Node node, Flag flag) const { return (m_nodes[node].flags & flag) != 0; }
    quint32 flags(Node node) const { return m_nodes[node].flags; }
    /// For `Expanded` and `Selected` only before the row is built into a block.
    void set(Node node, Flag flag, bool on);
    void setExpanded(Node node, bool on);
    /// Opens rows that have some below, or closes rows, below a closed one. O(k).
    void setBranchExpanded(Node node, bool on);
    void setAllExpanded(bool on);
    /// How many rows would show if a closed row that shows were open.
    int countToOpen(Node node) const;
    /// How many rows of these branches would show below an open parent.
    int countIfShown(int order, int count) const;
    /// How many rows of a block show where their parent is open.
    int shownInBlock(Node block) const { return int(m_nodes[block].lowest); }
    /// Marks rows that are not marked so. O(k log n), and no more than O(n).
    void mark(const std::vector<Node>& rows, bool selected);

    int selectedCount() const { return int(m_nodes[m_root].selected); }
    int selectedBelow(Node node) const;

    std::size_t bytesUsed() const { return m_nodes.capacity() * sizeof(Data); }

private:
    // Closed rows above are counted relative to the search tree: a subtree's rows all have `shift`
    // more than is written in it, which opens and closes a branch in O(log n). Among the numbers
    // that are written in a subtree the lowest is always 0.
    struct Data
    {
        Node left = none;
        Node right = none;
        Node up = none;
        quint32 size = 0;
        quint32 depth : 26;
        quint32 flags : 6;
        quint32 minDepth = ~0u; ///< Over the node and both its subtrees.
        quint32 minCount = 0;   ///< How many of these rows have that depth.
        qint32 shift = 0;
        qint32 closed = 0;
        quint32 lowest = 0;   ///< How many rows have the lowest number of closed rows above.
        quint32 selected = 0; ///< Of all in the subtree.
    };

    void update(Node node);
    void push(Node node);
    Node build(const Node* rows, std::size_t count);
    std::pair<Node, Node> split(Node root, int order);
    Node join(Node front, Node back);
    void shiftClosed(Node node, int first, int last, int delta);
    std::pair<int, int> lowestIn(Node node, int first, int last) const;
    void openOrClose(const std::vector<Node>& rows, bool on);
    int closedAbove(Node node) const;
    int closedAboveChildren(Node parent) const;
    int shownIn(Node node) const
    {
        return m_nodes[node].shift == 0 ? int(m_nodes[node].lowest) : 0;
    }
    int selectedBefore(int order) const;
    quint32 countSelected(Node node);
    Node first(Node root) const;
    Node findChild(Node root, quint32 depth, quint32 number) const;
    quint32 random(quint32 bound);

    std::vector<Data> m_nodes; ///< The first one stands for "none": no rows, infinitely deep.
    Node m_root = none;
    Node m_free = none;
    int m_unread = 0;
    quint32 m_random = 2463534242u;
};

} // namespace kyr::panel
