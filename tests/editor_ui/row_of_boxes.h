#pragma once

#include <editor/document/scene_object.h>
#include <editor/geometry/primitive_shapes.h>

#include <string>

namespace test {

/// A scene whose objects differ from those of another height in many properties. All have one
/// parent, so that their order on the clipboard is that of their rows.
inline editor::SceneObjectPtr makeRowOfBoxes(int count, float height)
{
    const editor::MeshAssetPtr asset = editor::makePrimitive("box 1 1 1");
    const auto root = editor::SceneObject::create(editor::ObjectKind::Scene, "Row");
    root->setId(1);
    root->setExpanded(true);
    for (int i = 0; i < count; ++i) {
        const auto box =
            editor::SceneObject::create(editor::ObjectKind::Mesh, "Box " + std::to_string(i));
        box->mesh()->asset = asset;
        box->transform()->position = {float(i % 200) * 2, height / 3, float(i / 200) * 2};
        box->transform()->scale = {height, 1, height};
        box->material()->roughness = height / 7;
        box->reflected().property("locked").set(lumo::Variant(height > 1));
        box->setId(quint32(i + 2));
        root->append(box);
    }
    return root;
}

} // namespace test
