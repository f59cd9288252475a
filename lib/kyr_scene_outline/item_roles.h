#pragma once

#include <kyr_scene_outline/export.h>

#include <QByteArray>
#include <QHash>

namespace kyr {

/// Roles under which a scene model offers its rows. The browser reads `ObjectRole` alone; the
/// panel binds to the others by name.
enum ItemRole : int
{
    TypeRole = Qt::UserRole + 100,
    CountRole,
    /// The row's scene object, as a `kyr::ReflectedObject` or convertible to one.
    ObjectRole,
    ExpandedRole,
    EnabledRole,
    RowButtonsModelRole,
    HoverRole,
    ModifiedRole,
};

/// The names of the roles above, in the form of `QAbstractItemModel::roleNames`.
extern KYR_SCENE_OUTLINE_EXPORT const QHash<int, QByteArray> itemRoleNames;

} // namespace kyr
