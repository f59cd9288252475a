#include "expansion_memory.h"

#include "arranged_tree_model.h"

#include <QHash>

namespace kyr::panel {

namespace {

constexpr quint32 keptFlags = RowTree::Expanded | RowTree::IgnoresWishes;

template <typename SavedRows>
QHash<QModelIndex, SourceRows::Start> startsByIndex(const SavedRows& rows)
{
    QHash<QModelIndex, SourceRows::Start> starts;
    starts.reserve(int(rows.size()));
    for (const auto& row : rows) {
        if (row.index.isValid())
            starts.insert(row.index, row.start);
    }
    return starts;
}

} // namespace

ExpansionMemory::View ExpansionMemory::viewOf(const ArrangedTreeModel* arranged)
{
    using Arrangement = ArrangedTreeModel::Arrangement;
    if (!arranged)
        return View::Tree;
    switch (arranged->arrangement()) {
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

void ExpansionMemory::take(const SourceRows& rows,
                           const std::function<QModelIndex(const QModelIndex&)>& toOrigin)
{
    const QAbstractItemModel& source = *rows.source();
    const RowTree& tree = rows.tree();
    switch (m_view) {
    case View::Tree:
        m_rootFlags = rows.rootFlags() & keptFlags;
        m_tree.clear();
        rows.visitKnown([&](RowTree::Node node, const QModelIndex& index) {
            const SourceRows::Start start{tree.flags(node) & keptFlags,
                                          tree.hidden(node) != RowTree::none};
            if (start.flags != 0 || start.keepsHidden || source.hasChildren(index))
                m_tree.push_back({toOrigin(index), start});
        });
        break;
    case View::Found:
        m_closedFound.clear();
        rows.visitKnown([&](RowTree::Node node, const QModelIndex& index) {
            if (!tree.has(node, RowTree::Expanded) && source.hasChildren(index))
                m_closedFound.push_back({toOrigin(index), {}});
        });
        break;
    case View::Groups:
        m_closedGroups.clear();
        for (int row = 0; row < source.rowCount(); ++row) {
            if (!tree.has(rows.childOf({}, row), RowTree::Expanded))
                m_closedGroups.insert(source.index(row, 0).data().toString());
        }
        break;
    case View::List:
        break;
    }
}

void ExpansionMemory::restore(SourceRows& rows, View view,
                              const std::function<QModelIndex(const QModelIndex&)>& toOrigin)
{
    const SourceRows::Start open{RowTree::Expanded, false};
    if (m_forgetsFound || m_view != View::Found)
        m_closedFound.clear();
    m_forgetsFound = false;
    m_view = view;
    switch (view) {
    case View::Tree: {
        const auto starts = startsByIndex(m_tree);
        const SourceRows::StartOf wishes = rows.wishes();
        const auto startOf = [&](const QModelIndex& index, quint32 parentFlags) {
            const auto start = starts.isEmpty() ? starts.end() : starts.find(toOrigin(index));
            return start == starts.end() ? wishes(index, parentFlags) : *start;
        };
        rows.rebuild(startOf, m_rootFlags);
        break;
    }
    case View::Found: {
        const auto closed = startsByIndex(m_closedFound);
        const auto startOf = [&](const QModelIndex& index, quint32) {
            const bool isClosed = !closed.isEmpty() && closed.contains(toOrigin(index));
            return isClosed ? SourceRows::Start() : open;
        };
        rows.rebuild(startOf, 0);
        break;
    }
    case View::Groups: {
        const auto startOf = [&](const QModelIndex& index, quint32) {
            const bool isOpen =
                !index.parent().isValid() && !m_closedGroups.contains(index.data().toString());
            return isOpen ? open : SourceRows::Start();
        };
        rows.rebuild(startOf, 0);
        break;
    }
    case View::List:
        rows.rebuild([](const QModelIndex&, quint32) { return SourceRows::Start(); }, 0);
        break;
    }
}

} // namespace kyr::panel
