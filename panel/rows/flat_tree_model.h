#pragma once

#include <panel/arrangement/arranged_tree_model.h>
#include <panel/rows/expansion_memory.h>
#include <panel/rows/rows_replacement.h>
#include <panel/rows/source_rows.h>

#include <panel/kyr_scene_outline_panel_export.h>

#include <QAbstractListModel>
#include <QItemSelectionModel>
#include <QPointer>

#include <algorithm>
#include <limits>

namespace kyr::panel {

/// The rows of a tree model that its expanded rows let see, as one list for a ListView.
///
/// Shows column 0 of any QAbstractItemModel and serves its roles by their names, plus those of
/// `Role`. A row starts expanded when the source's "expanded" role says so; from then on the list
/// keeps the state itself, through insertions, removals, moves and layout changes. Rows below a row
/// that was never expanded cost nothing. Neither the source nor the selection model is owned.
///
/// The source may be an `ArrangedTreeModel`. Indexes that the list gives and takes, the selection
/// and the current row then are those of the model that it arranges, the origin; rows of groups
/// have none. Expansion is kept by rows of the origin, from one arrangement to the next. Another
/// arrangement of the same origin comes as rows added or taken away at the end, and all others
/// changed, between `aboutToRearrange` and `rearranged`: a view keeps its delegates.
///
/// Cost: O(log n) for a row number and O(depth · log n) for a source index, either way; changes
/// cost as much as the rows they show or hide. `expandAll`, `collapseAll` and a large branch come
/// as one model reset, all else as exact row signals.
///
/// A slot that runs between the "about to" and the "done" half of a change may read but not expand.
class KYR_SCENE_OUTLINE_PANEL_EXPORT FlatTreeModel : public QAbstractListModel
{
    Q_OBJECT
    Q_PROPERTY(QAbstractItemModel* sourceModel READ sourceModel WRITE setSourceModel NOTIFY
                   sourceModelChanged)
    Q_PROPERTY(QItemSelectionModel* selectionModel READ selectionModel WRITE setSelectionModel
                   NOTIFY selectionModelChanged)
    Q_PROPERTY(int count READ count NOTIFY countChanged)
    /// Role numbers of the source; what each row has for them is its "cells".
    Q_PROPERTY(QList<int> cellRoles READ cellRoles WRITE setCellRoles NOTIFY cellRolesChanged)

public:
    /// Out of the way of the source's own roles; a source role of the same name is hidden.
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
    };

    explicit FlatTreeModel(QObject* parent = nullptr);
    ~FlatTreeModel() override;

    QAbstractItemModel* sourceModel() const { return m_source; }
    void setSourceModel(QAbstractItemModel* source);
    /// Makes ready for `setSourceModel`, which then takes no time; works until all is done, which
    /// makes it return true, or the time is up.
    bool prepare(QAbstractItemModel* source, const QDeadlineTimer& deadline);
    void cancelPreparation();
    QItemSelectionModel* selectionModel() const { return m_selectionModel; }
    void setSelectionModel(QItemSelectionModel* selectionModel);

    QAbstractItemModel* origin() const { return m_origin; }
    QList<int> cellRoles() const { return m_cellRoles; }
    void setCellRoles(const QList<int>& roles);

    int count() const { return std::min(m_rows.count(), m_countLimit); }
    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QHash<int, QByteArray> roleNames() const override;
    bool canFetchMore(const QModelIndex& parent) const override;
    void fetchMore(const QModelIndex& parent) override;
    /// The source's number of a role, -1 when it has none of that name.
    Q_INVOKABLE int sourceRole(const QByteArray& name) const;

    /// Invalid for rows of groups.
    Q_INVOKABLE QModelIndex sourceIndex(int row) const;
    /// -1 when the row is below a collapsed one or filtered out.
    Q_INVOKABLE int rowOf(const QModelIndex& sourceIndex) const;
    /// The row, or that of its nearest visible ancestor.
    Q_INVOKABLE int nearestRow(const QModelIndex& sourceIndex) const;
    Q_INVOKABLE int parentRow(int row) const;
    Q_INVOKABLE int rowDepth(int row) const;
    Q_INVOKABLE bool rowHasChildren(int row) const;
    Q_INVOKABLE bool isRowExpanded(int row) const;
    Q_INVOKABLE bool isRowSelected(int row) const;
    Q_INVOKABLE bool isGroup(int row) const;
    /// The selection model's current row, unless a group has the focus.
    int currentRow() const;
    void setCurrentRow(int row);

    Q_INVOKABLE void setRowExpanded(int row, bool expanded);
    Q_INVOKABLE void setRowBranchExpanded(int row, bool expanded);
    /// Works for hidden rows too; their state shows when they do.
    Q_INVOKABLE void setExpanded(const QModelIndex& sourceIndex, bool expanded);
    Q_INVOKABLE void setBranchExpanded(const QModelIndex& sourceIndex, bool expanded);
    Q_INVOKABLE void expandAll();
    Q_INVOKABLE void collapseAll();
    /// What a filter finds next shows open, whatever was closed among what it found last.
    void forgetFound();
    /// Expands what hides the row and returns its number, -1 for an index of another model or a
    /// row that is filtered out.
    Q_INVOKABLE int reveal(const QModelIndex& sourceIndex);

