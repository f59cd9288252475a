// Scenes that give their rows as they are asked for more.

#include "outline_model.h"

namespace kyr::panel {

namespace {

/// So many rows before the end of a branch comes into view, more are fetched.
constexpr int rowsAhead = 20;
/// Branches that end together are looked at so far up.
constexpr int levelsUp = 256;

} // namespace

bool OutlineModel::canFetchMore(const QModelIndex& parent) const
{
    return !parent.isValid() && fetches() && sourceModel()->canFetchMore({});
}

void OutlineModel::fetchMore(const QModelIndex& parent)
{
    if (canFetchMore(parent))
        sourceModel()->fetchMore({});
}

void OutlineModel::showing(int first, int last)
{
    if (!fetches())
        return;
    const int end = std::min(last + rowsAhead, count() - 1);
    std::vector<QPersistentModelIndex> parents;
    const auto look = [&](Node node) {
        const QModelIndex index = m_mirror.indexOf(node);
        if (rows().isOpen(node) && sourceModel()->canFetchMore(index) &&
            rows().rowsBefore(rows().below(node).end) - 1 <= end)
            parents.emplace_back(index);
    };
    for (int row = std::max(first, 0); row <= end; ++row)
        look(nodeAt(row));
    Node above = nodeAt(first);
    for (int level = 0; above != RowTree::none && level < levelsUp; ++level) {
        above = rows().parent(above);
        if (above != RowTree::none)
            look(above);
    }
    if (end == count() - 1 && sourceModel()->canFetchMore({}))
        sourceModel()->fetchMore({});
    for (const QPersistentModelIndex& parent : parents) {
        if (parent.isValid())
            sourceModel()->fetchMore(parent);
    }
}

void OutlineModel::fetchAll()
{
    m_toFetch = 0;
    setFetching(true);
}

/// Goes down all rows once; those that come are below and are met on the way.
void OutlineModel::fetchSome(const QDeadlineTimer& deadline)
{
    const auto fetches = [this](const QModelIndex& parent) {
        const int before = sourceModel()->rowCount(parent);
        if (!sourceModel()->canFetchMore(parent))
            return false;
        sourceModel()->fetchMore(parent);
        return sourceModel()->rowCount(parent) > before;
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

void OutlineModel::setFetching(bool fetching)
{
    if (fetching)
        m_slices.start(0);
    if (fetching == m_fetching)
        return;
    m_fetching = fetching;
    Q_EMIT partialChanged();
}

void OutlineModel::setPartial(bool partial)
{
    if (partial == m_partial)
        return;
    m_partial = partial;
    Q_EMIT partialChanged();
}

} // namespace kyr::panel
