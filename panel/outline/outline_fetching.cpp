// Scenes that give their rows as they are asked for more.

#include "outline_core.h"

namespace kyr::panel {

namespace {

/// So many rows before the end of a branch comes into view, more are fetched.
constexpr int rowsAhead = 20;
/// Branches that end together are looked at so far up.
constexpr int levelsUp = 256;

} // namespace

void OutlineModel::showing(int first, int last)
{
    m_core->fetchNear(first, last);
}

void OutlineModel::fetchAll()
{
    m_core->m_toFetch = 0;
    m_core->setFetching(true);
}

void OutlineModel::stopFetching()
{
    m_core->setFetching(false);
}

void OutlineModel::Core::fetchNear(int first, int last)
{
    if (!fetches())
        return;
    const int end = std::min(last + rowsAhead, count() - 1);
    std::vector<QPersistentModelIndex> parents;
    const auto look = [&](Node shown) {
        const QModelIndex index = m_mirror.indexOf(sceneNode(shown));
        if (rows().has(shown, RowTree::Expanded) && m_mirror.model()->canFetchMore(index) &&
            rows().rowsBefore(rows().branchEnd(shown)) - 1 <= end)
            parents.emplace_back(index);
    };
    for (int row = std::max(first, 0); row <= end; ++row)
        look(rowNode(row));
    Node above = rowNode(first);
    for (int level = 0; above != RowTree::none && level < levelsUp; ++level) {
        above = rows().place(above).parent;
        if (above != RowTree::none)
            look(above);
    }
    if (end == count() - 1 && m_mirror.model()->canFetchMore({}))
        m_mirror.model()->fetchMore({});
    for (const QPersistentModelIndex& parent : parents) {
        if (parent.isValid())
            m_mirror.model()->fetchMore(parent);
    }
}

/// Goes down all rows once; those that come are below and are met on the way.
void OutlineModel::Core::fetchSome(const QDeadlineTimer& deadline)
{
    QAbstractItemModel& scene = *m_mirror.model();
    const auto fetches = [&scene](const QModelIndex& parent) {
        const int before = scene.rowCount(parent);
        if (!scene.canFetchMore(parent))
            return false;
        scene.fetchMore(parent);
        return scene.rowCount(parent) > before;
    };
    while (fetches({})) {
        if (deadline.hasExpired())
            return;
    }
    for (; m_toFetch < m_mirror.rows().size(); ++m_toFetch) {
        const Node node = m_mirror.rows().atOrder(m_toFetch);
        do {
            if (deadline.hasExpired())
                return;
        } while (fetches(m_mirror.indexOf(node)));
        m_mirror.readChildren(node);
    }
    setFetching(false);
    if (m_arranged)
        restart();
}

void OutlineModel::Core::setFetching(bool fetching)
{
    if (fetching)
        m_slices.start();
    if (fetching == m_fetching)
        return;
    m_fetching = fetching;
    Q_EMIT q.partialChanged();
}

void OutlineModel::Core::setPartial(bool partial)
{
    if (partial == m_partial)
        return;
    m_partial = partial;
    Q_EMIT q.partialChanged();
}

} // namespace kyr::panel
