#pragma once

#include "shaped_tree.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <initializer_list>
#include <map>
#include <string>

namespace bench {

using LineByShape = void (*)(benchmark::State&, Shape);

/// A benchmark "line/shape/count" of `smallest` objects and ten times as many up to `largest`.
inline void registerShape(const std::string& line, LineByShape function, Shape shape, int smallest,
                          int largest, int iterations = 0)
{
    static const std::map<Shape, const char*> names{{Shape::Flat, "flat"},
                                                    {Shape::ThousandLevels, "1000_levels"},
                                                    {Shape::Chain, "chain"},
                                                    {Shape::ThousandParents, "1000_parents"},
                                                    {Shape::Bushy, "bushy"}};
    auto* benchmark =
        benchmark::RegisterBenchmark((line + '/' + names.at(shape)).c_str(), function, shape);
    benchmark->Unit(benchmark::kMillisecond);
    for (int count = smallest; count <= largest; count *= 10)
        benchmark->Arg(count);
    if (iterations > 0)
        benchmark->Iterations(iterations);
}

/// One for each shape of scenes.
inline void registerByShape(const std::string& line, LineByShape function, int largest,
                            std::initializer_list<Shape> leftOut = {}, int iterations = 0)
{
    for (const Shape shape :
         {Shape::Flat, Shape::ThousandLevels, Shape::Chain, Shape::ThousandParents, Shape::Bushy}) {
        if (std::find(leftOut.begin(), leftOut.end(), shape) == leftOut.end())
            registerShape(line, function, shape, 1000, largest, iterations);
    }
}

} // namespace bench
