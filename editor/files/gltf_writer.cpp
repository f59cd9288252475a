#include "gltf_writer.h"

#include "gltf_container.h"
#include "gltf_scene.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QtMath>

#include <assimp/Exporter.hpp>
#include <assimp/scene.h>

#include <algorithm>

namespace editor {

namespace {

// The exporter recurses.
constexpr int deepestTree = 2000;
constexpr float smallestAngle = 0.001f;

QString tr(const char* text)
{
    return QCoreApplication::translate("editor::SceneWriter", text);
}

bool isTooDeep(const SceneObject& root)
{
    std::vector<std::pair<const SceneObject*, int>> open{{&root, 0}};
    while (!open.empty()) {
        const auto [object, depth] = open.back();
        open.pop_back();
        if (depth > deepestTree)
            return true;
        for (const SceneObjectPtr& child : object->children())
            open.emplace_back(child.get(), depth + 1);
    }
    return false;
}

/// Adds what the exporter leaves out: lights and cameras.
class SceneExtras
{
public:
    explicit SceneExtras(QJsonObject& document)
        : m_document(document), m_nodes(document[QLatin1String("nodes")].toArray())
    {}

    void add(const SceneObject& root)
    {
        const QJsonArray scenes = m_document[QLatin1String("scenes")].toArray();
        const QJsonArray roots = scenes.first().toObject()[QLatin1String("nodes")].toArray();
        // The exporter keeps nodes and their children in the order of the objects.
        std::vector<std::pair<const SceneObject*, int>> open{{&root, roots.first().toInt()}};
        while (!open.empty()) {
            const auto [object, node] = open.back();
            open.pop_back();
            addTo(node, *object);
            const QJsonArray children =
                m_nodes[node].toObject()[QLatin1String("children")].toArray();
            for (int i = 0; i < children.size(); ++i)
                open.emplace_back(object->children()[std::size_t(i)].get(), children[i].toInt());
        }
        finish();
    }

private:
    void addTo(int index, const SceneObject& object)
    {
        if (!object.light() && !object.camera())
            return;
        QJsonObject node = m_nodes[index].toObject();
        if (object.camera()) {
            node[QLatin1String("camera")] = m_cameras.size();
            m_cameras.append(cameraJson(*object.camera()));
        } else {
            const QJsonObject reference{{QStringLiteral("light"), m_lights.size()}};
            node[QLatin1String("extensions")] = QJsonObject{{m_extension, reference}};
            m_lights.append(lightJson(object));
        }
        m_nodes[index] = node;
    }

    static QJsonObject cameraJson(const CameraComponent& camera)
    {
        const QJsonObject perspective{
            {QStringLiteral("yfov"), qDegreesToRadians(camera.fieldOfView)},
            {QStringLiteral("znear"), camera.nearPlane},
            {QStringLiteral("zfar"), camera.farPlane}};
        return {{QStringLiteral("type"), QStringLiteral("perspective")},
                {QStringLiteral("perspective"), perspective}};
    }

    static QJsonObject lightJson(const SceneObject& object)
    {
        const LightComponent& light = *object.light();
        QJsonObject json{
            {QStringLiteral("name"), object.displayName()},
            {QStringLiteral("color"), QJsonArray{light.color.r, light.color.g, light.color.b}},
            {QStringLiteral("intensity"), light.intensity}};
        if (light.range > 0)
            json[QLatin1String("range")] = light.range;
        switch (light.type) {
        case LightType::Directional:
            json[QLatin1String("type")] = QStringLiteral("directional");
            break;
        case LightType::Spot: {
            // The format wants the inner angle below the outer one.
            const float outer = std::max(qDegreesToRadians(light.outerAngle), smallestAngle);
            const float inner = std::min(qDegreesToRadians(light.innerAngle), outer * 0.999f);
            json[QLatin1String("type")] = QStringLiteral("spot");
            json[QLatin1String("spot")] = QJsonObject{{QStringLiteral("innerConeAngle"), inner},
                                                      {QStringLiteral("outerConeAngle"), outer}};
            break;
        }
        case LightType::Point:
        case LightType::Area:
            json[QLatin1String("type")] = QStringLiteral("point");
            break;
        }
        return json;
    }

    void finish()
    {
        m_document[QLatin1String("nodes")] = m_nodes;
        if (!m_cameras.isEmpty())
            m_document[QLatin1String("cameras")] = m_cameras;
        if (m_lights.isEmpty())
            return;
        QJsonArray used = m_document[QLatin1String("extensionsUsed")].toArray();
        used.append(m_extension);
        m_document[QLatin1String("extensionsUsed")] = used;
        QJsonObject extensions = m_document[QLatin1String("extensions")].toObject();
        extensions[m_extension] = QJsonObject{{QStringLiteral("lights"), m_lights}};
        m_document[QLatin1String("extensions")] = extensions;
    }

    const QString m_extension = QStringLiteral("KHR_lights_punctual");
    QJsonObject& m_document;
    QJsonArray m_nodes;
    QJsonArray m_lights;
    QJsonArray m_cameras;
};

} // namespace

QByteArray toGltf(const SceneObject& root, bool binary, QString& error)
{
    if (isTooDeep(root)) {
        error = tr("its objects are nested too deeply for this format");
        return {};
    }
    Assimp::Exporter exporter;
    const std::unique_ptr<aiScene> scene = makeExportScene(root);
    const aiExportDataBlob* blob = exporter.ExportToBlob(scene.get(), "glb2");
    GltfParts parts;
    if (!blob) {
        error = QString::fromUtf8(exporter.GetErrorString());
        return {};
    }
    const QByteArray exported(static_cast<const char*>(blob->data), static_cast<int>(blob->size));
    if (!splitGlb(exported, parts)) {
        error = tr("the exporter failed");
        return {};
    }
    SceneExtras(parts.document).add(root);
    return binary ? joinGlb(parts) : joinGltf(parts);
}

} // namespace editor
