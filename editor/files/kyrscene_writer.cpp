#include "kyrscene_writer.h"

#include "kyrscene_format.h"
#include <editor/document/object_path.h>

#include <host/variant/variant_converter.h>

#include <pugixml.hpp>

#include <algorithm>
#include <cstring>
#include <map>
#include <unordered_map>

namespace editor {

namespace {

constexpr double builtShare = 0.5;
constexpr std::size_t reportEvery = 1000;
// Its tags, about.
constexpr double bytesPerObject = 40;
// Deeper scenes are written without indentation, which grows with the square of the depth.
constexpr int deepestIndented = 64;

std::size_t objectsBelow(const SceneObject& root)
{
    std::size_t count = 0;
    std::vector<const SceneObject*> open{&root};
    while (!open.empty()) {
        const SceneObject* object = open.back();
        open.pop_back();
        count += object->children().size();
        for (const SceneObjectPtr& child : object->children()) {
            if (!child->children().empty())
                open.push_back(child.get());
        }
    }
    return count;
}

class XmlOutput final : public pugi::xml_writer
{
public:
    explicit XmlOutput(SceneOutput& output) : m_output(output) {}

    void write(const void* data, std::size_t size) override { m_output.write(data, size); }

private:
    SceneOutput& m_output;
};

class Writer
{
public:
    Writer(const SceneObject& root, SceneOutput& output)
        : m_root(root), m_output(output), m_objectCount(objectsBelow(root))
    {}

    void write()
    {
        m_file = m_document.append_child("kyrscene");
        m_file.append_attribute("version") = kyrscene::version;
        m_scene = m_file.append_child("scene");
        writeValues(m_root, m_scene);
        m_open.push_back({&m_root, m_scene, 1});
        while (!m_open.empty()) {
            const Open next = m_open.back();
            m_open.pop_back();
            m_deepest = std::max(m_deepest, next.depth);
            for (const SceneObjectPtr& child : next.object->children())
                writeObject(*child, pugi::xml_node(next.node).append_child("object"), next.depth);
        }
        writeSelectionSets();
        XmlOutput xml(m_output);
        m_output.expect(m_textBytes, builtShare);
        m_document.save(xml, m_deepest > deepestIndented ? "" : "  ");
    }

private:
    struct Open
    {
        const SceneObject* object;
        pugi::xml_node node;
        int depth;
    };

    void writeSelectionSets()
    {
        for (const SelectionSet& set : m_root.selectionSets()) {
            pugi::xml_node node = m_file.append_child("set");
            std::string ids;
            for (const quint32 id : set.ids)
                ids += (ids.empty() ? "" : " ") + std::to_string(id);
            this->set(node, "name", set.name);
            this->set(node, "objects", ids);
        }
    }

    void writeObject(const SceneObject& object, pugi::xml_node node, int depth)
    {
        if (m_objectsDone++ % reportEvery == 0)
            m_output.report(builtShare * double(m_objectsDone) / double(m_objectCount));
        m_textBytes += bytesPerObject;
        set(node, "kind", kindId(object.kind()).data());
        set(node, "name", object.name());
        if (object.id() != 0)
            node.append_attribute("id") = object.id();
        writeValues(object, node);
        if (object.mesh() && object.mesh()->asset)
            writeMesh(*object.mesh()->asset, node.append_child("mesh"));
        if (!object.children().empty())
            m_open.push_back({&object, node, depth + 1});
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
                         pugi::xml_node& node)
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
            set(node, property.name().c_str(), text);
        }
    }

    void set(pugi::xml_node& node, const char* attribute, const std::string& text)
    {
        node.append_attribute(attribute) = text.c_str();
        m_textBytes += double(std::strlen(attribute) + text.size() + 4);
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
        const auto id = unsigned(m_geometryIds.size()) + 1;
        const auto [entry, isNew] = m_geometryIds.try_emplace(&geometry, id);
        if (isNew) {
            pugi::xml_node node = m_file.insert_child_before("geometry", m_scene);
            node.append_attribute("id") = id;
            const QByteArray text = kyrscene::encodeGeometry(geometry);
            node.text() = text.constData();
            m_textBytes += text.size();
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
    SceneOutput& m_output;
    pugi::xml_document m_document;
    pugi::xml_node m_file;
    pugi::xml_node m_scene;
    std::unordered_map<const MeshGeometry*, unsigned> m_geometryIds;
    std::map<ObjectKind, SceneObjectPtr> m_plain;
    std::vector<Open> m_open;
    std::size_t m_objectCount;
    std::size_t m_objectsDone = 0;
    int m_deepest = 0;
    /// About what will be written, for the progress.
    double m_textBytes = 0;
};

} // namespace

void writeKyrscene(const SceneObject& root, SceneOutput& output)
{
    Writer(root, output).write();
}

} // namespace editor
