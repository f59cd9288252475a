// Parents that go and children that move in scenes of every shape, with the browser's row selection
// and the editor's; the floor is what Qt does for ranges that somebody holds.

#include "lines_by_shape.h"
#include "shape_scene.h"

#include <QItemSelectionModel>

#include <benchmark/benchmark.h>

namespace {

using bench::Shape;
using bench::ShapedObjects;
using bench::ShapedScene;
using bench::ShapedTree;
using Model = QItemSelectionModel;

// In the middle of the levels or of the parents; of bushy scenes half of all objects, not the first
// half.
int parentThatGoes(Shape shape, int count)
{
    switch (shape) {
    case Shape::Flat:
    case Shape::Chain:
        break;
    case Shape::ThousandLevels:
        return 500 * (count / 1000);
    case Shape::ThousandParents:
        return 500;
    case Shape::Bushy:
        return 2;
    }
    return count / 2;
}

// Takes the parent away while `select` holds every second object selected.
template <typename Select, typename Check>
void measureRemoval(benchmark::State& state, Shape shape, ShapedTree& tree, const Select& select,
                    const Check& check)
{
    const int parent = parentThatGoes(shape, int(state.range(0)));
    const ShapedTree::Place place = tree.placeOf(parent);
    for (auto _ : state) {
        state.PauseTiming();
        {
            auto held = select();
            state.ResumeTiming();
            tree.take(parent);
            check(held);
            state.PauseTiming();
        }
        tree.putBack(parent, place);
        state.ResumeTiming();
    }
}

void removeParentOfShape(benchmark::State& state, Shape shape)
{
    ShapedScene scene(state, shape);
    const auto select = [&] {
        scene.selection.setSelection(scene.everySecond, false);
        return 0;
    };
    const auto check = [&](int) {
        if (scene.selection.objects().size() >= scene.everySecond.size())
            state.SkipWithError("what went is selected");
    };
    measureRemoval(state, shape, scene.tree, select, check);
}

// Qt's own walk over the indexes of the ranges, and the objects of what is left.
void removeParentOfShapeHeld(benchmark::State& state, Shape shape)
{
    ShapedObjects scene(state, shape);
    const auto select = [&] { return scene.everySecondRow(); };
    const auto readWhatIsLeft = [&](const QItemSelection& rows) {
        std::vector<kyr::PersistentObject> objects;
        for (const QItemSelectionRange& row : rows) {
            if (row.isValid())
                objects.emplace_back(
                    scene.tree.data(row.topLeft(), 358).value<kyr::ReflectedObject>());
        }
        benchmark::DoNotOptimize(objects);
    };
    measureRemoval(state, shape, scene.tree, select, readWhatIsLeft);
}

void removeParentOfShapeStock(benchmark::State& state, Shape shape)
{
    bench::StockScene scene(state, shape);
    const auto select = [&] {
        scene.rows.select(scene.everySecondRow(), Model::ClearAndSelect);
        return 0;
    };
    measureRemoval(state, shape, scene.tree, select, [](int) {});
}

// From the end of the deepest rows to the top, all rows selected by `selectAll`.
template <typename Select>
void measureMove(benchmark::State& state, ShapedTree& tree, const Model& selection,
                 const Select& selectAll)
{
    const int child = int(state.range(0)) - 1;
    const ShapedTree::Place home = tree.placeOf(child);
    for (auto _ : state) {
        state.PauseTiming();
        selectAll();
        state.ResumeTiming();
        tree.move(child, {-1, 0});
        state.PauseTiming();
        if (selection.selectedIndexes().size() != state.range(0)) {
            state.SkipWithError("not all rows are selected any more");
            break;
        }
        tree.move(child, home);
        state.ResumeTiming();
    }
}

void moveChildOfShape(benchmark::State& state, Shape shape)
{
    ShapedScene scene(state, shape);
    measureMove(state, scene.tree, *scene.browser.selectionModel(),
                [&] { scene.browser.selectAll(); });
}

void moveChildOfShapeStock(benchmark::State& state, Shape shape)
{
    bench::StockScene scene(state, shape);
    const auto selectAll = [&] {
        scene.rows.select(bench::allRows(scene.tree), Model::ClearAndSelect);
    };
    measureMove(state, scene.tree, scene.rows, selectAll);
}

[[maybe_unused]] const bool isRegistered = [] {
    bench::registerByShape("removeParentOfShape", removeParentOfShape, 100'000, {Shape::Flat});
    bench::registerByShape("removeParentOfShapeHeld", removeParentOfShapeHeld, 100'000,
                           {Shape::Flat});
    bench::registerByShape("removeParentOfShapeStock", removeParentOfShapeStock, 100'000,
                           {Shape::Flat}, 1);
    // A thousand objects with as many parents have no children.
    constexpr Shape parents = Shape::ThousandParents;
    bench::registerByShape("moveChildOfShape", moveChildOfShape, 1'000'000, {parents});
    bench::registerShape("moveChildOfShape", moveChildOfShape, parents, 10'000, 1'000'000);
    bench::registerByShape("moveChildOfShapeStock", moveChildOfShapeStock, 100'000, {parents}, 1);
    bench::registerShape("moveChildOfShapeStock", moveChildOfShapeStock, parents, 10'000, 100'000,
                         1);
    return true;
}();

} // namespace
