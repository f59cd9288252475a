// Row selection at the size of real scenes, with the stock selection model beside ours in the same
// run. The stock model is measured only as far as it ends in reasonable time.

#include "bare_asset_model.h"
#include "wide_tree.h"

#include <host/scene/recorded_asset_selection.h>
#include <kyr_scene_outline/scene_browser_data.h>
#include <kyr_scene_outline/selection/row_selection_model.h>

#include <QCoreApplication>

#include <benchmark/benchmark.h>

namespace {

using kyr::selection::RowSelectionModel;
using Model = QItemSelectionModel;

QItemSelection everyOther(const QAbstractItemModel& model, int first, int count)
{
    QItemSelection selection;
    selection.reserve(count);
    for (int i = 0; i < count; ++i)
        selection.append(QItemSelectionRange(model.index(first + 2 * i, 0)));
    return selection;
}

QItemSelection onePerParent(const QAbstractItemModel& model, int parents)
{
    QItemSelection selection;
    selection.reserve(parents);
    for (int row = 0; row < parents; ++row) {
        const QModelIndex parent = model.index(row, 0);
        selection.append(QItemSelectionRange(model.index(0, 0, parent)));
    }
    return selection;
}

int count(const benchmark::State& state)
{
    return int(state.range(0));
}

// The floor: only making the two lists of ranges that a swap replaces by each other.
void buildRanges(benchmark::State& state)
{
    const bench::WideTree tree(2 * count(state), 0);
    for (auto _ : state) {
        benchmark::DoNotOptimize(everyOther(tree, 0, count(state)));
        benchmark::DoNotOptimize(everyOther(tree, 1, count(state)));
    }
}

template <typename Selection>
void swapAlternateRows(benchmark::State& state)
{
    bench::WideTree tree(2 * count(state), 0);
    Selection selection(&tree);
    selection.select(everyOther(tree, 0, count(state)), Model::ClearAndSelect);
    for (auto _ : state) {
        selection.select(everyOther(tree, 1, count(state)), Model::ClearAndSelect);
        selection.select(everyOther(tree, 0, count(state)), Model::ClearAndSelect);
    }
}

template <typename Selection>
void invertAlternateRows(benchmark::State& state)
{
    bench::WideTree tree(2 * count(state), 0);
    Selection selection(&tree);
    selection.select(everyOther(tree, 0, count(state)), Model::ClearAndSelect);
    const QItemSelection all(tree.index(0, 0), tree.index(2 * count(state) - 1, 0));
    for (auto _ : state)
        selection.select(all, Model::Toggle);
}

template <typename Selection>
void toggleEveryRange(benchmark::State& state)
{
    bench::WideTree tree(2 * count(state), 0);
    Selection selection(&tree);
    const QItemSelection ranges = everyOther(tree, 0, count(state));
    for (auto _ : state)
        selection.select(ranges, Model::Toggle);
}

template <typename Selection>
void addOneToMany(benchmark::State& state)
{
    bench::WideTree tree(2 * count(state), 0);
    Selection selection(&tree);
    selection.select(everyOther(tree, 0, count(state)), Model::ClearAndSelect);
    const QModelIndex one = tree.index(count(state) | 1, 0);
    for (auto _ : state) {
        selection.select(one, Model::Select);
        selection.select(one, Model::Deselect);
    }
}

template <typename Selection>
void replaceOneRangePerParent(benchmark::State& state)
{
    bench::WideTree tree(count(state), 1);
    Selection selection(&tree);
    const QItemSelection children = onePerParent(tree, count(state));
    const QItemSelection parents(tree.index(0, 0), tree.index(count(state) - 1, 0));
    for (auto _ : state) {
        selection.select(children, Model::ClearAndSelect);
        selection.select(parents, Model::ClearAndSelect);
    }
}

// The floor of select all: a walk that reads the object of every row and keeps it.
void walkAllRows(benchmark::State& state)
{
    const bench::WideTree tree(count(state), 1);
    for (auto _ : state) {
        std::vector<kyr::PersistentObject> objects;
        for (int row = 0; row < tree.rowCount(); ++row) {
            const QModelIndex parent = tree.index(row, 0);
            objects.emplace_back(tree.data(parent, 358).value<kyr::ReflectedObject>());
            for (int child = 0; child < tree.rowCount(parent); ++child) {
                const QModelIndex index = tree.index(child, 0, parent);
                objects.emplace_back(tree.data(index, 358).value<kyr::ReflectedObject>());
            }
        }
        benchmark::DoNotOptimize(objects);
    }
}

// All rows under that many parents become the row selection and the editor's selection.
void selectAll(benchmark::State& state)
{
    bench::WideTree tree(count(state), 1);
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

constexpr auto unit = benchmark::kMillisecond;

BENCHMARK(buildRanges)->Arg(1000)->Arg(10000)->Arg(100000)->Arg(1000000)->Unit(unit);
BENCHMARK_TEMPLATE(swapAlternateRows, RowSelectionModel)
    ->Arg(1000)
    ->Arg(10000)
    ->Arg(100000)
    ->Arg(1000000)
    ->Unit(unit);
BENCHMARK_TEMPLATE(swapAlternateRows, Model)->Arg(1000)->Arg(5000)->Iterations(1)->Unit(unit);
BENCHMARK_TEMPLATE(invertAlternateRows, RowSelectionModel)
    ->Arg(1000)
    ->Arg(10000)
    ->Arg(100000)
    ->Arg(1000000)
    ->Unit(unit);
BENCHMARK_TEMPLATE(invertAlternateRows, Model)->Arg(1000)->Iterations(1)->Unit(unit);
BENCHMARK_TEMPLATE(toggleEveryRange, RowSelectionModel)
    ->Arg(1000)
    ->Arg(10000)
    ->Arg(100000)
    ->Arg(1000000)
    ->Unit(unit);
BENCHMARK_TEMPLATE(toggleEveryRange, Model)->Arg(1000)->Iterations(1)->Unit(unit);
BENCHMARK_TEMPLATE(addOneToMany, RowSelectionModel)
    ->Arg(1000)
    ->Arg(10000)
    ->Arg(100000)
    ->Arg(1000000)
    ->Unit(unit);
BENCHMARK_TEMPLATE(addOneToMany, Model)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(unit);
BENCHMARK_TEMPLATE(replaceOneRangePerParent, RowSelectionModel)
    ->Arg(1000)
    ->Arg(10000)
    ->Arg(100000)
    ->Arg(1000000)
    ->Unit(unit);
BENCHMARK_TEMPLATE(replaceOneRangePerParent, Model)
    ->Arg(1000)
    ->Arg(5000)
    ->Iterations(1)
    ->Unit(unit);
BENCHMARK(walkAllRows)->Arg(1000)->Arg(10000)->Arg(100000)->Arg(1000000)->Unit(unit);
BENCHMARK(selectAll)->Arg(1000)->Arg(10000)->Arg(100000)->Arg(1000000)->Unit(unit);

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
