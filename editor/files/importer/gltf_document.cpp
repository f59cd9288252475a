#include "gltf_document.h"

#include "gltf_text.h"
#include "transform_values.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QtMath>

#include <algorithm>
#include <cmath>

namespace editor {

namespace {

constexpr int deepestTree = 100000;
const QString lightsExtension = QStringLiteral("KHR_lights_punctual");

QString tr(const char* text)
{
    return QCoreApplication::translate("editor::SceneImport", text);
}

QString key(const char* name)
{
    return QString::fromLatin1(name);
}

class GltfReader
{
public:
    GltfReader(const QJsonObject& json, GltfDocument& document) : m_json(json), m_document(document)
    {}

    bool read()
    {
        readLights();
        readCameras();
        const QJsonArray nodes = m_json[key("nodes")].toArray();
        m_document.nodes.reserve(std::size_t(nodes.size()));
        for (const QJsonValue& node : nodes)
            m_document.nodes.push_back(readNode(node.toObject()));
        const QJsonArray scenes = m_json[key("scenes")].toArray();
        const QJsonObject scene = scenes[m_json[key("scene")].toInt()].toObject();
        for (const QJsonValue& root : scene[key("nodes")].toArray())
            m_document.roots.push_back(root.toInt(-1));
        return areTrees();
    }

    const QString& reason() const { return m_reason; }

private:
    bool fail(const QString& reason)
    {
        m_reason = reason;
        return false;
    }

    QString called(int index) const
    {
        const GltfDocument::Node& node = m_document.nodes[std::size_t(index)];
        return node.name && !node.name->isEmpty()
                   ? tr("node %1 \"%2\"").arg(index).arg(QString::fromUtf8(*node.name).left(80))
                   : tr("node %1").arg(index);
    }

    // A file whose nodes are below themselves has no end, one with shared nodes can be of any
    // size. Neither is a scene.
    bool areTrees()
    {
        const int count = int(m_document.nodes.size());
        std::vector<int> parents(m_document.nodes.size(), -1);
        std::vector<std::pair<int, int>> open; // with their depths
        for (const int root : m_document.roots) {
            if (root < 0 || root >= count)
                return fail(tr("the scene names a node that does not exist"));
            open.emplace_back(root, 1);
        }
        std::vector<bool> isSeen(m_document.nodes.size());
        while (!open.empty()) {
            const auto [index, depth] = open.back();
            open.pop_back();
            if (isSeen[std::size_t(index)])
                return fail(tr("%1 is in the scene more than once").arg(called(index)));
            isSeen[std::size_t(index)] = true;
            if (depth > deepestTree)
                return fail(tr("its nodes are nested more than %1 levels deep").arg(deepestTree));
            for (const int child : m_document.nodes[std::size_t(index)].children) {
                if (child < 0 || child >= count)
                    return fail(tr("%1 has a child that does not exist").arg(called(index)));
                if (!isSeen[std::size_t(child)])
                    parents[std::size_t(child)] = index;
                else if (isAbove(child, index, parents))
                    return fail(tr("%1 is below itself").arg(called(child)));
                open.emplace_back(child, depth + 1);
            }
        }
        return true;
    }

    static bool isAbove(int above, int index, const std::vector<int>& parents)
    {
        while (index >= 0 && index != above)
            index = parents[std::size_t(index)];
        return index >= 0;
    }

    GltfDocument::Node readNode(const QJsonObject& json)
    {
        GltfDocument::Node node;
        if (json[key("name")].isString())
            node.name = json[key("name")].toString().toUtf8();
        for (const QJsonValue& child : json[key("children")].toArray())
            node.children.push_back(child.toInt(-1));
        if (!json.contains(key("matrix")))
            node.transform = transformOf(json);
        node.camera = indexIn(m_document.cameras, json[key("camera")]);
        const QJsonObject extensions = json[key("extensions")].toObject();
        node.light =
            indexIn(m_document.lights, extensions[lightsExtension].toObject()[key("light")]);
        return node;
    }

    template <typename T>
    static std::optional<int> indexIn(const std::vector<T>& items, const QJsonValue& value)
    {
        const int index = value.toInt(-1);
        return index >= 0 && index < int(items.size()) ? std::optional(index) : std::nullopt;
    }

    TransformComponent transformOf(const QJsonObject& json)
    {
        TransformComponent transform;
        const QJsonArray position = json[key("translation")].toArray();
        const QJsonArray rotation = json[key("rotation")].toArray();
        const QJsonArray scale = json[key("scale")].toArray();
        const auto at = [](const QJsonArray& array, int i) { return float(array[i].toDouble()); };
        if (position.size() == 3)
            transform.position = {at(position, 0), at(position, 1), at(position, 2)};
        if (rotation.size() == 4) {
            transform.rotation =
                anglesFromQuaternion({rotation[0].toDouble(), rotation[1].toDouble(),
                                      rotation[2].toDouble(), rotation[3].toDouble()});
        }
        if (scale.size() == 3)
            transform.scale = {at(scale, 0), at(scale, 1), at(scale, 2)};
        if (!isFinite(transform)) {
            m_document.notes.append(
                tr("node %1 \"%2\" has a transform with numbers too large; it has none now")
                    .arg(m_document.nodes.size())
                    .arg(json[key("name")].toString().left(80)));
            return {};
        }
        return transform;
    }

