#pragma once

#include <optional>
#include <type_traits>

namespace vex {

/// Combines the results of an emission: calls every slot and keeps the last result. Empty when no
/// slot was called.
///
/// A combiner walks the emission as it likes: `while (emission)` there is a slot to `call()`, and
/// `advance()` goes to the next.
template <typename R>
struct OptionalLastValue
{
    static_assert(!std::is_reference_v<R>, "the result of a slot has to be a value");

    using Result = std::optional<R>;

    template <typename Emission>
    Result operator()(Emission& emission) const
    {
        Result last;
        for (; emission; emission.advance())
            last.emplace(emission.call());
        return last;
    }
};

/// Calls every slot and returns nothing.
template <>
struct OptionalLastValue<void>
{
    using Result = void;

    template <typename Emission>
    void operator()(Emission& emission) const
    {
        for (; emission; emission.advance())
            emission.call();
    }
};

} // namespace vex
