#pragma once

#include <editor/document/components.h>

#include <QJsonObject>
#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace editor {

/// What a glTF 2 file says of its nodes, lights and cameras, exactly: the import library goes
/// through matrices, keeps one node a light and camera and knows no range. Meshes are its work.
/// The layout is the one of glTF 2.0 and its extension KHR_lights_punctual.
struct GltfDocument
{
    struct Node
    {
        /// None when the file gives none.
        std::optional<QByteArray> name;
        /// None when the file has a matrix.
        std::optional<TransformComponent> transform;
        std::vector<int> children;
        std::optional<int> light;
        std::optional<int> camera;
    };
    struct Light
    {
        QByteArray name;
        LightComponent values;
    };
    struct Camera
    {
        QByteArray name;
        CameraComponent values;
    };

    std::vector<Node> nodes;
    /// Those of the scene that is shown.
    std::vector<int> roots;
    std::vector<Light> lights;
    std::vector<Camera> cameras;
    /// What the importer leaves out and had to mend; a sentence each.
    QStringList notes;
};

/// False with a reason when the file breaks the rules in a way that nobody can mend: text that is
/// no JSON, lengths that lie, nodes that are no tree. A file of version 1 gives no nodes.
bool readGltf(const QString& path, GltfDocument& document, QString& reason);

} // namespace editor
