// Selection, current row and hover of an outline. Marks follow the selection model's deltas; asking
// it for each row would scan all its ranges each time.

#include "outline_model.h"

#include <algorithm>

namespace kyr::panel {

namespace {

/// More marks than this are signalled as one range over the whole list.
constexpr std::size_t signalledMarks = 64;

} // namespace

void OutlineModel::setSelectionModel(QItemSelectionModel* selectionModel)
{
    if (selectionModel == m_selection)
        return;
    if (m_selection)
        m_selection->disconnect(this);
    m_selection = selectionModel;
    if (m_selection) {
        using Selection = QItemSelectionModel;
        connect(m_selection, &Selection::selectionChanged, this, &OutlineModel::changeSelection);
        connect(m_selection, &Selection::selectionChanged, this,
                [this] { Q_EMIT selectionChanged(); });
        connect(m_selection, &Selection::currentChanged, this, &OutlineModel::changeCurrent);
        // The pointer to it is null by then.
        connect(m_selection, &QObject::destroyed, this, [this] { followSelection(); });
    }
    followSelection();
}

void OutlineModel::followSelection()
{
    readSelection();
    allChanged({SelectedRole, CurrentRole, HiddenSelectedRole});
    Q_EMIT selectionModelChanged();
    Q_EMIT selectedCountChanged();
}

/// Marks all anew.
void OutlineModel::readSelection()
{
    m_mirror.clearSelection();
    std::vector<Node> marked;
    if (m_selection && m_selection->hasSelection())
        mark(m_selection->selection(), true, marked);
    if (m_arranged)
        m_arranged->countSelectedAnew();
}

void OutlineModel::mark(const QItemSelection& ranges, bool on, std::vector<Node>& changed)
{
    const std::vector<Node> marked = m_mirror.select(ranges, on);
    if (m_arranged)
        m_arranged->selected(marked, on);
    changed.insert(changed.end(), marked.begin(), marked.end());
}

void OutlineModel::changeSelection(const QItemSelection& selected, const QItemSelection& deselected)
{
    // Half-way through a change of the scene its row numbers are not ours.
    if (m_mirror.isChanging()) {
        m_delayedMarks.emplace_back(deselected, false);
        m_delayedMarks.emplace_back(selected, true);
        return;
    }
    std::vector<Node> changed;
    mark(deselected, false, changed);
    mark(selected, true, changed);
    signalMarks(changed);
}

void OutlineModel::signalMarks(const std::vector<Node>& changed)
{
    const QVector<int> roles{SelectedRole, HiddenSelectedRole};
    if (changed.size() > signalledMarks) {
        allChanged(roles);
    } else {
        std::vector<int> numbers;
        // Of rows that do not show, the one that hides them.
        for (const Node node : changed) {
            if (shown(node) != RowTree::none)
                numbers.push_back(rows().nearestRow(node));
        }
        std::sort(numbers.begin(), numbers.end());
        for (auto first = numbers.begin(); first != numbers.end();) {
            auto last = first;
            while (last + 1 != numbers.end() && *(last + 1) <= *last + 1)
                ++last;
            if (*last < count())
                Q_EMIT dataChanged(index(*first), index(*last), roles);
            first = last + 1;
        }
    }
    Q_EMIT selectedCountChanged();
}

int OutlineModel::hiddenSelectedCount() const
{
    return m_arranged ? selectedCount() - m_arranged->selectedIn({0, m_arranged->size()}) : 0;
}

void OutlineModel::changeCurrent(const QModelIndex& current, const QModelIndex& previous)
{
    const Node group = std::exchange(m_focusedGroup, RowTree::none);
    if (m_mirror.isChanging()) {
        m_currentDelayed = true;
        return;
    }
    for (const Node node : {group, m_mirror.nodeOf(previous), m_mirror.nodeOf(current)})
        rowChanged(node, {CurrentRole});
}

void OutlineModel::setCurrentRow(int row)
{
    const Node left = currentNode();
    const Node node = nodeAt(row);
    m_focusedGroup = isGroupNode(node) ? node : RowTree::none;
    if (m_selection && node != RowTree::none && !isGroupNode(node))
        m_selection->setCurrentIndex(sourceIndex(row), QItemSelectionModel::NoUpdate);
    rowChanged(left, {CurrentRole});
    rowChanged(node, {CurrentRole});
}

/// Keeps the rows that the scene says the pointer is over, for those that hide them.
void OutlineModel::updateHovered(const QModelIndex& first, const QModelIndex& last)
{
    for (int number = first.row(); number <= last.row(); ++number) {
        const QModelIndex index = first.sibling(number, 0);
        const bool hovered = index.data(m_hoverRole).toBool();
        const Node node = hovered ? m_mirror.read(index) : m_mirror.nodeOf(index);
        const auto known = std::find(m_hovered.begin(), m_hovered.end(), node);
        if (node == RowTree::none || hovered == (known != m_hovered.end()))
            continue;
        if (hovered)
            m_hovered.push_back(node);
        else
            m_hovered.erase(known);
        rowChanged(node, {HiddenHoveredRole});
    }
}

} // namespace kyr::panel
