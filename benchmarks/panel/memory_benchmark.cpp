// What the panel's list takes of memory for a row, in scenes of every shape: bytes that malloc has
// handed out for it and not got back, whoever asked for them.

#include <benchmarks/selection/lines_by_shape.h>
#include <panel/outline/outline_model.h>

#include <KDescendantsProxyModel>

#include <QItemSelectionModel>
#include <QSortFilterProxyModel>

#include <benchmark/benchmark.h>

#include <malloc.h>

#include <vector>

namespace {

using bench::Shape;
using bench::ShapedTree;
using kyr::panel::OutlineModel;

double bytesInUse()
{
    const struct mallinfo2 info = mallinfo2();
    return double(info.uordblks + info.hblkhd);
}

/// Counts from when it is made.
class BytesARow
{
public:
    explicit BytesARow(benchmark::State& state) : m_state(state), m_before(bytesInUse()) {}
    void report(const char* name)
    {
        m_state.counters[name] = (bytesInUse() - m_before) / double(m_state.range(0));
    }

private:
    benchmark::State& m_state;
    double m_before;
};

/// All rows open; then with the index of every row asked for, as by a view that has shown them all;
/// then in another order, which is kept beside the scene's.
void memoryOfRows(benchmark::State& state, Shape shape)
{
    ShapedTree tree(shape, int(state.range(0)));
    for (auto _ : state) {
        BytesARow bytes(state);
        OutlineModel outline;
        QItemSelectionModel selection(&tree);
        outline.setSourceModel(&tree);
        outline.setSelectionModel(&selection);
        outline.expandAll();
        outline.finish();
        bytes.report("open");
        for (int row = 0; row < outline.count(); ++row) {
            if (outline.rowOf(outline.sourceIndex(row)) != row)
                state.SkipWithError("another row");
        }
        bytes.report("looked at");
        outline.setSortRole(Qt::DisplayRole);
        outline.finish();
        bytes.report("sorted");
        if (outline.count() != state.range(0))
            state.SkipWithError("not all rows show");
    }
}

/// A plain list of the indexes of all rows.
void memoryOfIndexes(benchmark::State& state, Shape shape)
{
    const ShapedTree tree(shape, int(state.range(0)));
    for (auto _ : state) {
        BytesARow bytes(state);
        std::vector<QModelIndex> rows;
        rows.reserve(std::size_t(state.range(0)));
        for (int object = 0; object < int(state.range(0)); ++object)
            rows.push_back(tree.indexOf(tree.objectAt(object).get()));
        bytes.report("open");
    }
}

/// The proxies of the libraries, with every row shown once. One calls itself for each level.
void memoryOfProxies(benchmark::State& state, Shape shape)
{
    ShapedTree tree(shape, int(state.range(0)));
    for (auto _ : state) {
        BytesARow bytes(state);
        QSortFilterProxyModel filter;
        filter.setRecursiveFilteringEnabled(true);
        filter.setSourceModel(&tree);
        KDescendantsProxyModel list;
        list.setSourceModel(&filter);
        bytes.report("open");
        for (int row = 0; row < list.rowCount(); ++row)
            benchmark::DoNotOptimize(filter.mapToSource(list.mapToSource(list.index(row, 0))));
        bytes.report("looked at");
        if (list.rowCount() != state.range(0))
            state.SkipWithError("not all rows show");
    }
}

[[maybe_unused]] const bool isRegistered = [] {
    bench::registerByShape("memoryOfRows", memoryOfRows, 1'000'000, {}, 1);
    bench::registerByShape("memoryOfIndexes", memoryOfIndexes, 1'000'000, {}, 1);
    bench::registerByShape("memoryOfProxies", memoryOfProxies, 10'000, {Shape::Chain}, 1);
    return true;
}();

} // namespace
