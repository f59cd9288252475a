#include "scene_stream_reader.h"

#include "scene_stream.h"

#include <QIODevice>
#include <QTextCodec>

#include <cmath>
#include <cstring>

namespace editor {

namespace {

template <typename... T>
bool areFinite(const T&... values)
{
    return (std::isfinite(values) && ...);
}

bool isFinite(const lumo::Vector3& v)
{
    return areFinite(v.x, v.y, v.z);
}

bool isFinite(const lumo::Color& c)
{
    return areFinite(c.r, c.g, c.b, c.a);
}

// Components of other kinds have their defaults.
bool isFinite(const StreamedObject& object)
{
    const LightComponent& light = object.light;
    const CameraComponent& camera = object.camera;
    const MaterialComponent& material = object.material;
    return isFinite(object.transform.position) && isFinite(object.transform.rotation) &&
           isFinite(object.transform.scale) && isFinite(material.baseColor) &&
           isFinite(material.emissive) && isFinite(light.color) &&
           areFinite(material.metallic, material.roughness, light.intensity, light.range,
                     light.innerAngle, light.outerAngle, camera.fieldOfView, camera.nearPlane,
                     camera.farPlane);
}

bool isText(const QByteArray& bytes)
{
    QTextCodec::ConverterState state;
    QTextCodec::codecForName("UTF-8")->toUnicode(bytes.constData(), bytes.size(), &state);
    return state.invalidChars == 0 && state.remainingChars == 0;
}

bool isKnown(ObjectKind kind)
{
    return kind == ObjectKind::Group || kind == ObjectKind::Mesh || kind == ObjectKind::Light ||
           kind == ObjectKind::Camera;
}

// Counts as well, or empty frames would never come to an end.
constexpr qint64 frameHead = sizeof(quint32) + sizeof(quint8);

QVector3D vectorAt(const char* bytes)
{
    float v[3];
    std::memcpy(v, bytes, sizeof v);
    return {v[0], v[1], v[2]};
}

bool isFinite(const QVector3D& v)
{
    return areFinite(v.x(), v.y(), v.z());
}

} // namespace

SceneStreamReader::End SceneStreamReader::read(QIODevice& device, const ImportProgress& progress)
{
    using stream::Tag;
    m_root = SceneObject::create(ObjectKind::Scene, "Scene");
    m_root->setExpanded(true);
    QDataStream in(&device);
    QByteArray payload;
    bool isGreeted = false;
    for (qint64 bytes = 0;; bytes += payload.size() + frameHead) {
        quint32 size = 0;
        quint8 tag = 0;
        in >> size >> tag;
        if (in.status() != QDataStream::Ok)
            return End::Broken;
        if (size > stream::largestFrame || bytes + size > m_mostBytes ||
            isGreeted == (Tag(tag) == Tag::Hello) || (m_isInMesh && Tag(tag) != Tag::Data))
            return End::Damaged;
        payload.resize(int(size));
        if (in.readRawData(payload.data(), payload.size()) != payload.size())
            return End::Broken;

        bool isSound = true;
        switch (Tag(tag)) {
        case Tag::Hello: {
            quint32 magic = 0;
            QDataStream(payload) >> magic;
            isSound = isGreeted = magic == stream::magic;
            break;
        }
        case Tag::Progress:
            if (!readProgress(payload, progress))
                return End::Broken;
            break;
        case Tag::Note:
            m_notes.append(QString::fromUtf8(payload));
            break;
        case Tag::Mesh:
            isSound = beginMesh(payload);
            break;
        case Tag::Data:
            isSound = m_isInMesh && readData(payload);
            break;
        case Tag::Object:
            isSound = readObject(payload);
            break;
        case Tag::End:
            return End::Complete;
        case Tag::Failure:
            m_reason = QString::fromUtf8(payload);
            return m_reason.isEmpty() ? End::Damaged : End::Refused;
        default:
            isSound = false;
        }
        if (!isSound)
            return End::Damaged;
    }
}

bool SceneStreamReader::readProgress(const QByteArray& payload, const ImportProgress& progress)
{
    QDataStream in(payload);
    stream::prepare(in);
    float share = 0;
    in >> share;
    return progress(std::isfinite(share) ? qBound(0.0, double(share), 1.0) : 0.0);
}

bool SceneStreamReader::beginMesh(const QByteArray& payload)
{
    QDataStream in(payload);
    stream::prepare(in);
    in >> m_vertices >> m_indices;
    m_bytes.clear();
    m_isInMesh = true;
    if (in.status() != QDataStream::Ok || m_indices % 3 != 0)
        return false;
    return (m_vertices > 0 || m_indices > 0) || finishMesh();
}

bool SceneStreamReader::readData(const QByteArray& payload)
{
    const quint64 wanted = m_vertices * stream::bytesPerVertex + m_indices * stream::bytesPerIndex;
    const quint64 have = m_bytes.size() + quint64(payload.size());
    if (payload.isEmpty() || have > wanted)
        return false;
    m_bytes.insert(m_bytes.end(), payload.begin(), payload.end());
    return have < wanted || finishMesh();
}

bool SceneStreamReader::finishMesh()
{
    std::vector<QVector3D> positions;
    std::vector<QVector3D> normals;
    positions.reserve(m_vertices);
    normals.reserve(m_vertices);
    const char* at = m_bytes.data();
    bool isSound = true;
    for (quint32 i = 0; i < m_vertices; ++i, at += stream::bytesPerVertex) {
        positions.push_back(vectorAt(at));
        normals.push_back(vectorAt(at + stream::bytesPerVertex / 2));
        isSound = isSound && isFinite(positions.back()) && isFinite(normals.back());
    }
    std::vector<quint32> indices(m_indices);
    if (m_indices > 0)
        std::memcpy(indices.data(), at, m_indices * stream::bytesPerIndex);
    for (const quint32 index : indices)
        isSound = isSound && index < m_vertices;
    std::vector<char>().swap(m_bytes);
    m_isInMesh = false;
    if (!isSound)
        return false;
    auto asset = std::make_shared<MeshAsset>();
    asset->geometry = std::make_shared<MeshGeometry>(positions, normals, std::move(indices));
    m_meshes.push_back(std::move(asset));
    return true;
}

bool SceneStreamReader::readObject(const QByteArray& payload)
{
    QDataStream in(payload);
    stream::prepare(in);
    StreamedObject from;
    in >> from;
    const auto objects = qint64(m_objects.size());
    const auto meshes = qint64(m_meshes.size());
    if (in.status() != QDataStream::Ok || !in.atEnd() || !isKnown(from.kind) || from.parent < -1 ||
        from.parent >= objects || from.mesh < -1 || from.mesh >= meshes || !isFinite(from) ||
        from.light.type < LightType::Directional || from.light.type > LightType::Area ||
        quint32(from.name.size()) > stream::largestText || !isText(from.name))
        return false;

    const SceneObjectPtr object = SceneObject::create(from.kind, from.name.toStdString());
    object->setExpanded(from.isExpanded);
    *object->transform() = from.transform;
    if (object->mesh()) {
        *object->material() = from.material;
        if (from.mesh >= 0)
            object->mesh()->asset = m_meshes[std::size_t(from.mesh)];
    }
    if (object->light())
        *object->light() = from.light;
    if (object->camera())
        *object->camera() = from.camera;
    SceneObject& parent = from.parent < 0 ? *m_root : *m_objects[std::size_t(from.parent)];
    parent.append(object);
    m_objects.push_back(object.get());
    return true;
}

} // namespace editor
