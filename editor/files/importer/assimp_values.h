#pragma once

#include <editor/document/components.h>

#include <QByteArray>
#include <QMatrix4x4>

#include <vector>

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

/// What of a mesh can be shown.
struct MeshArrays
{
    std::vector<QVector3D> positions;
    /// One a position; zero where the mesh has none.
    std::vector<QVector3D> normals;
    /// Three a triangle.
    std::vector<quint32> indices;
    /// Vertices that are not finite; triangles that touch them are left out.
    int badVertices = 0;
    /// Faces that are points or lines.
    int otherFaces = 0;
};

// Single values of an imported scene as ours. What is not finite keeps its default.

/// UTF-8; `fallback` when there is none.
QByteArray nameFrom(const aiString& name, const char* fallback);
/// False when an entry is not finite.
bool isFinite(const aiMatrix4x4& matrix);
/// The identity when an entry is not finite.
QMatrix4x4 matrixFrom(const aiMatrix4x4& matrix);
MeshArrays arraysFrom(const aiMesh& mesh);
void readMaterial(const aiMaterial& source, MaterialComponent& material);
void readLight(const aiLight& source, ConeAngles cones, LightComponent& light);
void readCamera(const aiCamera& source, CameraComponent& camera);
/// Where the light or camera stands and looks within its node; ours look along -z.
QMatrix4x4 placeOf(const aiLight& light);
QMatrix4x4 placeOf(const aiCamera& camera);

} // namespace editor
