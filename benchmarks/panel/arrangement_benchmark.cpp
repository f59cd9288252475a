#include "group_model.h"

#include <host/ui/text_predicate.h>
#include <panel/outline/outline_model.h>

#include <QItemSelectionModel>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <ctime>
#include <random>

namespace {

using kyr::panel::OutlineModel;

/// A panel's list over `range(0)` objects, a tenth of them groups, all open.
struct Scene
{
    explicit Scene(const benchmark::State& state) : model(int(state.range(0)) / 10, 9)
    {
        outline.setSourceModel(&model);
        outline.setPredicate(&predicate);
        outline.setSelectionModel(selection);
        outline.expandAll();
    }

    GroupModel model;
    QItemSelectionModel* selection = new QItemSelectionModel(&model);
    lumo::datamodels::proxy::TextPredicate predicate;
    OutlineModel outline;
};

/// Works off what a keystroke or a click starts as the event loop would, and reports the longest
/// time of the processor that one piece of it took, for which the window does nothing else.
class Slices
{
public:
    explicit Slices(benchmark::State& state) : m_state(state) {}
    ~Slices() { m_state.counters["longest ms"] = m_longest; }

    template <typename Start>
    void work(Scene& scene, const Start& start)
    {
        measure(start);
        while (scene.outline.isWorking())
            measure([&] { scene.outline.workSlice(); });
    }

    template <typename Part>
    void measure(const Part& part)
    {
        const std::clock_t start = std::clock();
        part();
        const double seconds = double(std::clock() - start) / CLOCKS_PER_SEC;
        m_longest = std::max(m_longest, seconds * 1000);
    }

private:
    benchmark::State& m_state;
    double m_longest = 0;
};

void typeFilter(benchmark::State& state, const QString& shorter, const QString& longer)
{
    Scene scene(state);
    Slices slices(state);
    bool isLonger = false;
    for (auto _ : state) {
        isLonger = !isLonger;
        slices.work(scene, [&] { scene.predicate.setText(isLonger ? longer : shorter); });
    }
    state.counters["rows"] = scene.outline.count();
}

void filterKeystroke(benchmark::State& state)
{
    typeFilter(state, QStringLiteral("1"), QStringLiteral("12"));
}

/// Names above, alternatives, what is not wanted, and properties by comparison.
void filterByProperties(benchmark::State& state)
{
    typeFilter(state, QStringLiteral("1 type:light|mesh -7 name<6"),
               QStringLiteral("1 type:light|mesh -77 name<5"));
}

/// A filter set and cleared with every object selected.
void filterWithAllSelected(benchmark::State& state)
{
    Scene scene(state);
    QItemSelection all(scene.model.index(0, 0), scene.model.index(scene.model.rowCount() - 1, 0));
    for (int group = 0; group < scene.model.rowCount(); ++group) {
        const QModelIndex parent = scene.model.index(group, 0);
        all.append(
            QItemSelectionRange(scene.model.index(0, 0, parent), scene.model.index(8, 0, parent)));
    }
    scene.selection->select(all, QItemSelectionModel::Select);
    Slices slices(state);
    for (auto _ : state) {
        slices.work(scene, [&] { scene.predicate.setText(QStringLiteral("1")); });
        slices.measure([&] { benchmark::DoNotOptimize(scene.outline.hiddenSelectedCount()); });
        slices.work(scene, [&] { scene.predicate.setText({}); });
    }
}

void sortByName(benchmark::State& state)
{
    Scene scene(state);
    scene.outline.setSortRole(Qt::DisplayRole);
    scene.outline.finish();
    Slices slices(state);
    for (auto _ : state)
        slices.work(scene,
                    [&] { scene.outline.setSortDescending(!scene.outline.isSortDescending()); });
}

void switchModes(benchmark::State& state)
{
    Scene scene(state);
    Slices slices(state);
    for (auto _ : state) {
        for (const char* mode : {"flat", "type", "hierarchy"})
            slices.work(scene, [&] { scene.outline.setArrangement(QLatin1String(mode)); });
    }
    state.SetItemsProcessed(state.iterations() * 3);
}

/// One object added to a filtered and sorted scene and taken away again.
void insertAndRemoveRowFound(benchmark::State& state)
{
    Scene scene(state);
    scene.predicate.setText(QStringLiteral("1"));
    scene.outline.setSortRole(Qt::DisplayRole);
    scene.outline.finish();
    std::minstd_rand random;
    std::uniform_int_distribution<int> groups(0, scene.model.rowCount() - 1);
    for (auto _ : state) {
        const int group = groups(random);
        scene.model.insert(group, 1);
        scene.model.remove(group, 1);
    }
}

void expandAllSorted(benchmark::State& state)
{
    Scene scene(state);
    scene.outline.setSortRole(Qt::DisplayRole);
    scene.outline.finish();
    for (auto _ : state) {
        scene.outline.collapseAll();
        scene.outline.expandAll();
    }
}

BENCHMARK(filterKeystroke)->Arg(1'000)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);
BENCHMARK(filterByProperties)->Arg(1'000)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);
BENCHMARK(filterWithAllSelected)
    ->Arg(1'000)
    ->Arg(10'000)
    ->Arg(100'000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(sortByName)->Arg(1'000)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);
BENCHMARK(switchModes)->Arg(1'000)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);
BENCHMARK(insertAndRemoveRowFound)
    ->Arg(1'000)
    ->Arg(10'000)
    ->Arg(100'000)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(expandAllSorted)->Arg(1'000)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);

} // namespace
