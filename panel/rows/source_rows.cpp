#include "source_rows.h"

#include "row_reader.h"

#include <QAbstractItemModel>
#include <QVarLengthArray>

namespace kyr::panel {

namespace {

/// Row numbers from the index up to a top row.
using Path = QVarLengthArray<int, 32>;

} // namespace

void SourceRows::setSource(QAbstractItemModel* source, int wishRole)
{
    m_source = source;
    m_wishRole = wishRole;
}

void SourceRows::reset(quint32 flags)
{
    m_tree.clear();
    m_root = RowTree::none;
    m_rootFlags = flags;
}

void SourceRows::rebuild(const StartOf& startOf, quint32 flags)
{
    reset(flags);
    if (m_source)
        m_root = readChildren({}, flags, 0, startOf);
}

void SourceRows::setSequence(Node owner, Node root)
{
    if (owner == RowTree::none)
        m_root = root;
    else
        m_tree.setHidden(owner, root);
}

void SourceRows::insert(Node owner, int row, Node block)
{
    Node root = sequence(owner);
    m_tree.insert(root, row, block);
    setSequence(owner, root);
}

SourceRows::Node SourceRows::cut(Node owner, int first, int count)
{
    Node root = sequence(owner);
    const Node block = m_tree.cut(root, first, count);
    setSequence(owner, root);
    return block;
}

SourceRows::Node SourceRows::childOf(const Family& family, int number) const
{
    return family.parent == family.owner ? m_tree.topRow(sequence(family.owner), number)
                                         : m_tree.child(family.parent, number);
}

int SourceRows::rowOfChild(const Family& family, int number) const
{
    const Node child = childOf(family, number);
    if (child != RowTree::none)
        return m_tree.row(child);
    const Node root = sequence(family.owner);
    return family.parent == family.owner ? m_tree.count(root) : rowAfterBranch(family.parent, root);
}

int SourceRows::rowAfterBranch(Node node, Node root) const
{
    const Node after = m_tree.afterBranch(node);
    return after == RowTree::none ? m_tree.count(root) : m_tree.row(after);
}

int SourceRows::childDepth(const Family& family) const
{
    return family.parent == RowTree::none ? 0 : m_tree.depth(family.parent) + 1;
}

std::optional<SourceRows::Family> SourceRows::familyOf(const QModelIndex& sourceParent) const
{
    Path path;
    for (QModelIndex index = sourceParent; index.isValid(); index = index.parent()) {
        if (index.model() != m_source || index.column() != 0)
            return {};
        path.append(index.row());
    }
    Family family;
    for (int level = path.size() - 1; level >= 0; --level) {
        const Node node = childOf(family, path[level]);
        if (node == RowTree::none)
            return {};
        if (m_tree.has(node, RowTree::Expanded))
            family.parent = node;
        else if (m_tree.hidden(node) != RowTree::none)
            family = {node, node};
        else
            return {};
    }
    return family;
}

std::optional<SourceRows::Family> SourceRows::readFamilyOf(const QModelIndex& sourceParent)
{
    std::vector<QModelIndex> missing;
    QModelIndex index = sourceParent;
    std::optional<Family> family = familyOf(index);
    while (!family) {
        if (!index.isValid() || index.model() != m_source || index.column() != 0)
            return {};
        missing.push_back(index);
        index = index.parent();
        family = familyOf(index);
    }
    for (; !missing.empty(); missing.pop_back()) {
        const QModelIndex& parent = missing.back();
        // A wish may have opened it while its parent was read.
        if ((family = familyOf(parent)))
            continue;
        const Node node = nodeOf(parent);
        if (node == RowTree::none)
            return {};
        const int depth = m_tree.depth(node) + 1;
        const Node hidden = readChildren(parent, m_tree.flags(node), depth, wishes());
        m_tree.setHidden(node, hidden);
        // Without children nothing is kept; they go where they would be once there are some.
        family = Family{node, node};
    }
    return family;
}

SourceRows::Node SourceRows::nodeOf(const QModelIndex& sourceIndex) const
{
    if (!sourceIndex.isValid() || sourceIndex.model() != m_source || sourceIndex.column() != 0)
        return RowTree::none;
    const std::optional<Family> family = familyOf(sourceIndex.parent());
    return family ? childOf(*family, sourceIndex.row()) : RowTree::none;
}

QModelIndex SourceRows::indexOf(Node visibleNode) const
{
    Path path;
    for (Node node = visibleNode; node != RowTree::none;) {
        const RowTree::Place place = m_tree.place(node);
        path.append(place.number);
        node = place.parent;
    }
    QModelIndex index;
    for (int level = path.size() - 1; level >= 0; --level)
        index = m_source->index(path[level], 0, index);
    return index;
}

bool SourceRows::ignoresWishes(const QModelIndex& sourceParent) const
{
    quint32 flags = m_rootFlags;
    for (QModelIndex index = sourceParent; index.isValid(); index = index.parent()) {
        if (const Node node = nodeOf(index); node != RowTree::none) {
            flags = m_tree.flags(node);
            break;
        }
    }
    return (flags & RowTree::IgnoresWishes) != 0;
}

SourceRows::StartOf SourceRows::wishes() const
{
    return [this](const QModelIndex& index, quint32 parentFlags) -> Start {
        if ((parentFlags & RowTree::IgnoresWishes) != 0)
            return {RowTree::IgnoresWishes, false};
        const bool expanded = m_wishRole >= 0 && index.data(m_wishRole).toBool();
        return {expanded ? quint32(RowTree::Expanded) : 0u, false};
    };
}

SourceRows::StartOf SourceRows::allExpanded() const
{
    return [this](const QModelIndex& index, quint32) -> Start {
        return {m_source->rowCount(index) > 0 ? quint32(RowTree::Expanded) : 0u, false};
    };
}

SourceRows::Node SourceRows::readRows(const QModelIndex& parent, quint32 parentFlags, int first,
                                      int last, int depth, const StartOf& startOf)
{
    RowReader reader(*this, startOf, parent, parentFlags, first, last, depth);
    while (!reader.step()) {
    }
    return reader.result();
}

SourceRows::Node SourceRows::readChildren(const QModelIndex& parent, quint32 parentFlags, int depth,
                                          const StartOf& startOf)
{
    return readRows(parent, parentFlags, 0, m_source->rowCount(parent) - 1, depth, startOf);
}

void SourceRows::mark(const QItemSelection& ranges, bool selected, std::vector<Node>& changed)
{
    for (const QItemSelectionRange& range : ranges)
        markRange(range, selected, changed);
}

void SourceRows::markNode(Node node, bool selected, std::vector<Node>& changed)
{
    if (m_tree.has(node, RowTree::Selected) == selected)
        return;
    m_tree.set(node, RowTree::Selected, selected);
    changed.push_back(node);
}

void SourceRows::clearMarks()
{
    m_tree.clearFlag(RowTree::Selected);
}

void SourceRows::markChildren(const QItemSelection& ranges, const QModelIndex& parent)
{
    std::vector<Node> changed;
    for (const QItemSelectionRange& range : ranges) {
        if (range.parent() == parent)
            markRange(range, true, changed);
    }
}

void SourceRows::markRange(const QItemSelectionRange& range, bool selected,
                           std::vector<Node>& changed)
{
    if (range.model() != m_source || range.left() > 0)
        return;
    const std::optional<Family> family = familyOf(range.parent());
    if (!family)
        return;
    Node node = childOf(*family, range.top());
    for (int number = range.top(); number <= range.bottom() && node != RowTree::none; ++number) {
        markNode(node, selected, changed);
        if (number < range.bottom())
            node = m_tree.afterBranch(node);
    }
}

} // namespace kyr::panel
