#pragma once

#include "tree_model.h"

#include <host/scene/recorded_asset_selection.h>
#include <kyr_scene_outline_testkit/scene_under_test.h>

#include <QUndoStack>

namespace test {

/// A scene as the test kit drives it.
template <typename Selection>
class TreeScene : public kyr::testkit::SceneUnderTest
{
public:
    IAssetModel& assetModel() override { return m_assetModel; }
    IAssetSelection& assetSelection() override { return m_selection; }
    bool insertRow(const QModelIndex& parent, int row) override
    {
        m_model.insert(parent, row, TreeModel::named({QString::number(m_made++)}));
        return true;
    }
    bool removeRows(const QModelIndex& parent, int row, int count) override
    {
        m_model.remove(parent, row, count);
        return true;
    }
    bool moveRow(const QModelIndex& from, int row, const QModelIndex& to, int toRow) override
    {
        return m_model.move(from, row, 1, to, toRow);
    }
    bool relayout() override
    {
        m_model.reverse({}, QAbstractItemModel::NoLayoutChangeHint);
        return true;
    }
    bool reset() override
    {
        m_model.resetTo("a\n  b\n  c\nd\n  e\n    f\ng");
        return true;
    }
    bool undo() override
    {
        m_changes->stack().undo();
        return true;
    }
    bool redo() override
    {
        m_changes->stack().redo();
        return true;
    }

protected:
    // The rows are those of the first column.
    TreeModel m_model{"a\n  b\n    c\n  d\ne\n  f\ng\nh", 3};

private:
    TreeAssetModel m_assetModel{&m_model};
    std::shared_ptr<Zar::ChangesController> m_changes = std::make_shared<Zar::ChangesController>();
    Selection m_selection{m_changes};
    int m_made = 0;
};

} // namespace test
