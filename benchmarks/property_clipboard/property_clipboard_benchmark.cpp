// Copying and pasting the properties of many objects, beside what the same documents cost with bare
// pugixml calls. "Copy" and "Paste" are the whole commands of the browser over a clipboard in
// memory; each runs beside its floor in the same process.
#include "crate_scene.h"

#include <kyr_scene_outline/properties/property_text.h>
#include <kyr_scene_outline/properties/property_walk.h>

#include <QCoreApplication>
#include <QLoggingCategory>

#include <benchmark/benchmark.h>
#include <pugixml.hpp>

#include <algorithm>
#include <chrono>
#include <ctime>
#include <map>

namespace {

using bench::Documents;
using bench::MemoryClipboard;
using bench::Scene;

/// One property with all that a document says of it.
struct PropertyRecord
{
    kyr::BoundProperty property;
    std::string path;
    std::string text;
};

std::vector<std::vector<PropertyRecord>> recordsOf(const Scene& scene)
{
    std::vector<std::vector<PropertyRecord>> objects;
    for (const auto& crate : scene.crates) {
        auto& records = objects.emplace_back();
        const auto record = [&records](const kyr::BoundProperty& property,
                                       const std::string& path) {
            std::string text;
            kyr::properties::valueAsText(property.get(), text);
            records.push_back({property, path, text});
        };
        kyr::properties::walkProperties(kyr::ReflectedObject(crate), "", record);
    }
    return objects;
}

void reportProperties(benchmark::State& state)
{
    state.SetItemsProcessed(state.iterations() * state.range(0) * 20);
}

void copyFloor(benchmark::State& state)
{
    struct Writer : pugi::xml_writer
    {
        void write(const void* data, std::size_t size) override
        {
            bytes.append(static_cast<const char*>(data), size);
        }
        std::string bytes;
    };
    const Scene scene(int(state.range(0)), 1);
    const auto objects = recordsOf(scene);
    for (auto _ : state) {
        pugi::xml_document document;
        pugi::xml_node root = document.append_child("objects");
        for (const auto& records : objects) {
            pugi::xml_node object = root.append_child("object");
            object.append_child("type").text().set(typeid(bench::Crate).name());
            for (const PropertyRecord& record : records) {
                pugi::xml_node property = object.append_child("property");
                property.append_child("name").text().set(record.path.c_str());
                property.append_child("value").text().set(record.text.c_str());
                property.append_child("type").text().set(record.property.propertyType().name());
            }
        }
        Writer writer;
        document.save(writer, "  ");
        benchmark::DoNotOptimize(writer.bytes.data());
    }
    reportProperties(state);
}

void copy(benchmark::State& state)
{
    const auto clipboard = std::make_shared<MemoryClipboard>();
    Zar::platform::setClipboardBackend(clipboard);
    const Scene scene(int(state.range(0)), 1);
    for (auto _ : state) {
        if (!scene.browser->copyProperties())
            state.SkipWithError("nothing was copied");
    }
    state.counters["bytes"] = double(clipboard->text().size());
    reportProperties(state);
}

// Every property is known beforehand and takes the next value of the document.
void pasteFloor(benchmark::State& state)
{
    Documents documents(int(state.range(0)));
    const Scene scene(int(state.range(0)), 1000000);
    const auto objects = recordsOf(scene);
    for (auto _ : state) {
        const std::string& text = documents.next();
        pugi::xml_document document;
        if (!document.load_buffer(text.data(), text.size()))
            state.SkipWithError("no document");
        auto records = objects.begin();
        for (const pugi::xml_node object : document.child("objects").children("object")) {
            auto record = records++->begin();
            for (const pugi::xml_node property : object.children("property")) {
                const std::string value = property.child_value("value");
                record++->property.set(lumo::Variant(value));
            }
        }
    }
    reportProperties(state);
}

void paste(benchmark::State& state)
{
    Documents documents(int(state.range(0)));
    const Scene scene(int(state.range(0)), 1000000);
    for (auto _ : state) {
        state.PauseTiming();
        documents.offerNext();
        state.ResumeTiming();
        scene.browser->pasteProperties();
        if (scene.browser->lastPasteReport().changedProperties < std::size_t(state.range(0)) * 15)
            state.SkipWithError("too little was pasted");
    }
    reportProperties(state);
}

void pasteOneOntoAll(benchmark::State& state)
{
    Documents documents(1);
    const Scene scene(int(state.range(0)), 5000000);
    for (auto _ : state) {
        state.PauseTiming();
        documents.offerNext();
        state.ResumeTiming();
        scene.browser->pasteProperties();
    }
    reportProperties(state);
}

/// Works off a job in slices of a millisecond, as an editor does, and reports how long a piece of
/// it kept the processor: what starts the job, the longest slice, the last one and the end of the
/// job.
class Slices
{
public:
    explicit Slices(benchmark::State& state) : m_state(state) {}
    ~Slices()
    {
        for (const auto& [name, milliseconds] : m_longest)
            m_state.counters[name] = milliseconds;
    }

    template <typename Start>
    void work(const Start& start)
    {
        std::unique_ptr<PropertyJob> job;
        measure("start_ms", [&] { job = start(); });
        bool goesOn = job != nullptr;
        while (goesOn) {
            const double before = m_longest["last_ms"];
            m_longest["longest_slice_ms"] = std::max(m_longest["longest_slice_ms"], before);
            m_longest["last_ms"] = 0;
            measure("last_ms", [&] { goesOn = job->advance(std::chrono::milliseconds(1)); });
        }
        if (!job || !job->hasSucceeded())
            m_state.SkipWithError("the job failed");
        measure("end_ms", [&] { job.reset(); });
    }

private:
    template <typename Part>
    void measure(const char* name, const Part& part)
    {
        const std::clock_t start = std::clock();
        part();
        const double seconds = double(std::clock() - start) / CLOCKS_PER_SEC;
        m_longest[name] = std::max(m_longest[name], seconds * 1000);
    }

    benchmark::State& m_state;
    std::map<std::string, double> m_longest;
};

void copyInSlices(benchmark::State& state)
{
    Zar::platform::setClipboardBackend(std::make_shared<MemoryClipboard>());
    const Scene scene(int(state.range(0)), 1);
    Slices slices(state);
    for (auto _ : state)
        slices.work([&] { return scene.browser->startCopy(); });
    reportProperties(state);
}

void pasteInSlices(benchmark::State& state)
{
    Documents documents(int(state.range(0)));
    const auto controller = std::make_shared<Zar::ChangesController>();
    const Scene scene(int(state.range(0)), 1000000, controller);
    Slices slices(state);
    for (auto _ : state) {
        state.PauseTiming();
        controller->stack().clear();
        documents.offerNext();
        state.ResumeTiming();
        slices.work([&] { return scene.browser->startPaste(); });
    }
    reportProperties(state);
}

} // namespace

BENCHMARK(copyFloor)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(copy)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(pasteFloor)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(paste)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(pasteOneOntoAll)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(copyInSlices)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(pasteInSlices)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    // Nobody listens to the progress notes, as in an editor without an open log view.
    QLoggingCategory::setFilterRules(QStringLiteral("kyr.host.debug=false"));
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
