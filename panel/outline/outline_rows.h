#pragma once

#include <panel/arrangement/arrangement_pass.h>
#include <panel/kyr_scene_outline_panel_export.h>
#include <panel/rows/scene_mirror.h>

#include <QAbstractListModel>
#include <QItemSelectionModel>

#include <functional>
#include <limits>
#include <memory>
#include <optional>

namespace kyr::panel {

/// The rows of a scene that show, as one list: what they are and where they stand.
///
/// Shows column 0 of any QAbstractItemModel and serves its roles by their names, plus those of
/// `Role`. Indexes that it gives and takes are the scene's own; rows of groups have none.
///
/// Cost: O(log n) a row, whatever its depth. An index far down costs its depth once after rows have
/// come or gone.
class KYR_SCENE_OUTLINE_PANEL_EXPORT OutlineRows : public QAbstractListModel
{
    Q_OBJECT
    Q_PROPERTY(int count READ count NOTIFY countChanged)
    /// Role numbers of the scene; what each row has for them is its "cells".
    Q_PROPERTY(QList<int> cellRoles READ cellRoles WRITE setCellRoles NOTIFY cellRolesChanged)
    /// Whether the rows of an arrangement show, and not the scene as it is.
    Q_PROPERTY(bool arranged READ isArranged NOTIFY rearranged)

public:
    /// Out of the way of the scene's own roles; a scene role of the same name is hidden.
    enum Role
    {
        DepthRole = 0x10000,
        HasChildrenRole,
        ExpandedRole,
        SelectedRole,
        CurrentRole,
        SourceIndexRole,
        /// False for rows that show only because a row below them was found.
        MatchesRole,
        /// The values of `cellRoles`, as a list.
        CellsRole,
        /// How many selected rows a closed row hides, and whether the row under the pointer is
        /// one of those that it hides.
        HiddenSelectedRole,
        HiddenHoveredRole,
    };

    QAbstractItemModel* sourceModel() const { return m_mirror.model(); }
    QItemSelectionModel* selectionModel() const { return m_selection; }
    int count() const { return std::min(rows().shownCount(), m_countLimit); }
    bool isArranged() const { return m_arranged != nullptr; }
    QList<int> cellRoles() const { return m_cellRoles; }
    void setCellRoles(const QList<int>& roles);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QHash<int, QByteArray> roleNames() const override { return m_roleNames; }
    /// The scene's number of a role, -1 when it has none of that name.
    Q_INVOKABLE int sourceRole(const QByteArray& name) const { return m_roleNames.key(name, -1); }

    /// Invalid for rows of groups.
    Q_INVOKABLE QModelIndex sourceIndex(int row) const;
    /// -1 when the row is below a closed one or filtered out.
    Q_INVOKABLE int rowOf(const QModelIndex& sourceIndex) const;
    /// The row, or that of its nearest visible ancestor.
    Q_INVOKABLE int nearestRow(const QModelIndex& sourceIndex) const;
    Q_INVOKABLE int parentRow(int row) const;
    Q_INVOKABLE int rowDepth(int row) const { return data(index(row), DepthRole).toInt(); }
    Q_INVOKABLE bool rowHasChildren(int row) const;
    Q_INVOKABLE bool isRowExpanded(int row) const { return isOpen(nodeAt(row)); }
    Q_INVOKABLE bool isRowSelected(int row) const;
    Q_INVOKABLE bool isGroup(int row) const { return isGroupNode(nodeAt(row)); }
    /// How many rows of the scene that were read so far stand before this one.
    int sceneOrder(const QModelIndex& sourceIndex) const;
    /// The selection model's current row, unless a group has the focus.
    int currentRow() const;

    /// Rows `first` to `last` of the list as ranges of the scene, one for each run of siblings,
    /// from top to bottom.
    QItemSelection sourceSelection(int first, int last) const;
    /// The same of all rows that a filter accepts, below closed ones too.
    QItemSelection matchingSelection() const;
    /// Calls `visitor(row, index)` with the scene's index from row `first` to `last` until it
    /// returns false; groups have none. The visitor may not change the list.
    void visit(int first, int last,
               const std::function<bool(int, const QModelIndex&)>& visitor) const;

    /// Memory of the rows that were read so far.
    std::size_t bytesUsed() const;

Q_SIGNALS:
    void countChanged();
    void cellRolesChanged();
    void aboutToRearrange();
    void rearranged();

protected:
    using Node = RowTree::Node;

    explicit OutlineRows(QObject* parent);
    ~OutlineRows() override;

    const RowMarks& marks() const { return m_mirror.marks(); }
    const RowTree& rows() const { return m_arranged ? *m_arranged : m_mirror.rows(); }
    /// None for a row that is filtered out.
    Node shown(Node node) const { return rows().contains(node) ? node : RowTree::none; }
    Node nodeAt(int row) const;
    Node currentNode() const;
    bool isGroupNode(Node node) const { return marks().has(node, RowMarks::Group); }
    bool matches(Node node) const { return !m_arranged || !marks().has(node, RowMarks::Leads); }
    bool isParent(Node node) const;
    bool isOpen(Node node) const;
    /// Whether the rows that show are open where the scene's are.
    bool followsScene() const { return !m_rules || m_rules->followsScene(); }
    int limited(int row) const { return row < count() ? row : -1; }
    void readRoles();

    /// The row of a node, or that of the closed one that hides it, says that it has changed.
    void rowChanged(Node node, const QVector<int>& roles);
    void allChanged(const QVector<int>& roles = {});
    // The list tells of each change before it is made, and `endAnnounced` once it is.
    void announceInsertion(int first, int count);
    void announceRemoval(int first, int count);
    void announceMove(int first, int count, int target);
    void endAnnounced();
    /// What changes until `endReset` comes as one.
    void beginReset();
    void endReset();
    bool isResetting() const { return m_announced == Announced::Reset; }

    SceneMirror m_mirror;
    std::optional<ArrangementRules> m_rules; ///< Those of the rows that show.
    std::unique_ptr<RowTree> m_arranged;     ///< Null while the scene shows as it is.
    /// Rows that show while others replace them.
    int m_countLimit = std::numeric_limits<int>::max();
    QPointer<QItemSelectionModel> m_selection;
    Node m_focusedGroup = RowTree::none;
    std::vector<Node> m_hovered;
    int m_hoverRole = -1;
    int m_countRole = -1;
    mutable int m_indexedRow = -1; ///< Its index is known; -1 after each change.

private:
    enum class Announced
    {
        Nothing,
        Insert,
        Remove,
        Move,
        Reset,
    };

    QVariant groupData(Node group, int role) const;
    bool hidesHovered(Node node) const;

    Announced m_announced = Announced::Nothing;
    QHash<int, QByteArray> m_roleNames;
    QList<int> m_cellRoles;
    mutable QModelIndex m_rowIndex;
};

} // namespace kyr::panel