    /// Cells `first` to `last` of the list as source ranges, one for each run of siblings, from top
    /// to bottom. O(k log n).
    QItemSelection sourceSelection(int first, int last) const;
    /// Calls `visitor(row, index)` with the source's own index from row `first` to `last` until it
    /// returns false. The visitor may not change the list. O(1) a row.
    void visit(int first, int last,
               const std::function<bool(int, const QModelIndex&)>& visitor) const;
    /// Selected rows, and how many of them a filter hides. O(selected rows).
    Q_INVOKABLE int selectionCount() const;
    Q_INVOKABLE int hiddenSelectionCount() const;

    /// Memory of the rows that were read so far.
    std::size_t bytesUsed() const { return m_rows.tree().bytesUsed(); }

Q_SIGNALS:
    void sourceModelChanged();
    void aboutToRearrange();
    void rearranged();
    void selectionModelChanged();
    void countChanged();
    void cellRolesChanged();

private:
    using Node = SourceRows::Node;
    using Family = SourceRows::Family;

    enum class Change
    {
        None,
        Own,
        Insert,
        Remove,
        Move,
        Layout,
        Reset
    };
    /// A change between its two signals.
    struct Pending
    {
        Change source = Change::None;
        Change list = Change::None; ///< What the list has announced of it.
        std::optional<Family> from;
        std::optional<Family> to;
        int first = 0; ///< In the sequence of `from`.
        int count = 0;
        int target = 0; ///< In the sequence of `to`.
        int sourceFirst = 0;
    };
    struct DelayedMarks
    {
        QItemSelection ranges;
        bool selected = false;
    };
    struct SavedRow
    {
        QPersistentModelIndex index;
        SourceRows::Start start;
    };

    void readRoles();
    void connectSource();

    // Indexes of the source are called shown here, to tell them from those of the origin.
    static QAbstractItemModel* originOf(QAbstractItemModel* source);
    QModelIndex toOrigin(const QModelIndex& shown) const;
    QModelIndex toShown(const QModelIndex& origin) const;
    QModelIndex shownIndex(int row) const;
    int rowOfShown(const QModelIndex& shown) const;
    void rowChanged(const QModelIndex& shown, const QVector<int>& roles);
    void setSource(QAbstractItemModel* source);
    void rearrange(QAbstractItemModel* source);
    void takeReplacement();
    void dropPreparation();

    std::optional<Family> readFamilyOf(const QModelIndex& shownParent);
    void setShownExpanded(const QModelIndex& shown, bool expanded);
    void setShownBranchExpanded(const QModelIndex& shown, bool expanded);
    void expandRow(const Family& family, Node node, const QModelIndex& shown);
    void collapseRow(const Family& family, Node node, const QModelIndex& shown, bool forget);
    void expandBranch(const QModelIndex& shown);

    // Following the source: a begin for each "about to" signal, an end for each "done".
    void beginInsertion(const QModelIndex& parent, int first, int last);
    void endInsertion(const QModelIndex& parent);
    void beginRemoval(const QModelIndex& parent, int first, int last);
    void endRemoval(const QModelIndex& parent);
    void beginMove(const QModelIndex& from, int first, int last, const QModelIndex& to, int target);
    void endMove(const QModelIndex& from, const QModelIndex& to, int target);
    void beginLayoutChange();
    void endLayoutChange();
    void beginReset();
    void endReset();
    void forwardDataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight,
                            const QVector<int>& roles);
    void announceRemoval();
    void announceMove();
    void saveStates();
    void finish();

    // Selection marks
    void connectSelection();
    void readSelection(const QModelIndex& childrenOf = {});
    void mark(const QItemSelection& ranges, bool selected, std::vector<Node>& changed);
    void changeSelection(const QItemSelection& selected, const QItemSelection& deselected);
    void changeCurrent(const QModelIndex& current, const QModelIndex& previous);
    void signalMarks(const std::vector<Node>& changed);

    SourceRows m_rows;
    QPointer<QAbstractItemModel> m_source;
    QPointer<ArrangedTreeModel> m_arranged; ///< The source, if it is one.
    QPointer<QAbstractItemModel> m_origin;
    ExpansionMemory m_memory;
    std::unique_ptr<RowsReplacement> m_replacement;
    int m_preparationsLost = 0;
    QPointer<QItemSelectionModel> m_selectionModel;
    QPersistentModelIndex m_focusedGroup;
    QHash<int, QByteArray> m_roleNames;
    QList<int> m_cellRoles;
    Pending m_pending;
    std::vector<DelayedMarks> m_delayedMarks;
    bool m_currentDelayed = false;
    std::vector<SavedRow> m_savedRows;
    std::vector<std::pair<QModelIndex, QPersistentModelIndex>> m_savedOwnIndexes;
    int m_countLimit =
        std::numeric_limits<int>::max(); ///< Rows that show while others replace them.
    mutable int m_cachedRow = -1;
    mutable QModelIndex m_cachedIndex;
};

} // namespace kyr::panel
