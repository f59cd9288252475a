#pragma once

#include <panel/arrangement/arranged_row.h>

#include <panel/kyr_scene_outline_panel_export.h>

#include <QAbstractProxyModel>
#include <QDeadlineTimer>
#include <QMetaMethod>
#include <QPointer>

#include <deque>
#include <map>
#include <memory>
#include <utility>
#include <vector>

namespace kyr::panel {

/// A tree filtered, sorted, flattened or grouped by type, in one way for all its life.
///
/// Shows column 0 of its source. Rows that do not match but lead to rows that do stay, and say so
/// through `MatchesRole`. Rows of groups stand for no source row: `mapToSource` gives an invalid
/// index for them. Sorting is stable.
///
/// Empty at first: `work` reads the source in parts as long as the caller likes, so that no window
/// waits for it. Once its rows show, the model follows the source with exact row signals; a change
/// that touches very many places comes as one reset. Neither source nor predicate is owned.
///
/// Cost: O(n log n) to get ready, O(depth) to map an index. A change costs O(log n) comparisons for
/// each row that it touches, and new numbers for the siblings behind it.
class KYR_SCENE_OUTLINE_PANEL_EXPORT ArrangedTreeModel : public QAbstractProxyModel
{
    Q_OBJECT

public:
    enum class Arrangement
    {
        Hierarchy,
        Flat,
        ByType,
    };
    Q_ENUM(Arrangement)

    enum Role
    {
        MatchesRole = 0x20000,
    };

    struct Sorting
    {
        int role = -1; ///< -1 keeps the source's order.
        Qt::SortOrder order = Qt::AscendingOrder;
    };
    struct Settings
    {
        /// Anything with an invokable `bool accepts(QModelIndex)` and a property "active".
        QPointer<QObject> predicate;
        Arrangement arrangement = Arrangement::Hierarchy;
        Sorting sorting;
    };

    ArrangedTreeModel(QAbstractItemModel* source, const Settings& settings,
                      QObject* parent = nullptr);
    ~ArrangedTreeModel() override;

    const Settings& settings() const { return m_settings; }
    bool isFiltering() const { return m_filters; }

    /// Works until the rows show, which makes it return true, or the time is up. A change of the
    /// source's rows before that starts it over.
    bool work(const QDeadlineTimer& deadline = QDeadlineTimer(QDeadlineTimer::Forever));
    bool isReady() const { return m_stage == Stage::Ready; }

    /// How many of the source rows `first` to `last` below `sourceParent` show.
    int countShown(const QModelIndex& sourceParent, int first, int last) const;
    /// What an index of any model stands for: itself, or what an arranged tree maps it to.
    static QModelIndex originOf(const QModelIndex& index);

    QModelIndex mapToSource(const QModelIndex& index) const override;
    QModelIndex mapFromSource(const QModelIndex& index) const override;
    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    bool hasChildren(const QModelIndex& parent = {}) const override;
    bool canFetchMore(const QModelIndex& parent) const override;
    QHash<int, QByteArray> roleNames() const override;
    QVariant data(const QModelIndex& index, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

private:
    using Row = ArrangedRow;
    using Rows = ArrangedRow::List;

    enum class Stage
    {
        Reading,
        Sorting,
        Ready,
    };
    /// A source row whose children are being read.
    struct Level
    {
        Row* row;
        QModelIndex index;
        int next;
        int last;
    };
    /// Neighbours in what shows.
    struct Run
    {
        int first;
        int count;
    };
    class Sorter;
    /// A change in more places than this comes as one reset.
    static constexpr std::size_t signalledPlaces = 64;

    // Getting ready
    void startOver();
    bool readNext();
    void readRow(Row& row, const QModelIndex& index) const;
    bool accepts(const QModelIndex& index) const;
    Row* newRow();
    void showRead(Row* row);
    void showGroups();
    void sortAll();

    // Following the source
    void connectSource();
    void restart();
    void beginReset();
    void endReset();
    void insertSource(const QModelIndex& parent, int first, int last);
    void leaveSource(const QModelIndex& parent, int first, int last);
    void removeSource(const QModelIndex& parent, int first, int last);
    void moveSource(int first, int last, int target);
    void changeSource(const QModelIndex& topLeft, const QModelIndex& bottomRight,
                      const QVector<int>& roles);
    void signalData(const Rows& rows, const QVector<int>& roles);
    Row* readBranch(Row* parent, const QModelIndex& index, Rows& matching);
    static Rows branchesOf(const Row* parent, int first, int last);

    // Rows that come, go and change places in what shows
    bool show(const Rows& matching);
    bool showInHierarchy(const Rows& rows);
    bool hide(const Rows& rows);
    bool hideInHierarchy(Row* parent, Rows rows);
    bool reorder(const Rows& rows);
    void moveInHierarchy(Row* from, const Rows& moved, Row* to);
    bool place(Row* parent, Rows rows);
    bool takeAway(Row* parent, Rows rows);
    void moveRun(Row* from, int first, int count, Row* to, int target);
    bool rebuild();
    bool precedes(const Row* a, const Row* b) const;
    void sort(Rows& rows) const;
    std::size_t placeIn(const Rows& list, const Row* row) const;
    static std::vector<Run> runsOf(Rows& rows);
    static void clearShown(Rows rows);
    Row* groupOf(const QString& type);

    Row* rowAt(const QModelIndex& index) const;
    Row* rowOfSource(const QModelIndex& sourceIndex) const;
    QModelIndex sourceIndexOf(const Row* row) const;
    QModelIndex indexOf(const Row* row) const;
    QVariant groupData(const Row& group, int role) const;

    const Settings m_settings;
    QMetaMethod m_accepts;
    bool m_filters = false;
    Stage m_stage = Stage::Reading;
    int m_restarts = 0;
    std::vector<Level> m_levels;
    std::unique_ptr<Sorter> m_sorter;
    Rows m_changedEarly; ///< Rows that changed after they were read, before all were.
    mutable Row m_root;  ///< Parent of the top rows of both trees.
    std::deque<Row> m_rows;
    Rows m_unused;
    std::map<QString, Row> m_groups;
    std::pair<Row*, Row*> m_moving; ///< Parents of rows between the two signals of their move.
    bool m_resetting = false;
    QCollator m_collator;
    int m_typeRole = -1;
    int m_countRole = -1;
    int m_expandedRole = -1;
    int m_enabledRole = -1;
};

} // namespace kyr::panel
