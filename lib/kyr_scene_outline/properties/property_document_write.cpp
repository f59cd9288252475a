#include "property_document.h"

#include "property_text.h"
#include "property_walk.h"

#include <host/core/debug_message.h>
#include <host/data_section/xml_section.h>

#include <algorithm>
#include <utility>
#include <vector>

namespace kyr::properties {
namespace {

constexpr const char* sourceFile = "scene_browser_data";

void writeProperty(const BoundProperty& property, const std::string& path,
                   Zar::DataSection& objectSection)
{
    if (!isVisibleValue(property))
        return;
    const lumo::Variant value = property.get();
    if (value.isVoid()) {
        Zar::DebugMessageHelper(0, 4).message(
            "Copy properties: cannot copy value from property '%s' with undefined state",
            path.c_str());
        return;
    }
    const Zar::DataSectionPtr section = objectSection.insertSection("property", -1);
    if (!Zar::verify(bool(section), "childSection", sourceFile))
        return;
    std::string text;
    valueAsText(value, text);
    section->writeString("name", path);
    section->writeString("value", text);
    section->writeString("type", property.propertyType().name());
}

void writeObject(const ReflectedObject& object, Zar::DataSection& root,
                 const PropertyChoice& choice)
{
    const Zar::DataSectionPtr section = root.insertSection("object", -1);
    if (!Zar::verify(bool(section), "childSection", sourceFile))
        return;
    section->writeString("type", object.type().name());
    writeObjectProperties(object, section, std::string(), choice);
    Zar::DebugMessageHelper(0, 2).message("Copy properties of '%s' item",
                                          object.reference().name().c_str());
}

} // namespace

void collectObjectsInModelOrder(IAssetSelection::Objects& objects, const IAssetModel* model)
{
    std::vector<std::pair<QModelIndex, PersistentObject>> rows;
    rows.reserve(objects.size());
    for (PersistentObject& object : objects) {
        const QModelIndex index = model->indexOf(object.object());
        if (index.isValid())
            rows.emplace_back(index, std::move(object));
    }
    const auto precedes = [](const auto& a, const auto& b) { return a.first < b.first; };
    if (!std::is_sorted(rows.begin(), rows.end(), precedes))
        std::sort(rows.begin(), rows.end(), precedes);
    objects.clear();
    for (auto& row : rows)
        objects.push_back(std::move(row.second));
}

Zar::DataSectionPtr buildPropertyDocument(const IAssetSelection::Objects& objects,
                                          const PropertyChoice& choice)
{
    Zar::DataSectionPtr root(new Zar::XMLSection("objects"));
    for (const PersistentObject& object : objects)
        writeObject(object.object(), *root, choice);
    return root;
}

void writeObjectProperties(const ReflectedObject& object, const Zar::DataSectionPtr& section,
                           const std::string& prefix, const PropertyChoice& choice)
{
    if (!Zar::verify(bool(section), "section", sourceFile))
        return;
    const auto write = [&](const BoundProperty& property, const std::string& path) {
        if (!choice || choice(path))
            writeProperty(property, path, *section);
    };
    walkProperties(object, prefix, write);
}

} // namespace kyr::properties
