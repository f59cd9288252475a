// Rows that come, go and move under a large selection, the stock model beside ours.

#include "changing_tree.h"

#include <kyr_scene_outline/selection/row_selection_model.h>

#include <benchmark/benchmark.h>

namespace {

using bench::ChangingTree;
using kyr::selection::RowSelectionModel;
using Model = QItemSelectionModel;

constexpr auto unit = benchmark::kMillisecond;

int count(const benchmark::State& state)
{
    return int(state.range(0));
}

QItemSelection oddRows(const QAbstractItemModel& tree, int parents)
{
    QItemSelection selection;
    for (int row = 0; row < parents; ++row) {
        const QModelIndex parent = tree.index(row, 0);
        for (int child = 1; child < tree.rowCount(parent); child += 2)
            selection.append(QItemSelectionRange(tree.index(child, 0, parent)));
    }
    return selection;
}

// The floor of what follows: building the selection, which includes following its rows.
void buildOddRows(benchmark::State& state)
{
    const ChangingTree tree(1, count(state));
    for (auto _ : state)
        benchmark::DoNotOptimize(oddRows(tree, 1));
}

template <typename Selection, typename Change>
void measureChange(benchmark::State& state, int parents, int children, const Change& change)
{
    for (auto _ : state) {
        state.PauseTiming();
        ChangingTree tree(parents, children);
        {
            Selection selection(&tree);
            selection.select(oddRows(tree, parents), Model::ClearAndSelect);
            state.ResumeTiming();
            change(tree, selection);
            state.PauseTiming();
        }
        state.ResumeTiming();
    }
}

/// The floor of rows that come, go and move one by one: ranges that only Qt keeps at their rows, by
/// a walk over all persistent indexes for each change.
struct HeldRanges
{
    explicit HeldRanges(QAbstractItemModel*) {}
    void select(const QItemSelection& selection, Model::SelectionFlags) { ranges = selection; }

    QItemSelection ranges;
};

// A third of all rows, whose ranges lie in the middle of the list.
template <typename Selection>
void removeParent(benchmark::State& state)
{
    measureChange<Selection>(state, 3, count(state) / 3,
                             [](ChangingTree& tree, Selection&) { tree.removeParents(1, 1); });
}

template <typename Selection>
void removeTenth(benchmark::State& state)
{
    const int rows = count(state);
    measureChange<Selection>(state, 1, rows, [rows](ChangingTree& tree, Selection&) {
        tree.removeChildren(0, rows * 9 / 20, rows / 10);
    });
}

template <typename Selection>
void moveOneOfAll(benchmark::State& state)
{
    const int rows = count(state);
    measureChange<Selection>(state, 1, rows, [rows](ChangingTree& tree, Selection& selection) {
        const QModelIndex parent = tree.index(0, 0);
        selection.select(QItemSelection(tree.index(0, 0, parent), tree.index(rows - 1, 0, parent)),
                         Model::ClearAndSelect);
        tree.moveChild(0, rows / 2, 1);
    });
}

// A thousand rows one by one, spread over the list.
template <typename Selection, typename Change>
void changeThousand(benchmark::State& state, const Change& change)
{
    const int rows = count(state);
    measureChange<Selection>(state, 1, rows, [&](ChangingTree& tree, Selection&) {
        for (int i = 0; i < 1000; ++i)
            change(tree, int(std::int64_t(i) * (rows - 1010) / 1000));
    });
}

template <typename Selection>
void insertThousand(benchmark::State& state)
{
    changeThousand<Selection>(state, [](ChangingTree& tree, int row) { tree.insertChild(0, row); });
}

template <typename Selection>
void removeThousand(benchmark::State& state)
{
    changeThousand<Selection>(state,
                              [](ChangingTree& tree, int row) { tree.removeChildren(0, row, 1); });
}

template <typename Selection>
void moveThousand(benchmark::State& state)
{
    changeThousand<Selection>(state,
                              [](ChangingTree& tree, int row) { tree.moveChild(0, row, row + 5); });
}

BENCHMARK(buildOddRows)->Arg(1000)->Arg(10000)->Arg(100000)->Arg(1000000)->Unit(unit);
BENCHMARK_TEMPLATE(removeParent, RowSelectionModel)
    ->Arg(1000)
    ->Arg(10000)
    ->Arg(100000)
    ->Arg(1000000)
    ->Unit(unit)
    ->Iterations(3);
BENCHMARK_TEMPLATE(removeParent, Model)->Arg(10000)->Arg(100000)->Unit(unit)->Iterations(1);
BENCHMARK_TEMPLATE(removeTenth, RowSelectionModel)
    ->Arg(1000)
    ->Arg(10000)
    ->Arg(100000)
    ->Arg(1000000)
    ->Unit(unit)
    ->Iterations(3);
BENCHMARK_TEMPLATE(removeTenth, Model)->Arg(10000)->Arg(100000)->Unit(unit)->Iterations(1);
BENCHMARK_TEMPLATE(moveOneOfAll, RowSelectionModel)
    ->Arg(1000)
    ->Arg(10000)
    ->Arg(100000)
    ->Arg(1000000)
    ->Unit(unit)
    ->Iterations(3);
BENCHMARK_TEMPLATE(moveOneOfAll, Model)->Arg(10000)->Arg(100000)->Unit(unit)->Iterations(1);
BENCHMARK_TEMPLATE(insertThousand, RowSelectionModel)
    ->Arg(10000)
    ->Arg(100000)
    ->Unit(unit)
    ->Iterations(1);
BENCHMARK_TEMPLATE(insertThousand, HeldRanges)->Arg(10000)->Arg(100000)->Unit(unit)->Iterations(1);
BENCHMARK_TEMPLATE(insertThousand, Model)->Arg(10000)->Arg(100000)->Unit(unit)->Iterations(1);
BENCHMARK_TEMPLATE(removeThousand, RowSelectionModel)
    ->Arg(10000)
    ->Arg(100000)
    ->Unit(unit)
    ->Iterations(1);
BENCHMARK_TEMPLATE(removeThousand, HeldRanges)->Arg(10000)->Arg(100000)->Unit(unit)->Iterations(1);
BENCHMARK_TEMPLATE(removeThousand, Model)->Arg(10000)->Unit(unit)->Iterations(1);
BENCHMARK_TEMPLATE(moveThousand, RowSelectionModel)
    ->Arg(10000)
    ->Arg(100000)
    ->Unit(unit)
    ->Iterations(1);
BENCHMARK_TEMPLATE(moveThousand, HeldRanges)->Arg(10000)->Arg(100000)->Unit(unit)->Iterations(1);
BENCHMARK_TEMPLATE(moveThousand, Model)->Arg(10000)->Unit(unit)->Iterations(1);

} // namespace
