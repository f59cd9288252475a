#pragma once

#include <panel/kyr_scene_outline_panel_export.h>

#include <QAbstractListModel>
#include <QItemSelectionModel>

#include <functional>
#include <memory>

namespace kyr::panel {

/// The rows of a scene that the user sees, as one list for a ListView: what open rows let see,
/// filtered, sorted, flat or grouped by type as the settings say.
///
/// Shows column 0 of any QAbstractItemModel and serves its roles by their names, plus those of
/// `Role`. Indexes that it gives and takes are the scene's own; rows of groups have none. A row
/// starts open when the scene's "expanded" role says so, and that role is told what the user opens
/// and closes; a filter opens what it finds without a word. Owns neither scene nor selection nor
/// predicate.
///
/// Rows that come, go and move have exact signals. Another arrangement is worked out in slices of
/// a few milliseconds from the event loop, while the rows of before show and follow the scene, and
/// then comes as rows added or taken away at the end, and all others changed, between
/// `aboutToRearrange` and `rearranged`: a view keeps its delegates. So does a change of the scene
/// that touches very many rows of an arrangement. `expandAll`, `collapseAll` and another scene are
/// model resets.
///
/// Cost: O(log n) for each row that is touched, whatever its depth. An index far down costs its
/// depth once after rows have come or gone.
///
/// A slot that runs between the "about to" and the "done" half of a change may read but not open.
class KYR_SCENE_OUTLINE_PANEL_EXPORT OutlineModel : public QAbstractListModel
{
    Q_OBJECT
    Q_PROPERTY(QAbstractItemModel* sourceModel READ sourceModel WRITE setSourceModel NOTIFY
                   sourceModelChanged)
    Q_PROPERTY(QItemSelectionModel* selectionModel READ selectionModel WRITE setSelectionModel
                   NOTIFY selectionModelChanged)
    /// Anything with an invokable `bool accepts(QModelIndex)`, a property "active" and a signal
    /// `changed()`; null shows every row.
    Q_PROPERTY(QObject* predicate READ predicate WRITE setPredicate NOTIFY settingsChanged)
    /// "flat", "type", or "hierarchy" for all else.
    Q_PROPERTY(QString arrangement READ arrangement WRITE setArrangement NOTIFY settingsChanged)
    /// -1 keeps the scene's order.
    Q_PROPERTY(int sortRole READ sortRole WRITE setSortRole NOTIFY settingsChanged)
    Q_PROPERTY(
        bool sortDescending READ isSortDescending WRITE setSortDescending NOTIFY settingsChanged)
    /// Role numbers of the scene; what each row has for them is its "cells".
    Q_PROPERTY(QList<int> cellRoles READ cellRoles WRITE setCellRoles NOTIFY cellRolesChanged)

    Q_PROPERTY(int count READ count NOTIFY countChanged)
    /// Another arrangement is on its way.
    Q_PROPERTY(bool working READ isWorking NOTIFY workingChanged)
    /// Whether the rows of an arrangement show, and not the scene as it is.
    Q_PROPERTY(bool arranged READ isArranged NOTIFY rearranged)
    /// Rows that the filter accepts; -1 while none is set.
    Q_PROPERTY(int matchCount READ matchCount NOTIFY matchCountChanged)
    /// Selected rows, and how many of them a filter hides.
    Q_PROPERTY(int selectedCount READ selectedCount NOTIFY selectedCountChanged)
    Q_PROPERTY(int hiddenSelectedCount READ hiddenSelectedCount NOTIFY selectedCountChanged)
    /// Whether the arrangement leaves out rows that the scene has not fetched yet.
    Q_PROPERTY(bool partial READ isPartial NOTIFY partialChanged)
    Q_PROPERTY(bool fetching READ isFetching NOTIFY partialChanged)

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

    explicit OutlineModel(QObject* parent = nullptr);
    ~OutlineModel() override;

    QAbstractItemModel* sourceModel() const;
    void setSourceModel(QAbstractItemModel* source);
    QItemSelectionModel* selectionModel() const;
    void setSelectionModel(QItemSelectionModel* selectionModel);
    QObject* predicate() const;
    void setPredicate(QObject* predicate);
    QString arrangement() const;
    bool showsHierarchy() const;
    void setArrangement(const QString& arrangement);
    int sortRole() const;
    void setSortRole(int role);
    bool isSortDescending() const;
    void setSortDescending(bool descending);
    QList<int> cellRoles() const;
    void setCellRoles(const QList<int>& roles);

    int count() const;
    bool isWorking() const;
    bool isArranged() const;
    int matchCount() const;
    int selectedCount() const;
    int hiddenSelectedCount() const;
    bool isPartial() const;
    bool isFetching() const;
    /// Lets the scene fetch all that it can, in slices, until there is no more or it is stopped.
    Q_INVOKABLE void fetchAll();
    Q_INVOKABLE void stopFetching();
    /// These rows are in view: the scene fetches more below those that end near them.
    Q_INVOKABLE void showing(int first, int last);
    /// Works off at once what waits for the event loop.
    Q_INVOKABLE void finish();
    /// Does one slice of it.
    void workSlice();

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QHash<int, QByteArray> roleNames() const override;
    bool canFetchMore(const QModelIndex& parent) const override;
    void fetchMore(const QModelIndex& parent) override;
    /// The scene's number of a role, -1 when it has none of that name.
    Q_INVOKABLE int sourceRole(const QByteArray& name) const;

    /// Invalid for rows of groups.
    Q_INVOKABLE QModelIndex sourceIndex(int row) const;
    /// -1 when the row is below a closed one or filtered out.
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
    /// Opens what hides the row and returns its number, -1 for an index of another model or a row
    /// that is filtered out.
    Q_INVOKABLE int reveal(const QModelIndex& sourceIndex);

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
    void sourceModelChanged();
    void selectionModelChanged();
    void settingsChanged();
    void cellRolesChanged();
    void countChanged();
    void workingChanged();
    void aboutToRearrange();
    void rearranged();
    void matchCountChanged();
    void selectedCountChanged();
    void partialChanged();

private:
    Q_INVOKABLE void filter();

    class Core;
    const std::unique_ptr<Core> m_core;
};

} // namespace kyr::panel
