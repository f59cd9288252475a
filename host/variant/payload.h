#pragma once

#include <host/core/profiler.h>
#include <host/variant/fnv.h>
#include <host/variant/meta_type.h>
#include <host/variant/value_stream.h>

#include <cstring>
#include <functional>
#include <memory>
#include <new>
#include <string>
#include <utility>

namespace lumo {

/// Specialise as true for small types whose copies shall share one instance all the same.
template <typename T>
inline constexpr bool prefersSharedPayload = false;

namespace detail {

template <typename T, typename = void>
inline constexpr bool isComparable = false;
template <typename T>
inline constexpr bool isComparable<
    T, std::void_t<decltype(bool(std::declval<const T&>() == std::declval<const T&>()))>> = true;

template <typename T, typename = void>
inline constexpr bool isHashable = false;
template <typename T>
inline constexpr bool
    isHashable<T, std::void_t<decltype(std::hash<T>{}(std::declval<const T&>()))>> = true;

/// Plain values compare by their bytes: -0 is not 0, and a NaN equals itself.
template <typename T>
bool areEqual(const T& a, const T& b)
{
    if constexpr (isPlainValue<T>)
        return std::memcmp(&a, &b, sizeof a) == 0; // NOLINT(bugprone-suspicious-memory-comparison)
    else if constexpr (isComparable<T>)
        return a == b;
    else
        return &a == &b;
}

/// Equal values have equal hashes; 0 for types that cannot be hashed.
template <typename T>
std::uint64_t hashOf(const T& value) noexcept
{
    if constexpr (std::is_same_v<T, std::string>)
        return fnv1a(value.data(), value.size());
    else if constexpr (isPlainValue<T> || std::is_pointer_v<T>)
        return fnv1a(&value, sizeof(T));
    else if constexpr (isHashable<T> && isComparable<T>)
        return std::hash<T>{}(value);
    else
        return 0;
}

template <typename T>
inline constexpr bool isObjectPointer =
    std::is_pointer_v<T> && !std::is_function_v<std::remove_pointer_t<T>>;

template <typename T>
const std::type_info* pointeeType() noexcept
{
    if constexpr (isObjectPointer<T>)
        return &typeid(std::remove_cv_t<std::remove_pointer_t<T>>);
    else
        return nullptr;
}

template <typename T>
MetaTypeDescription describe() noexcept
{
    unsigned qualifiers = 0;
    if constexpr (isObjectPointer<T>) {
        using Pointee = std::remove_pointer_t<T>;
        qualifiers = (std::is_const_v<Pointee> ? constPointer : 0u) |
                     (std::is_volatile_v<Pointee> ? volatilePointer : 0u);
    }
    return {&typeid(T), sizeof(T), pointeeType<T>(), qualifiers};
}

} // namespace detail

/// Holds the value itself.
template <typename T>
class MetaType::InlinePayload final : public MetaType::PayloadBase
{
public:
    InlinePayload() : m_value() {}
    explicit InlinePayload(T value) : m_value(std::move(value)) {}

    const MetaType& metaType() const noexcept override { return metaTypeOf<T>(); }
    const std::type_info& type() const noexcept override { return typeid(T); }
    const std::type_info* pointeeType() const noexcept override { return detail::pointeeType<T>(); }
    void* mutableValue() override { return &m_value; }
    const void* value() const noexcept override { return &m_value; }
    const void* pointee() const noexcept override
    {
        if constexpr (detail::isObjectPointer<T>)
            return const_cast<const void*>(static_cast<const volatile void*>(m_value));
        else
            return nullptr;
    }
    bool holdsPointer() const noexcept override { return std::is_pointer_v<T>; }
    bool isGeneric() const noexcept override { return false; }
    void copyValueTo(PayloadBase& target) const override
    {
        static_cast<InlinePayload&>(target).m_value = m_value;
    }
    PayloadBase* moveTo(void* storage) noexcept override
    {
        return new (storage) InlinePayload(std::move(m_value));
    }
    bool equals(const PayloadBase& other) const override
    {
        return detail::areEqual(m_value, static_cast<const InlinePayload&>(other).m_value);
    }
    std::uint64_t hash() const noexcept override { return detail::hashOf(m_value); }
    void write(TextStream& stream) const override { writeValue(stream, m_value); }
    void read(TextStream& stream) override { readValue(stream, m_value); }
    void write(Zar::BinaryOStream& stream) const override { writeValue(stream, m_value); }
    void write(BinaryStream& stream) const override { writeValue(stream, m_value); }
    void read(Zar::BinaryIStream& stream) override { readValue(stream, m_value); }
    void read(BinaryStream& stream) override { readValue(stream, m_value); }
    PayloadBase* cloneTo(void* storage) const override
    {
        return new (storage) InlinePayload(m_value);
    }

private:
    T m_value;
};

/// Holds a share of an instance that its copies share until one of them is changed.
template <typename T>
class MetaType::CowPayload final : public MetaType::PayloadBase
{
public:
    /// Holds no instance.
    CowPayload() = default;
    explicit CowPayload(std::shared_ptr<T> share) noexcept : m_share(std::move(share)) {}

