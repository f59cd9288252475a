// Expanding and collapsing rows of the flat tree.

#include "flat_tree_model.h"

#include <QScopedValueRollback>

namespace kyr::panel {

namespace {

/// A branch with more rows to open than this comes as one reset, not as one insertion each.
constexpr int signalledExpansions = 64;

/// The rows with children in the branch of `root`; stops at `limit` of them. Persistent, for
/// opening one may fetch more rows.
std::vector<QPersistentModelIndex> parentsBelow(const QAbstractItemModel& model,
                                                const QModelIndex& root, std::size_t limit)
{
    std::vector<QPersistentModelIndex> parents;
    std::vector<QModelIndex> waiting{root};
    while (!waiting.empty() && parents.size() < limit) {
        const QModelIndex index = waiting.back();
        waiting.pop_back();
        const int rows = model.rowCount(index);
        if (rows > 0)
            parents.emplace_back(index);
        for (int row = rows - 1; row >= 0; --row)
            waiting.push_back(model.index(row, 0, index));
    }
    return parents;
}

} // namespace

void FlatTreeModel::setExpanded(const QModelIndex& sourceIndex, bool expanded)
{
    setShownExpanded(toShown(sourceIndex), expanded);
}

void FlatTreeModel::setRowExpanded(int row, bool expanded)
{
    setShownExpanded(shownIndex(row), expanded);
}

void FlatTreeModel::setShownExpanded(const QModelIndex& shown, bool expanded)
{
    if (m_pending.source != Change::None || !shown.isValid())
        return;
    const QPersistentModelIndex index = shown.siblingAtColumn(0);
    if (expanded && index.model() == m_source && m_source->canFetchMore(index))
        m_source->fetchMore(index);
    const std::optional<Family> family = readFamilyOf(index.parent());
    const Node node = family ? m_rows.childOf(*family, index.row()) : RowTree::none;
    if (node == RowTree::none || m_rows.tree().has(node, RowTree::Expanded) == expanded)
        return;
    if (expanded)
        expandRow(*family, node, index);
    else
        collapseRow(*family, node, index, false);
}

std::optional<SourceRows::Family> FlatTreeModel::readFamilyOf(const QModelIndex& shownParent)
{
    std::optional<Family> family = m_rows.familyOf(shownParent);
    if (!family) {
        family = m_rows.readFamilyOf(shownParent);
        readSelection();
    }
    return family;
}

void FlatTreeModel::expandRow(const Family& family, Node node, const QModelIndex& shown)
{
    dropPreparation();
    RowTree& tree = m_rows.tree();
    const QScopedValueRollback<Change> guard(m_pending.source, Change::Own);
    Node children = tree.hidden(node);
    const bool fresh = children == RowTree::none;
    if (fresh) {
        const int depth = tree.depth(node) + 1;
        children = m_rows.readChildren(shown, tree.flags(node), depth, m_rows.wishes());
    }
    const int row = tree.row(node);
    const int count = tree.count(children);
    const bool signalled = family.isVisible() && count > 0;
    if (signalled)
        beginInsertRows({}, row + 1, row + count);
    m_cachedRow = -1;
    tree.setHidden(node, RowTree::none);
    tree.set(node, RowTree::Expanded, true);
    m_rows.insert(family.owner, row + 1, children);
    if (fresh && count > 0)
        readSelection(count == m_source->rowCount(shown) ? shown : QModelIndex());
    if (signalled)
        endInsertRows();
    rowChanged(shown, {ExpandedRole});
}

void FlatTreeModel::collapseRow(const Family& family, Node node, const QModelIndex& shown,
                                bool forget)
{
    dropPreparation();
    RowTree& tree = m_rows.tree();
    const QScopedValueRollback<Change> guard(m_pending.source, Change::Own);
    Node hidden = tree.hidden(node);
    if (tree.has(node, RowTree::Expanded)) {
        const int row = tree.row(node);
        const int end = m_rows.rowAfterBranch(node, m_rows.sequence(family.owner));
        const int count = end - row - 1;
        const bool signalled = family.isVisible() && count > 0;
        if (signalled)
            beginRemoveRows({}, row + 1, row + count);
        m_cachedRow = -1;
        tree.set(node, RowTree::Expanded, false);
        hidden = m_rows.cut(family.owner, row + 1, count);
        tree.setHidden(node, hidden);
        if (signalled)
            endRemoveRows();
    }
    if (forget) {
        tree.setHidden(node, RowTree::none);
        tree.destroy(hidden);
        tree.set(node, RowTree::IgnoresWishes, true);
    }
    rowChanged(shown, {ExpandedRole});
}

void FlatTreeModel::setBranchExpanded(const QModelIndex& sourceIndex, bool expanded)
{
    setShownBranchExpanded(toShown(sourceIndex), expanded);
}

void FlatTreeModel::setRowBranchExpanded(int row, bool expanded)
{
    setShownBranchExpanded(shownIndex(row), expanded);
}

void FlatTreeModel::setShownBranchExpanded(const QModelIndex& shown, bool expanded)
{
    if (m_pending.source != Change::None || !shown.isValid())
        return;
    const QPersistentModelIndex index = shown.siblingAtColumn(0);
    if (expanded && index.model() == m_source && m_source->canFetchMore(index))
        m_source->fetchMore(index);
    const std::optional<Family> family = readFamilyOf(index.parent());
    const Node node = family ? m_rows.childOf(*family, index.row()) : RowTree::none;
    if (node == RowTree::none)
        return;
    if (expanded)
        expandBranch(index);
    else
        collapseRow(*family, node, index, true);
}

void FlatTreeModel::expandBranch(const QModelIndex& shown)
{
    const std::vector<QPersistentModelIndex> parents =
        parentsBelow(*m_source, shown, signalledExpansions + 1);
    if (parents.size() <= signalledExpansions) {
        for (const QPersistentModelIndex& parent : parents)
            setShownExpanded(parent, true);
        return;
    }
    const Family family = *m_rows.familyOf(shown.parent());
    const Node node = m_rows.childOf(family, shown.row());
    RowTree& tree = m_rows.tree();
    dropPreparation();
    const QScopedValueRollback<Change> guard(m_pending.source, Change::Own);
    beginResetModel();
    m_cachedRow = -1;
    const int row = tree.row(node);
    const int end = m_rows.rowAfterBranch(node, m_rows.sequence(family.owner));
    tree.destroy(m_rows.cut(family.owner, row + 1, end - row - 1));
    tree.destroy(tree.hidden(node));
    tree.setHidden(node, RowTree::none);
    tree.set(node, RowTree::Expanded, true);
    const Node children = m_rows.readChildren(shown, 0, tree.depth(node) + 1, m_rows.allExpanded());
    m_rows.insert(family.owner, row + 1, children);
    readSelection();
    endResetModel();
}

void FlatTreeModel::expandAll()
{
    if (m_pending.source != Change::None || !m_source)
        return;
    dropPreparation();
    const QScopedValueRollback<Change> guard(m_pending.source, Change::Own);
    beginResetModel();
    m_cachedRow = -1;
    m_rows.rebuild(m_rows.allExpanded(), 0);
    readSelection();
    endResetModel();
}

void FlatTreeModel::collapseAll()
{
    if (m_pending.source != Change::None || !m_source)
        return;
    dropPreparation();
    const QScopedValueRollback<Change> guard(m_pending.source, Change::Own);
    beginResetModel();
    m_cachedRow = -1;
    m_rows.rebuild(m_rows.wishes(), RowTree::IgnoresWishes);
    readSelection();
    endResetModel();
}

int FlatTreeModel::reveal(const QModelIndex& sourceIndex)
{
    const QModelIndex shown = toShown(sourceIndex);
    if (!shown.isValid() || shown.model() != m_source)
        return -1;
    const QPersistentModelIndex wanted = shown.siblingAtColumn(0);
    std::vector<QPersistentModelIndex> ancestors;
    for (QModelIndex up = shown.parent(); up.isValid(); up = up.parent())
        ancestors.emplace_back(up);
    for (auto up = ancestors.rbegin(); up != ancestors.rend(); ++up)
        setShownExpanded(*up, true);
    return rowOfShown(wanted);
}

void FlatTreeModel::rowChanged(const QModelIndex& shown, const QVector<int>& roles)
{
    const int row = rowOfShown(shown);
    if (row >= 0)
        Q_EMIT dataChanged(index(row), index(row), roles);
}

} // namespace kyr::panel
