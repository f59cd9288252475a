#include "row_handle.h"

namespace kyr::panel {

bool RowHandle::assign(int row)
{
    const QModelIndex index = m_outline ? m_outline->sourceIndex(row) : QModelIndex();
    // A row that was removed meanwhile left an invalid index behind, which is still a change.
    if (m_index == index && m_assigned == index.isValid())
        return false;
    m_index = index;
    m_assigned = index.isValid();
    return true;
}

bool RowHandle::standsFor(int row) const
{
    return m_outline && m_index.isValid() && m_outline->sourceIndex(row) == m_index;
}

int RowHandle::row() const
{
    return m_outline ? m_outline->nearestRow(m_index) : -1;
}

} // namespace kyr::panel
