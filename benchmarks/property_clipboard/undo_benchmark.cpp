// Undo of a paste and its redo, beside a bare loop that sets the recorded values, and beside an
// undo stack of Qt with a command for each value.

#include "crate_scene.h"

#include <QUndoCommand>

#include <benchmark/benchmark.h>

#include <memory>
#include <vector>

namespace {

using bench::Crate;
using bench::Documents;
using bench::Scene;
using bench::ValueChange;

constexpr int seed = 1000000;

enum class Way
{
    Undo,
    Redo
};

// A scene that a document of other values was pasted onto.
class PastedScene
{
public:
    explicit PastedScene(const benchmark::State& state)
        : controller(std::make_shared<Zar::ChangesController>())
        , scene(int(state.range(0)), seed, controller)
    {
        Documents documents(int(state.range(0)));
        documents.offerNext();
        scene.browser->pasteProperties();
    }
    std::size_t changedProperties() const
    {
        return scene.browser->lastPasteReport().changedProperties;
    }
    bool isPasted() const { return scene.crates.back()->health < seed; }

    std::shared_ptr<Zar::ChangesController> controller;
    Scene scene;
};

/// Times one of `undo` and `redo`, which are called in turn.
template <Way way, typename Undo, typename Redo>
void measure(benchmark::State& state, const PastedScene& pasted, const Undo& undo, const Redo& redo)
{
    for (auto _ : state) {
        if (way == Way::Redo)
            state.PauseTiming();
        undo();
        if (pasted.isPasted())
            state.SkipWithError("the paste was not undone");
        if (way == Way::Redo)
            state.ResumeTiming();
        else
            state.PauseTiming();
        redo();
        if (!pasted.isPasted())
            state.SkipWithError("the paste was not redone");
        if (way == Way::Undo)
            state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0) * 20);
}

template <Way way>
void replayPaste(benchmark::State& state)
{
    const PastedScene pasted(state);
    QUndoStack& stack = pasted.controller->stack();
    measure<way>(
        state, pasted, [&] { stack.undo(); }, [&] { stack.redo(); });
}

// Every value that the paste set, as an undo would have it in a list.
std::vector<ValueChange> changesOf(const PastedScene& pasted)
{
    std::vector<ValueChange> changes;
    std::vector<std::shared_ptr<Crate>> before =
        bench::makeCrates(int(pasted.scene.crates.size()), seed);
    for (std::size_t i = 0; i < before.size(); ++i) {
        const auto add = [&](const kyr::ReflectedObject& from, const kyr::ReflectedObject& to,
                             const auto& addNested) -> void {
            for (std::size_t place = 0; place < to.propertyCount(); ++place) {
                const kyr::BoundProperty old = from.propertyAt(place);
                const kyr::BoundProperty now = to.propertyAt(place);
                if (!now.isValue())
                    addNested(kyr::ReflectedObject(old), kyr::ReflectedObject(now), addNested);
                else if (!(old.get() == now.get()))
                    changes.emplace_back(now, old.get(), now.get());
            }
        };
        add(kyr::ReflectedObject(before[i]), kyr::ReflectedObject(pasted.scene.crates[i]), add);
    }
    return changes;
}

template <Way way>
void setRecordedValues(benchmark::State& state)
{
    const PastedScene pasted(state);
    std::vector<ValueChange> changes = changesOf(pasted);
    if (changes.size() != pasted.changedProperties())
        state.SkipWithError("other changes than the paste's");
    measure<way>(
        state, pasted,
        [&] {
            for (auto change = changes.rbegin(); change != changes.rend(); ++change)
                change->undo();
        },
        [&] {
            for (ValueChange& change : changes)
                change.redo();
        });
}

class ValueCommand : public QUndoCommand
{
public:
    explicit ValueCommand(ValueChange change) : m_change(std::move(change)) {}
    void undo() override { m_change.undo(); }
    void redo() override { m_change.redo(); }

private:
    ValueChange m_change;
};

template <Way way>
void replayCommands(benchmark::State& state)
{
    const PastedScene pasted(state);
    QUndoStack stack;
    stack.beginMacro(QStringLiteral("paste"));
    for (ValueChange& change : changesOf(pasted))
        stack.push(new ValueCommand(std::move(change)));
    stack.endMacro();
    measure<way>(
        state, pasted, [&] { stack.undo(); }, [&] { stack.redo(); });
}

constexpr auto unit = benchmark::kMillisecond;

BENCHMARK_TEMPLATE(replayPaste, Way::Undo)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(unit);
BENCHMARK_TEMPLATE(replayPaste, Way::Redo)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(unit);
BENCHMARK_TEMPLATE(setRecordedValues, Way::Undo)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(unit);
BENCHMARK_TEMPLATE(setRecordedValues, Way::Redo)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(unit);
BENCHMARK_TEMPLATE(replayCommands, Way::Undo)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(unit);
BENCHMARK_TEMPLATE(replayCommands, Way::Redo)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(unit);

} // namespace
