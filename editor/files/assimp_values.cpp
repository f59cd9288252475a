#include "assimp_values.h"

#include <editor/document/display_color.h>

#include <QQuaternion>
#include <QtMath>

#include <assimp/camera.h>
#include <assimp/light.h>
#include <assimp/material.h>
#include <assimp/mesh.h>

#include <algorithm>
#include <cmath>

namespace editor {

namespace {

QVector3D vectorFrom(const aiVector3D& v)
{
    return {v.x, v.y, v.z};
}

// Formats without physical materials give colours as a screen shows them.
lumo::Color linearFrom(const aiColor4D& color)
{
    return {linearFromDisplay(color.r), linearFromDisplay(color.g), linearFromDisplay(color.b),
            color.a};
}

QMatrix4x4 placeAt(const aiVector3D& position, const aiVector3D& direction, const aiVector3D& up)
{
    QMatrix4x4 place;
    place.translate(vectorFrom(position));
    const QVector3D along = vectorFrom(direction);
    if (!qFuzzyIsNull(along.lengthSquared()))
        place.rotate(QQuaternion::fromDirection(-along, vectorFrom(up)));
    return place;
}

LightType lightTypeFrom(aiLightSourceType type)
{
    switch (type) {
    case aiLightSource_DIRECTIONAL:
        return LightType::Directional;
    case aiLightSource_SPOT:
        return LightType::Spot;
    case aiLightSource_AREA:
        return LightType::Area;
    default:
        return LightType::Point;
    }
}

float angleFrom(float radians, ConeAngles cones)
{
    const float degrees = qRadiansToDegrees(radians);
    return std::clamp(cones == ConeAngles::Whole ? degrees / 2 : degrees, 0.0f, 90.0f);
}

} // namespace

std::string nameFrom(const aiString& name, const char* fallback)
{
    const QString text =
        QString::fromUtf8(name.data, static_cast<int>(std::min<ai_uint32>(name.length, MAXLEN)));
    return text.isEmpty() ? std::string(fallback) : text.toStdString();
}

QMatrix4x4 matrixFrom(const aiMatrix4x4& matrix)
{
    const float* entries = &matrix.a1;
    const bool isFinite =
        std::all_of(entries, entries + 16, [](float entry) { return std::isfinite(entry); });
    return isFinite ? QMatrix4x4(entries) : QMatrix4x4();
}

MeshAssetPtr meshFrom(const aiMesh& mesh)
{
    if (mesh.mNumVertices == 0 || !mesh.HasPositions())
        return nullptr;
    const auto vectors = [&mesh](const aiVector3D* source) {
        std::vector<QVector3D> result;
        result.reserve(mesh.mNumVertices);
        std::transform(source, source + mesh.mNumVertices, std::back_inserter(result), vectorFrom);
        return result;
    };
    std::vector<quint32> indices;
    indices.reserve(std::size_t(mesh.mNumFaces) * 3);
    for (unsigned i = 0; i < mesh.mNumFaces; ++i) {
        const aiFace& face = mesh.mFaces[i];
        if (face.mNumIndices == 3)
            indices.insert(indices.end(), face.mIndices, face.mIndices + 3);
    }
    auto asset = std::make_shared<MeshAsset>();
    asset->geometry = std::make_shared<MeshGeometry>(
        vectors(mesh.mVertices),
        mesh.HasNormals() ? vectors(mesh.mNormals) : std::vector<QVector3D>(), std::move(indices));
    return asset;
}

void readMaterial(const aiMaterial& source, MaterialComponent& material)
{
    aiColor4D color;
    if (source.Get(AI_MATKEY_BASE_COLOR, color) == aiReturn_SUCCESS)
        material.baseColor = {color.r, color.g, color.b, color.a};
    else if (source.Get(AI_MATKEY_COLOR_DIFFUSE, color) == aiReturn_SUCCESS)
        material.baseColor = linearFrom(color);
    float opacity = 1;
    if (source.Get(AI_MATKEY_OPACITY, opacity) == aiReturn_SUCCESS)
        material.baseColor.a = std::clamp(opacity, 0.0f, 1.0f);
    if (source.Get(AI_MATKEY_COLOR_EMISSIVE, color) == aiReturn_SUCCESS)
        material.emissive = {color.r, color.g, color.b, 1};
    source.Get(AI_MATKEY_METALLIC_FACTOR, material.metallic);
    float shininess = 0;
    if (source.Get(AI_MATKEY_ROUGHNESS_FACTOR, material.roughness) != aiReturn_SUCCESS &&
        source.Get(AI_MATKEY_SHININESS, shininess) == aiReturn_SUCCESS && shininess >= 0) {
        // A Phong lobe of that exponent is about as wide as a microfacet lobe of this roughness.
        material.roughness = std::sqrt(std::sqrt(2 / (shininess + 2)));
    }
}

void readLight(const aiLight& source, ConeAngles cones, LightComponent& light)
{
    light.type = lightTypeFrom(source.mType);
    const aiColor3D& color = source.mColorDiffuse;
    light.intensity = std::max({color.r, color.g, color.b, 0.0f});
    if (light.intensity > 0)
        light.color = {color.r / light.intensity, color.g / light.intensity,
                       color.b / light.intensity, 1};
    light.range = 0;
    if (light.type == LightType::Spot) {
        light.innerAngle = angleFrom(source.mAngleInnerCone, cones);
        light.outerAngle = angleFrom(source.mAngleOuterCone, cones);
    }
}

void readCamera(const aiCamera& source, CameraComponent& camera)
{
    const float aspect = source.mAspect > 0 ? source.mAspect : 1;
    camera.fieldOfView =
        std::clamp(qRadiansToDegrees(source.mHorizontalFOV) / aspect, 1.0f, 179.0f);
    camera.nearPlane = source.mClipPlaneNear;
    camera.farPlane = source.mClipPlaneFar;
}

QMatrix4x4 placeOf(const aiLight& light)
{
    return placeAt(light.mPosition, light.mDirection, light.mUp);
}

QMatrix4x4 placeOf(const aiCamera& camera)
{
    return placeAt(camera.mPosition, camera.mLookAt, camera.mUp);
}

} // namespace editor
