// Selection, current row and hover of an outline. Marks follow the selection model's deltas; asking
// it for each row would scan all its ranges each time.

#include "outline_core.h"

#include <algorithm>

namespace kyr::panel {

namespace {

/// More marks than this are signalled as one range over the whole list.
constexpr std::size_t signalledMarks = 64;

} // namespace

void OutlineModel::setSelectionModel(QItemSelectionModel* selectionModel)
{
    if (selectionModel == m_core->m_selection)
        return;
    if (m_core->m_selection)
        m_core->m_selection->disconnect(this);
    m_core->m_selection = selectionModel;
    m_core->connectSelection();
    m_core->readSelection();
    m_core->allChanged({SelectedRole, CurrentRole, HiddenSelectedRole});
    Q_EMIT selectionModelChanged();
    Q_EMIT selectedCountChanged();
}

void OutlineModel::Core::connectSelection()
{
    if (!m_selection)
        return;
    using Selection = QItemSelectionModel;
    QObject::connect(m_selection, &Selection::selectionChanged, &q,
                     [this](const QItemSelection& selected, const QItemSelection& deselected) {
                         changeSelection(selected, deselected);
                     });
    QObject::connect(m_selection, &Selection::currentChanged, &q,
                     [this](const QModelIndex& current, const QModelIndex& previous) {
                         changeCurrent(current, previous);
                     });
    QObject::connect(m_selection, &QObject::destroyed, &q, [this] {
        readSelection();
        allChanged({SelectedRole, CurrentRole, HiddenSelectedRole});
        Q_EMIT q.selectionModelChanged();
        Q_EMIT q.selectedCountChanged();
    });
}

/// Marks all anew.
void OutlineModel::Core::readSelection()
{
    m_current.reset();
    m_mirror.clearMarks();
    std::vector<Node> marked;
    if (m_selection && m_selection->hasSelection())
        m_mirror.mark(m_selection->selection(), true, marked);
    if (!m_arranged)
        return;
    std::vector<Node> changed[2];
    for (const Node shown : rows().allRows()) {
        const bool selected = m_mirror.rows().has(sceneNode(shown), RowTree::Selected);
        if (rows().has(shown, RowTree::Selected) != selected)
            changed[selected ? 1 : 0].push_back(shown);
    }
    m_arranged->tree.mark(changed[0], false);
    m_arranged->tree.mark(changed[1], true);
}

void OutlineModel::Core::mark(const QItemSelection& ranges, bool selected,
                              std::vector<Node>& changed)
{
    std::vector<Node> marked;
    m_mirror.mark(ranges, selected, marked);
    for (Node& node : marked)
        node = shownNode(node);
    marked.erase(std::remove(marked.begin(), marked.end(), RowTree::none), marked.end());
    if (m_arranged)
        m_arranged->tree.mark(marked, selected);
    changed.insert(changed.end(), marked.begin(), marked.end());
}

void OutlineModel::Core::changeSelection(const QItemSelection& selected,
                                         const QItemSelection& deselected)
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

void OutlineModel::Core::signalMarks(const std::vector<Node>& changed)
{
    const QVector<int> roles{SelectedRole, HiddenSelectedRole};
    if (changed.size() > signalledMarks) {
        allChanged(roles);
    } else {
        std::vector<int> numbers;
        // Of rows that do not show, the one that hides them.
        for (const Node node : changed)
            numbers.push_back(rows().nearestRow(node));
        std::sort(numbers.begin(), numbers.end());
        for (auto first = numbers.begin(); first != numbers.end();) {
            auto last = first;
            while (last + 1 != numbers.end() && *(last + 1) <= *last + 1)
                ++last;
            if (*last < count())
                Q_EMIT q.dataChanged(q.index(*first), q.index(*last), roles);
            first = last + 1;
        }
    }
    Q_EMIT q.selectedCountChanged();
}

void OutlineModel::Core::changeCurrent(const QModelIndex& current, const QModelIndex& previous)
{
    const Node group =
        m_focusedGroup && m_arranged ? m_arranged->group(*m_focusedGroup) : RowTree::none;
    m_focusedGroup.reset();
    m_current.reset();
    if (m_mirror.isChanging()) {
        m_currentDelayed = true;
        return;
    }
    rowChanged(group, {CurrentRole});
    for (const QModelIndex& changed : {previous, current})
        rowChanged(shownNode(m_mirror.nodeOf(changed.siblingAtColumn(0))), {CurrentRole});
}

int OutlineModel::Core::currentRow() const
{
    if (m_focusedGroup)
        return m_arranged ? rows().row(m_arranged->group(*m_focusedGroup)) : -1;
    if (!m_current || *m_current == RowTree::none)
        m_current = m_selection ? m_mirror.nodeOf(m_selection->currentIndex().siblingAtColumn(0))
                                : RowTree::none;
    return rows().row(shownNode(*m_current));
}

int OutlineModel::currentRow() const
{
    const int row = m_core->currentRow();
    return row < count() ? row : -1;
}

void OutlineModel::setCurrentRow(int row)
{
    const int left = currentRow();
    const QModelIndex current = sourceIndex(row);
    m_core->m_focusedGroup.reset();
    if (isGroup(row))
        m_core->m_focusedGroup = m_core->m_arranged->type(m_core->rowNode(row));
    if (current.isValid() && selectionModel())
        selectionModel()->setCurrentIndex(current, QItemSelectionModel::NoUpdate);
    for (const int changed : {left, row}) {
        if (changed >= 0 && changed < count())
            Q_EMIT dataChanged(index(changed), index(changed), {CurrentRole});
    }
}

/// Keeps the rows that the scene says the pointer is over, for those that hide them.
void OutlineModel::Core::updateHovered(const QModelIndex& first, const QModelIndex& last)
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
        const Node shown = shownNode(node);
        const int row = shown == RowTree::none ? -1 : rows().nearestRow(shown);
        if (row >= 0 && row < count())
            Q_EMIT q.dataChanged(q.index(row), q.index(row), {HiddenHoveredRole});
    }
}

} // namespace kyr::panel
