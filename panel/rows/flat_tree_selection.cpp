// Selection marks of the flat tree. They follow the selection model's deltas; asking it for each
// row would scan all its ranges each time.

#include "flat_tree_model.h"

#include <algorithm>

namespace kyr::panel {

namespace {

/// More marks than this are signalled as one range over the whole list.
constexpr std::size_t signalledMarks = 64;

} // namespace

void FlatTreeModel::setSelectionModel(QItemSelectionModel* selectionModel)
{
    if (selectionModel == m_selectionModel)
        return;
    if (m_selectionModel)
        m_selectionModel->disconnect(this);
    cancelPreparation();
    m_selectionModel = selectionModel;
    connectSelection();
    m_rows.clearMarks();
    readSelection();
    if (count() > 0)
        Q_EMIT dataChanged(index(0), index(count() - 1), {SelectedRole, CurrentRole});
    Q_EMIT selectionModelChanged();
}

void FlatTreeModel::connectSelection()
{
    if (!m_selectionModel)
        return;
    connect(m_selectionModel, &QItemSelectionModel::selectionChanged, this,
            &FlatTreeModel::changeSelection);
    connect(m_selectionModel, &QItemSelectionModel::currentChanged, this,
            &FlatTreeModel::changeCurrent);
    connect(m_selectionModel, &QObject::destroyed, this, [this] {
        m_rows.clearMarks();
        Q_EMIT selectionModelChanged();
    });
}

void FlatTreeModel::readSelection(const QModelIndex& childrenOf)
{
    if (!m_selectionModel || !m_selectionModel->hasSelection())
        return;
    if (childrenOf.isValid() && !m_arranged) {
        m_rows.markChildren(m_selectionModel->selection(), childrenOf);
    } else {
        std::vector<Node> changed;
        mark(m_selectionModel->selection(), true, changed);
    }
}

void FlatTreeModel::mark(const QItemSelection& ranges, bool selected, std::vector<Node>& changed)
{
    if (!m_arranged)
        return m_rows.mark(ranges, selected, changed);
    SelectionMarker marker(ranges, selected, m_arranged);
    while (!marker.step(m_rows, changed)) {
    }
}

int FlatTreeModel::selectionCount() const
{
    int selected = 0;
    if (m_selectionModel && m_selectionModel->hasSelection()) {
        for (const QItemSelectionRange& range : m_selectionModel->selection())
            selected += range.isValid() && range.left() == 0 ? range.height() : 0;
    }
    return selected;
}

int FlatTreeModel::hiddenSelectionCount() const
{
    if (!m_arranged || !m_selectionModel || !m_selectionModel->hasSelection())
        return 0;
    int hidden = 0;
    for (const QItemSelectionRange& range : m_selectionModel->selection()) {
        if (!range.isValid() || range.model() != origin() || range.left() != 0)
            continue;
        hidden +=
            range.height() - m_arranged->countShown(range.parent(), range.top(), range.bottom());
    }
    return hidden;
}

void FlatTreeModel::changeSelection(const QItemSelection& selected,
                                    const QItemSelection& deselected)
{
    if (m_replacement)
        m_replacement->markAgain();
    // Half-way through a change of the source its row numbers are not ours.
    if (m_pending.source != Change::None) {
        m_delayedMarks.push_back({deselected, false});
        m_delayedMarks.push_back({selected, true});
        return;
    }
    std::vector<Node> changed;
    mark(deselected, false, changed);
    mark(selected, true, changed);
    signalMarks(changed);
}

void FlatTreeModel::signalMarks(const std::vector<Node>& changed)
{
    if (changed.empty() || count() == 0)
        return;
    const QVector<int> roles{SelectedRole};
    if (changed.size() > signalledMarks) {
        Q_EMIT dataChanged(index(0), index(count() - 1), roles);
        return;
    }
    std::vector<int> rows;
    for (const Node node : changed) {
        const auto [root, row] = m_rows.tree().position(node);
        if (root == m_rows.root())
            rows.push_back(row);
    }
    std::sort(rows.begin(), rows.end());
    for (auto first = rows.begin(); first != rows.end();) {
        auto last = first;
        while (last + 1 != rows.end() && *(last + 1) <= *last + 1)
            ++last;
        Q_EMIT dataChanged(index(*first), index(*last), roles);
        first = last + 1;
    }
}

void FlatTreeModel::changeCurrent(const QModelIndex& current, const QModelIndex& previous)
{
    const int group = m_focusedGroup.isValid() ? m_focusedGroup.row() : -1;
    m_focusedGroup = QPersistentModelIndex();
    if (m_pending.source != Change::None) {
        m_currentDelayed = true;
        return;
    }
    if (group >= 0)
        Q_EMIT dataChanged(index(group), index(group), {CurrentRole});
    for (const QModelIndex& changed : {previous, current}) {
        if (changed.isValid())
            rowChanged(toShown(changed.siblingAtColumn(0)), {CurrentRole});
    }
}

int FlatTreeModel::currentRow() const
{
    if (m_focusedGroup.isValid())
        return m_focusedGroup.row();
    return m_selectionModel ? rowOf(m_selectionModel->currentIndex().siblingAtColumn(0)) : -1;
}

void FlatTreeModel::setCurrentRow(int row)
{
    const int left = currentRow();
    const QModelIndex current = sourceIndex(row);
    m_focusedGroup = current.isValid() ? QModelIndex() : index(row);
    if (current.isValid() && m_selectionModel)
        m_selectionModel->setCurrentIndex(current, QItemSelectionModel::NoUpdate);
    for (const int changed : {left, row}) {
        if (changed >= 0 && changed < count())
            Q_EMIT dataChanged(index(changed), index(changed), {CurrentRole});
    }
}

} // namespace kyr::panel
