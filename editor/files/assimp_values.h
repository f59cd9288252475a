#pragma once

#include <editor/document/components.h>

#include <QMatrix4x4>

struct aiCamera;
struct aiLight;
struct aiMaterial;
struct aiMesh;

#include <assimp/matrix4x4.h>
#include <assimp/types.h>

namespace editor {

/// How an importer gives the cones of spot lights: from the axis to the edge, or edge to edge.
enum class ConeAngles
{
    FromAxis,
    Whole,
};

// Single values of an imported scene as ours.

/// Valid UTF-8; `fallback` when there is none.
std::string nameFrom(const aiString& name, const char* fallback);
/// The identity when an entry is not finite.
QMatrix4x4 matrixFrom(const aiMatrix4x4& matrix);
/// Null when a mesh has no vertices. Points and lines are left out.
MeshAssetPtr meshFrom(const aiMesh& mesh);
void readMaterial(const aiMaterial& source, MaterialComponent& material);
void readLight(const aiLight& source, ConeAngles cones, LightComponent& light);
void readCamera(const aiCamera& source, CameraComponent& camera);
/// Where the light or camera stands and looks within its node; ours look along -z.
QMatrix4x4 placeOf(const aiLight& light);
QMatrix4x4 placeOf(const aiCamera& camera);

} // namespace editor