    /// Holds a new default instance from here on.
    void emplace()
    {
        const vex::Profiler::ValueScope scope(scopeName);
        m_share = std::make_shared<T>();
    }

    const MetaType& metaType() const noexcept override { return metaTypeOf<T>(); }
    const std::type_info& type() const noexcept override { return typeid(T); }
    const std::type_info* pointeeType() const noexcept override { return nullptr; }
    void* mutableValue() override
    {
        if (m_share.use_count() >= 2) {
            const vex::Profiler::ValueScope scope(scopeName);
            m_share = std::make_shared<T>(std::as_const(*m_share));
        }
        return m_share.get();
    }
    const void* value() const noexcept override { return m_share.get(); }
    const void* pointee() const noexcept override { return nullptr; }
    bool holdsPointer() const noexcept override { return false; }
    bool isGeneric() const noexcept override { return false; }
    void copyValueTo(PayloadBase& target) const override
    {
        static_cast<CowPayload&>(target).m_share = m_share;
    }
    PayloadBase* moveTo(void* storage) noexcept override
    {
        return new (storage) CowPayload(std::move(m_share));
    }
    bool equals(const PayloadBase& other) const override
    {
        const auto& otherShare = static_cast<const CowPayload&>(other).m_share;
        if (!m_share || !otherShare)
            return m_share == otherShare;
        return detail::areEqual(*m_share, *otherShare);
    }
    std::uint64_t hash() const noexcept override { return m_share ? detail::hashOf(*m_share) : 0; }
    void write(TextStream&) const override {}
    void read(TextStream&) override {}
    void write(Zar::BinaryOStream& stream) const override { writeShare(stream); }
    void write(BinaryStream& stream) const override { writeShare(stream); }
    void read(Zar::BinaryIStream& stream) override { readShare(stream); }
    void read(BinaryStream& stream) override { readShare(stream); }
    PayloadBase* cloneTo(void* storage) const override { return new (storage) CowPayload(*this); }

private:
    static constexpr const char* scopeName = "Reflection|Variant|COW";

    template <typename Stream>
    void writeShare(Stream& stream) const
    {
        if constexpr (isPlainValue<T>)
            writeValue(stream, *m_share);
    }

    template <typename Stream>
    void readShare(Stream& stream)
    {
        if constexpr (isPlainValue<T>)
            readValue(stream, *static_cast<T*>(mutableValue()));
    }

    std::shared_ptr<T> m_share;
};

namespace detail {

template <typename T>
inline constexpr bool
    fitsInline = sizeof(MetaType::InlinePayload<T>) <= MetaType::storageSize &&
                 alignof(MetaType::InlinePayload<T>) <=
                     MetaType::storageAlignment&& std::is_nothrow_move_constructible_v<
                         T>&& std::is_copy_assignable_v<T>;

template <typename T>
inline constexpr bool usesInlinePayload = fitsInline<T> && !prefersSharedPayload<T>;

template <typename T>
MetaType::PayloadBase* constructPayload(void* storage, T value)
{
    if constexpr (usesInlinePayload<T>)
        return new (storage) MetaType::InlinePayload<T>(std::move(value));
    else
        return new (storage) MetaType::CowPayload<T>(std::make_shared<T>(std::move(value)));
}

} // namespace detail

template <typename T>
DefaultMetaTypeImpl<T>::DefaultMetaTypeImpl() : MetaType(detail::describe<T>())
{}

template <typename T>
MetaType::PayloadBase* DefaultMetaTypeImpl<T>::constructDefault(void* storage) const
{
    if constexpr (!std::is_default_constructible_v<T>) {
        return nullptr;
    } else if constexpr (detail::usesInlinePayload<T>) {
        return new (storage) InlinePayload<T>();
    } else {
        auto* payload = new (storage) CowPayload<T>();
        payload->emplace();
        return payload;
    }
}

} // namespace lumo
