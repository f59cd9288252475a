// The flat tree over an arranged model: what it shows, and what it speaks of.

#include "flat_tree_model.h"

namespace kyr::panel {

QAbstractItemModel* FlatTreeModel::originOf(QAbstractItemModel* source)
{
    const auto* arranged = qobject_cast<ArrangedTreeModel*>(source);
    return arranged ? arranged->sourceModel() : source;
}

QModelIndex FlatTreeModel::toOrigin(const QModelIndex& shown) const
{
    if (!m_arranged)
        return shown;
    // An origin that is being destroyed can be asked for nothing.
    return m_origin ? m_arranged->mapToSource(shown) : QModelIndex();
}

QModelIndex FlatTreeModel::toShown(const QModelIndex& origin) const
{
    return m_arranged ? m_arranged->mapFromSource(origin) : origin;
}

QModelIndex FlatTreeModel::sourceIndex(int row) const
{
    return toOrigin(shownIndex(row));
}

bool FlatTreeModel::isGroup(int row) const
{
    return m_arranged && row >= 0 && row < count() && !sourceIndex(row).isValid();
}

void FlatTreeModel::rememberRows()
{
    m_memory.take(m_rows, [this](const QModelIndex& shown) { return toOrigin(shown); });
}

void FlatTreeModel::restoreRows()
{
    m_memory.restore(m_rows, ExpansionMemory::viewOf(m_arranged),
                     [this](const QModelIndex& shown) { return toOrigin(shown); });
}

} // namespace kyr::panel
