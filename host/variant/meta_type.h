#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <string>
#include <type_traits>
#include <typeinfo>

namespace Zar {
class BinaryIStream;
class BinaryOStream;
} // namespace Zar

namespace lumo {

namespace detail {
struct ConverterEntry;
}

class BinaryStream;
class TextStream;

/// Bits of `MetaType::pointerQualifiers`.
enum PointerQualifier : unsigned
{
    constPointer = 1,
    volatilePointer = 2,
};

/// What a `MetaType` is made from.
struct MetaTypeDescription
{
    const std::type_info* type = nullptr;
    std::size_t size = 0;
    /// Type pointed to, without its qualifiers; null for anything but an object pointer.
    const std::type_info* pointee = nullptr;
    unsigned pointerQualifiers = 0;
};

/// Run-time description of a type that a `Variant` can hold. `metaTypeOf` hands out the one
/// instance of a type; compare types with `==`, which also holds between two libraries.
class MetaType
{
public:
    /// Bytes and alignment that a variant offers a payload.
    static constexpr std::size_t storageSize = 40;
    static constexpr std::size_t storageAlignment = alignof(void*);

    class PayloadBase;
    template <typename T>
    class InlinePayload;
    template <typename T>
    class CowPayload;

    virtual ~MetaType() = default;

    /// Constructs a payload with the type's default value in `storage`, which has `storageSize`
    /// bytes. Null, with nothing constructed, when the type has no default value.
    virtual PayloadBase* constructDefault(void* storage) const = 0;

    MetaType(const MetaType&) = delete;
    MetaType& operator=(const MetaType&) = delete;

    /// The `std::type_info::name()` text of the type.
    const std::string& name() const noexcept { return m_name; }
    const std::type_info& type() const noexcept { return *m_description.type; }
    std::size_t size() const noexcept { return m_description.size; }
    const std::type_info* pointee() const noexcept { return m_description.pointee; }
    unsigned pointerQualifiers() const noexcept { return m_description.pointerQualifiers; }

    /// Whether a pointer of this type may be read through a pointer that carries `qualifiers`.
    bool qualifiersMatch(unsigned qualifiers) const noexcept
    {
        return (m_description.pointerQualifiers & ~qualifiers) == 0;
    }

    friend bool operator==(const MetaType& a, const MetaType& b) noexcept
    {
        return &a == &b || a.type() == b.type();
    }
    friend bool operator!=(const MetaType& a, const MetaType& b) noexcept { return !(a == b); }

protected:
    explicit MetaType(const MetaTypeDescription& description)
        : m_description(description), m_name(description.type->name())
    {}

private:
    friend class VariantConverter;

    MetaTypeDescription m_description;
    std::string m_name;
    /// What the converter knows of this type, once it has been asked.
    mutable std::atomic<const detail::ConverterEntry*> m_converterEntry{nullptr};
};

/// A value inside a variant. Operations on two payloads require both to hold the same type.
class MetaType::PayloadBase
{
public:
    PayloadBase() = default;
    PayloadBase(const PayloadBase&) = default;
    PayloadBase& operator=(const PayloadBase&) = delete;
    virtual ~PayloadBase() = default;

    virtual const MetaType& metaType() const noexcept = 0;
    virtual const std::type_info& type() const noexcept = 0;
    virtual const std::type_info* pointeeType() const noexcept = 0;
    /// The value for changing: a value shared with other payloads is copied first.
    virtual void* mutableValue() = 0;
    virtual const void* value() const noexcept = 0;
    /// What a held pointer points to; null for anything else.
    virtual const void* pointee() const noexcept = 0;
    virtual bool holdsPointer() const noexcept = 0;
    /// Whether the payload stands for a value of another type.
    virtual bool isGeneric() const noexcept = 0;
    virtual void copyValueTo(PayloadBase& target) const = 0;
    /// Moves into new storage and leaves this payload empty, fit only for destruction.
    virtual PayloadBase* moveTo(void* storage) noexcept = 0;
    virtual bool equals(const PayloadBase& other) const = 0;
    virtual std::uint64_t hash() const noexcept = 0;
    virtual void write(TextStream& stream) const = 0;
    virtual void read(TextStream& stream) = 0;
    virtual void write(Zar::BinaryOStream& stream) const = 0;
    virtual void write(BinaryStream& stream) const = 0;
    virtual void read(Zar::BinaryIStream& stream) = 0;
    virtual void read(BinaryStream& stream) = 0;
    /// Constructs a copy in new storage; copy-on-write values are shared.
    virtual PayloadBase* cloneTo(void* storage) const = 0;
};

/// Describes `T`, and makes its default payload.
template <typename T>
class DefaultMetaTypeImpl : public MetaType
{
public:
    PayloadBase* constructDefault(void* storage) const override;

protected:
    DefaultMetaTypeImpl();
};

/// The meta type of `T`. Specialise it to change what `DefaultMetaTypeImpl` does.
template <typename T>
class MetaTypeImpl : public DefaultMetaTypeImpl<T>
{};

/// The type of a variant without a value.
template <>
class MetaTypeImpl<void> : public MetaType
{
public:
    MetaTypeImpl() : MetaType({&typeid(void), 0, nullptr, 0}) {}
    PayloadBase* constructDefault(void*) const override { return nullptr; }
};

/// The one description of `T` in the calling library. Thread-safe.
template <typename T>
const MetaType& metaTypeOf()
{
    static_assert(std::is_same_v<T, std::decay_t<T>>, "variants hold plain values");
    static const MetaTypeImpl<T> instance;
    return instance;
}

} // namespace lumo

#include <host/variant/payload.h>
