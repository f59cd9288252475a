// How an arranged tree follows its source.

#include "arranged_tree_model.h"

#include "arranged_tree_sorter.h"

#include <algorithm>

namespace kyr::panel {

void ArrangedTreeModel::connectSource()
{
    const QAbstractItemModel* source = sourceModel();
    if (!source)
        return;
    using Model = QAbstractItemModel;
    connect(source, &Model::rowsInserted, this, &ArrangedTreeModel::insertSource);
    // What goes is hidden while the source still has it.
    connect(source, &Model::rowsAboutToBeRemoved, this, &ArrangedTreeModel::leaveSource);
    connect(source, &Model::rowsRemoved, this, &ArrangedTreeModel::removeSource);
    connect(source, &Model::rowsAboutToBeMoved, this,
            [this](const QModelIndex& from, int, int, const QModelIndex& to) {
                m_moving = {rowOfSource(from), rowOfSource(to)};
            });
    connect(source, &Model::rowsMoved, this,
            [this](const QModelIndex&, int first, int last, const QModelIndex&, int target) {
                moveSource(first, last, target);
            });
    connect(source, &Model::layoutAboutToBeChanged, this, &ArrangedTreeModel::beginReset);
    connect(source, &Model::layoutChanged, this, &ArrangedTreeModel::endReset);
    connect(source, &Model::modelAboutToBeReset, this, &ArrangedTreeModel::beginReset);
    connect(source, &Model::modelReset, this, &ArrangedTreeModel::endReset);
    connect(source, &Model::dataChanged, this, &ArrangedTreeModel::changeSource);
}

void ArrangedTreeModel::beginReset()
{
    if (!isReady() || m_resetting)
        return;
    m_resetting = true;
    beginResetModel();
}

void ArrangedTreeModel::endReset()
{
    if (!m_resetting)
        return restart();
    startOver();
    work();
    m_resetting = false;
    endResetModel();
}

/// For changes before the rows show.
void ArrangedTreeModel::restart()
{
    m_restarts += m_rows.empty() ? 0 : 1;
    startOver();
}

ArrangedTreeModel::Row* ArrangedTreeModel::readBranch(Row* parent, const QModelIndex& index,
                                                      Rows& matching)
{
    std::vector<Level> levels;
    const auto read = [&](Row* above, const QModelIndex& at) {
        Row* row = newRow();
        row->sourceParent = above;
        row->sourceRow = at.row();
        readRow(*row, at);
        if (row->matches)
            matching.push_back(row);
        if (const int children = sourceModel()->rowCount(at); children > 0)
            levels.push_back({row, at, 0, children - 1});
        return row;
    };
    Row* top = read(parent, index);
    while (!levels.empty()) {
        Level& level = levels.back();
        if (level.next > level.last) {
            levels.pop_back();
            continue;
        }
        Row* above = level.row;
        above->sourceChildren.push_back(
            read(above, sourceModel()->index(level.next++, 0, level.index)));
    }
    return top;
}

void ArrangedTreeModel::insertSource(const QModelIndex& parent, int first, int last)
{
    if (!isReady())
        return restart();
    Row* row = m_resetting ? nullptr : rowOfSource(parent);
    if (!row)
        return;
    Rows matching;
    Rows fresh;
    for (int number = first; number <= last; ++number)
        fresh.push_back(readBranch(row, sourceModel()->index(number, 0, parent), matching));
    row->sourceChildren.insert(row->sourceChildren.begin() + first, fresh.begin(), fresh.end());
    row->numberSource(first);
    show(matching);
}

ArrangedTreeModel::Rows ArrangedTreeModel::branchesOf(const Row* parent, int first, int last)
{
    Rows rows(parent->sourceChildren.begin() + first, parent->sourceChildren.begin() + last + 1);
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const Rows& children = rows[i]->sourceChildren;
        rows.insert(rows.end(), children.begin(), children.end());
    }
    return rows;
}

