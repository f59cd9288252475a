#include "components.h"

#include "property_annotations.h"
#include <host/reflection/class_builder.h>

namespace editor {

namespace {

constexpr double huge = 1e6;

void registerLightTypes()
{
    lumo::VariantConverter::registerEnumeration<LightType>({{"directional", LightType::Directional},
                                                            {"point", LightType::Point},
                                                            {"spot", LightType::Spot},
                                                            {"area", LightType::Area}});
}

} // namespace

const kyr::ReflectedClass& TransformComponent::reflectedClass() const
{
    static const kyr::ReflectedClass description =
        kyr::ClassBuilder<TransformComponent>("Transform")
            .value("position", &TransformComponent::position)
            .annotate(Label{"Position"})
            .annotate(Changes{ChangeAspect::Transform})
            .annotate(Unit{"m"})
            .annotate(Range{-huge, huge, 0.1})
            .value("rotation", &TransformComponent::rotation)
            .annotate(Label{"Rotation"})
            .annotate(Changes{ChangeAspect::Transform})
            .annotate(Unit{"°"})
            .annotate(Range{-360, 360, 1})
            .value("scale", &TransformComponent::scale)
            .annotate(Label{"Scale"})
            .annotate(Changes{ChangeAspect::Transform})
            .annotate(Range{-huge, huge, 0.1})
            .build();
    return description;
}

const kyr::ReflectedClass& MaterialComponent::reflectedClass() const
{
    static const kyr::ReflectedClass description =
        kyr::ClassBuilder<MaterialComponent>("Material")
            .value("baseColor", &MaterialComponent::baseColor)
            .annotate(Label{"Base colour"})
            .annotate(Changes{ChangeAspect::Material})
            .value("metallic", &MaterialComponent::metallic)
            .annotate(Label{"Metallic"})
            .annotate(Changes{ChangeAspect::Material})
            .annotate(Range{0, 1, 0.05})
            .value("roughness", &MaterialComponent::roughness)
            .annotate(Label{"Roughness"})
            .annotate(Changes{ChangeAspect::Material})
            .annotate(Range{0, 1, 0.05})
            .value("emissive", &MaterialComponent::emissive)
            .annotate(Label{"Emissive colour"})
            .annotate(Changes{ChangeAspect::Material})
            .build();
    return description;
}

const kyr::ReflectedClass& LightComponent::reflectedClass() const
{
    static const kyr::ReflectedClass description = [] {
        registerLightTypes();
        return kyr::ClassBuilder<LightComponent>("Light")
            .value("type", &LightComponent::type)
            .annotate(Label{"Type"})
            .value("color", &LightComponent::color)
            .annotate(Label{"Colour"})
            .value("intensity", &LightComponent::intensity)
            .annotate(Label{"Intensity"})
            .annotate(Range{0, huge, 0.1})
            .value("range", &LightComponent::range)
            .annotate(Label{"Range"})
            .annotate(Unit{"m"})
            .annotate(Range{0, huge, 0.5})
            .value("innerAngle", &LightComponent::innerAngle)
            .annotate(Label{"Inner angle"})
            .annotate(Unit{"°"})
            .annotate(Range{0, 90, 1})
            .value("outerAngle", &LightComponent::outerAngle)
            .annotate(Label{"Outer angle"})
            .annotate(Unit{"°"})
            .annotate(Range{0, 90, 1})
            .build();
    }();
    return description;
}

const kyr::ReflectedClass& CameraComponent::reflectedClass() const
{
    static const kyr::ReflectedClass description =
        kyr::ClassBuilder<CameraComponent>("Camera")
            .value("fieldOfView", &CameraComponent::fieldOfView)
            .annotate(Label{"Field of view"})
            .annotate(Unit{"°"})
            .annotate(Range{1, 179, 1})
            .value("nearPlane", &CameraComponent::nearPlane)
            .annotate(Label{"Near"})
            .annotate(Unit{"m"})
            .annotate(Range{0.001, huge, 0.1})
            .value("farPlane", &CameraComponent::farPlane)
            .annotate(Label{"Far"})
            .annotate(Unit{"m"})
            .annotate(Range{0.001, huge, 10})
            .value("target", &CameraComponent::target)
            .annotate(Label{"Target"})
            .build();
    return description;
}

const kyr::ReflectedClass& MeshComponent::reflectedClass() const
{
    static const kyr::ReflectedClass description =
        kyr::ClassBuilder<MeshComponent>("Mesh")
            .readOnlyValue<int>("vertices",
                                [](const MeshComponent& mesh) { return mesh.vertexCount(); })
            .annotate(Label{"Vertices"})
            .readOnlyValue<int>("triangles",
                                [](const MeshComponent& mesh) { return mesh.triangleCount(); })
            .annotate(Label{"Triangles"})
            .readOnlyValue<lumo::Vector3>("size",
                                          [](const MeshComponent& mesh) { return mesh.size(); })
            .annotate(Label{"Size"})
            .annotate(Unit{"m"})
            .build();
    return description;
}

int MeshComponent::vertexCount() const noexcept
{
    return asset ? int(asset->geometry->vertices().size()) : 0;
}

int MeshComponent::triangleCount() const noexcept
{
    return asset ? int(asset->geometry->triangleCount()) : 0;
}

lumo::Vector3 MeshComponent::size() const noexcept
{
    const Box bounds = asset ? asset->geometry->bounds() : Box();
    if (bounds.isEmpty())
        return {};
    const QVector3D size = bounds.size();
    return {size.x(), size.y(), size.z()};
}

} // namespace editor
