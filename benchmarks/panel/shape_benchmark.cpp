// The list over scenes of every shape: a panel that opens, and an object deep down that is
// revealed.

#include <benchmarks/selection/shaped_tree.h>
#include <panel/outline/outline_model.h>

#include <QItemSelectionModel>

#include <benchmark/benchmark.h>

#include <memory>
#include <string>

namespace {

using bench::Shape;
using bench::ShapedTree;
using kyr::panel::OutlineModel;

/// Reads the whole scene and shows all of it.
template <Shape shape>
void openPanel(benchmark::State& state)
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
        state.counters["bytes/row"] = double(outline->bytesUsed()) / outline->count();
        outline.reset();
        state.ResumeTiming();
    }
}

/// Out of a scene that was read and is closed; opens all that is above the object.
template <Shape shape>
void revealDeepest(benchmark::State& state)
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

template <Shape shape>
void registerShape(const std::string& name)
{
    for (auto* line :
         {benchmark::RegisterBenchmark(("openPanel/" + name).c_str(), openPanel<shape>),
          benchmark::RegisterBenchmark(("revealDeepest/" + name).c_str(), revealDeepest<shape>)})
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
