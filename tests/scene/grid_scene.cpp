#include "grid_scene.h"

#include <editor/document/display_color.h>
#include <editor/geometry/primitive_shapes.h>

#include <algorithm>
#include <cmath>

namespace editor {

namespace {

constexpr float spacing = 2;

SceneObjectPtr makeCell(int number, const MeshAssetPtr& asset, float x, float z)
{
    SceneObjectPtr object = SceneObject::create(ObjectKind::Mesh, "Box " + std::to_string(number));
    object->transform()->position = {x, 0.5f, z};
    object->mesh()->asset = asset;
    object->material()->baseColor = linearColor(QColor::fromHsv((number * 37) % 360, 110, 215));
    return object;
}

} // namespace

SceneObjectPtr makeGridScene(int objectCount, int perGroup)
{
    const MeshAssetPtr asset = makePrimitive("box 1 1 1");
    const int columns = std::max(1, static_cast<int>(std::sqrt(objectCount)));
    SceneObjectPtr root = SceneObject::create(ObjectKind::Scene, "Grid");
    root->setExpanded(true);
    SceneObjectPtr group;
    for (int number = 0; number < objectCount; ++number) {
        if (!group || static_cast<int>(group->children().size()) == perGroup) {
            group = SceneObject::create(ObjectKind::Group,
                                        "Group " + std::to_string(root->children().size() + 1));
            root->append(group);
        } else {
            const int row = number / columns;
            group->append(makeCell(number, asset, spacing * static_cast<float>(number % columns),
                                   spacing * static_cast<float>(row)));
        }
    }
    return root;
}

} // namespace editor
