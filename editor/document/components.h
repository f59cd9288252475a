#pragma once

#include <editor/geometry/mesh_asset.h>
#include <host/reflection/persistent_object.h>
#include <host/reflection/reflected.h>
#include <host/variant/value_types.h>

namespace editor {

/// Place of an object within its parent.
struct TransformComponent final : kyr::IReflected
{
    const kyr::ReflectedClass& reflectedClass() const override;

    lumo::Vector3 position{0, 0, 0};
    /// Degrees. Turns about the fixed x axis first, then y, then z.
    lumo::Vector3 rotation{0, 0, 0};
    lumo::Vector3 scale{1, 1, 1};
};

struct MaterialComponent final : kyr::IReflected
{
    const kyr::ReflectedClass& reflectedClass() const override;

    lumo::Color baseColor{0.8f, 0.8f, 0.8f, 1};
    float metallic = 0;
    float roughness = 0.6f;
    lumo::Color emissive{0, 0, 0, 1};
};

enum class LightType
{
    Directional,
    Point,
    Spot,
    Area,
};

struct LightComponent final : kyr::IReflected
{
    const kyr::ReflectedClass& reflectedClass() const override;

    LightType type = LightType::Point;
    lumo::Color color{1, 1, 1, 1};
    /// Candela for point and spot lights, lux for directional ones.
    float intensity = 1;
    /// Metres; 0 reaches everywhere.
    float range = 10;
    /// Degrees from the axis to the full and to the faded edge of a spot's cone.
    float innerAngle = 20;
    float outerAngle = 30;
};

struct CameraComponent final : kyr::IReflected
{
    const kyr::ReflectedClass& reflectedClass() const override;

    /// Degrees, vertical.
    float fieldOfView = 50;
    float nearPlane = 0.1f;
    float farPlane = 500;
    /// What the camera looks at; nothing when invalid.
    kyr::PersistentObject target;
};

/// Figures of the mesh that an object shows; they cannot be edited.
struct MeshComponent final : kyr::IReflected
{
    const kyr::ReflectedClass& reflectedClass() const override;

    int vertexCount() const noexcept;
    int triangleCount() const noexcept;
    /// Extent of the bounding box, unscaled.
    lumo::Vector3 size() const noexcept;

    /// Shared between objects; null where there is no geometry.
    MeshAssetPtr asset;
};

} // namespace editor
