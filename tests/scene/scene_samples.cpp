#include "scene_samples.h"

#include <editor/document/object_path.h>
#include <editor/geometry/primitive_shapes.h>
#include <host/variant/variant_converter.h>

#include <map>
#include <sstream>
#include <stdexcept>

namespace test {

using namespace editor;

namespace {

ObjectKind kindFrom(const std::string& id)
{
    for (const ObjectKind kind : {ObjectKind::Mesh, ObjectKind::Light, ObjectKind::Camera}) {
        if (id == kindId(kind).data())
            return kind;
    }
    return ObjectKind::Group;
}

void appendBelow(const SceneObject& object, SceneObjects& objects)
{
    for (const SceneObjectPtr& child : object.children()) {
        objects.push_back(child);
        appendBelow(*child, objects);
    }
}

void appendValues(const kyr::ReflectedObject& object, std::string& text)
{
    for (std::size_t i = 0; i < object.propertyCount(); ++i) {
        const kyr::BoundProperty property = object.propertyAt(i);
        const kyr::ReflectedObject nested(property);
        std::string value;
        if (nested.isValid())
            appendValues(nested, text);
        else if (lumo::VariantConverter::toText(property.get(), value))
            text += " " + property.name() + "=" + value;
    }
}

const char* const valueMark = " | ";

/// Up to the mark, which the text then begins behind.
std::string takePart(std::string& text)
{
    const std::size_t mark = text.find(valueMark);
    const std::string part = text.substr(0, mark);
    text.erase(0, mark == std::string::npos ? mark : mark + std::string(valueMark).size());
    return part;
}

} // namespace

SceneObjectPtr sceneFrom(const std::string& text, const char* name)
{
    SceneObjectPtr root = SceneObject::create(ObjectKind::Scene, name);
    std::vector<SceneObjectPtr> path{root};
    std::map<std::string, MeshAssetPtr> shapes;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        const std::size_t indent = line.find_first_not_of(' ');
        std::string values = line.substr(indent);
        const std::string head = takePart(values);
        const std::size_t space = head.find(' ');
        const SceneObjectPtr object =
            SceneObject::create(kindFrom(head.substr(0, space)), head.substr(space + 1));
        while (!values.empty()) {
            const std::string part = takePart(values);
            const std::string value = part.substr(part.find('=') + 1);
            const std::string property = part.substr(0, part.find('='));
            if (property == "shape")
                object->mesh()->asset = shapes.emplace(value, makePrimitive(value)).first->second;
            else if (!propertyAtPath(object->reflected(), property).set(lumo::Variant(value)))
                throw std::invalid_argument(line);
        }
        path.resize(indent / 2 + 1);
        path.back()->append(object);
        path.push_back(object);
    }
    return root;
}

SceneObjectPtr gridScene(int objectCount, int perGroup)
{
    std::string text;
    for (int i = 0; i < objectCount; ++i) {
        const std::string number = std::to_string(i);
        text += i % (perGroup + 1) == 0
                    ? "group Group " + std::to_string(i / (perGroup + 1) + 1) + "\n"
                    : "  mesh Box " + number + " | shape=box 1 1 1 | transform.position=" + number +
                          " 0.5 0 | material.baseColor=0.1 0.2 0.3 1\n";
    }
    return sceneFrom(text);
}

SceneObjectPtr deepScene(int depth)
{
    const SceneObjectPtr root = sceneFrom({});
    for (SceneObjectPtr last = root; depth > 0; --depth) {
        last->append(SceneObject::create(ObjectKind::Group, "G"));
        last = last->children().front();
    }
    return root;
}

std::string shapeOf(const SceneObject& root)
{
    std::string text;
    for (const SceneObjectPtr& child : root.children()) {
        text += (text.empty() ? "" : " ") + child->name();
        text += child->children().empty() ? "" : "(" + shapeOf(*child) + ")";
    }
    return text;
}

std::string contentOf(const SceneObject& root)
{
    std::string text = shapeOf(root);
    for (const SceneObjectPtr& object : allBelow(root)) {
        text += std::string("\n") + kindId(object->kind()).data();
        appendValues(object->reflected(), text);
    }
    return text;
}

SceneObjectPtr at(const SceneDocument& document, const std::string& path)
{
    SceneObject* object = objectAtPath(*document.root(), path);
    return object ? object->shared_from_this() : nullptr;
}

SceneObjects allBelow(const SceneObject& top)
{
    SceneObjects objects;
    appendBelow(top, objects);
    return objects;
}

SceneObjects allObjects(const SceneDocument& document)
{
    return allBelow(*document.root());
}

void editAtRandom(SceneDocument& document, std::mt19937& random)
{
    const auto below = [&random](std::size_t bound) {
        return std::uniform_int_distribution<std::size_t>(0, bound - 1)(random);
    };
    const SceneObjects all = allObjects(document);
    SceneObjects some;
    for (const SceneObjectPtr& object : all) {
        if (below(all.size()) < 4)
            some.push_back(object);
    }
    SceneObject& place = all.empty() || below(4) == 0 ? *document.root() : *all[below(all.size())];
    const std::size_t row = below(place.children().size() + 1);
    // Keeps the size about where it is.
    switch (all.size() > 60 ? 0 : below(6)) {
    case 0:
        document.remove(some);
        break;
    case 1:
        document.reparent(some, place, int(row));
        break;
    case 2:
        document.duplicate(some);
        break;
    case 3:
        document.insert(SceneObject::create(ObjectKind::Light, "New"), place, int(row));
        break;
    case 4:
        document.setProperty(some, below(2) ? "visible" : "locked", lumo::Variant(below(4) == 0));
        break;
    default:
        document.setProperty(some, "transform.position",
                             lumo::Variant(lumo::Vector3{float(below(9)), 1, 2}));
    }
}

} // namespace test
