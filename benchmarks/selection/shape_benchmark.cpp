// Selecting all rows of scenes of every shape, and the walk that is its floor.

#include "bare_asset_model.h"
#include "shaped_tree.h"

#include <host/scene/recorded_asset_selection.h>
#include <kyr_scene_outline/scene_browser_data.h>

#include <QCoreApplication>

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

namespace {

using bench::Shape;
using bench::ShapedTree;

// Reads the object of every row and keeps it.
template <Shape shape>
void walkShape(benchmark::State& state)
{
    const ShapedTree tree(shape, int(state.range(0)));
    for (auto _ : state) {
        std::vector<kyr::PersistentObject> objects;
        std::vector<QModelIndex> parents{QModelIndex()};
        while (!parents.empty()) {
            const QModelIndex parent = parents.back();
            parents.pop_back();
            const int rows = tree.rowCount(parent);
            for (int row = 0; row < rows; ++row) {
                const QModelIndex index = tree.index(row, 0, parent);
                objects.emplace_back(tree.data(index, 358).value<kyr::ReflectedObject>());
                if (tree.rowCount(index) > 0)
                    parents.push_back(index);
            }
        }
        benchmark::DoNotOptimize(objects);
    }
}

// The row selection and the editor's.
template <Shape shape>
void selectAllOfShape(benchmark::State& state)
{
    ShapedTree tree(shape, int(state.range(0)));
    bench::BareAssetModel assetModel(&tree);
    RecordedAssetSelection selection;
    SceneBrowserData browser(&assetModel, &selection, nullptr);
    for (auto _ : state) {
        browser.selectAll();
        state.PauseTiming();
        browser.selectionModel()->clearSelection();
        state.ResumeTiming();
    }
}

/// A tree, its browser, and every second object in the order of the tree's making.
template <Shape shape>
class Scene : bench::BareAssetModel
{
public:
    explicit Scene(const benchmark::State& state)
        : BareAssetModel(&tree), tree(shape, int(state.range(0)))
    {
        for (int object = 0; object < int(state.range(0)); object += 2)
            everySecond.emplace_back(tree.objectAt(object));
    }
    QModelIndex indexOf(const kyr::ReflectedObject& object) const override
    {
        return tree.indexOf(object.get());
    }
    using BareAssetModel::hoverMarks;

    ShapedTree tree;
    IAssetSelection::Objects everySecond;
    RecordedAssetSelection selection;
    SceneBrowserData browser{this, &selection, nullptr};
};

// The floor of what the editor selects: the row of each object.
template <Shape shape>
void rowsOfShape(benchmark::State& state)
{
    const Scene<shape> scene(state);
    for (auto _ : state) {
        QItemSelection rows;
        for (const kyr::PersistentObject& object : scene.everySecond)
            rows.append(QItemSelectionRange(scene.indexOf(object.object())));
        benchmark::DoNotOptimize(rows);
    }
}

template <Shape shape>
void fromEditorOfShape(benchmark::State& state)
{
    Scene<shape> scene(state);
    for (auto _ : state) {
        scene.selection.setSelection(scene.everySecond, false);
        scene.selection.setSelection({}, false);
    }
}

template <Shape shape>
void resetOfShape(benchmark::State& state)
{
    Scene<shape> scene(state);
    scene.selection.setSelection(scene.everySecond, false);
    for (auto _ : state) {
        scene.tree.reset();
        QCoreApplication::processEvents(); // in which the rows are selected again
        if (!scene.browser.selectionModel()->hasSelection())
            state.SkipWithError("nothing is selected");
    }
}

// A thousand rows in turn from the tree to the editor and as marks back, half of them selected.
template <Shape shape>
void hoverOfShape(benchmark::State& state)
{
    Scene<shape> scene(state);
    scene.selection.setSelection(scene.everySecond, false);
    const int step = int(state.range(0)) / 1000;
    for (auto _ : state) {
        for (int i = 0; i < 1000; ++i) {
            const kyr::PersistentObject object(scene.tree.objectAt(i * step));
            scene.browser.syncHover(scene.indexOf(object.object()));
        }
    }
    if (scene.hoverMarks() < 1000)
        state.SkipWithError("rows were not marked");
}

template <Shape shape>
void registerShape(const std::string& name)
{
    for (auto* line :
         {benchmark::RegisterBenchmark(("rowsOfShape/" + name).c_str(), rowsOfShape<shape>),
          benchmark::RegisterBenchmark(("fromEditorOfShape/" + name).c_str(),
                                       fromEditorOfShape<shape>),
          benchmark::RegisterBenchmark(("resetOfShape/" + name).c_str(), resetOfShape<shape>),
          benchmark::RegisterBenchmark(("hoverOfShape/" + name).c_str(), hoverOfShape<shape>)})
        line->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
    for (auto* line :
         {benchmark::RegisterBenchmark(("walkShape/" + name).c_str(), walkShape<shape>),
          benchmark::RegisterBenchmark(("selectAllOfShape/" + name).c_str(),
                                       selectAllOfShape<shape>)})
        line->Arg(1000)->Arg(10000)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
}

[[maybe_unused]] const bool isRegistered = [] {
    registerShape<Shape::Flat>("flat");
    registerShape<Shape::ThousandLevels>("1000_levels");
    registerShape<Shape::Chain>("chain");
    registerShape<Shape::ThousandParents>("1000_parents");
    registerShape<Shape::Bushy>("bushy");
    return true;
}();

} // namespace
