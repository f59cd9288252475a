// Opening and closing rows of an outline.

#include "outline_model.h"

namespace kyr::panel {

void OutlineModel::setExpanded(const QModelIndex& sourceIndex, bool expanded)
{
    if (canOpen())
        open(shown(m_mirror.read(sourceIndex)), expanded);
}

void OutlineModel::setBranchExpanded(const QModelIndex& sourceIndex, bool expanded)
{
    if (canOpen())
        openBranch(shown(m_mirror.read(sourceIndex)), expanded);
}

/// In a flat list nothing is below anything.
bool OutlineModel::canOpen(Node node) const
{
    return canOpen() && node != RowTree::none &&
           (!m_rules || m_rules->nests() || isGroupNode(node));
}

/// What is below the row is read; the scene may fetch it first.
void OutlineModel::readToOpen(Node node)
{
    const QModelIndex index = m_mirror.indexOf(node);
    if (!index.isValid())
        return;
    if (sourceModel()->canFetchMore(index))
        sourceModel()->fetchMore(index);
    m_mirror.readChildren(node);
}

void OutlineModel::open(Node node, bool on)
{
    if (!canOpen(node) || rows().isOpen(node) == on)
        return;
    if (on)
        readToOpen(node);
    const RowTree::Position at = rows().position(node);
    const RowTree::Range below{at.order + 1, rows().branchEnd(node)};
    const int row = at.shown ? at.rowsAbove : -1;
    if (row >= 0 && on)
        announceInsertion(row + 1, rows().countIfShown(below));
    else if (row >= 0)
        announceRemoval(row + 1, rows().rowsBefore(below.end) - row - 1);
    if (followsScene())
        m_mirror.setOpen(node, m_arranged ? m_mirror.rows().below(node) : below, on);
    else
        m_mirror.marks().set(node, rows().closedBy(), !on);
    if (m_arranged)
        m_arranged->opened(node, below, on);
    endAnnounced();
    if (followsScene())
        m_mirror.writeBack(node);
    if (limited(row) >= 0)
        Q_EMIT dataChanged(index(row), index(row),
                           {ExpandedRole, HiddenSelectedRole, HiddenHoveredRole});
}

void OutlineModel::openBranch(Node node, bool on)
{
    if (!canOpen(node))
        return;
    if (on)
        readToOpen(node);
    // Closed first, a branch comes and goes with one signal, however much of it was open.
    const bool wasOpen = rows().isOpen(node);
    open(node, false);
    if (followsScene()) {
        m_mirror.setBranchOpen(node, on);
        m_writesBack = true;
        m_slices.start(0);
    }
    if (m_arranged)
        m_arranged->setBranchOpen(node, on);
    if (on && (wasOpen || rows().hasBranch(node)))
        open(node, true);
}

void OutlineModel::openAll(bool on)
{
    if (!canOpen())
        return;
    if (m_rules && !m_rules->nests()) {
        for (const RowTree::Row& row : rows().allRows()) {
            if (isGroupNode(row.node))
                open(row.node, on);
        }
        return;
    }
    beginReset();
    if (followsScene()) {
        m_mirror.setAllOpen(on);
        m_writesBack = true;
        m_slices.start(0);
    }
    if (m_arranged)
        m_arranged->setAllOpen(on);
    endReset();
}

int OutlineModel::reveal(const QModelIndex& sourceIndex)
{
    const Node wanted = canOpen() ? shown(m_mirror.read(sourceIndex)) : RowTree::none;
    if (wanted == RowTree::none)
        return -1;
    std::vector<Node> closed;
    const Node hiding = rows().at(rows().nearestRow(wanted));
    for (Node above = wanted; above != hiding;) {
        above = rows().parent(above);
        if (!rows().isOpen(above))
            closed.push_back(above);
    }
    // From below upwards, so that all come with the signal of the last.
    for (const Node above : closed)
        open(above, true);
    return rows().row(wanted);
}

} // namespace kyr::panel
