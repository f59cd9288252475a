// Selecting, inverting, following and hovering in scenes of every shape, with their floors.

#include "lines_by_shape.h"
#include "shape_scene.h"

#include <QCoreApplication>

#include <benchmark/benchmark.h>

#include <vector>

namespace {

using bench::Shape;
using bench::ShapedObjects;
using bench::ShapedScene;
using bench::ShapedTree;
using bench::walk;
using Model = QItemSelectionModel;

// Reads the object of every row and keeps it.
void walkShape(benchmark::State& state, Shape shape)
{
    const ShapedTree tree(shape, int(state.range(0)));
    for (auto _ : state) {
        std::vector<kyr::PersistentObject> objects;
        walk(tree, [&](const QModelIndex& index) {
            objects.emplace_back(tree.data(index, 358).value<kyr::ReflectedObject>());
        });
        benchmark::DoNotOptimize(objects);
    }
}

// The row selection and the editor's.
void selectAllOfShape(benchmark::State& state, Shape shape)
{
    ShapedScene scene(state, shape);
    for (auto _ : state) {
        scene.browser.selectAll();
        state.PauseTiming();
        scene.browser.selectionModel()->clearSelection();
        state.ResumeTiming();
    }
}

// The floor of inverting: a walk that keeps the objects that were not there before.
void walkUnselected(benchmark::State& state, Shape shape)
{
    const ShapedObjects scene(state, shape);
    std::vector<bool> isSelected(std::size_t(scene.count));
    for (std::size_t row = 0; row < isSelected.size(); row += 2)
        isSelected[row] = true;
    for (auto _ : state) {
        std::vector<kyr::PersistentObject> objects;
        std::size_t row = 0;
        walk(scene.tree, [&](const QModelIndex& index) {
            if (!isSelected[row])
                objects.emplace_back(scene.tree.data(index, 358).value<kyr::ReflectedObject>());
            isSelected[row].flip();
            ++row;
        });
        benchmark::DoNotOptimize(objects);
    }
}

void invertOfShape(benchmark::State& state, Shape shape)
{
    ShapedScene scene(state, shape);
    scene.selection.setSelection(scene.everySecond, false);
    const QItemSelection all = bench::allRows(scene.tree);
    for (auto _ : state)
        scene.browser.selectionModel()->select(all, Model::Toggle);
    const std::size_t selected = scene.selection.objects().size();
    if (selected < std::size_t(scene.count / 2) || selected > std::size_t(scene.count + 1) / 2)
        state.SkipWithError("not every second object is selected");
}

void invertOfShapeStock(benchmark::State& state, Shape shape)
{
    bench::StockScene scene(state, shape);
    scene.rows.select(scene.everySecondRow(), Model::ClearAndSelect);
    const QItemSelection all = bench::allRows(scene.tree);
    for (auto _ : state)
        scene.rows.select(all, Model::Toggle);
}

// The floor of what the editor selects: the row of each object.
void rowsOfShape(benchmark::State& state, Shape shape)
{
    const ShapedObjects scene(state, shape);
    for (auto _ : state)
        benchmark::DoNotOptimize(scene.everySecondRow());
}

void fromEditorOfShape(benchmark::State& state, Shape shape)
{
    ShapedScene scene(state, shape);
    for (auto _ : state) {
        scene.selection.setSelection(scene.everySecond, false);
        scene.selection.setSelection({}, false);
    }
}

void resetOfShape(benchmark::State& state, Shape shape)
{
    ShapedScene scene(state, shape);
    scene.selection.setSelection(scene.everySecond, false);
    for (auto _ : state) {
        scene.tree.reset();
        QCoreApplication::processEvents(); // in which the rows are selected again
        if (!scene.browser.selectionModel()->hasSelection())
            state.SkipWithError("nothing is selected");
    }
}

// A thousand rows in turn from the tree to the editor and as marks back, half of them selected.
void hoverOfShape(benchmark::State& state, Shape shape)
{
    ShapedScene scene(state, shape);
    scene.selection.setSelection(scene.everySecond, false);
    const int step = scene.count / 1000;
    for (auto _ : state) {
        for (int i = 0; i < 1000; ++i) {
            const kyr::PersistentObject object(scene.tree.objectAt(i * step));
            scene.browser.syncHover(scene.indexOf(object.object()));
        }
    }
    if (scene.hoverMarks() < 1000)
        state.SkipWithError("rows were not marked");
}

[[maybe_unused]] const bool isRegistered = [] {
    bench::registerByShape("walkShape", walkShape, 1'000'000);
    bench::registerByShape("selectAllOfShape", selectAllOfShape, 1'000'000);
    bench::registerByShape("walkUnselected", walkUnselected, 1'000'000);
    bench::registerByShape("invertOfShape", invertOfShape, 1'000'000);
    bench::registerByShape("invertOfShapeStock", invertOfShapeStock, 10'000, {}, 1);
    bench::registerByShape("rowsOfShape", rowsOfShape, 100'000);
    bench::registerByShape("fromEditorOfShape", fromEditorOfShape, 100'000);
    bench::registerByShape("resetOfShape", resetOfShape, 100'000);
    bench::registerByShape("hoverOfShape", hoverOfShape, 100'000);
    return true;
}();

} // namespace
