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

bool isFinite(const QVector3D& v)
{
    return std::isfinite(v.x()) && std::isfinite(v.y()) && std::isfinite(v.z());
}

void keepFinite(float& value, float fallback)
{
    if (!std::isfinite(value))
        value = fallback;
}

void keepFinite(lumo::Color& color, const lumo::Color& fallback)
{
    keepFinite(color.r, fallback.r);
    keepFinite(color.g, fallback.g);
    keepFinite(color.b, fallback.b);
    keepFinite(color.a, fallback.a);
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

QByteArray nameFrom(const aiString& name, const char* fallback)
{
    const QString text =
        QString::fromUtf8(name.data, int(std::min<ai_uint32>(name.length, MAXLEN)));
    return text.isEmpty() ? QByteArray(fallback) : text.toUtf8();
}

bool isFinite(const aiMatrix4x4& matrix)
{
    const float* entries = &matrix.a1;
    return std::all_of(entries, entries + 16, [](float entry) { return std::isfinite(entry); });
}

QMatrix4x4 matrixFrom(const aiMatrix4x4& matrix)
{
    return isFinite(matrix) ? QMatrix4x4(&matrix.a1) : QMatrix4x4();
}

MeshArrays arraysFrom(const aiMesh& mesh)
{
    MeshArrays arrays;
    arrays.positions.reserve(mesh.mNumVertices);
    arrays.normals.reserve(mesh.mNumVertices);
    std::vector<bool> isBad(mesh.mNumVertices);
    for (unsigned i = 0; i < mesh.mNumVertices; ++i) {
        const QVector3D position = vectorFrom(mesh.mVertices[i]);
        const QVector3D normal = mesh.HasNormals() ? vectorFrom(mesh.mNormals[i]) : QVector3D();
        isBad[i] = !isFinite(position);
        arrays.badVertices += isBad[i] ? 1 : 0;
        arrays.positions.push_back(isBad[i] ? QVector3D() : position);
        arrays.normals.push_back(isFinite(normal) ? normal : QVector3D());
    }
    arrays.indices.reserve(std::size_t(mesh.mNumFaces) * 3);
    for (unsigned i = 0; i < mesh.mNumFaces; ++i) {
        const aiFace& face = mesh.mFaces[i];
        const unsigned* const begin = face.mIndices;
        const unsigned* const end = begin + face.mNumIndices;
        if (face.mNumIndices != 3)
            ++arrays.otherFaces;
        else if (std::none_of(begin, end, [&isBad](unsigned at) { return isBad[at]; }))
            arrays.indices.insert(arrays.indices.end(), begin, end);
    }
    return arrays;
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
    const MaterialComponent plain;
    keepFinite(material.baseColor, plain.baseColor);
    keepFinite(material.emissive, plain.emissive);
    keepFinite(material.metallic, plain.metallic);
    keepFinite(material.roughness, plain.roughness);
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
    const LightComponent plain;
    keepFinite(light.color, plain.color);
    keepFinite(light.intensity, plain.intensity);
    keepFinite(light.innerAngle, plain.innerAngle);
    keepFinite(light.outerAngle, plain.outerAngle);
}

void readCamera(const aiCamera& source, CameraComponent& camera)
{
    const float aspect = source.mAspect > 0 ? source.mAspect : 1;
    camera.fieldOfView =
        std::clamp(qRadiansToDegrees(source.mHorizontalFOV) / aspect, 1.0f, 179.0f);
    camera.nearPlane = source.mClipPlaneNear;
    camera.farPlane = source.mClipPlaneFar;
    const CameraComponent plain;
    keepFinite(camera.fieldOfView, plain.fieldOfView);
    keepFinite(camera.nearPlane, plain.nearPlane);
    keepFinite(camera.farPlane, plain.farPlane);
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
