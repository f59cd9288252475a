#include "random_driver.h"

#include "driven_scene.h"

#include <algorithm>
#include <random>
#include <vector>

namespace kyr::testkit {
namespace {

constexpr int sequenceLength = 200;

using Steps = std::vector<Step>;

Steps randomSteps(unsigned seed, int count)
{
    std::mt19937 random(seed);
    auto steps = Steps(std::size_t(count));
    for (Step& step : steps) {
        for (unsigned* number : {&step.kind, &step.who, &step.where, &step.what})
            *number = unsigned(random());
    }
    return steps;
}

struct Run
{
    /// Steps that were made, the last of which failed when there is a fault.
    std::size_t made = 0;
    std::string fault;
    std::string told;
};

Run run(const SceneFactory& makeScene, const Steps& steps)
{
    Run result;
    DrivenScene scene(makeScene);
    for (const Step& step : steps) {
        result.told += "  " + std::to_string(++result.made) + ". " + scene.make(step) + "\n";
        result.fault = scene.fault();
        if (!result.fault.empty())
            break;
    }
    return result;
}

// Leaves out ever smaller parts for as long as what is left still fails.
Steps shortened(const SceneFactory& makeScene, Steps steps)
{
    for (std::size_t part = steps.size() / 2; part > 0; part /= 2) {
        for (std::size_t at = 0; at + part <= steps.size();) {
            Steps fewer(steps.begin(), steps.begin() + std::ptrdiff_t(at));
            fewer.insert(fewer.end(), steps.begin() + std::ptrdiff_t(at + part), steps.end());
            const Run tried = run(makeScene, fewer);
            if (tried.fault.empty()) {
                at += part;
                continue;
            }
            fewer.resize(tried.made);
            steps = std::move(fewer);
        }
    }
    return steps;
}

} // namespace

std::string firstFailure(const SceneFactory& makeScene, unsigned seed, int steps)
{
    for (int made = 0; made < steps; made += sequenceLength, ++seed) {
        Steps sequence = randomSteps(seed, std::min(sequenceLength, steps - made));
        const Run first = run(makeScene, sequence);
        if (first.fault.empty())
            continue;
        sequence.resize(first.made);
        const Run least = run(makeScene, shortened(makeScene, sequence));
        return "seed " + std::to_string(seed) + ", " + std::to_string(least.made) + " of " +
               std::to_string(first.made) + " steps:\n" + least.told + least.fault;
    }
    return {};
}

} // namespace kyr::testkit
