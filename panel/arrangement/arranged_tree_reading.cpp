// How an arranged tree reads its source: every row once, in parts.

#include "arranged_tree_model.h"

#include "arranged_tree_sorter.h"

namespace kyr::panel {

namespace {

constexpr int stepsBetweenClockReads = 32;
/// A source that changes all the time is read in one go after as many attempts.
constexpr int patience = 4;

} // namespace

void ArrangedTreeModel::startOver()
{
    m_stage = Stage::Reading;
    m_sorter.reset();
    m_changedEarly.clear();
    m_groups.clear();
    m_rows.clear();
    m_unused.clear();
    m_root = Row();
    m_levels.clear();
    const QAbstractItemModel* source = sourceModel();
    if (!source)
        return;
    const QHash<int, QByteArray> names = source->roleNames();
    m_typeRole = names.key("type", -1);
    m_countRole = names.key("count", -1);
    m_expandedRole = names.key("expanded", -1);
    m_enabledRole = names.key("enabled", -1);
    m_levels.push_back({&m_root, QModelIndex(), 0, source->rowCount() - 1});
}

bool ArrangedTreeModel::work(const QDeadlineTimer& deadline)
{
    const bool endless = m_restarts > patience;
    for (int step = 1; !isReady(); ++step) {
        if (m_stage == Stage::Reading) {
            if (!readNext()) {
                showGroups();
                m_stage = Stage::Sorting;
                if (m_settings.sorting.role >= 0)
                    m_sorter = std::make_unique<Sorter>(*this);
            }
        } else if (!m_sorter || m_sorter->step()) {
            m_sorter.reset();
            if (!m_resetting)
                beginResetModel();
            m_stage = Stage::Ready;
            if (!m_resetting)
                endResetModel();
        }
        if (step % stepsBetweenClockReads == 0 && !endless && deadline.hasExpired())
            return isReady();
    }
    for (const Row* row : std::exchange(m_changedEarly, {})) {
        const QModelIndex changed = sourceIndexOf(row);
        changeSource(changed, changed, {});
    }
    return true;
}

ArrangedTreeModel::Row* ArrangedTreeModel::newRow()
{
    if (m_unused.empty())
        return &m_rows.emplace_back();
    Row* row = m_unused.back();
    m_unused.pop_back();
    *row = Row();
    return row;
}

bool ArrangedTreeModel::readNext()
{
    while (!m_levels.empty() && m_levels.back().next > m_levels.back().last)
        m_levels.pop_back();
    if (m_levels.empty())
        return false;
    Level& level = m_levels.back();
    const QAbstractItemModel& source = *sourceModel();
    const int number = level.next++;
    const QModelIndex index = source.index(number, 0, level.index);
    Row* row = newRow();
    row->sourceParent = level.row;
    row->sourceRow = number;
    level.row->sourceChildren.push_back(row);
    readRow(*row, index);
    if (row->matches)
        showRead(row);
    if (const int children = source.rowCount(index); children > 0) {
        row->sourceChildren.reserve(std::size_t(children));
        m_levels.push_back({row, index, 0, children - 1});
    }
    return true;
}

void ArrangedTreeModel::readRow(Row& row, const QModelIndex& index) const
{
    row.matches = accepts(index);
    if (m_settings.sorting.role >= 0)
        row.key = SortKey(index.data(m_settings.sorting.role), m_collator);
    if (m_settings.arrangement == Arrangement::ByType)
        row.type = index.data(m_typeRole).toString();
}

ArrangedTreeModel::Row* ArrangedTreeModel::groupOf(const QString& type)
{
    Row& group = m_groups[type];
    group.type = type;
    return &group;
}

/// Shows a row that matches, and what leads to it. Rows come in source order, and so do all lists.
void ArrangedTreeModel::showRead(Row* row)
{
    switch (m_settings.arrangement) {
    case Arrangement::Hierarchy:
        for (; row != &m_root && !row->isShown(); row = row->sourceParent)
            row->sourceParent->append(row);
        break;
    case Arrangement::Flat:
        m_root.append(row);
        break;
    case Arrangement::ByType:
        groupOf(row->type)->append(row);
        break;
    }
}

void ArrangedTreeModel::showGroups()
{
    for (auto& [type, group] : m_groups)
        m_root.append(&group);
}

void ArrangedTreeModel::sortAll()
{
    Sorter sorter(*this);
    while (m_settings.sorting.role >= 0 && !sorter.step()) {
    }
}

} // namespace kyr::panel
