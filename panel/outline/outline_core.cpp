#include "outline_core.h"

#include <algorithm>

namespace kyr::panel {

OutlineModel::Core::Core(OutlineModel& model) : q(model), m_mirror(*this)
{
    m_slices.setInterval(0);
    QObject::connect(&m_slices, &QTimer::timeout, &model, &OutlineModel::workSlice);
    readRoles();
}

void OutlineModel::Core::readRoles()
{
    const QAbstractItemModel* scene = m_mirror.model();
    m_roleNames = scene ? scene->roleNames() : q.QAbstractListModel::roleNames();
    m_hoverRole = m_roleNames.key("hoverRole", -1);
    m_typeRole = m_roleNames.key("type", -1);
    m_countRole = m_roleNames.key("count", -1);
    m_enabledRole = m_roleNames.key("enabled", -1);
    const QHash<int, QByteArray> own{
        {DepthRole, "depth"},
        {HasChildrenRole, "hasChildren"},
        {ExpandedRole, "expanded"},
        {SelectedRole, "selected"},
        {CurrentRole, "current"},
        {SourceIndexRole, "sourceIndex"},
        {MatchesRole, "matches"},
        {CellsRole, "cells"},
        {HiddenSelectedRole, "hiddenSelected"},
        {HiddenHoveredRole, "hiddenHovered"},
    };
    for (auto role = own.begin(); role != own.end(); ++role) {
        m_roleNames.remove(m_roleNames.key(role.value(), -1));
        m_roleNames.insert(role.key(), role.value());
    }
}

QModelIndex OutlineModel::Core::indexAt(int row) const
{
    if (row < 0 || row == m_indexedRow)
        return row < 0 ? QModelIndex() : m_rowIndex;
    const QModelIndex index = m_mirror.indexOf(sceneNode(rowNode(row)));
    // A delegate reads a dozen roles of one row. Half-way through a change indexes go stale.
    if (!m_mirror.isChanging()) {
        m_indexedRow = row;
        m_rowIndex = index;
    }
    return index;
}

bool OutlineModel::Core::hasChildren(Node shown) const
{
    if (!followsScene())
        return rows().hasBranch(shown);
    // Invalid while the scene is being destroyed.
    const QModelIndex index = m_mirror.indexOf(sceneNode(shown));
    return index.isValid() && index.model()->hasChildren(index);
}

QVariant OutlineModel::Core::groupData(Node group, int role) const
{
    const QString type = m_arranged->type(group);
    if (role == Qt::DisplayRole)
        return type.isEmpty() ? OutlineModel::tr("Other") : type.left(1).toUpper() + type.mid(1);
    if (role == m_typeRole)
        return type;
    if (role == m_countRole)
        return rows().branchEnd(group) - rows().order(group) - 1;
    if (role == m_enabledRole)
        return true;
    return {};
}

int OutlineModel::Core::hiddenSelected(Node shown) const
{
    return rows().has(shown, RowTree::Expanded) ? 0 : rows().selectedBelow(shown);
}

bool OutlineModel::Core::hidesHovered(Node shown) const
{
    if (m_hovered.empty() || rows().has(shown, RowTree::Expanded))
        return false;
    const int first = rows().order(shown) + 1;
    const int end = rows().branchEnd(shown);
    return std::any_of(m_hovered.begin(), m_hovered.end(), [&](Node scene) {
        const Node hovered = shownNode(scene);
        const int order = hovered == RowTree::none ? -1 : rows().order(hovered);
        return order >= first && order < end;
    });
}

void OutlineModel::Core::rowChanged(Node shown, const QVector<int>& roles)
{
    const int row = shown == RowTree::none ? -1 : rows().row(shown);
    if (row >= 0 && row < count())
        Q_EMIT q.dataChanged(q.index(row), q.index(row), roles);
}

void OutlineModel::Core::allChanged(const QVector<int>& roles)
{
    if (count() > 0)
        Q_EMIT q.dataChanged(q.index(0), q.index(count() - 1), roles);
}

} // namespace kyr::panel
