#pragma once

#include <cstddef>
#include <functional>
#include <tuple>
#include <type_traits>
#include <utility>

namespace kyr {

/// Passes every argument on as it is.
struct DefaultArgumentsConvertor
{
    template <typename Argument>
    static Argument&& convert(Argument&& argument) noexcept
    {
        return std::forward<Argument>(argument);
    }
};

namespace fuzzy_details {

template <typename Callable, typename Indices, typename... Arguments>
struct AcceptsPrefix;

template <typename Callable, std::size_t... Index, typename... Arguments>
struct AcceptsPrefix<Callable, std::index_sequence<Index...>, Arguments...>
    : std::is_invocable<Callable&, std::tuple_element_t<Index, std::tuple<Arguments...>>...>
{};

// The longest prefix of the arguments that the callable takes.
template <typename Callable, std::size_t Count, typename... Arguments>
constexpr std::size_t prefixLength()
{
    if constexpr (AcceptsPrefix<Callable, std::make_index_sequence<Count>, Arguments...>::value) {
        return Count;
    } else {
        static_assert(Count > 0, "the callable takes no prefix of the signature's arguments");
        return prefixLength<Callable, Count - 1, Arguments...>();
    }
}

template <typename Callable>
struct IsStdFunction : std::false_type
{};
template <typename Signature>
struct IsStdFunction<std::function<Signature>> : std::true_type
{};

template <typename Callable>
bool isEmpty([[maybe_unused]] const Callable& callable) noexcept
{
    if constexpr (std::is_pointer_v<Callable> || IsStdFunction<Callable>::value)
        return callable == nullptr;
    else
        return false;
}

} // namespace fuzzy_details

/// Adapts a callable to a signature; see the specialisation.
template <typename Signature, typename Callable, typename Convertor = DefaultArgumentsConvertor>
class FuzzyArgumentsAdaptor;

/// Calls a callable that takes fewer arguments than the signature has: the rest is dropped.
template <typename Result, typename... Arguments, typename Callable, typename Convertor>
class FuzzyArgumentsAdaptor<Result(Arguments...), Callable, Convertor>
{
public:
    explicit FuzzyArgumentsAdaptor(Callable callable) : m_callable(std::move(callable)) {}

    Result operator()(Arguments... arguments) const
    {
        return call(
            std::make_index_sequence<prefix>{},
            std::forward_as_tuple(Convertor::convert(std::forward<Arguments>(arguments))...));
    }

private:
    static constexpr std::size_t prefix =
        fuzzy_details::prefixLength<Callable, sizeof...(Arguments),
                                    decltype(Convertor::convert(std::declval<Arguments>()))...>();

    template <std::size_t... Index, typename Tuple>
    Result call(std::index_sequence<Index...>, [[maybe_unused]] Tuple&& tuple) const
    {
        return static_cast<Result>(m_callable(std::get<Index>(std::forward<Tuple>(tuple))...));
    }

    mutable Callable m_callable;
};

/// A function object of a signature; see the specialisation.
template <typename Signature, typename Convertor = DefaultArgumentsConvertor>
class FuzzyFunction;

/// `std::function` that also accepts callables taking fewer arguments than its signature has.
/// Made from a null pointer to a function or an empty `std::function`, it is empty as well.
template <typename Result, typename... Arguments, typename Convertor>
class FuzzyFunction<Result(Arguments...), Convertor>
{
public:
    using Signature = Result(Arguments...);

    FuzzyFunction() noexcept = default;
    FuzzyFunction(std::nullptr_t) noexcept {}

    template <typename Callable,
              typename = std::enable_if_t<!std::is_same_v<std::decay_t<Callable>, FuzzyFunction>>>
    FuzzyFunction(Callable&& callable)
    {
        using Decayed = std::decay_t<Callable>;
        if (!fuzzy_details::isEmpty<Decayed>(callable))
            m_function = FuzzyArgumentsAdaptor<Signature, Decayed, Convertor>(
                std::forward<Callable>(callable));
    }

    explicit operator bool() const noexcept { return bool(m_function); }

    /// Throws `std::bad_function_call` when empty.
    Result operator()(Arguments... arguments) const
    {
        return m_function(std::forward<Arguments>(arguments)...);
    }

private:
    std::function<Signature> m_function;
};

} // namespace kyr
