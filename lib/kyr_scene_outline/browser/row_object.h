#pragma once

#include <host/reflection/reflected_object.h>
#include <kyr_scene_outline/item_roles.h>

#include <QAbstractItemModel>

namespace kyr {

/// The object that a value of the object role holds or converts to; invalid when there is none.
inline ReflectedObject objectOf(const QVariant& value)
{
    return value.value<ReflectedObject>();
}

inline ReflectedObject objectOf(const QModelIndex& row)
{
    return objectOf(row.data(ObjectRole));
}

} // namespace kyr
