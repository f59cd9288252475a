#include "group_model.h"

#include <panel/gestures/tree_navigator.h>
#include <panel/outline/outline_model.h>

#include <QCoreApplication>
#include <QItemSelectionModel>

#include <benchmark/benchmark.h>

#include <memory>
#include <random>

namespace {

using kyr::panel::OutlineModel;

/// A scene of `range(0)` groups with two objects each, opened on request.
struct Scene
{
    explicit Scene(const benchmark::State& state, bool open = true)
        : groups(int(state.range(0))), model(groups, 2)
    {
        outline.setSourceModel(&model);
        outline.setSelectionModel(selection);
        if (open)
            outline.expandAll();
    }

    int groups;
    GroupModel model;
    QItemSelectionModel* selection = new QItemSelectionModel(&model);
    OutlineModel outline;
};

void expandAll(benchmark::State& state)
{
    Scene scene(state, false);
    for (auto _ : state)
        scene.outline.expandAll();
    state.counters["rows"] = scene.outline.count();
    state.counters["bytes/row"] = double(scene.outline.bytesUsed()) / scene.outline.count();
}

void collapseAll(benchmark::State& state)
{
    Scene scene(state);
    for (auto _ : state)
        scene.outline.collapseAll();
}

/// What a user does who opens and closes every group by hand.
void toggleEachGroup(benchmark::State& state)
{
    Scene scene(state, false);
    for (auto _ : state) {
        for (int group = 0; group < scene.groups; ++group)
            scene.outline.setExpanded(scene.model.index(group, 0), true);
        for (int group = 0; group < scene.groups; ++group)
            scene.outline.setExpanded(scene.model.index(group, 0), false);
    }
    state.SetItemsProcessed(state.iterations() * 2 * scene.groups);
}

void rowToIndex(benchmark::State& state)
{
    Scene scene(state);
    std::minstd_rand random;
    const auto rows = unsigned(scene.outline.count());
    for (auto _ : state)
        benchmark::DoNotOptimize(scene.outline.sourceIndex(int(random() % rows)));
}

void indexToRow(benchmark::State& state)
{
    Scene scene(state);
    std::minstd_rand random;
    for (auto _ : state) {
        const QModelIndex group = scene.model.index(int(random() % unsigned(scene.groups)), 0);
        benchmark::DoNotOptimize(scene.outline.rowOf(scene.model.index(1, 0, group)));
    }
}

void insertAndRemoveRow(benchmark::State& state)
{
    Scene scene(state);
    std::minstd_rand random;
    for (auto _ : state) {
        const int group = int(random() % unsigned(scene.groups));
        scene.model.insert(group, 1);
        scene.model.remove(group, 1);
    }
}

/// The same changes without a list: what the source alone costs.
void insertAndRemoveRowSourceOnly(benchmark::State& state)
{
    GroupModel model(int(state.range(0)), 2);
    std::minstd_rand random;
    for (auto _ : state) {
        const int group = int(random() % unsigned(state.range(0)));
        model.insert(group, 1);
        model.remove(group, 1);
    }
}

/// One object of every group selected and deselected, as a selection model reports it.
void markEachGroup(benchmark::State& state)
{
    Scene scene(state);
    QItemSelection ranges;
    for (int group = 0; group < scene.groups; ++group) {
        const QModelIndex object = scene.model.index(0, 0, scene.model.index(group, 0));
        ranges.append(QItemSelectionRange(object));
    }
    for (auto _ : state) {
        Q_EMIT scene.selection->selectionChanged(ranges, {});
        Q_EMIT scene.selection->selectionChanged({}, ranges);
    }
    state.SetItemsProcessed(state.iterations() * 2 * scene.groups);
}

/// A Shift range over every row, made but not selected.
void rangeOverAllRows(benchmark::State& state)
{
    Scene scene(state);
    for (auto _ : state)
        benchmark::DoNotOptimize(scene.outline.sourceSelection(0, scene.outline.count() - 1));
    state.SetItemsProcessed(state.iterations() * scene.outline.count());
}

void searchWithoutAMatch(benchmark::State& state)
{
    Scene scene(state);
    kyr::panel::TypeAhead typeAhead;
    for (auto _ : state) {
        typeAhead.stop();
        benchmark::DoNotOptimize(typeAhead.type(QStringLiteral("x"), scene.outline, 0));
    }
    state.SetItemsProcessed(state.iterations() * scene.outline.count());
}

/// Levels below the first row of each other, with the same number of rows each.
class DeepModel : public QAbstractItemModel
{
public:
    DeepModel(int levels, int rows) : m_levels(levels), m_rows(rows) {}

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override
    {
        return createIndex(row, column, parent.isValid() ? parent.internalId() + 1 : 0);
    }
    QModelIndex parent(const QModelIndex& index) const override
    {
        return index.internalId() == 0 ? QModelIndex() : createIndex(0, 0, index.internalId() - 1);
    }
    int rowCount(const QModelIndex& parent = {}) const override
    {
        const bool has =
            !parent.isValid() || (parent.row() == 0 && int(parent.internalId()) + 1 < m_levels);
        return has ? m_rows : 0;
    }
    int columnCount(const QModelIndex& = {}) const override { return 1; }
    QVariant data(const QModelIndex&, int) const override { return {}; }

private:
    int m_levels;
    int m_rows;
};

/// 100,000 rows on `range(0)` levels, all open.
struct DeepScene
{
    explicit DeepScene(const benchmark::State& state)
        : model(int(state.range(0)), 100'000 / int(state.range(0)))
    {
        outline.setSourceModel(&model);
        outline.expandAll();
    }

    DeepModel model;
    QItemSelectionModel* selection = new QItemSelectionModel(&model);
    OutlineModel outline;
};

/// Every row selected and deselected, as a selection model reports it.
void markAllDeep(benchmark::State& state)
{
    DeepScene scene(state);
    scene.outline.setSelectionModel(scene.selection);
    const QItemSelection ranges = scene.outline.sourceSelection(0, scene.outline.count() - 1);
    for (auto _ : state) {
        Q_EMIT scene.selection->selectionChanged(ranges, {});
        Q_EMIT scene.selection->selectionChanged({}, ranges);
    }
}

void rangeOverAllRowsDeep(benchmark::State& state)
{
    DeepScene scene(state);
    for (auto _ : state)
        benchmark::DoNotOptimize(scene.outline.sourceSelection(0, scene.outline.count() - 1));
}

/// From a row to its index and back, anywhere.
void rowToIndexAndBackDeep(benchmark::State& state)
{
    DeepScene scene(state);
    std::minstd_rand random;
    for (auto _ : state) {
        const QModelIndex index = scene.outline.sourceIndex(int(random() % 100'000));
        benchmark::DoNotOptimize(scene.outline.rowOf(index));
    }
}

BENCHMARK(markAllDeep)->Arg(1'000)->Arg(100'000)->Unit(benchmark::kMillisecond);
BENCHMARK(rangeOverAllRowsDeep)->Arg(1'000)->Arg(100'000)->Unit(benchmark::kMillisecond);
BENCHMARK(rowToIndexAndBackDeep)->Arg(1'000)->Arg(100'000);
BENCHMARK(expandAll)->Arg(1'000)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);
BENCHMARK(collapseAll)->Arg(1'000)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);
BENCHMARK(toggleEachGroup)->Arg(1'000)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);
BENCHMARK(markEachGroup)->Arg(1'000)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);
BENCHMARK(rangeOverAllRows)->Arg(1'000)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);
BENCHMARK(searchWithoutAMatch)
    ->Arg(1'000)
    ->Arg(10'000)
    ->Arg(100'000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(rowToIndex)->Arg(1'000)->Arg(10'000)->Arg(100'000);
BENCHMARK(indexToRow)->Arg(1'000)->Arg(10'000)->Arg(100'000);
BENCHMARK(insertAndRemoveRow)->Arg(1'000)->Arg(10'000)->Arg(100'000);
BENCHMARK(insertAndRemoveRowSourceOnly)->Arg(1'000)->Arg(10'000)->Arg(100'000);

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv); // for timers
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
