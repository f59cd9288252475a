#include "scene_under_test.h"

#include <QAbstractItemModel>

namespace kyr::testkit {

bool SceneUnderTest::removeRows(const QModelIndex& parent, int row, int count)
{
    return assetModel().itemModel()->removeRows(row, count, parent);
}

bool SceneUnderTest::moveRow(const QModelIndex& from, int row, const QModelIndex& to, int toRow)
{
    return assetModel().itemModel()->moveRows(from, row, 1, to, toRow);
}

} // namespace kyr::testkit
