#pragma once

#include <panel/kyr_scene_outline_panel_export.h>

#include <QAbstractProxyModel>
#include <QCollator>
#include <QMetaMethod>
#include <QPointer>
#include <QTimer>

#include <deque>
#include <vector>

namespace kyr::panel {

/// A tree filtered, sorted, flattened or grouped by type.
///
/// Shows column 0 of its source. Rows that do not match but lead to rows that do stay, and say so
/// through `MatchesRole`. Rows of groups stand for no source row: `mapToSource` gives an invalid
/// index for them. Sorting is stable and follows the data; the source's own order is kept when
/// there is no sort role.
///
/// When the predicate changes it is asked about every row, in slices of a few milliseconds from the
/// event loop, so a keystroke does not hold the window up; `isWorking` tells while the rows of the
/// last outcome still show. Another outcome arrives as one model reset, and so does any change of
/// the source's rows, which is worked off at once.
/// Cost: O(n log n) in the source's rows for each outcome, O(depth) for mapping an index.
class KYR_SCENE_OUTLINE_PANEL_EXPORT ArrangedTreeModel : public QAbstractProxyModel
{
    Q_OBJECT
    Q_PROPERTY(bool working READ isWorking NOTIFY workingChanged)
    Q_PROPERTY(int matchCount READ matchCount NOTIFY arranged)

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
        friend bool operator==(const Sorting& a, const Sorting& b)
        {
            return a.role == b.role && a.order == b.order;
        }
    };

    explicit ArrangedTreeModel(QObject* parent = nullptr);
    ~ArrangedTreeModel() override;

    void setSourceModel(QAbstractItemModel* source) override;
    /// Anything with an invokable `bool accepts(QModelIndex)`, a property "active" and a signal
    /// `changed()`; not owned, may be null.
    void setPredicate(QObject* predicate);
    void setArrangement(Arrangement arrangement);
    Arrangement arrangement() const { return m_arrangement; }
    void setSorting(const Sorting& sorting);
    const Sorting& sorting() const { return m_sorting; }

    bool isFiltering() const;
    bool isWorking() const { return m_next < m_items.size(); }
    /// Source rows that match the predicate.
    int matchCount() const { return m_matchCount; }
    /// Works off at once what waits for the event loop.
    void finish();

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

Q_SIGNALS:
    void workingChanged();
    /// The rows show the last outcome.
    void arranged();

private:
    /// A source row, or a group, which has no place in the source.
    struct Item
    {
        Item* sourceParent = nullptr; ///< Null for top-level rows.
        std::vector<Item*> sourceChildren;
        int sourceRow = -1;
        bool matches = true;
        bool nextMatches = true; ///< Of the outcome that is being worked out.
        bool shown = true;
        Item* shownParent = nullptr; ///< Null for rows at the top.
        std::vector<Item*> shownChildren;
        int shownRow = -1;
        QString group; ///< The type that a group collects.
    };

    void connectSource();
    void beginSourceChange();
    void endSourceChange();
    void readSource();

    Q_INVOKABLE void rearrange();
    void matchSlice();
    void match(std::size_t first, std::size_t last);
    void arrange();
    void fillShown();
    void show(Item* parent, Item* child);
    void showHierarchy();
    void showByType();
    void sortShown();
    void sortRows(std::vector<Item*>& rows) const;
    bool accepts(const QModelIndex& row) const;
    void forwardDataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight,
                            const QVector<int>& roles);

    Item* itemAt(const QModelIndex& index) const;
    Item* itemOfSource(const QModelIndex& sourceIndex) const;
    QModelIndex sourceIndexOf(const Item* item) const;
    QModelIndex indexOf(const Item* item) const;
    bool isGroup(const Item* item) const { return item->sourceRow < 0; }
    QVariant groupData(const Item& group, int role) const;

    Arrangement m_arrangement = Arrangement::Hierarchy;
    Sorting m_sorting;
    QPointer<QObject> m_predicate;
    QMetaMethod m_accepts;
    Item m_root;              ///< Holds the top-level rows of both trees.
    std::deque<Item> m_items; ///< In source order, parents before their children.
    std::deque<Item> m_groups;
    std::size_t m_next = 0; ///< The first item that the predicate has yet to be asked about.
    int m_matchCount = 0;
    bool m_changingSource = false;
    QTimer m_slices;
    QCollator m_collator;
    std::vector<QMetaObject::Connection> m_connections;
    int m_typeRole = -1;
    int m_countRole = -1;
    int m_expandedRole = -1;
    int m_enabledRole = -1;
};

} // namespace kyr::panel
