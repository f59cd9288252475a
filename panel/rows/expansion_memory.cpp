#include "expansion_memory.h"

#include <panel/arrangement/arranged_tree_model.h>

namespace kyr::panel {

namespace {

constexpr quint32 keptFlags = RowTree::Expanded | RowTree::IgnoresWishes;

} // namespace

ExpansionMemory::View ExpansionMemory::viewOf(const ArrangedTreeModel* arranged)
{
    using Arrangement = ArrangedTreeModel::Arrangement;
    if (!arranged)
        return View::Tree;
    switch (arranged->settings().arrangement) {
    case Arrangement::Flat:
        return View::List;
    case Arrangement::ByType:
        return View::Groups;
    case Arrangement::Hierarchy:
        break;
    }
    return arranged->isFiltering() ? View::Found : View::Tree;
}

void ExpansionMemory::clear()
{
    *this = {};
}

bool ExpansionMemory::startTaking(const SourceRows& rows)
{
    const QAbstractItemModel& source = *rows.source();
    switch (m_view) {
    case View::Tree:
        m_rootFlags = rows.rootFlags() & keptFlags;
        m_tree.clear();
        return true;
    case View::Found:
        m_closedFound.clear();
        return !m_forgetsFound;
    case View::Groups:
        m_closedGroups.clear();
        for (int row = 0; row < source.rowCount(); ++row) {
            if (!rows.tree().has(rows.childOf({}, row), RowTree::Expanded))
                m_closedGroups.insert(source.index(row, 0).data().toString());
        }
        return false;
    case View::List:
        break;
    }
    return false;
}

void ExpansionMemory::take(const SourceRows& rows, RowTree::Node node, const QModelIndex& shown)
{
    const RowTree& tree = rows.tree();
    const SourceRows::Start start{tree.flags(node) & keptFlags, tree.hidden(node) != RowTree::none};
    if (m_view == View::Tree) {
        if (start.flags != 0 || start.keepsHidden || rows.source()->hasChildren(shown))
            m_tree.push_back({ArrangedTreeModel::originOf(shown), start});
    } else if (!tree.has(node, RowTree::Expanded) && rows.source()->hasChildren(shown)) {
        m_closedFound.push_back({ArrangedTreeModel::originOf(shown), {}});
    }
}

void ExpansionMemory::startRestoring(View view)
{
    if (m_forgetsFound || m_view != View::Found)
        m_closedFound.clear();
    m_forgetsFound = false;
    m_view = view;
    m_starts.clear();
    m_restored = 0;
}

bool ExpansionMemory::restoreSome(int count)
{
    if (m_view != View::Tree && m_view != View::Found)
        return true;
    const QVector<SavedRow>& saved = m_view == View::Tree ? m_tree : m_closedFound;
    if (m_restored == 0)
        m_starts.reserve(saved.size());
    for (; count > 0 && m_restored < saved.size(); --count) {
        const SavedRow& row = saved[m_restored++];
        if (row.index.isValid())
            m_starts.insert(row.index, row.start);
    }
    return m_restored == saved.size();
}

SourceRows::StartOf ExpansionMemory::startOf(const SourceRows& rows) const
{
    const SourceRows::Start open{RowTree::Expanded, false};
    const auto known = [this](const QModelIndex& shown) {
        return m_starts.isEmpty() ? m_starts.end()
                                  : m_starts.find(ArrangedTreeModel::originOf(shown));
    };
    switch (m_view) {
    case View::Tree:
        return [this, known, wishes = rows.wishes()](const QModelIndex& shown, quint32 parent) {
            const auto start = known(shown);
            return start == m_starts.end() ? wishes(shown, parent) : *start;
        };
    case View::Found:
        return [this, known, open](const QModelIndex& shown, quint32) {
            const auto closed = known(shown);
            return closed == m_starts.end() ? open : *closed;
        };
    case View::Groups:
        return [this, open](const QModelIndex& shown, quint32) {
            const bool isOpen =
                !shown.parent().isValid() && !m_closedGroups.contains(shown.data().toString());
            return isOpen ? open : SourceRows::Start();
        };
    case View::List:
        break;
    }
    return [](const QModelIndex&, quint32) { return SourceRows::Start(); };
}

} // namespace kyr::panel
