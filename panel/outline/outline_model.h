#pragma once

#include <panel/outline/outline_rows.h>

#include <QTimer>

namespace kyr::panel {

/// The rows of a scene that the user sees, as one list for a ListView: what open rows let see,
/// filtered, sorted, flat or grouped by type as the settings say.
///
/// A row starts open when the scene's "expanded" role says so, and that role is told what the user
/// opens and closes; a filter opens what it finds without a word. Owns neither scene nor selection
/// nor predicate.
///
/// Rows that come, go and move have exact signals. Another arrangement is worked out in slices of
/// a few milliseconds from the event loop, while the rows of before show and follow the scene, and
/// then comes as rows added or taken away at the end, and all others changed, between
/// `aboutToRearrange` and `rearranged`: a view keeps its delegates. So does a change of the scene
/// that touches very many rows of an arrangement. `expandAll`, `collapseAll`, another order of the
/// scene and another scene are model resets.
///
/// A slot that runs between the "about to" and the "done" half of a change may read but not open.
class KYR_SCENE_OUTLINE_PANEL_EXPORT OutlineModel : public OutlineRows
{
    Q_OBJECT
    Q_PROPERTY(QAbstractItemModel* sourceModel READ sourceModel WRITE setSourceModel NOTIFY
                   sourceModelChanged)
    Q_PROPERTY(QItemSelectionModel* selectionModel READ selectionModel WRITE setSelectionModel
                   NOTIFY selectionModelChanged)
    /// Anything with an invokable `bool accepts(QModelIndex)`, a property "active" and a signal
    /// `changed()`; null shows every row. A property "model" of it is told the scene.
    Q_PROPERTY(QObject* predicate READ predicate WRITE setPredicate NOTIFY settingsChanged)
    /// "flat", "type", or "hierarchy" for all else.
    Q_PROPERTY(QString arrangement READ arrangement WRITE setArrangement NOTIFY settingsChanged)
    /// -1 keeps the scene's order.
    Q_PROPERTY(int sortRole READ sortRole WRITE setSortRole NOTIFY settingsChanged)
    Q_PROPERTY(
        bool sortDescending READ isSortDescending WRITE setSortDescending NOTIFY settingsChanged)

    /// Another arrangement is on its way.
    Q_PROPERTY(bool working READ isWorking NOTIFY workingChanged)
    /// Rows that the filter accepts; -1 while none is set.
    Q_PROPERTY(int matchCount READ matchCount NOTIFY matchCountChanged)
    /// Selected rows, and how many of them a filter hides.
    Q_PROPERTY(int selectedCount READ selectedCount NOTIFY selectedCountChanged)
    Q_PROPERTY(int hiddenSelectedCount READ hiddenSelectedCount NOTIFY selectedCountChanged)
    /// Whether the arrangement leaves out rows that the scene has not fetched yet.
    Q_PROPERTY(bool partial READ isPartial NOTIFY partialChanged)
    Q_PROPERTY(bool fetching READ isFetching NOTIFY partialChanged)

public:
    explicit OutlineModel(QObject* parent = nullptr);
    ~OutlineModel() override;

    void setSourceModel(QAbstractItemModel* source);
    void setSelectionModel(QItemSelectionModel* selectionModel);
    QObject* predicate() const { return m_settings.predicate; }
    void setPredicate(QObject* predicate);
    QString arrangement() const { return m_settings.arrangement; }
    bool showsHierarchy() const { return m_settings.nests(); }
    void setArrangement(const QString& arrangement) { set(m_settings.arrangement, arrangement); }
    int sortRole() const { return m_settings.sortRole; }
    void setSortRole(int role) { set(m_settings.sortRole, role); }
    bool isSortDescending() const { return m_settings.sortOrder == Qt::DescendingOrder; }
    void setSortDescending(bool on)
    {
        set(m_settings.sortOrder, on ? Qt::DescendingOrder : Qt::AscendingOrder);
    }

    bool isWorking() const { return m_working; }
    int matchCount() const { return m_matches; }
    int selectedCount() const { return marks().count(RowMarks::Selected); }
    int hiddenSelectedCount() const;
    bool isPartial() const { return m_partial; }
    bool isFetching() const { return m_fetching; }
    /// Lets the scene fetch all that it can, in slices, until there is no more or it is stopped.
    Q_INVOKABLE void fetchAll();
    Q_INVOKABLE void stopFetching() { setFetching(false); }
    /// These rows are in view: the scene fetches more below those that end near them.
    Q_INVOKABLE void showing(int first, int last);
    bool canFetchMore(const QModelIndex& parent) const override;
    void fetchMore(const QModelIndex& parent) override;
    /// Works off at once what waits for the event loop.
    Q_INVOKABLE void finish();
    /// Does one slice of it.
    void workSlice();
    /// How many milliseconds a slice takes, 4 unless told; with 0 it does a few rows.
    void setSliceBudget(int milliseconds) { m_sliceBudget = milliseconds; }

