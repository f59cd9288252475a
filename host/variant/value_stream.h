#pragma once

#include <host/variant/number_text.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>

namespace Zar {

/// Appends plain bytes; lengths are packed seven bits a byte, lowest first.
class BinaryOStream
{
public:
    void append(const void* data, std::size_t size);
    void appendPackedInt(std::uint64_t value);
    /// The packed length, then the bytes.
    void appendString(const char* data, std::size_t length);

    const std::string& bytes() const noexcept { return m_bytes; }

private:
    std::string m_bytes;
};

/// Reads what `BinaryOStream` wrote. Does not own the bytes.
class BinaryIStream
{
public:
    explicit BinaryIStream(std::string_view bytes) noexcept : m_bytes(bytes) {}

    /// 0 when the bytes end too early.
    std::uint64_t readPackedInt() noexcept;
    /// The next `size` bytes, or null (and nothing is taken) when there are fewer.
    const char* retrieve(std::uint64_t size) noexcept;

    /// A pointer that is set would have been overwritten; pointers cannot be restored.
    void setPointerSkipped() noexcept { m_pointerSkipped = true; }
    bool pointerSkipped() const noexcept { return m_pointerSkipped; }

private:
    std::string_view m_bytes;
    bool m_pointerSkipped = false;
};

} // namespace Zar

namespace lumo {

/// Values as text, separated by one space. Reads what it wrote, in the same order.
class TextStream
{
public:
    explicit TextStream(std::string text = {}) : m_text(std::move(text)) {}

    const std::string& text() const noexcept { return m_text; }

    /// Appends a value's text as the next word.
    void writeWord(std::string_view word);
    /// The next word; empty at the end.
    std::string_view readWord() noexcept;
    /// The next text in quotes, unescaped; nothing (and nothing is taken) when there is none.
    std::optional<std::string> readQuoted();

private:
    std::string m_text;
    std::size_t m_position = 0;
};

/// Values as bytes in host byte order. Reads what it wrote, in the same order.
class BinaryStream
{
public:
    explicit BinaryStream(std::string bytes = {}) : m_bytes(std::move(bytes)) {}

    const std::string& bytes() const noexcept { return m_bytes; }

    void write(const void* data, std::size_t size);
    /// The next `size` bytes, or null (and nothing is taken) when there are fewer.
    const char* read(std::uint64_t size) noexcept;

private:
    std::string m_bytes;
    std::size_t m_position = 0;
};

/// The text in double quotes; quotes and backslashes in it get a backslash.
TextStream& operator<<(TextStream& stream, const std::string& text);
/// Leaves `text` as it is when no quoted text comes next.
TextStream& operator>>(TextStream& stream, std::string& text);
BinaryStream& operator<<(BinaryStream& stream, const std::string& text);
BinaryStream& operator>>(BinaryStream& stream, std::string& text);

/// Types whose bytes are their value, without padding. Specialise as true for structures of
/// numbers.
template <typename T>
inline constexpr bool isPlainValue =
    (std::is_arithmetic_v<T> && !std::is_same_v<T, long double>) || std::is_enum_v<T>;

/// Sets a plain value from its bytes; leaves it as it is when there are none.
template <typename T>
void assignBytes(T& value, const char* bytes)
{
    if (!bytes)
        return;
    if constexpr (std::is_same_v<T, bool>)
        value = *bytes != 0;
    else
        std::memcpy(&value, bytes, sizeof value);
}

// What a payload does for each kind of stream. Text streams take strings and numbers, binary
// streams strings and plain values; everything else is passed over in silence.

template <typename T>
void writeValue(TextStream& stream, const T& value)
{
    if constexpr (std::is_same_v<T, std::string>)
        stream << value;
    else if constexpr (isNumber<T>)
        stream.writeWord(textOfNumber(value));
}

template <typename T>
void readValue(TextStream& stream, T& value)
{
    if constexpr (std::is_same_v<T, std::string>)
        stream >> value;
    else if constexpr (isNumber<T>)
        numberFromText(stream.readWord(), value);
}

template <typename T>
void writeValue(BinaryStream& stream, const T& value)
{
    if constexpr (std::is_same_v<T, std::string>)
        stream << value;
    else if constexpr (isPlainValue<T>)
        stream.write(&value, sizeof value);
}

template <typename T>
void readValue(BinaryStream& stream, T& value)
{
    if constexpr (std::is_same_v<T, std::string>)
        stream >> value;
    else if constexpr (isPlainValue<T>)
        assignBytes(value, stream.read(sizeof value));
}

template <typename T>
void writeValue(Zar::BinaryOStream& stream, const T& value)
{
    if constexpr (std::is_same_v<T, std::string>)
        stream.appendString(value.data(), value.size());
    else if constexpr (isPlainValue<T>)
        stream.append(&value, sizeof value);
}

template <typename T>
void readValue(Zar::BinaryIStream& stream, T& value)
{
    if constexpr (std::is_same_v<T, std::string>) {
        const std::uint64_t length = stream.readPackedInt();
        if (const char* bytes = stream.retrieve(length))
            value.assign(bytes, std::size_t(length));
    } else if constexpr (isPlainValue<T>) {
        assignBytes(value, stream.retrieve(sizeof value));
    } else if constexpr (std::is_pointer_v<T>) {
        if (value)
            stream.setPointerSkipped();
    }
}

} // namespace lumo
