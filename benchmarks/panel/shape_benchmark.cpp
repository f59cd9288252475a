// The list over scenes of every shape: a panel that opens, and an object deep down that is
// revealed.

#include <benchmarks/selection/lines_by_shape.h>
#include <panel/outline/outline_model.h>

#include <QItemSelectionModel>

#include <benchmark/benchmark.h>

#include <memory>

namespace {

using bench::Shape;
using bench::ShapedTree;
using kyr::panel::OutlineModel;

/// Reads the whole scene and shows all of it.
void openPanel(benchmark::State& state, Shape shape)
{
    ShapedTree tree(shape, int(state.range(0)));
    QItemSelectionModel selection(&tree);
    std::unique_ptr<OutlineModel> outline;
    for (auto _ : state) {
        outline = std::make_unique<OutlineModel>();
        outline->setSourceModel(&tree);
        outline->setSelectionModel(&selection);
        outline->expandAll();
        benchmark::DoNotOptimize(outline->count());
        state.PauseTiming();
        outline.reset();
        state.ResumeTiming();
    }
}

/// Out of a scene that was read and is closed; opens all that is above the object.
void revealDeepest(benchmark::State& state, Shape shape)
{
    ShapedTree tree(shape, int(state.range(0)));
    OutlineModel outline;
    outline.setSourceModel(&tree);
    QModelIndex deepest;
    while (tree.rowCount(deepest) > 0)
        deepest = tree.index(0, 0, deepest);
    outline.expandAll();
    for (auto _ : state) {
        state.PauseTiming();
        outline.collapseAll();
        state.ResumeTiming();
        benchmark::DoNotOptimize(outline.reveal(deepest));
    }
}

[[maybe_unused]] const bool isRegistered = [] {
    bench::registerByShape("openPanel", openPanel, 1'000'000);
    bench::registerByShape("revealDeepest", revealDeepest, 1'000'000);
    return true;
}();

} // namespace