void ArrangedTreeModel::leaveSource(const QModelIndex& parent, int first, int last)
{
    const Row* row = isReady() && !m_resetting ? rowOfSource(parent) : nullptr;
    if (!row)
        return;
    Rows leaving = branchesOf(row, first, last);
    for (Row* branch : leaving)
        branch->matches = false;
    // In a hierarchy the top ones take with them what is below.
    if (m_settings.arrangement == Arrangement::Hierarchy)
        leaving.resize(std::size_t(last - first) + 1);
    hide(leaving);
}

void ArrangedTreeModel::removeSource(const QModelIndex& parent, int first, int last)
{
    if (!isReady())
        return restart();
    Row* row = m_resetting ? nullptr : rowOfSource(parent);
    if (!row)
        return;
    const Rows gone = branchesOf(row, first, last);
    m_unused.insert(m_unused.end(), gone.begin(), gone.end());
    row->sourceChildren.erase(row->sourceChildren.begin() + first,
                              row->sourceChildren.begin() + last + 1);
    row->numberSource(first);
}

void ArrangedTreeModel::moveSource(int first, int last, int target)
{
    if (!isReady())
        return restart();
    const auto [from, to] = std::exchange(m_moving, {});
    if (m_resetting || !from || !to)
        return;
    const Rows moved(from->sourceChildren.begin() + first, from->sourceChildren.begin() + last + 1);
    from->sourceChildren.erase(from->sourceChildren.begin() + first,
                               from->sourceChildren.begin() + last + 1);
    if (from == to && target > first)
        target -= int(moved.size());
    to->sourceChildren.insert(to->sourceChildren.begin() + target, moved.begin(), moved.end());
    for (Row* row : moved)
        row->sourceParent = to;
    from->numberSource();
    to->numberSource();
    if (m_settings.arrangement != Arrangement::Hierarchy)
        reorder(branchesOf(to, target, target + last - first));
    else if (from == to)
        reorder(moved);
    else
        moveInHierarchy(from, moved, to);
}

void ArrangedTreeModel::changeSource(const QModelIndex& topLeft, const QModelIndex& bottomRight,
                                     const QVector<int>& roles)
{
    if (m_resetting || !topLeft.isValid() || !bottomRight.isValid())
        return;
    const auto concerns = [&](int role) { return roles.isEmpty() || roles.contains(role); };
    const bool sorts = m_settings.sorting.role >= 0 && concerns(m_settings.sorting.role);
    const bool groups = m_settings.arrangement == Arrangement::ByType && concerns(m_typeRole);
    Rows changed;
    Rows resorted;
    Rows found;
    Rows lost;
    for (int number = topLeft.row(); number <= bottomRight.row(); ++number) {
        const QModelIndex index = topLeft.sibling(number, 0);
        Row* row = rowOfSource(index);
        if (!row)
            continue;
        if (!isReady()) {
            m_changedEarly.push_back(row);
            continue;
        }
        changed.push_back(row);
        const bool matched = row->matches;
        const QString type = groups ? index.data(m_typeRole).toString() : row->type;
        row->matches = accepts(index);
        if (matched && (!row->matches || type != row->type))
            lost.push_back(row);
        if (row->matches && (!matched || type != row->type))
            found.push_back(row);
        row->type = type;
        if (sorts) {
            row->key = SortKey(index.data(m_settings.sorting.role), m_collator);
            resorted.push_back(row);
        }
    }
    // Rows only find their places in lists that are in order.
    if (!hide(lost) || !reorder(resorted) || !show(found))
        return;
    signalData(changed, roles);
    if (m_filters && m_settings.arrangement == Arrangement::Hierarchy) {
        signalData(found, {MatchesRole});
        signalData(lost, {MatchesRole});
    }
}

void ArrangedTreeModel::signalData(const Rows& rows, const QVector<int>& roles)
{
    const Row* first = nullptr;
    const Row* last = nullptr;
    const auto announce = [&] {
        if (first)
            Q_EMIT dataChanged(indexOf(first), indexOf(last), roles);
    };
    for (const Row* row : rows) {
        if (!row->isShown())
            continue;
        if (!last || row->shownParent != last->shownParent || row->shownRow != last->shownRow + 1) {
            announce();
            first = row;
        }
        last = row;
    }
    announce();
}

} // namespace kyr::panel
