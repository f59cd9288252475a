// Opening and closing rows of an outline.

#include "outline_core.h"

namespace kyr::panel {

void OutlineModel::setExpanded(const QModelIndex& sourceIndex, bool expanded)
{
    if (m_core->canOpen())
        m_core->setExpanded(m_core->readNode(sourceIndex), expanded);
}

void OutlineModel::setBranchExpanded(const QModelIndex& sourceIndex, bool expanded)
{
    if (m_core->canOpen())
        m_core->setBranchExpanded(m_core->readNode(sourceIndex), expanded);
}

void OutlineModel::setRowExpanded(int row, bool expanded)
{
    m_core->setExpanded(m_core->rowNode(row), expanded);
}

void OutlineModel::setRowBranchExpanded(int row, bool expanded)
{
    m_core->setBranchExpanded(m_core->rowNode(row), expanded);
}

void OutlineModel::expandAll()
{
    m_core->setAllExpanded(true);
}

void OutlineModel::collapseAll()
{
    m_core->setAllExpanded(false);
}

int OutlineModel::reveal(const QModelIndex& sourceIndex)
{
    return m_core->canOpen() ? m_core->reveal(sourceIndex) : -1;
}

/// What is below the row is read; the scene may fetch it first.
void OutlineModel::Core::prepareToOpen(Node shown)
{
    const Node node = sceneNode(shown);
    if (node == RowTree::none)
        return;
    const QModelIndex index = m_mirror.indexOf(node);
    if (m_mirror.model()->canFetchMore(index))
        m_mirror.model()->fetchMore(index);
    const bool ignored = m_mirror.rows().has(node, RowTree::IgnoresWishes);
    m_mirror.readChildren(node);
    // Rows that stay closed against their wish.
    if (ignored)
        writeBackSoon();
}

void OutlineModel::Core::setExpanded(Node shown, bool on)
{
    if (!canOpen() || !canOpen(shown) || rows().has(shown, RowTree::Expanded) == on)
        return;
    if (on)
        prepareToOpen(shown);
    showBranch(shown, on);
    rememberOpen(shown, on);
    rowChanged(shown, {ExpandedRole, HiddenSelectedRole, HiddenHoveredRole});
}

/// Opens or closes a row of the list, with the signals for it.
void OutlineModel::Core::showBranch(Node shown, bool on)
{
    const int row = rows().row(shown);
    const int below = row < 0 ? 0
                      : on    ? rows().countToOpen(shown)
                              : rows().rowsBefore(rows().branchEnd(shown)) - row - 1;
    if (on)
        announceInsertion(row + 1, below);
    else
        announceRemoval(row + 1, below);
    if (m_arranged)
        m_arranged->tree.setExpanded(shown, on);
    else
        m_mirror.setExpanded(shown, on);
    endAnnounced();
}

void OutlineModel::Core::rememberOpen(Node shown, bool on)
{
    const Node node = sceneNode(shown);
    if (node == RowTree::none && on) {
        m_closedGroups.remove(m_arranged->type(shown));
    } else if (node == RowTree::none) {
        m_closedGroups.insert(m_arranged->type(shown));
    } else if (followsScene()) {
        m_mirror.setExpanded(node, on);
        m_mirror.writeBack(node);
    } else if (m_rules->filters()) {
        m_mirror.setClosedWhileFound(node, !on);
    }
}

void OutlineModel::Core::setBranchExpanded(Node shown, bool on)
{
    if (!canOpen() || !canOpen(shown))
        return;
    if (on)
        prepareToOpen(shown);
    // Closed first, a branch comes and goes with one signal, however much of it was open.
    const bool wasOpen = rows().has(shown, RowTree::Expanded);
    if (wasOpen)
        showBranch(shown, false);
    const Node node = sceneNode(shown);
    if (followsScene()) {
        m_mirror.setExpanded(node, false);
        m_mirror.setBranchExpanded(node, on);
        writeBackSoon();
    } else if (m_rules->filters() && node != RowTree::none) {
        const Node end = rows().afterBranch(shown);
        for (Node below = rows().next(shown); below != end; below = rows().next(below)) {
            if (!on || rows().hasBranch(below))
                m_mirror.setClosedWhileFound(sceneNode(below), !on);
        }
    }
    if (m_arranged)
        m_arranged->tree.setBranchExpanded(shown, on);
    if (on && (wasOpen || rows().hasBranch(shown)))
        showBranch(shown, true);
    rememberOpen(shown, rows().has(shown, RowTree::Expanded));
    rowChanged(shown, {ExpandedRole, HiddenSelectedRole, HiddenHoveredRole});
}

void OutlineModel::Core::setAllExpanded(bool on)
{
    if (!canOpen())
        return;
    q.beginResetModel();
    m_indexedRow = -1;
    if (followsScene()) {
        m_mirror.setAllExpanded(on);
        writeBackSoon();
    }
    if (m_arranged) {
        m_arranged->tree.setAllExpanded(on);
        if (!followsScene()) {
            for (const Node shown : rows().allRows()) {
                if (m_rules->filters() || m_arranged->isGroup(shown))
                    rememberOpen(shown, on);
            }
        }
    }
    q.endResetModel();
}

int OutlineModel::Core::reveal(const QModelIndex& index)
{
    const Node wanted = readNode(index);
    if (wanted == RowTree::none)
        return -1;
    std::vector<Node> closed;
    for (Node above = wanted; !rows().position(above).shown;) {
        above = rows().place(above).parent;
        if (!rows().has(above, RowTree::Expanded))
            closed.push_back(above);
    }
    // From below upwards, so that all come with the signal of the last.
    for (const Node above : closed)
        setExpanded(above, true);
    return rows().row(wanted);
}

void OutlineModel::Core::writeBackSoon()
{
    m_writesBack = true;
    m_slices.start();
}

} // namespace kyr::panel
