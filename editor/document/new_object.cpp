#include "new_object.h"

#include <editor/geometry/primitive_shapes.h>

namespace editor {

const std::vector<NewObject>& newObjects()
{
    constexpr LightType none = LightType::Point;
    static const std::vector<NewObject> all{
        {"add_group", "Group", ObjectKind::Group, nullptr, none},
        {"add_box", "Box", ObjectKind::Mesh, "box 1 1 1", none},
        {"add_sphere", "Sphere", ObjectKind::Mesh, "sphere 0.5", none},
        {"add_cylinder", "Cylinder", ObjectKind::Mesh, "cylinder 0.5 1", none},
        {"add_cone", "Cone", ObjectKind::Mesh, "cone 0.5 1", none},
        {"add_prism", "Prism", ObjectKind::Mesh, "prism 1 1 1", none},
        {"add_torus", "Torus", ObjectKind::Mesh, "torus 0.5 0.15", none},
        {"add_plane", "Plane", ObjectKind::Mesh, "plane 1 1", none},
        {"add_point_light", "Point Light", ObjectKind::Light, nullptr, LightType::Point},
        {"add_spot_light", "Spot Light", ObjectKind::Light, nullptr, LightType::Spot},
        {"add_directional_light", "Directional Light", ObjectKind::Light, nullptr,
         LightType::Directional},
        {"add_area_light", "Area Light", ObjectKind::Light, nullptr, LightType::Area},
        {"add_camera", "Camera", ObjectKind::Camera, nullptr, none},
    };
    return all;
}

SceneObjectPtr makeNewObject(const NewObject& what)
{
    SceneObjectPtr object = SceneObject::create(what.kind, what.name);
    if (what.shape)
        object->mesh()->asset = makePrimitive(what.shape);
    if (object->light())
        object->light()->type = what.light;
    return object;
}

} // namespace editor
