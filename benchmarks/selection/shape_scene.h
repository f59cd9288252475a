#pragma once

#include "bare_asset_model.h"
#include "shaped_tree.h"

#include <host/scene/recorded_asset_selection.h>
#include <kyr_scene_outline/scene_browser_data.h>

#include <QItemSelectionModel>

#include <benchmark/benchmark.h>

namespace bench {

/// A tree and every second object in the order of the tree's making.
struct ShapedObjects
{
    ShapedObjects(const benchmark::State& state, Shape shape)
        : count(int(state.range(0))), tree(shape, count)
    {
        for (int object = 0; object < count; object += 2)
            everySecond.emplace_back(tree.objectAt(object));
    }
    QItemSelection everySecondRow() const
    {
        QItemSelection rows;
        for (const kyr::PersistentObject& object : everySecond)
            rows.append(QItemSelectionRange(tree.indexOf(object.object().get())));
        return rows;
    }

    const int count;
    ShapedTree tree;
    IAssetSelection::Objects everySecond;
};

/// These with a browser and an editor's selection.
class ShapedScene : public ShapedObjects, BareAssetModel
{
public:
    ShapedScene(const benchmark::State& state, Shape shape)
        : ShapedObjects(state, shape), BareAssetModel(&tree)
    {}
    QModelIndex indexOf(const kyr::ReflectedObject& object) const override
    {
        return tree.indexOf(object.get());
    }
    using BareAssetModel::hoverMarks;

    RecordedAssetSelection selection;
    SceneBrowserData browser{this, &selection, nullptr};
};

/// These with the stock model, whose changes become the editor's selection.
class StockScene : public ShapedObjects
{
public:
    StockScene(const benchmark::State& state, Shape shape) : ShapedObjects(state, shape)
    {
        QObject::connect(&rows, &QItemSelectionModel::selectionChanged, [this] {
            IAssetSelection::Objects objects;
            for (const QModelIndex& row : rows.selectedIndexes())
                objects.emplace_back(row.data(358).value<kyr::ReflectedObject>());
            selection.setSelection(std::move(objects), false);
        });
    }

    QItemSelectionModel rows{&tree};
    RecordedAssetSelection selection;
};

} // namespace bench
