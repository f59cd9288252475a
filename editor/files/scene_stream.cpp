#include "scene_stream.h"

namespace editor {

namespace {

// One list of what an object consists of serves both directions.
template <typename Stream, typename Object, typename Visit>
void visitValues(Stream& stream, Object& object, Visit visit)
{
    const auto values = [&](auto&... value) { (visit(stream, value), ...); };
    const auto vector = [&](auto& v) { values(v.x, v.y, v.z); };
    const auto color = [&](auto& c) { values(c.r, c.g, c.b, c.a); };
    vector(object.transform.position);
    vector(object.transform.rotation);
    vector(object.transform.scale);
    if (object.kind == ObjectKind::Mesh) {
        color(object.material.baseColor);
        color(object.material.emissive);
        values(object.material.metallic, object.material.roughness, object.mesh);
    } else if (object.kind == ObjectKind::Light) {
        color(object.light.color);
        values(object.light.intensity, object.light.range, object.light.innerAngle,
               object.light.outerAngle);
    } else if (object.kind == ObjectKind::Camera) {
        values(object.camera.fieldOfView, object.camera.nearPlane, object.camera.farPlane);
    }
}

} // namespace

void stream::prepare(QDataStream& stream)
{
    stream.setVersion(QDataStream::Qt_5_15);
    stream.setFloatingPointPrecision(QDataStream::SinglePrecision);
}

QDataStream& operator<<(QDataStream& stream, const StreamedObject& object)
{
    stream << object.parent << quint8(object.kind) << object.isExpanded << object.name
           << quint8(object.light.type);
    visitValues(stream, object, [](QDataStream& out, const auto& value) { out << value; });
    return stream;
}

QDataStream& operator>>(QDataStream& stream, StreamedObject& object)
{
    quint8 kind = 0;
    quint8 lightType = 0;
    stream >> object.parent >> kind >> object.isExpanded >> object.name >> lightType;
    object.kind = static_cast<ObjectKind>(kind);
    object.light.type = static_cast<LightType>(lightType);
    visitValues(stream, object, [](QDataStream& in, auto& value) { in >> value; });
    return stream;
}

} // namespace editor
