#pragma once

#include <panel/arrangement/arranged_tree_model.h>
#include <panel/arrangement/sliced_sort.h>

#include <optional>

namespace kyr::panel {

/// Sorts the children of one row after the other, in parts.
class ArrangedTreeModel::Sorter
{
public:
    explicit Sorter(ArrangedTreeModel& model)
        : m_less{model.m_settings.sorting.order}, m_rows(model.m_rows)
    {
        if (model.m_settings.arrangement != Arrangement::ByType)
            m_parents.push_back(&model.m_root);
        for (auto& [type, group] : model.m_groups)
            m_parents.push_back(&group);
    }

    /// Does a little; true when all is sorted.
    bool step()
    {
        if (!m_current && !(m_current = nextParent()))
            return true;
        if (!m_sort)
            m_sort.emplace(m_current->shownChildren, m_less);
        if (m_sort->step()) {
            m_sort.reset();
            m_current->numberShown();
            m_current = nullptr;
        }
        return false;
    }

private:
    struct Less
    {
        Qt::SortOrder order;
        bool operator()(const Row* a, const Row* b) const
        {
            return SortKey::precedes(a->key, b->key, order);
        }
    };

    Row* nextParent()
    {
        while (m_next < m_parents.size() + m_rows.size()) {
            Row* row =
                m_next < m_parents.size() ? m_parents[m_next] : &m_rows[m_next - m_parents.size()];
            ++m_next;
            if (row->shownChildren.size() > 1)
                return row;
        }
        return nullptr;
    }

    Less m_less;
    Rows m_parents; ///< Those that are no source rows.
    std::deque<Row>& m_rows;
    std::size_t m_next = 0;
    Row* m_current = nullptr;
    std::optional<SlicedSort<Row*, Less>> m_sort;
};

} // namespace kyr::panel
