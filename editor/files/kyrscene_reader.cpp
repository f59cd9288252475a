#include "kyrscene_reader.h"

#include "kyrscene_format.h"
#include <editor/document/object_path.h>
#include <editor/geometry/primitive_shapes.h>

#include <QCoreApplication>
#include <QFile>

#include <pugixml.hpp>

#include <optional>
#include <unordered_map>

namespace editor {

namespace {

constexpr double parsedShare = 0.5;
constexpr std::size_t reportEvery = 1000;
constexpr quint32 largestId = 0x7fffffff;

QString tr(const char* text)
{
    return QCoreApplication::translate("editor::SceneImport", text);
}

std::optional<ObjectKind> kindFrom(const char* id)
{
    for (const ObjectKind kind :
         {ObjectKind::Group, ObjectKind::Mesh, ObjectKind::Light, ObjectKind::Camera}) {
        if (kindId(kind) == QLatin1String(id))
            return kind;
    }
    return std::nullopt;
}

class Reader
{
public:
    /// False with an error, or without one when the progress function stopped it.
    bool read(const pugi::xml_node& document, const ImportProgress& progress)
    {
        if (!readHeader(document) || !readGeometries(document))
            return false;
        const pugi::xml_node scene = document.child("scene");
        m_root = SceneObject::create(ObjectKind::Scene, "Scene");
        readValues(scene, *m_root);
        m_open.emplace_back(scene, m_root.get());
        // Not by recursion: nothing limits how deep a file nests.
        for (std::size_t done = 0; !m_open.empty(); ++done) {
            const auto [node, object] = m_open.back();
            m_open.pop_back();
            if (!readChildren(node, *object))
                return false;
            if (done % reportEvery == 0 && !progress(parsedShare))
                return false;
        }
        resolveReferences();
        return true;
    }

    const SceneObjectPtr& root() const { return m_root; }
    const QString& error() const { return m_error; }

private:
    bool fail(const QString& reason)
    {
        m_error = reason;
        return false;
    }

    bool readHeader(const pugi::xml_node& document)
    {
        if (qstrcmp(document.name(), "kyrscene") != 0 || !document.child("scene"))
            return fail(tr("it is no scene file"));
        if (document.attribute("version").as_int() > kyrscene::version)
            return fail(tr("it was written by a newer version"));
        return true;
    }

    bool readGeometries(const pugi::xml_node& document)
    {
        for (const pugi::xml_node& node : document.children("geometry")) {
            auto asset = std::make_shared<MeshAsset>();
            asset->geometry = kyrscene::decodeGeometry(node.text().get());
            if (!asset->geometry)
                return fail(tr("geometry %1 is damaged")
                                .arg(QString::fromUtf8(node.attribute("id").value())));
            m_assets[std::string("#") + node.attribute("id").value()] = std::move(asset);
        }
        return true;
    }

    bool readChildren(const pugi::xml_node& node, SceneObject& parent)
    {
        for (const pugi::xml_node& child : node.children("object")) {
            const char* kindName = child.attribute("kind").value();
            const std::optional<ObjectKind> kind = kindFrom(kindName);
            if (!kind)
                return fail(tr("\"%1\" is no kind of object").arg(QString::fromUtf8(kindName)));
            const SceneObjectPtr object = SceneObject::create(*kind, "Object");
            readValues(child, *object);
            if (object->mesh() && !readMesh(child.child("mesh"), *object))
                return false;
            const quint32 id = child.attribute("id").as_uint();
            object->setId(id <= largestId ? id : 0);
            parent.append(object);
            if (child.child("object"))
                m_open.emplace_back(child, object.get());
        }
        return true;
    }

    void readValues(const pugi::xml_node& node, SceneObject& object)
    {
        object.setExpanded(node.attribute("expanded").as_bool());
        const kyr::ReflectedObject reflected = object.reflected();
        readProperties(node, reflected);
        for (std::size_t i = 0; i < reflected.propertyCount(); ++i) {
            const kyr::BoundProperty property = reflected.propertyAt(i);
            const kyr::ReflectedObject component(property);
            if (component.isValid())
                readProperties(node.child(property.name().c_str()), component);
        }
    }

    void readProperties(const pugi::xml_node& node, const kyr::ReflectedObject& holder)
    {
        for (const pugi::xml_attribute& attribute : node.attributes()) {
            const kyr::BoundProperty property = holder.property(attribute.name());
            if (!property.isValue() || property.isReadOnly())
                continue;
            if (property.propertyType() == typeid(kyr::PersistentObject))
                m_references.emplace_back(property, attribute.value());
            else
                property.set(lumo::Variant(attribute.value()));
        }
    }

    bool readMesh(const pugi::xml_node& node, SceneObject& object)
    {
        const char* source = node.attribute("source").value();
        const char* geometry = node.attribute("geometry").value();
        if (*geometry) {
            const auto found = m_assets.find(std::string("#") + geometry);
            if (found == m_assets.end())
                return fail(tr("geometry %1 is missing").arg(QString::fromUtf8(geometry)));
            object.mesh()->asset = found->second;
        } else if (*source) {
            MeshAssetPtr& asset = m_assets[source];
            if (!asset)
                asset = makePrimitive(source);
            if (!asset)
                return fail(tr("\"%1\" is no shape").arg(QString::fromUtf8(source)));
            object.mesh()->asset = asset;
        }
        return true;
    }

    void resolveReferences()
    {
        for (const auto& [property, path] : m_references) {
            if (SceneObject* target = objectAtPath(*m_root, path))
                property.set(lumo::Variant(kyr::PersistentObject(target->reflected())));
        }
    }

    SceneObjectPtr m_root;
    QString m_error;
    // By shape, or by identifier with "#" before it.
    std::unordered_map<std::string, MeshAssetPtr> m_assets;
    std::vector<std::pair<pugi::xml_node, SceneObject*>> m_open;
    std::vector<std::pair<kyr::BoundProperty, std::string>> m_references;
};

} // namespace

SceneImport readKyrscene(const QString& path, const ImportProgress& progress)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {nullptr, file.errorString()};
    QByteArray bytes = file.readAll();
    pugi::xml_document document;
    const pugi::xml_parse_result parsed =
        document.load_buffer_inplace(bytes.data(), static_cast<std::size_t>(bytes.size()));
    if (!parsed) {
        const int line = bytes.left(static_cast<int>(parsed.offset)).count('\n') + 1;
        return {nullptr,
                tr("line %1: %2").arg(line).arg(QString::fromLatin1(parsed.description()))};
    }
    if (!progress(parsedShare))
        return {};
    Reader reader;
    if (!reader.read(document.document_element(), progress))
        return {nullptr, reader.error()};
    return {reader.root(), {}};
}

} // namespace editor
