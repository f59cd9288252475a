// What the list is measured against: the proxies of the libraries, one over the other.

#include "group_model.h"

#include <KDescendantsProxyModel>

#include <QSortFilterProxyModel>

#include <benchmark/benchmark.h>

#include <memory>
#include <random>

namespace {

/// A tenth of `range(0)` objects are groups; filtered and sorted, then as one list.
struct Scene
{
    explicit Scene(const benchmark::State& state) : model(int(state.range(0)) / 10, 9)
    {
        filter.setRecursiveFilteringEnabled(true);
        filter.setSourceModel(&model);
        list = std::make_unique<KDescendantsProxyModel>();
        list->setSourceModel(&filter);
    }

    GroupModel model;
    QSortFilterProxyModel filter;
    std::unique_ptr<KDescendantsProxyModel> list;
};

void openProxies(benchmark::State& state)
{
    for (auto _ : state) {
        const Scene scene(state);
        benchmark::DoNotOptimize(scene.list->rowCount());
    }
}

void filterKeystrokeOfProxies(benchmark::State& state)
{
    Scene scene(state);
    bool longer = false;
    for (auto _ : state) {
        longer = !longer;
        scene.filter.setFilterFixedString(longer ? QStringLiteral("12") : QStringLiteral("1"));
        benchmark::DoNotOptimize(scene.list->rowCount());
    }
}

void sortProxies(benchmark::State& state)
{
    Scene scene(state);
    bool descends = false;
    for (auto _ : state) {
        descends = !descends;
        scene.filter.sort(0, descends ? Qt::DescendingOrder : Qt::AscendingOrder);
        benchmark::DoNotOptimize(scene.list->rowCount());
    }
}

void insertAndRemoveRowOfProxies(benchmark::State& state)
{
    Scene scene(state);
    std::minstd_rand random;
    for (auto _ : state) {
        const int group = int(random() % unsigned(scene.model.rowCount()));
        scene.model.insert(group, 1);
        scene.model.remove(group, 1);
    }
}

BENCHMARK(openProxies)->Arg(1'000)->Arg(10'000)->Unit(benchmark::kMillisecond);
BENCHMARK(filterKeystrokeOfProxies)->Arg(1'000)->Arg(10'000)->Unit(benchmark::kMillisecond);
BENCHMARK(sortProxies)->Arg(1'000)->Arg(10'000)->Unit(benchmark::kMillisecond);
BENCHMARK(insertAndRemoveRowOfProxies)->Arg(1'000)->Arg(10'000)->Unit(benchmark::kMicrosecond);

} // namespace
