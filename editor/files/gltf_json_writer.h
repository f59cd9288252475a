#pragma once

#include <editor/document/scene_object.h>

#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>

#include <cstdint>
#include <initializer_list>
#include <string>

namespace editor {

/// Writes JSON whose numbers come back to the last bit. Throws `WriteFailure`, with the object
/// that `setSubject` named, for texts that are no UTF-8 and numbers that are not finite.
class GltfJsonWriter
{
public:
    GltfJsonWriter();

    /// The object that is written from here on.
    void setSubject(const SceneObject& object) { m_subject = &object; }

    template <typename Members>
    void object(const Members& members);
    template <typename Members>
    void object(const char* key, const Members& members);
    /// Calls `element(i)` for each. Writes nothing without elements, which the format asks for.
    template <typename Element>
    void array(const char* key, std::size_t count, const Element& element);
    void element(std::uint64_t number) { m_json.Uint64(number); }
    void element(const char* text) { m_json.String(text); }

    void write(const char* key, const std::string& text);
    void write(const char* key, const char* text) { write(key, std::string(text)); }
    void write(const char* key, int number) { write(key, std::uint64_t(number)); }
    void write(const char* key, std::uint64_t number);
    void write(const char* key, double number);
    void write(const char* key, std::initializer_list<double> numbers);

    /// Bytes of text so far.
    std::size_t size() const { return m_buffer.GetSize(); }
    std::string text() const { return {m_buffer.GetString(), m_buffer.GetSize()}; }

private:
    void number(const char* key, double number);

    rapidjson::StringBuffer m_buffer;
    rapidjson::PrettyWriter<rapidjson::StringBuffer> m_json{m_buffer};
    const SceneObject* m_subject = nullptr;
};

template <typename Members>
void GltfJsonWriter::object(const Members& members)
{
    m_json.StartObject();
    members();
    m_json.EndObject();
}

template <typename Members>
void GltfJsonWriter::object(const char* key, const Members& members)
{
    m_json.Key(key);
    object(members);
}

template <typename Element>
void GltfJsonWriter::array(const char* key, std::size_t count, const Element& element)
{
    if (count == 0)
        return;
    m_json.Key(key);
    m_json.StartArray();
    for (std::size_t i = 0; i < count; ++i)
        element(i);
    m_json.EndArray();
}

} // namespace editor
