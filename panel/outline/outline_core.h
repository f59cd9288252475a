#pragma once

#include <panel/arrangement/arrangement_pass.h>
#include <panel/outline/outline_model.h>
#include <panel/rows/mirror_observer.h>
#include <panel/rows/scene_mirror.h>

#include <QPointer>
#include <QTimer>

#include <limits>
#include <optional>

namespace kyr::panel {

/// What stands behind an outline: the mirror of its scene, the arrangement of it if there is one,
/// and the pass that works out the next one. Rows that show are nodes of `rows()`, which is the
/// mirror's own tree while the scene shows as it is.
class OutlineModel::Core final : public IMirrorObserver
{
public:
    explicit Core(OutlineModel& model);

    // Rows
    const RowTree& rows() const { return m_arranged ? m_arranged->tree : m_mirror.rows(); }
    int count() const { return std::min(rows().shownCount(), m_countLimit); }
    Node rowNode(int row) const { return row < count() ? rows().at(row) : RowTree::none; }
    Node sceneNode(Node shown) const { return m_arranged ? m_arranged->sceneNode(shown) : shown; }
    Node shownNode(Node scene) const { return m_arranged ? m_arranged->shownNode(scene) : scene; }
    /// The row that an index of the scene stands for, none if it is filtered out. Reads it.
    Node readNode(const QModelIndex& index)
    {
        return shownNode(m_mirror.read(index.siblingAtColumn(0)));
    }
    QModelIndex indexAt(int row) const;
    bool hasChildren(Node shown) const;
    bool matches(Node shown) const { return !rows().has(shown, RowTree::Leads); }
    QVariant groupData(Node group, int role) const;
    void rowChanged(Node shown, const QVector<int>& roles);
    void allChanged(const QVector<int>& roles = {});
    void readRoles();

    int hiddenSelected(Node shown) const;
    bool hidesHovered(Node shown) const;

    // Opening and closing
    bool canOpen() const { return m_mirror.model() && !m_mirror.isChanging(); }
    /// In a flat list nothing is below anything.
    bool canOpen(Node shown) const
    {
        return shown != RowTree::none &&
               (!m_arranged || m_rules->nests() || m_arranged->isGroup(shown));
    }
    /// Whether the rows that show are open where the scene's are.
    bool followsScene() const { return !m_arranged || (m_rules->nests() && !m_rules->filters()); }
    void setExpanded(Node shown, bool on);
    void setBranchExpanded(Node shown, bool on);
    void setAllExpanded(bool on);
    int reveal(const QModelIndex& index);
    void prepareToOpen(Node shown);
    void showBranch(Node shown, bool on);
    void rememberOpen(Node shown, bool on);
    void writeBackSoon();

    // Selection
    void connectSelection();
    void readSelection();
    void changeSelection(const QItemSelection& selected, const QItemSelection& deselected);
    void mark(const QItemSelection& ranges, bool selected, std::vector<Node>& changed);
    void signalMarks(const std::vector<Node>& changed);
    void changeCurrent(const QModelIndex& current, const QModelIndex& previous);
    void updateHovered(const QModelIndex& first, const QModelIndex& last);
    int currentRow() const;

    // Arranging
    void arrange();
    /// Works the present arrangement out anew, once for all that changes in this turn.
    void restart();
    void work(const QDeadlineTimer& deadline);
    void workSlice();
    void startPass();
    void finishPass();
    void arrangeNow();
    void replace(std::unique_ptr<ArrangedRows> next);
    bool isShown(const ArrangedRows& next) const;
    void setWorking(bool working);
    void setMatchCount(int count);

    // Fetching
    /// What is filtered or listed flat tells by `partial` that there may be more.
    bool fetches() const { return canOpen() && followsScene() && !m_working; }
    void fetchNear(int first, int last);
    void fetchSome(const QDeadlineTimer& deadline);
    void setFetching(bool fetching);
    void setPartial(bool partial);

    // What the mirror tells
    void beginChange() override;
    void aboutToInsert(Node parent, int order, int count) override;
    void inserted(Node parent, int order, int count) override;
    void aboutToRemove(Node parent, int order, int count) override;
    void removed() override;
    void aboutToMove(Node from, int order, int count, Node to, int target) override;
    void moved(Node from, Node to, int order, int count) override;
    void aboutToRelayout() override;
    void relaidOut() override;
    void aboutToReset() override;
    void wasReset() override;
    void endChange() override;
    void wishesToOpen(Node node) override;
    void childrenChanged(const QModelIndex& parent) override;
    void dataChanged(const QModelIndex& first, const QModelIndex& last,
                     const QVector<int>& roles) override;

    // Rows of an arrangement, one by one
    bool placesRows(int count);
    void placeNew(int order, int count);
    void placeMoved(int order, int count);
    void placeChanged(const QModelIndex& first, const QModelIndex& last, const QVector<int>& roles);
    void placeChanged(Node scene, const QModelIndex& index, const QVector<int>& roles);
    void takeAway(int order, int count);
    void show(Node scene);
    void hide(Node shown);
    void hideEmpty(Node parent);
    void cutRows(int order, int count);
    void moveBranch(Node shown, Node parent);
    Node parentToShow(Node scene);
    Node insertRow(Node scene, Node parent, bool leads);
    int orderFor(Node scene, Node parent) const;
    Node groupToShow(const QString& type);

    // Signals of the list
    void announceInsertion(int first, int count);
    void announceRemoval(int first, int count);
    void announceMove(int first, int count, int target);
    void endAnnounced();

    OutlineModel& q;
    SceneMirror m_mirror;
    std::unique_ptr<ArrangedRows> m_arranged;
    std::optional<ArrangementRules> m_rules; ///< Those of the rows that show.
    ArrangementSettings m_settings;
    QString m_arrangement;
    QSet<QString> m_closedGroups;
    std::unique_ptr<ArrangementPass> m_pass;
    int m_restarts = 0;
    std::vector<QPersistentModelIndex> m_changedMeanwhile;
    bool m_movesDown = false;
    int m_touched = 0; ///< Rows of an arrangement that changed one by one in this turn.
    QTimer m_slices;
    bool m_working = false;
    bool m_writesBack = false;
    int m_matches = -1;
    bool m_partial = false;
    bool m_fetching = false;
    int m_toFetch = 0; ///< The order of the row that may fetch next.

    QPointer<QItemSelectionModel> m_selection;
    std::vector<std::pair<QItemSelection, bool>> m_delayedMarks;
    bool m_currentDelayed = false;
    std::optional<QString> m_focusedGroup;
    mutable std::optional<Node> m_current;
    std::vector<Node> m_hovered;

    enum class Announced
    {
        Nothing,
        Insert,
        Remove,
        Move,
        Layout,
        Reset,
    };
    Announced m_announced = Announced::Nothing;
    void noteChange(const QModelIndex& first, const QModelIndex& last);
    void changeScene(QAbstractItemModel* scene);
    bool m_quiet = false; ///< All changes come as one reset.
    std::vector<std::pair<QModelIndex, QPersistentModelIndex>> m_savedIndexes;

    QHash<int, QByteArray> m_roleNames;
    QList<int> m_cellRoles;
    int m_hoverRole = -1;
    int m_typeRole = -1;
    int m_countRole = -1;
    int m_enabledRole = -1;
    int m_countLimit =
        std::numeric_limits<int>::max(); ///< Rows that show while others replace them.
    mutable int m_indexedRow = -1;
    mutable QModelIndex m_rowIndex;
};

} // namespace kyr::panel
