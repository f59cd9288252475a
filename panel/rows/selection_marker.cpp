#include "selection_marker.h"

#include <panel/arrangement/arranged_tree_model.h>

namespace kyr::panel {

bool SelectionMarker::startRange(const SourceRows& rows)
{
    const QAbstractItemModel* origin = m_arranged ? m_arranged->sourceModel() : rows.source();
    while (++m_range < m_ranges.size()) {
        const QItemSelectionRange& range = m_ranges[m_range];
        if (!range.isValid() || range.model() != origin || range.left() > 0)
            continue;
        m_originParent = range.parent();
        m_row = range.top();
        m_last = range.bottom();
        if (m_arranged)
            return true;
        m_parent = m_originParent;
        m_family = rows.familyOf(m_parent);
        if (m_family)
            return true;
    }
    return false;
}

bool SelectionMarker::step(SourceRows& rows, std::vector<RowTree::Node>& changed)
{
    if (m_row > m_last && !startRange(rows))
        return true;
    int number = m_row++;
    if (m_arranged) {
        const QModelIndex origin = m_arranged->sourceModel()->index(number, 0, m_originParent);
        const QModelIndex shown = m_arranged->mapFromSource(origin);
        if (!shown.isValid())
            return false;
        if (!m_family || shown.parent() != m_parent) {
            m_parent = shown.parent();
            m_family = rows.familyOf(m_parent);
        }
        number = shown.row();
    }
    const RowTree::Node node = m_family ? rows.childOf(*m_family, number) : RowTree::none;
    if (node != RowTree::none)
        rows.markNode(node, m_selected, changed);
    return false;
}

} // namespace kyr::panel
