#include "value_stream.h"

#include <algorithm>
#include <utility>

namespace Zar {

void BinaryOStream::append(const void* data, std::size_t size)
{
    m_bytes.append(static_cast<const char*>(data), size);
}

void BinaryOStream::appendPackedInt(std::uint64_t value)
{
    for (; value >= 0x80; value >>= 7)
        m_bytes.push_back(char(0x80 | (value & 0x7f)));
    m_bytes.push_back(char(value));
}

void BinaryOStream::appendString(const char* data, std::size_t length)
{
    appendPackedInt(length);
    append(data, length);
}

std::uint64_t BinaryIStream::readPackedInt() noexcept
{
    std::uint64_t value = 0;
    for (std::size_t i = 0; i < m_bytes.size() && i < 10; ++i) {
        const auto byte = static_cast<unsigned char>(m_bytes[i]);
        value |= std::uint64_t(byte & 0x7f) << (7 * i);
        if (byte < 0x80) {
            m_bytes.remove_prefix(i + 1);
            return value;
        }
    }
    m_bytes = {};
    return 0;
}

const char* BinaryIStream::retrieve(std::uint64_t size) noexcept
{
    if (size > m_bytes.size() || !m_bytes.data())
        return nullptr;
    const char* bytes = m_bytes.data();
    m_bytes.remove_prefix(std::size_t(size));
    return bytes;
}

} // namespace Zar

namespace lumo {

void TextStream::writeWord(std::string_view word)
{
    if (!m_text.empty())
        m_text += ' ';
    m_text += word;
}

std::string_view TextStream::readWord() noexcept
{
    const std::size_t begin = std::min(m_text.find_first_not_of(' ', m_position), m_text.size());
    m_position = std::min(m_text.find(' ', begin), m_text.size());
    return std::string_view(m_text).substr(begin, m_position - begin);
}

std::optional<std::string> TextStream::readQuoted()
{
    std::size_t i = std::min(m_text.find_first_not_of(' ', m_position), m_text.size());
    if (i == m_text.size() || m_text[i] != '"')
        return std::nullopt;
    std::string text;
    for (++i; i < m_text.size(); ++i) {
        if (m_text[i] == '"') {
            m_position = i + 1;
            return text;
        }
        if (m_text[i] == '\\' && ++i == m_text.size())
            break;
        text += m_text[i];
    }
    return std::nullopt;
}

void BinaryStream::write(const void* data, std::size_t size)
{
    m_bytes.append(static_cast<const char*>(data), size);
}

const char* BinaryStream::read(std::uint64_t size) noexcept
{
    if (size > m_bytes.size() - m_position)
        return nullptr;
    const char* bytes = m_bytes.data() + m_position;
    m_position += std::size_t(size);
    return bytes;
}

TextStream& operator<<(TextStream& stream, const std::string& text)
{
    std::string quoted = "\"";
    for (const char character : text) {
        if (character == '"' || character == '\\')
            quoted += '\\';
        quoted += character;
    }
    quoted += '"';
    stream.writeWord(quoted);
    return stream;
}

TextStream& operator>>(TextStream& stream, std::string& text)
{
    if (std::optional<std::string> read = stream.readQuoted())
        text = std::move(*read);
    return stream;
}

BinaryStream& operator<<(BinaryStream& stream, const std::string& text)
{
    const std::uint64_t length = text.size();
    stream.write(&length, sizeof length);
    stream.write(text.data(), text.size());
    return stream;
}

BinaryStream& operator>>(BinaryStream& stream, std::string& text)
{
    std::uint64_t length = 0;
    assignBytes(length, stream.read(sizeof length));
    if (const char* bytes = stream.read(length))
        text.assign(bytes, std::size_t(length));
    return stream;
}

} // namespace lumo