    void readLights()
    {
        const QJsonObject extension =
            m_json[key("extensions")].toObject()[lightsExtension].toObject();
        for (const QJsonValue& value : extension[key("lights")].toArray()) {
            const QJsonObject json = value.toObject();
            m_document.lights.push_back({json[key("name")].toString().toUtf8(), lightOf(json)});
        }
    }

    LightComponent lightOf(const QJsonObject& json)
    {
        LightComponent light;
        const QString type = json[key("type")].toString();
        if (type == QLatin1String("directional"))
            light.type = LightType::Directional;
        else if (type == QLatin1String("spot"))
            light.type = LightType::Spot;
        const QJsonArray color = json[key("color")].toArray();
        if (color.size() == 3)
            light.color = {numberOf(color[0], 1), numberOf(color[1], 1), numberOf(color[2], 1), 1};
        light.intensity = numberOf(json[key("intensity")], 1);
        light.range = numberOf(json[key("range")], 0);
        if (light.type == LightType::Spot) {
            const QJsonObject spot = json[key("spot")].toObject();
            light.innerAngle = degreesOf(spot[key("innerConeAngle")], 0);
            light.outerAngle = degreesOf(spot[key("outerConeAngle")], M_PI / 4);
        }
        return light;
    }

    void readCameras()
    {
        int flat = 0;
        for (const QJsonValue& value : m_json[key("cameras")].toArray()) {
            const QJsonObject json = value.toObject();
            const QJsonObject perspective = json[key("perspective")].toObject();
            flat += json[key("type")].toString() == QLatin1String("orthographic") ? 1 : 0;
            CameraComponent camera;
            camera.fieldOfView =
                degreesOf(perspective[key("yfov")], qDegreesToRadians(double(camera.fieldOfView)));
            camera.nearPlane = numberOf(perspective[key("znear")], camera.nearPlane);
            camera.farPlane = numberOf(perspective[key("zfar")], camera.farPlane);
            m_document.cameras.push_back({json[key("name")].toString().toUtf8(), camera});
        }
        if (flat > 0)
            m_document.notes.append(tr("orthographic cameras show perspective: %1").arg(flat));
    }

    static float numberOf(const QJsonValue& value, float fallback)
    {
        const auto number = float(value.toDouble(double(fallback)));
        return std::isfinite(number) ? number : fallback;
    }
    static float degreesOf(const QJsonValue& value, double fallback)
    {
        return numberOf(qRadiansToDegrees(value.toDouble(fallback)),
                        float(qRadiansToDegrees(fallback)));
    }

    const QJsonObject& m_json;
    GltfDocument& m_document;
    QString m_reason;
};

int countExtras(const QJsonObject& json)
{
    int count = 0;
    for (const QJsonValue& list : json) {
        for (const QJsonValue& item : list.toArray())
            count += item.toObject().contains(key("extras")) ? 1 : 0;
    }
    return count + (json.contains(key("extras")) ? 1 : 0);
}

QStringList unknownExtensions(const QJsonObject& json)
{
    QStringList unknown;
    for (const QJsonValue& name : json[key("extensionsUsed")].toArray()) {
        if (name.toString() != lightsExtension)
            unknown.append(name.toString());
    }
    return unknown;
}

} // namespace

bool readGltf(const QString& path, GltfDocument& document, QString& reason)
{
    const QJsonObject json = readGltfText(path, reason);
    if (!reason.isEmpty())
        return false;
    const QString version = json[key("asset")].toObject()[key("version")].toString();
    if (json.isEmpty() || version.startsWith(QLatin1Char('1')))
        return true;
    GltfReader reader(json, document);
    if (!reader.read()) {
        reason = reader.reason();
        return false;
    }
    const int extras = countExtras(json);
    const QStringList extensions = unknownExtensions(json);
    const int scenes = json[key("scenes")].toArray().size();
    if (extras > 0)
        document.notes.append(tr("extras are not imported: %1").arg(extras));
    if (!extensions.isEmpty())
        document.notes.append(tr("of these extensions only the meshes are imported: %1")
                                  .arg(extensions.join(QStringLiteral(", "))));
    if (scenes > 1)
        document.notes.append(tr("only one of %1 scenes is imported").arg(scenes));
    return true;
}

} // namespace editor
