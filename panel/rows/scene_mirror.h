#pragma once

#include <panel/kyr_scene_outline_panel_export.h>
#include <panel/rows/scene_reader.h>

#include <QDeadlineTimer>
#include <QItemSelection>
#include <QObject>
#include <QPersistentModelIndex>
#include <QPointer>

#include <array>
#include <memory>
#include <optional>

namespace kyr::panel {

/// What happens to the rows of a scene that are read.
struct SceneChange
{
    enum Kind
    {
        Unseen, ///< Of rows that were never read.
        Insert,
        Remove,
        Move,
        Reset, ///< Of all rows, a new order among them.
    };
    Kind kind = Unseen;
    /// The rows above, none for the root and those that are not read.
    RowTree::Node from = RowTree::none;
    RowTree::Node to = RowTree::none;
    RowTree::Range orders;              ///< Where the rows are, or where they come.
    int target = 0;                     ///< Where rows go that move, as orders were before.
    std::vector<RowTree::Node> wishing; ///< Rows that have come and would like to be open.
};

/// The rows of a scene that were ever read, in its own order, with what the user made of them:
/// which are open, selected, or closed among what a filter found. The only one that follows the
/// scene's item model; what is noted here outlives every way of showing it.
///
/// Rows below a row that was never opened cost nothing, except that a selected row is always read.
/// The model is not owned.
class KYR_SCENE_OUTLINE_PANEL_EXPORT SceneMirror : public QObject
{
    Q_OBJECT

public:
    using Node = RowTree::Node;

    QAbstractItemModel* model() const { return m_model; }
    void setModel(QAbstractItemModel* model);
    /// Whether rows that come are read with all that is below them.
    void setReadsBranches(bool on) { m_readsBranches = on; }
    /// Another one whenever rows come, go or move.
    int version() const { return m_version; }
    bool isChanging() const { return m_change.has_value(); }

    const RowTree& rows() const { return m_rows; }
    RowMarks& marks() { return m_marks; }
    const RowMarks& marks() const { return m_marks; }
    /// O(log n) at any depth, for every sixteenth level of a deep branch is remembered.
    QModelIndex indexOf(Node node) const;
    /// None for a row that was never read.
    Node nodeOf(const QModelIndex& index) const;
    /// The same, but reads what leads to the row.
    Node read(const QModelIndex& index);
    /// From the first row on; at its end if there is none.
    RowWalk walk() const;
    /// A row for all of a type, which is not among those of the scene.
    Node group(const QString& type);
    QString type(Node group) const { return m_types.value(group); }

    /// Reads the children of a row. Those that wish to be open are read with theirs.
    void readChildren(Node node);
    /// Reads every row there is, in parts; true when all are.
    bool readAll(const QDeadlineTimer& deadline);

    /// `below` are the orders of the row's descendants.
    void setOpen(Node node, RowTree::Range below, bool on);
    /// Opens or closes all that is below a row.
    void setBranchOpen(Node node, bool on);
    void setAllOpen(bool on);
    /// Tells the scene how a row stands, through its role "expanded".
    void writeBack(Node node);
    /// The same for all rows, in parts; true when all are told.
    bool writeAllBack(const QDeadlineTimer& deadline);
    void forgetClosedWhileFound();

    /// Marks rows of the scene; gives those that were marked otherwise.
    std::vector<Node> select(const QItemSelection& ranges, bool on);
    void clearSelection();

Q_SIGNALS:
    /// Before rows are changed: until `changed` they are those of before, and may be read but not
    /// opened or marked.
    void aboutToChange(const kyr::panel::SceneChange& change);
    void changed(const kyr::panel::SceneChange& change);
    void dataChanged(const QModelIndex& first, const QModelIndex& last, const QVector<int>& roles);

private:
    void connectModel();
    void start(const QHash<QModelIndex, Node>* known = nullptr);
    Node find(QModelIndex index, bool reads);
    Node child(Node parent, int number) const;
    void remember(Node node, const QModelIndex& index) const;
    void forget(Node node) const;
    void forgetLast() const;
    std::vector<RowTree::Row> readRows(const QModelIndex& parent, int first, int last, int depth,
                                       const QHash<QModelIndex, Node>* known = nullptr);
    void readBranch(Node node);

    SceneChange& begin(SceneChange::Kind kind);
    void end();
    bool knowsChildren(const QModelIndex& parent, Node& node);
    RowTree::Range children(Node parent, int first, int last) const;
    void beginInsertion(const QModelIndex& parent, int first, int last);
    void endInsertion(const QModelIndex& parent, int first, int last);
    void beginRemoval(const QModelIndex& parent, int first, int last);
    void endRemoval();
    void beginMove(const QModelIndex& from, int first, int last, const QModelIndex& to, int target);
    void endMove(int first, int last, const QModelIndex& to, int target);
    void beginLayoutChange();
    void beginReset();
    void endReset();

    QPointer<QAbstractItemModel> m_model;
    RowMarks m_marks;
    RowTree m_rows{m_marks};
    QHash<QString, Node> m_groups;
    QHash<Node, QString> m_types;
    bool m_readsBranches = false;
    int m_version = 0;
    int m_expandedRole = -1;
    std::optional<SceneChange> m_change;
    std::optional<QHash<Node, QPersistentModelIndex>> m_kept; ///< Rows that outlive a new order.
    std::unique_ptr<SceneReader> m_reader;
    int m_toWriteBack = 0; ///< The order of the next row that the scene is to be told of.
    // What was found last, good until rows come, go or move.
    mutable Node m_lastParent = RowTree::none;
    mutable QModelIndex m_lastParentIndex;
    struct Found
    {
        Node node = RowTree::none;
        RowTree::Place place;
    };
    mutable std::array<Found, 4> m_lastChildren; ///< One for some levels each.
    mutable QHash<Node, QModelIndex> m_indexes;
    mutable QHash<QModelIndex, Node> m_nodes;
};

} // namespace kyr::panel
