#include "group_model.h"

#include <host/ui/text_predicate.h>
#include <panel/flat_tree_model.h>
#include <panel/tree_arranger.h>

#include <QItemSelectionModel>

#include <benchmark/benchmark.h>

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

/// All slices of one keystroke's work, one after the other, and the list made anew.
void filterKeystroke(benchmark::State& state)
{
    Outline outline(state);
    outline.predicate.setText(QStringLiteral("1"));
    outline.arranger.finish();
    bool longer = false;
    for (auto _ : state) {
        longer = !longer;
        outline.predicate.setText(longer ? QStringLiteral("12") : QStringLiteral("1"));
        outline.arranger.finish();
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
    for (auto _ : state) {
        outline.predicate.setText(QStringLiteral("1"));
        outline.arranger.finish();
        benchmark::DoNotOptimize(outline.flat.hiddenSelectionCount());
        outline.predicate.setText({});
    }
}

void sortByName(benchmark::State& state)
{
    Outline outline(state);
    outline.arranger.setSortRole(Qt::DisplayRole);
    for (auto _ : state)
        outline.arranger.setSortDescending(!outline.arranger.isSortDescending());
}

void switchModes(benchmark::State& state)
{
    Outline outline(state);
    for (auto _ : state) {
        outline.arranger.setArrangement(QStringLiteral("flat"));
        outline.arranger.setArrangement(QStringLiteral("type"));
        outline.arranger.setArrangement(QStringLiteral("hierarchy"));
    }
    state.SetItemsProcessed(state.iterations() * 3);
}

void expandAllSorted(benchmark::State& state)
{
    Outline outline(state);
    outline.arranger.setSortRole(Qt::DisplayRole);
    for (auto _ : state) {
        outline.flat.collapseAll();
        outline.flat.expandAll();
    }
}

BENCHMARK(filterKeystroke)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);
BENCHMARK(filterWithAllSelected)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);
BENCHMARK(sortByName)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);
BENCHMARK(switchModes)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);
BENCHMARK(expandAllSorted)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);

} // namespace
