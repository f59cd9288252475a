#include "kyrscene_writer.h"

#include "kyrscene_format.h"
#include <editor/document/object_path.h>

#include <host/variant/variant_converter.h>

#include <pugixml.hpp>

#include <map>
#include <unordered_map>

namespace editor {

namespace {

class BytesWriter final : public pugi::xml_writer
{
public:
    void write(const void* data, std::size_t size) override
    {
        bytes.append(static_cast<const char*>(data), static_cast<int>(size));
    }

    QByteArray bytes;
};

class Writer
{
public:
    explicit Writer(const SceneObject& root) : m_root(root) {}

    QByteArray write()
    {
        m_file = m_document.append_child("kyrscene");
        m_file.append_attribute("version") = kyrscene::version;
        pugi::xml_node scene = m_file.append_child("scene");
        writeValues(m_root, scene);
        m_open.emplace_back(&m_root, scene);
        while (!m_open.empty()) {
            auto [object, node] = m_open.back();
            m_open.pop_back();
            for (const SceneObjectPtr& child : object->children())
                writeObject(*child, node.append_child("object"));
        }
        BytesWriter writer;
        m_document.save(writer, "  ");
        return writer.bytes;
    }

private:
    void writeObject(const SceneObject& object, pugi::xml_node node)
    {
        node.append_attribute("kind") = kindId(object.kind()).data();
        node.append_attribute("name") = object.name().c_str();
        if (object.id() != 0)
            node.append_attribute("id") = object.id();
        writeValues(object, node);
        if (object.mesh() && object.mesh()->asset)
            writeMesh(*object.mesh()->asset, node.append_child("mesh"));
        if (!object.children().empty())
            m_open.emplace_back(&object, node);
    }

    void writeValues(const SceneObject& object, pugi::xml_node& node)
    {
        if (object.isExpanded())
            node.append_attribute("expanded") = true;
        // Reading through the reflection takes an object that can be changed.
        const kyr::ReflectedObject reflected = const_cast<SceneObject&>(object).reflected();
        const kyr::ReflectedObject plain = plainObject(object.kind())->reflected();
        writeProperties(reflected, plain, node);
        for (std::size_t i = 0; i < reflected.propertyCount(); ++i) {
            const kyr::ReflectedObject component(reflected.propertyAt(i));
            if (!component.isValid())
                continue;
            pugi::xml_node child = node.append_child(reflected.propertyAt(i).name().c_str());
            writeProperties(component, kyr::ReflectedObject(plain.propertyAt(i)), child);
            if (!child.first_attribute())
                node.remove_child(child);
        }
    }

    void writeProperties(const kyr::ReflectedObject& holder, const kyr::ReflectedObject& plain,
                         pugi::xml_node& node) const
    {
        for (std::size_t i = 0; i < holder.propertyCount(); ++i) {
            const kyr::BoundProperty property = holder.propertyAt(i);
            const lumo::Variant value = property.get();
            std::string text;
            if (!property.isValue() || property.isReadOnly() ||
                value == plain.propertyAt(i).get() || node.attribute(property.name().c_str()))
                continue;
            if (const auto* reference = value.tryGet<kyr::PersistentObject>())
                text = pathOf(*reference);
            else if (!lumo::VariantConverter::toText(value, text))
                continue;
            node.append_attribute(property.name().c_str()) = text.c_str();
        }
    }

    std::string pathOf(const kyr::PersistentObject& reference) const
    {
        const SceneObject* target = sceneObjectOf(reference.object());
        return target && target->isInside(m_root) ? objectPath(*target) : std::string();
    }

    void writeMesh(const MeshAsset& asset, pugi::xml_node node)
    {
        if (!asset.source.empty())
            node.append_attribute("source") = asset.source.c_str();
        else
            node.append_attribute("geometry") = geometryId(*asset.geometry);
    }

    unsigned geometryId(const MeshGeometry& geometry)
    {
        const auto id = static_cast<unsigned>(m_geometryIds.size()) + 1;
        const auto [entry, isNew] = m_geometryIds.try_emplace(&geometry, id);
        if (isNew) {
            pugi::xml_node node = m_file.insert_child_before("geometry", m_file.child("scene"));
            node.append_attribute("id") = id;
            node.text() = kyrscene::encodeGeometry(geometry).constData();
        }
        return entry->second;
    }

    // An object with default values, to tell which values need not be written.
    const SceneObjectPtr& plainObject(ObjectKind kind)
    {
        SceneObjectPtr& plain = m_plain[kind];
        if (!plain)
            plain = SceneObject::create(kind, std::string());
        return plain;
    }

    const SceneObject& m_root;
    pugi::xml_document m_document;
    pugi::xml_node m_file;
    std::unordered_map<const MeshGeometry*, unsigned> m_geometryIds;
    std::map<ObjectKind, SceneObjectPtr> m_plain;
    std::vector<std::pair<const SceneObject*, pugi::xml_node>> m_open;
};

} // namespace

QByteArray toKyrscene(const SceneObject& root)
{
    return Writer(root).write();
}

} // namespace editor
