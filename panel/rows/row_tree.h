#pragma once

#include <panel/rows/row_marks.h>

#include <utility>
#include <vector>

namespace kyr::panel {

/// Rows in display order, parents before their children, in one order-statistic tree of 44 bytes a
/// row.
///
/// A row knows its depth and how many closed rows are above it; a row with none is *shown*. Parent,
/// children and sibling numbers follow from depths: the children of a row are the rows one deeper
/// between it and the next row that is not deeper than itself, so no row keeps a list that many
/// siblings would have to be scanned in. Numbers of shown rows are called rows, numbers over all of
/// them orders. Every operation is O(log n) unless it says otherwise, whatever the depth.
///
/// Several trees can have the same rows, by the same numbers and with the same marks, in orders of
/// their own. A *block* is rows taken out or not yet put in, named by the root of its search tree:
/// branches of siblings.
class RowTree
{
public:
    using Node = RowMarks::Node;
    static constexpr Node none = RowMarks::none;

    struct Row
    {
        Node node = none;
        int depth = 0;
        bool operator==(const Row& other) const
        {
            return node == other.node && depth == other.depth;
        }
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
    struct Range
    {
        int first = 0;
        int end = 0;
        int count() const { return end - first; }
    };

    /// `closedBy` says which rows hide those below them. The marks are not owned.
    explicit RowTree(RowMarks& marks, RowMarks::Mark closedBy = RowMarks::Closed)
        : m_marks(marks), m_closedBy(closedBy), m_nodes(1)
    {}

    /// Makes a block of rows in display order. O(k).
    Node build(const std::vector<Row>& rows);
    /// Shows these rows and no others. O(n).
    void rebuild(const std::vector<Row>& rows);
    void insert(int order, Node block, Node parent);
    Node cut(Range orders);
    /// Of a block that is not put in again. O(k).
    std::vector<Row> takeApart(Node block);
    /// In display order. O(k).
    std::vector<Row> rowsOf(Node block) const;
    std::vector<Row> allRows() const { return rowsOf(m_root); }

    bool contains(Node node) const { return node < m_nodes.size() && m_nodes[node].size > 0; }
    int size() const { return int(m_nodes[m_root].size); }
    int shownCount() const { return shownIn(m_root); }
    Node at(int row) const;
    Node atOrder(int order) const;
    Position position(Node node) const;
    int order(Node node) const { return position(node).order; }
    /// -1 below a closed row, and for none.
    int row(Node node) const;
    /// That of the row itself or of the closed one that hides it.
    int nearestRow(Node node) const;
    /// The shown rows among these.
    Range rowsIn(Range orders) const { return {rowsBefore(orders.first), rowsBefore(orders.end)}; }
    int rowsBefore(int order) const;
    Node next(Node node) const;

    /// The child with the given number, none if there are not that many; `parent` may be none.
    Node child(Node parent, int number) const;
    Place place(Node node) const;
    Node parent(Node node) const { return place(node).parent; }
    /// The first row after the descendants of `node`; none when they are the last.
    Node afterBranch(Node node) const;
    /// The orders of the row's descendants; of all rows for none.
    Range below(Node node) const;
    /// The order of the first row after them.
    int branchEnd(Node node) const;
    /// Where the child with the number is or would go.
    int orderOfChild(Node parent, int number) const;
    bool hasBranch(Node node) const;

    int depth(Node node) const { return int(m_nodes[node].depth); }
    int childDepth(Node parent) const { return parent == none ? 0 : depth(parent) + 1; }
    /// Moves a block to another depth. O(k).
    void shiftDepth(Node block, int delta);

    RowMarks::Mark closedBy() const { return m_closedBy; }
    bool isOpen(Node node) const { return !m_marks.has(node, m_closedBy); }
    bool showsChildren(Node parent) const;
    /// How many of these rows show if all above them are open.
    int countIfShown(Range orders) const;
    /// The same of a block.
    int countIfShown(Node block) const { return int(m_nodes[block].lowest); }
    /// The descendants of a row have come to show or are hidden as the row's mark has changed.
    void opened(Node node, Range below, bool on);
    /// Opens the rows below this one that have some below, or closes all. O(k).
    void setBranchOpen(Node node, bool on);
    /// The same of all rows, faster. O(n).
    void setAllOpen(bool on);

    /// The mark of these rows has changed. O(k log n), and O(1) for a large part of all.
    void selected(const std::vector<Node>& rows, bool on);
    /// The marks of any rows have changed.
    void countSelectedAnew() { m_countsSelected = false; }
    /// How many selected rows are among these. Counts all of them after a change of many: O(n).
    int selectedIn(Range orders) const;

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
        quint32 depth = 0;
        quint32 minDepth = ~0u; ///< Over the node and both its subtrees.
        quint32 minCount = 0;   ///< How many of these rows have that depth.
        qint32 shift = 0;
        qint32 closed = 0;
        quint32 lowest = 0;   ///< How many rows have the lowest number of closed rows above.
        quint32 selected = 0; ///< Of all in the subtree, while they are counted.
    };

    void update(Node node);
    void push(Node node);
    Node build(const Row* rows, std::size_t count);
    std::pair<Node, Node> split(Node root, int order);
    Node join(Node front, Node back);
    Node& stepDown(Node node, int& order);
    void put(Node& place, Node subtree, Node above);
    void shiftClosed(Node node, int first, int last, int delta);
    std::pair<int, int> lowestIn(Node node, int first, int last) const;
    // On the way down it is a guess which child comes next; both come from memory at once then.
    void prefetch(Node node) const { __builtin_prefetch(&m_nodes[node]); }
    int shownIn(Node node) const
    {
        return m_nodes[node].shift == 0 ? int(m_nodes[node].lowest) : 0;
    }
    quint32 countSelected(Node node) const;
    int selectedBefore(int order) const;
    Node first(Node root) const;
    Node upFrom(Node node, Node Data::*side) const;
    Node findChild(Node root, quint32 depth, quint32 number) const;
    quint32 random(quint32 bound);

    RowMarks& m_marks;
    const RowMarks::Mark m_closedBy;
    mutable std::vector<Data> m_nodes; ///< The first stands for "none": no rows, infinitely deep.
    Node m_root = none;
    mutable bool m_countsSelected = true;
    quint32 m_random = 2463534242u;
};

} // namespace kyr::panel
