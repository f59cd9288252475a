#pragma once

#include <panel/rows/row_tree.h>

#include <QItemSelection>
#include <QPersistentModelIndex>

#include <functional>
#include <optional>

namespace kyr::panel {

/// The rows of a tree model that have been shown once, with their expansion and selection marks.
///
/// The rows below an expanded row stand in its own sequence; a collapsed row keeps the sequence of
/// its descendants, if they were ever read. Knows where rows are and reads fresh ones; signals
/// nothing and follows nothing, its owner does both.
class SourceRows
{
public:
    using Node = RowTree::Node;

    /// Where the children of a row are: in the sequence that `owner` hides, or in the visible one.
    struct Family
    {
        Node owner = RowTree::none;
        Node parent = RowTree::none; ///< `owner` itself for the top rows of that sequence.

        bool isVisible() const { return owner == RowTree::none; }
    };
    /// What a fresh row starts with.
    struct Start
    {
        quint32 flags = 0;
        bool keepsHidden = false; ///< Collapsed, but rows below it have a state to keep.
    };
    using StartOf = std::function<Start(const QModelIndex& sourceIndex, quint32 parentFlags)>;

    QAbstractItemModel* source() const { return m_source; }
    void setSource(QAbstractItemModel* source, int wishRole);
    /// Reads all anew; `flags` are those of the invisible root.
    void rebuild(const StartOf& startOf, quint32 flags);
    /// No rows, and these flags of the invisible root.
    void reset(quint32 flags);

    const RowTree& tree() const { return m_tree; }
    RowTree& tree() { return m_tree; }
    Node root() const { return m_root; }
    quint32 rootFlags() const { return m_rootFlags; }
    Node sequence(Node owner) const
    {
        return owner == RowTree::none ? m_root : m_tree.hidden(owner);
    }
    int count() const { return m_tree.count(m_root); }

    Node childOf(const Family& family, int number) const;
    /// Where a child with this number is, or would go, in the sequence of its family.
    int rowOfChild(const Family& family, int number) const;
    int childDepth(const Family& family) const;
    /// The row of the sequence `root` that follows the branch of `node`.
    int rowAfterBranch(Node node, Node root) const;
    Node nodeOf(const QModelIndex& sourceIndex) const;
    QModelIndex indexOf(Node visibleNode) const;

    /// The family of the children of `sourceParent`; nothing when they were never read.
    std::optional<Family> familyOf(const QModelIndex& sourceParent) const;
    /// Reads what is missing; nothing only for an index that the source does not have.
    std::optional<Family> readFamilyOf(const QModelIndex& sourceParent);

    /// Whether children of the row that are read now start collapsed.
    bool ignoresWishes(const QModelIndex& sourceParent) const;
    /// Every row as the source's "expanded" role wishes.
    StartOf wishes() const;
    /// Every row that has children expanded.
    StartOf allExpanded() const;
    Node readRows(const QModelIndex& parent, quint32 parentFlags, int first, int last, int depth,
                  const StartOf& startOf);
    Node readChildren(const QModelIndex& parent, quint32 parentFlags, int depth,
                      const StartOf& startOf);
    void insert(Node owner, int row, Node block);
    Node cut(Node owner, int first, int count);

    /// Marks the known rows of the ranges and appends those that changed.
    void mark(const QItemSelection& ranges, bool selected, std::vector<Node>& changed);
    void markNode(Node node, bool selected, std::vector<Node>& changed);
    void clearMarks();
    /// Marks only direct children of `parent`.
    void markChildren(const QItemSelection& ranges, const QModelIndex& parent);

private:
    void setSequence(Node owner, Node root);
    void markRange(const QItemSelectionRange& range, bool selected, std::vector<Node>& changed);

    RowTree m_tree;
    QAbstractItemModel* m_source = nullptr;
    int m_wishRole = -1;
    Node m_root = RowTree::none;
    quint32 m_rootFlags = 0;
};

} // namespace kyr::panel
