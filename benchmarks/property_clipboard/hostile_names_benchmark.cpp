// Reading a stored object whose property names were chosen to share one hash of the standard
// library, beside one with names that look the same and do not, and beside a plain hash table of
// both.
#include <host/data_section/xml_section.h>
#include <kyr_scene_outline/properties/property_table.h>

#include <benchmark/benchmark.h>

#include <unordered_set>

namespace {

namespace properties = kyr::properties;

// Eight characters that take the state h of the standard library's hash of strings, which is a
// MurmurHash64A with a fixed seed, to (h ^ word) * factor.
std::string charactersFor(std::uint64_t word)
{
    constexpr std::uint64_t factor = 0xc6a4a7935bd1e995;
    std::uint64_t inverse = factor; // Newton's iteration doubles the bits that are right
    for (int i = 0; i < 5; ++i)
        inverse *= 2 - factor * inverse;
    word *= inverse;
    word = (word ^ word >> 47) * inverse;
    return {reinterpret_cast<const char*>(&word), sizeof word};
}

// Names of one length that begin alike. Where the words differ by the highest bit, the difference
// outlives the multiplication and the second word takes it back: all names have one hash.
std::vector<std::string> namesOf(std::uint64_t difference, int bits)
{
    const std::string ways[] = {charactersFor(1) + charactersFor(2),
                                charactersFor(1 ^ difference) + charactersFor(2 ^ difference)};
    std::vector<std::string> names(std::size_t(1) << bits);
    for (std::size_t i = 0; i < names.size(); ++i) {
        for (int bit = bits - 1; bit >= 0; --bit)
            names[i] += ways[i >> bit & 1];
    }
    return names;
}

constexpr std::uint64_t sharingAHash = std::uint64_t(1) << 63;
constexpr std::uint64_t usual = 1;

template <std::uint64_t difference>
void lookUp(benchmark::State& state)
{
    const std::vector<std::string> names = namesOf(difference, int(state.range(0)));
    const Zar::DataSectionPtr object(new Zar::XMLSection("object"));
    for (const std::string& name : names)
        object->insertSection("property")->writeString("name", name);
    for (auto _ : state) {
        PropertyPasteReport report;
        properties::PropertyTable table;
        table.read(*object, {}, report);
        for (std::size_t i = names.size(), place = 0; i-- > 0;)
            benchmark::DoNotOptimize(table.find(names[i], place));
    }
}

template <std::uint64_t difference>
void lookUpHashed(benchmark::State& state)
{
    const std::vector<std::string> names = namesOf(difference, int(state.range(0)));
    for (auto _ : state) {
        const std::unordered_set<std::string> table(names.begin(), names.end());
        for (const std::string& name : names)
            benchmark::DoNotOptimize(table.find(name));
    }
}

} // namespace

BENCHMARK_TEMPLATE(lookUp, usual)->Arg(10)->Arg(13)->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(lookUp, sharingAHash)->Arg(10)->Arg(13)->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(lookUpHashed, usual)->Arg(10)->Arg(13)->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(lookUpHashed, sharingAHash)->Arg(10)->Arg(13)->Unit(benchmark::kMillisecond);
