// Selecting all rows of scenes of every shape, and the walk that is its floor.

#include "bare_asset_model.h"
#include "shaped_tree.h"

#include <host/scene/recorded_asset_selection.h>
#include <kyr_scene_outline/scene_browser_data.h>

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
    const ShapedTree tree(shape, static_cast<int>(state.range(0)));
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
    ShapedTree tree(shape, static_cast<int>(state.range(0)));
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

template <Shape shape>
void registerShape(const std::string& name)
{
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
