#pragma once

#include <kyr_scene_outline_testkit/scene_under_test.h>

#include <QModelIndexList>

namespace kyr::testkit {

using Objects = IAssetSelection::Objects;

/// All rows in depth-first order.
QModelIndexList allRows(const QAbstractItemModel& model);
kyr::PersistentObject objectOf(const QModelIndex& row);
Objects objectsOf(const QModelIndexList& rows);
/// Names for messages.
std::string named(const Objects& objects);
/// An object that is in no scene.
kyr::ReflectedObject foreignObject();

} // namespace kyr::testkit
