#include "group_model.h"

#include <host/ui/text_predicate.h>
#include <panel/rows/flat_tree_model.h>
#include <panel/rows/tree_arranger.h>

#include <QItemSelectionModel>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <ctime>
#include <random>

namespace {

using kyr::panel::FlatTreeModel;
using kyr::panel::TreeArranger;

/// A panel's list over `range(0)` objects, a tenth of them groups, all open.
struct Outline
{
    explicit Outline(const benchmark::State& state) : model(int(state.range(0)) / 10, 9)
    {
        QObject::connect(&arranger, &TreeArranger::modelChanged, &flat,
                         [this] { flat.setSourceModel(arranger.model()); });
        arranger.setList(&flat);
        arranger.setSourceModel(&model);
        arranger.setPredicate(&predicate);
        flat.setSelectionModel(selection);
        flat.expandAll();
    }

    GroupModel model;
    QItemSelectionModel* selection = new QItemSelectionModel(&model);
    lumo::datamodels::proxy::TextPredicate predicate;
    FlatTreeModel flat;
    TreeArranger arranger;
};

/// Works off what a keystroke or a click starts as the event loop would, and reports the longest
/// time of the processor that one piece of it took, for which the window does nothing else.
class Slices
{
public:
    explicit Slices(benchmark::State& state) : m_state(state) {}
    ~Slices() { m_state.counters["longest ms"] = m_longest; }

    template <typename Start>
    void work(Outline& outline, const Start& start)
    {
        measure(start);
        while (outline.arranger.isWorking())
            measure([&] { outline.arranger.workSlice(); });
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

void filterKeystroke(benchmark::State& state)
{
    Outline outline(state);
    Slices slices(state);
    bool longer = false;
    for (auto _ : state) {
        longer = !longer;
        const QString text = longer ? QStringLiteral("12") : QStringLiteral("1");
        slices.work(outline, [&] { outline.predicate.setText(text); });
    }
    state.counters["rows"] = outline.flat.count();
}

/// A filter set and cleared with every object selected.
void filterWithAllSelected(benchmark::State& state)
{
    Outline outline(state);
    QItemSelection all(outline.model.index(0, 0),
                       outline.model.index(outline.model.rowCount() - 1, 0));
    for (int group = 0; group < outline.model.rowCount(); ++group) {
        const QModelIndex parent = outline.model.index(group, 0);
        all.append(QItemSelectionRange(outline.model.index(0, 0, parent),
                                       outline.model.index(8, 0, parent)));
    }
    outline.selection->select(all, QItemSelectionModel::Select);
    Slices slices(state);
    for (auto _ : state) {
        slices.work(outline, [&] { outline.predicate.setText(QStringLiteral("1")); });
        slices.measure([&] { benchmark::DoNotOptimize(outline.flat.hiddenSelectionCount()); });
        slices.work(outline, [&] { outline.predicate.setText({}); });
    }
}

void sortByName(benchmark::State& state)
{
    Outline outline(state);
    outline.arranger.setSortRole(Qt::DisplayRole);
    outline.arranger.finish();
    Slices slices(state);
    for (auto _ : state)
        slices.work(outline, [&] {
            outline.arranger.setSortDescending(!outline.arranger.isSortDescending());
        });
}

void switchModes(benchmark::State& state)
{
    Outline outline(state);
    Slices slices(state);
    for (auto _ : state) {
        for (const char* mode : {"flat", "type", "hierarchy"})
            slices.work(outline, [&] { outline.arranger.setArrangement(QLatin1String(mode)); });
    }
    state.SetItemsProcessed(state.iterations() * 3);
}

/// One object added to a filtered and sorted scene and taken away again.
void insertAndRemoveRowFound(benchmark::State& state)
{
    Outline outline(state);
    outline.predicate.setText(QStringLiteral("1"));
    outline.arranger.setSortRole(Qt::DisplayRole);
    outline.arranger.finish();
    std::minstd_rand random;
    std::uniform_int_distribution<int> groups(0, outline.model.rowCount() - 1);
    for (auto _ : state) {
        const int group = groups(random);
        outline.model.insert(group, 1);
        outline.model.remove(group, 1);
    }
}

void expandAllSorted(benchmark::State& state)
{
    Outline outline(state);
    outline.arranger.setSortRole(Qt::DisplayRole);
    outline.arranger.finish();
    for (auto _ : state) {
        outline.flat.collapseAll();
        outline.flat.expandAll();
    }
}

BENCHMARK(filterKeystroke)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);
BENCHMARK(filterWithAllSelected)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);
BENCHMARK(sortByName)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);
BENCHMARK(switchModes)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);
BENCHMARK(insertAndRemoveRowFound)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMicrosecond);
BENCHMARK(expandAllSorted)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);

} // namespace
