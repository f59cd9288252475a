#pragma once

#include <host/variant/meta_type.h>

#include <QtGlobal>

#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>

namespace lumo {

/// A variant was read as a type that its value does not convert to.
class Q_DECL_EXPORT VariantCastError : public std::runtime_error
{
public:
    VariantCastError(const char* actual, const char* expected);
};

/// A value of any copyable type, or none ("void").
/// Values of up to 32 bytes are held in place without an allocation (numbers, vectors, colours,
/// strings, pointers); larger ones are shared between copies until one of them is changed, which
/// copies the value.
/// Distinct variants may be used on different threads, also when they share a value.
class Variant
{
public:
    Variant() noexcept = default;
    template <typename T, typename = std::enable_if_t<!std::is_same_v<T, Variant>>>
    explicit Variant(T value) : m_payload(detail::constructPayload<T>(m_storage, std::move(value)))
    {}
    /// Holds a `std::string`.
    explicit Variant(const char* text) : Variant(std::string(text)) {}
    /// The type's default value; void when it has none.
    static Variant defaultOf(const MetaType& type);

    Variant(const Variant& other);
    Variant(Variant&& other) noexcept;
    Variant& operator=(const Variant& other);
    Variant& operator=(Variant&& other) noexcept;
    ~Variant() { reset(); }

    void reset() noexcept;

    /// The meta type of void when there is no value.
    const MetaType& type() const noexcept;
    bool isVoid() const noexcept { return !m_payload; }

    /// Whether the value is a `T` itself.
    template <typename T>
    bool holds() const noexcept
    {
        return m_payload && m_payload->type() == typeid(T);
    }

    /// The value when it is a `T`, or what it points to when it is a non-null pointer to `T`
    /// (const or not); null otherwise. Valid until the variant changes.
    template <typename T>
    const T* tryGet() const& noexcept;
    template <typename T>
    const T* tryGet() const&& = delete;

    /// As `tryGet` of the value itself, for changing it: copies a shared value first.
    template <typename T>
    T* tryGetMutable()
    {
        return holds<T>() ? static_cast<T*>(m_payload->mutableValue()) : nullptr;
    }

    /// The value as `T`: itself, what it points to, its address when `T` is a pointer to const,
    /// or what `VariantConverter` makes of it. An address is valid until the variant changes.
    /// Throws `VariantCastError` when it is none of these.
    template <typename T>
    T cast() const;

    /// Same type and equal values. Numbers and vectors are equal when they are the same to the last
    /// bit: -0 is not 0, and a NaN equals itself. Types without `operator==` are equal when they
    /// share a value.
    friend bool operator==(const Variant& a, const Variant& b);
    friend bool operator!=(const Variant& a, const Variant& b) { return !(a == b); }
    /// Equal variants have equal hashes; 0 for void and for types that cannot be hashed.
    std::uint64_t hash() const noexcept { return m_payload ? m_payload->hash() : 0; }

    /// Null when void.
    MetaType::PayloadBase* payload() noexcept { return m_payload; }
    const MetaType::PayloadBase* payload() const noexcept { return m_payload; }

    /// Throws `VariantCastError` with the names of the two types.
    [[noreturn]] static void castError(const char* actual, const char* expected);

private:
    bool convertTo(Variant& target) const;

    alignas(MetaType::storageAlignment) std::byte m_storage[MetaType::storageSize];
    MetaType::PayloadBase* m_payload = nullptr;
};

template <typename T>
const T* Variant::tryGet() const& noexcept
{
    if (holds<T>())
        return static_cast<const T*>(m_payload->value());
    if (!m_payload || !m_payload->holdsPointer())
        return nullptr;
    const std::type_info* pointee = m_payload->pointeeType();
    if (!pointee || *pointee != typeid(T) || !type().qualifiersMatch(constPointer))
        return nullptr;
    return static_cast<const T*>(m_payload->pointee());
}

template <typename T>
T Variant::cast() const
{
    if (const T* value = tryGet<T>())
        return *value;
    if constexpr (std::is_pointer_v<T> && std::is_const_v<std::remove_pointer_t<T>>) {
        using Pointee = std::remove_cv_t<std::remove_pointer_t<T>>;
        if (holds<Pointee>())
            return static_cast<T>(m_payload->value());
    }
    Variant converted = defaultOf(metaTypeOf<T>());
    if (!converted.isVoid() && convertTo(converted)) {
        if (const T* value = converted.tryGet<T>())
            return *value;
    }
    castError(type().name().c_str(), typeid(T).name());
}

} // namespace lumo
