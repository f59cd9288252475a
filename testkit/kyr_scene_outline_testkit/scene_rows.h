#pragma once

#include <kyr_scene_outline_testkit/scene_under_test.h>

#include <QModelIndexList>

#include <set>

namespace kyr::testkit {

using Objects = IAssetSelection::Objects;

/// All rows in depth-first order.
QModelIndexList allRows(const QAbstractItemModel& model);
kyr::PersistentObject objectOf(const QModelIndex& row);
Objects objectsOf(const QModelIndexList& rows);
/// Of the rows `top` to `bottom`.
Objects objectsOf(const QAbstractItemModel& model, const QModelIndex& parent, int top, int bottom);
/// Each object once, where it comes first, as the editor keeps them.
Objects withoutDuplicates(const Objects& objects);
std::set<const void*> identities(const Objects& objects);
/// Names for messages.
std::string named(const Objects& objects);
/// An object that is in no scene.
kyr::ReflectedObject foreignObject();

} // namespace kyr::testkit
