#pragma once

#include <panel/rows/mirror_observer.h>
#include <panel/rows/scene_reader.h>

#include <QDeadlineTimer>
#include <QHash>
#include <QItemSelection>
#include <QObject>
#include <QPersistentModelIndex>
#include <QPointer>

#include <memory>
#include <optional>
#include <vector>

namespace kyr::panel {

/// The rows of a scene that were ever read, in its own order, with what the user made of them:
/// which are open, selected, or closed among what a filter found. The only one that follows the
/// scene's item model; what is noted here outlives every way of showing it.
///
/// Rows below a row that was never opened cost nothing, except that a selected row is always read.
/// Opening and marking signal nothing. Neither model nor observer is owned.
class SceneMirror : public QObject
{
    Q_OBJECT

public:
    using Node = RowTree::Node;

    explicit SceneMirror(IMirrorObserver& observer) : m_observer(observer) {}

    QAbstractItemModel* model() const { return m_model; }
    void setModel(QAbstractItemModel* model);
    /// Whether rows that come are read with all that is below them.
    void setReadsBranches(bool on) { m_readsBranches = on; }
    /// Another one whenever rows come, go or move.
    int version() const { return m_version; }
    bool isChanging() const { return m_change.kind != Change::Nothing; }

    const RowTree& rows() const { return m_rows; }
    /// O(log n) at any depth, for every sixteenth level of a deep branch is remembered.
    QModelIndex indexOf(Node node) const;
    /// None for a row that was never read.
    Node nodeOf(const QModelIndex& index) const;
    /// The same, but reads what leads to the row.
    Node read(const QModelIndex& index);
    /// From the first row on; at its end if there is none.
    RowWalk walk() const;

    /// Reads the children of a row. Those that wish to be open are read with theirs.
    void readChildren(Node node);
    /// Reads every row there is, in parts; true when all are.
    bool readAll(const QDeadlineTimer& deadline);

    void setExpanded(Node node, bool on) { m_rows.setExpanded(node, on); }
    /// Opens or closes all that is below a row, which is closed itself.
    void setBranchExpanded(Node node, bool on);
    void setAllExpanded(bool on);
    void setClosedWhileFound(Node node, bool on);
    void forgetFound();
    /// Tells the scene how a row stands, through its role "expanded".
    void writeBack(Node node);
    /// The same for all rows, in parts; true when all are told.
    bool writeAllBack(const QDeadlineTimer& deadline);

    /// Marks rows of the scene and appends those that were marked otherwise.
    void mark(const QItemSelection& ranges, bool selected, std::vector<Node>& changed);
    void clearMarks();

private:
    /// A change between its two signals.
    struct Change
    {
        enum Kind
        {
            Nothing,
            Insert,
            Remove,
            Move,
            Layout,
            Reset,
        };
        Kind kind = Nothing;
        Node from = RowTree::none;
        Node to = RowTree::none;
        int order = 0;
        int count = 0;
        int target = 0;
        bool known = false; ///< Of rows that are read.
    };

    void connectModel();
    void start(const FreshRows::StartOf& startOf);
    Node find(const QModelIndex& index, bool reads);
    void remember(Node node, const QModelIndex& index) const;
    void forget(const std::vector<Node>& rows) const;
    void forgetIndexes() const;
    std::vector<Node> readRows(const QModelIndex& parent, quint32 parentFlags, int first, int last,
                               int depth) const;
    FreshRows::StartOf wishes() const;
    FreshRows::StartOf allBelow() const;
    void readBranch(Node node);
    /// Whether the children of a row are read; gives the row, none for the root.
    bool knowsChildren(const QModelIndex& parent, Node& node);

    void beginInsertion(const QModelIndex& parent, int first, int last);
    void endInsertion(const QModelIndex& parent, int first, int last);
    void beginRemoval(const QModelIndex& parent, int first, int last);
    void endRemoval(const QModelIndex& parent);
    void beginMove(const QModelIndex& from, int first, int last, const QModelIndex& to, int target);
    void endMove(const QModelIndex& from, const QModelIndex& to, int target);
    void beginLayoutChange();
    void endLayoutChange();
    void beginReset();
    void endReset();
    void begin(Change::Kind kind);
    void end(Change::Kind kind);

    IMirrorObserver& m_observer;
    QPointer<QAbstractItemModel> m_model;
    mutable RowTree m_rows;
    bool m_readsBranches = false;
    int m_version = 0;
    int m_expandedRole = -1;
    bool m_anyClosedWhileFound = false;
    Change m_change;
    std::vector<std::pair<QPersistentModelIndex, quint32>> m_states;
    std::unique_ptr<BranchReader> m_reader;
    int m_toWriteBack = 0; ///< The order of the next row that the scene is to be told of.
    // Indexes that stay good until rows come, go or move.
    mutable Node m_lastParent = RowTree::none;
    mutable QModelIndex m_lastParentIndex;
    mutable QHash<Node, QModelIndex> m_indexes;
    mutable QHash<QModelIndex, Node> m_nodes;
};

} // namespace kyr::panel
