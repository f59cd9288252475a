// What the 3D view of a large scene costs on the GUI thread, and what a mesh costs the loader.

#include <editor/viewport/render/draw_list.h>

#include <benchmark/benchmark.h>

#include <cmath>

namespace {

using namespace editor;

// A bumpy square of `side` by `side` cells.
MeshGeometryPtr makeTerrain(quint32 side)
{
    std::vector<QVector3D> positions;
    std::vector<quint32> indices;
    for (quint32 z = 0; z <= side; ++z) {
        for (quint32 x = 0; x <= side; ++x) {
            const float u = float(x) / float(side) - 0.5f;
            const float v = float(z) / float(side) - 0.5f;
            positions.emplace_back(u, 0.1f * std::sin(u * 40) * std::cos(v * 30), v);
        }
    }
    for (quint32 z = 0; z < side; ++z) {
        for (quint32 x = 0; x < side; ++x) {
            const quint32 corner = z * (side + 1) + x;
            for (quint32 step : {0u, side + 1, 1u, 1u, side + 1, side + 2})
                indices.push_back(corner + step);
        }
    }
    return std::make_shared<const MeshGeometry>(positions, std::vector<QVector3D>(), indices);
}

std::vector<ViewportItem> makeScene(int count)
{
    const MeshGeometryPtr mesh = makeTerrain(8);
    const int side = int(std::cbrt(double(count))) + 1;
    std::vector<ViewportItem> items;
    items.resize(std::size_t(count));
    for (int i = 0; i < count; ++i) {
        ViewportItem& item = items[std::size_t(i)];
        item.id = quint32(i) + 1;
        item.geometry = mesh;
        const int row = i / side;
        const int layer = row / side;
        item.transform.translate(float(i % side) * 2, float(row % side) * 2, float(layer) * 2);
    }
    return items;
}

struct Scene
{
    ItemSet items;
    OrbitCamera camera;

    explicit Scene(int count)
    {
        items.assign(makeScene(count));
        camera.setViewport({1280, 720});
        camera.frame(items.bounds());
    }
};

void assignItems(benchmark::State& state)
{
    const std::vector<ViewportItem> items = makeScene(int(state.range(0)));
    for (auto _ : state) {
        ItemSet set;
        set.assign(items);
        benchmark::DoNotOptimize(set);
    }
}

void updateItem(benchmark::State& state)
{
    Scene scene(int(state.range(0)));
    ViewportItem item = scene.items.items()[scene.items.items().size() / 2];
    for (auto _ : state) {
        item.transform.translate(0.001f, 0, 0);
        benchmark::DoNotOptimize(scene.items.update(item));
    }
}

void pick(benchmark::State& state)
{
    const Scene scene(int(state.range(0)));
    int step = 0;
    for (auto _ : state) {
        step = (step + 37) % 600;
        benchmark::DoNotOptimize(
            scene.items.pick(scene.camera, QPointF(340.0 + step, 60.0 + step)));
    }
}

void rubberBandAll(benchmark::State& state)
{
    const Scene scene(int(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(
            scene.items.idsWithin(scene.camera, QRectF(QPointF(), scene.camera.viewport())));
}

// What is drawn of a scene: in the loader's thread for one that opens, else while a frame waits.
void listInstances(benchmark::State& state)
{
    const Scene scene(int(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(DrawList(scene.items));
}

void makeMesh(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(makeTerrain(quint32(state.range(0))));
    state.counters["triangles"] = double(state.range(0) * state.range(0) * 2);
}

} // namespace

BENCHMARK(assignItems)->RangeMultiplier(10)->Range(1000, 100000)->Unit(benchmark::kMillisecond);
BENCHMARK(updateItem)->RangeMultiplier(10)->Range(1000, 100000);
BENCHMARK(pick)->RangeMultiplier(10)->Range(1000, 100000)->Unit(benchmark::kMicrosecond);
BENCHMARK(rubberBandAll)->RangeMultiplier(10)->Range(1000, 100000)->Unit(benchmark::kMillisecond);
BENCHMARK(listInstances)->RangeMultiplier(10)->Range(1000, 100000)->Unit(benchmark::kMillisecond);
BENCHMARK(makeMesh)->Arg(100)->Arg(700)->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
