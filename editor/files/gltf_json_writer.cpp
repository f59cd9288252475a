#include "gltf_json_writer.h"

#include "scene_output.h"

#include <QCoreApplication>

#include <rapidjson/memorystream.h>

namespace editor {

namespace {

struct NullOutput
{
    void Put(char) {}
};

QString tr(const char* text)
{
    return QCoreApplication::translate("editor::SceneWriter", text);
}

QString nameOf(const SceneObject* subject)
{
    return subject ? subject->displayName() : tr("Scene");
}

bool isUtf8(const std::string& text)
{
    rapidjson::MemoryStream bytes(text.data(), text.size());
    while (bytes.Tell() < text.size()) {
        NullOutput ignored;
        if (!rapidjson::UTF8<>::Validate(bytes, ignored))
            return false;
    }
    return true;
}

} // namespace

GltfJsonWriter::GltfJsonWriter()
{
    m_json.SetIndent(' ', 1);
    m_json.SetFormatOptions(rapidjson::kFormatSingleLineArray);
}

void GltfJsonWriter::write(const char* key, const std::string& text)
{
    m_json.Key(key);
    if (!isUtf8(text))
        throw WriteFailure{
            tr("the %1 of \"%2\" is no valid UTF-8").arg(QLatin1String(key), nameOf(m_subject))};
    m_json.String(text.data(), rapidjson::SizeType(text.size()));
}

void GltfJsonWriter::write(const char* key, std::uint64_t number)
{
    m_json.Key(key);
    m_json.Uint64(number);
}

void GltfJsonWriter::write(const char* key, double value)
{
    m_json.Key(key);
    number(key, value);
}

void GltfJsonWriter::write(const char* key, std::initializer_list<double> numbers)
{
    m_json.Key(key);
    m_json.StartArray();
    for (const double value : numbers)
        number(key, value);
    m_json.EndArray();
}

void GltfJsonWriter::number(const char* key, double number)
{
    if (!m_json.Double(number))
        throw WriteFailure{tr("the %1 of \"%2\" has a number that is not finite")
                               .arg(QLatin1String(key), nameOf(m_subject))};
}

} // namespace editor