    void setCurrentRow(int row);
    Q_INVOKABLE void setRowExpanded(int row, bool expanded) { open(nodeAt(row), expanded); }
    Q_INVOKABLE void setRowBranchExpanded(int row, bool expanded)
    {
        openBranch(nodeAt(row), expanded);
    }
    /// Work for hidden rows too; their state shows when they do.
    Q_INVOKABLE void setExpanded(const QModelIndex& sourceIndex, bool expanded);
    Q_INVOKABLE void setBranchExpanded(const QModelIndex& sourceIndex, bool expanded);
    Q_INVOKABLE void expandAll() { openAll(true); }
    Q_INVOKABLE void collapseAll() { openAll(false); }
    /// Opens what hides the row and returns its number, -1 for an index of another model or a row
    /// that is filtered out.
    Q_INVOKABLE int reveal(const QModelIndex& sourceIndex);

Q_SIGNALS:
    void sourceModelChanged();
    void selectionModelChanged();
    /// As of the selection model, without its lists: a handler in QML would hold them, and the
    /// persistent indexes in them, until garbage is collected, and each makes a removal slower.
    void selectionChanged();
    void settingsChanged();
    void workingChanged();
    void matchCountChanged();
    void selectedCountChanged();
    void partialChanged();

private:
    // Settings and what is worked out from them
    template <typename T>
    void set(T& setting, const T& value)
    {
        if (setting == value)
            return;
        setting = value;
        arrange();
        Q_EMIT settingsChanged();
    }
    void tellPredicate();
    Q_INVOKABLE void filter();
    void arrange();
    void restart();
    void endTurn();
    void work(const QDeadlineTimer& deadline);
    void finishPass();
    bool shows(const ArrangementPass& pass) const;
    void replace(const ArrangementPass* pass);
    void setWorking(bool working);
    void setMatchCount(int count);

    // Changes of the scene
    void aboutToChange(const SceneChange& change);
    void changed(const SceneChange& change);
    void sceneDataChanged(const QModelIndex& first, const QModelIndex& last,
                          const QVector<int>& roles);

    // Rows of an arrangement, one by one
    bool placesRows(int count);
    void takeAway(RowTree::Range orders);
    void placeNew(RowTree::Range orders);
    void placeChanged(const QModelIndex& index, const QVector<int>& roles);
    void placeLater(const QModelIndex& index);
    void placeAgain(const QVector<int>& roles);
    void show(Node node);
    void hide(Node node);
    void cutRows(RowTree::Range orders);
    void insertRow(Node node, Node parent, int order);
    void moveToItsPlace(Node node);
    Node parentToShow(Node node);
    int orderFor(Node node, Node parent) const;

    // Opening and closing
    bool canOpen() const { return sourceModel() && !m_mirror.isChanging(); }
    bool canOpen(Node node) const;
    void open(Node node, bool on);
    void openBranch(Node node, bool on);
    void openAll(bool on);
    void readToOpen(Node node);

    // Selection
    void followSelection();
    void readSelection();
    void changeSelection(const QItemSelection& selected, const QItemSelection& deselected);
    void mark(const QItemSelection& ranges, bool on, std::vector<Node>& changed);
    void signalMarks(const std::vector<Node>& changed);
    void changeCurrent(const QModelIndex& current, const QModelIndex& previous);
    void updateHovered(const QModelIndex& first, const QModelIndex& last);

    // Fetching
    bool fetches() const { return canOpen() && followsScene() && !m_working; }
    void fetchSome(const QDeadlineTimer& deadline);
    void setFetching(bool fetching);
    void setPartial(bool partial);

    ArrangementSettings m_settings;
    std::unique_ptr<ArrangementPass> m_pass;
    QTimer m_slices;
    int m_sliceBudget = 4;
    bool m_working = false;
    bool m_writesBack = false;
    bool m_forgetsClosed = false; ///< What comes next was found anew.
    int m_restarts = 0;
    /// Rows that were told to have changed: in this turn, by what sorts them, or since the pass
    /// began.
    std::vector<QPersistentModelIndex> m_changed;
    std::vector<Node> m_unplaced; ///< Out of order among those that are.
    bool m_outdated = false;      ///< More changed since the pass began than is placed one by one.
    int m_touched = 0;            ///< Rows of an arrangement that changed one by one in this turn.
    int m_matches = -1;
    bool m_partial = false;
    bool m_fetching = false;
    int m_toFetch = 0; ///< The order of the row that may fetch next.
    std::vector<std::pair<QItemSelection, bool>> m_delayedMarks;
    bool m_currentDelayed = false;
};

} // namespace kyr::panel
