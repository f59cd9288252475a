#include "gltf_json.h"

#include "gltf_json_writer.h"
#include "gltf_values.h"
#include "scene_output.h"

#include <QCoreApplication>
#include <QtMath>

#include <cmath>

namespace editor {

namespace {

constexpr std::size_t reportEvery = 1000;
// Constants of WebGL, which the format uses.
constexpr int typeFloat = 5126;
constexpr int typeUnsigned = 5125;
constexpr int arrayBuffer = 34962;
constexpr int elementBuffer = 34963;
constexpr int modePoints = 0;
constexpr const char* lightsExtension = "KHR_lights_punctual";

class JsonMaker
{
public:
    JsonMaker(const GltfPlan& plan, bool embedded) : m_plan(plan), m_embedded(embedded) {}

    GltfJson make(const std::string& sceneName, const std::function<void(double)>& report)
    {
        m_json.object([&] {
            writeHeader(sceneName);
            m_json.array("nodes", m_plan.nodes.size(), [&](std::size_t i) {
                if (i % reportEvery == 0)
                    report(double(i) / double(m_plan.nodes.size()));
                writeNode(m_plan.nodes[i]);
            });
            m_json.array("cameras", m_plan.cameras.size(),
                         [this](std::size_t i) { writeCamera(*m_plan.cameras[i]); });
            writeLights();
            m_json.array("materials", m_plan.materials.size(),
                         [this](std::size_t i) { writeMaterial(*m_plan.materials[i]); });
            m_json.array("meshes", m_plan.meshes.size(),
                         [this](std::size_t i) { writeMesh(m_plan.meshes[i]); });
            m_json.array("accessors", m_plan.geometries.size(),
                         [this](std::size_t i) { writeAccessors(m_plan.geometries[i]); });
            m_json.array("bufferViews", m_plan.geometries.size(),
                         [this](std::size_t i) { writeViews(m_plan.geometries[i]); });
            writeBuffer();
        });
        return {m_json.text(), m_dataPosition};
    }

private:
    void writeHeader(const std::string& sceneName)
    {
        m_json.object("asset", [this] {
            m_json.write("version", "2.0");
            m_json.write("generator", "Kyr Scene Editor");
        });
        m_json.write("scene", 0);
        m_json.array("scenes", 1, [&](std::size_t) {
            m_json.object([&] {
                m_json.write("name", sceneName);
                m_json.array("nodes", m_plan.rootCount,
                             [this](std::size_t i) { m_json.element(i); });
            });
        });
    }

    void writeNode(const GltfPlan::Node& node)
    {
        const SceneObject& object = *node.object;
        m_json.setSubject(object);
        m_json.object([&] {
            m_json.write("name", object.name());
            writeTransform(*object.transform());
            if (node.mesh != GltfPlan::none)
                m_json.write("mesh", node.mesh);
            if (node.camera != GltfPlan::none)
                m_json.write("camera", node.camera);
            m_json.array("children", object.children().size(),
                         [&](std::size_t i) { m_json.element(node.firstChild + i); });
            if (node.light != GltfPlan::none) {
                m_json.object("extensions", [&] {
                    m_json.object(lightsExtension, [&] { m_json.write("light", node.light); });
                });
            }
        });
    }

    void writeTransform(const TransformComponent& transform)
    {
        const auto [x, y, z] = transform.position;
        if (x != 0 || y != 0 || z != 0)
            m_json.write("translation", {x, y, z});
        const lumo::Vector3& turn = transform.rotation;
        if (turn.x != 0 || turn.y != 0 || turn.z != 0) {
            const auto [i, j, k, w] = quaternionOf(turn);
            m_json.write("rotation", {i, j, k, w});
        }
        const auto [sx, sy, sz] = transform.scale;
        if (sx != 1 || sy != 1 || sz != 1)
            m_json.write("scale", {sx, sy, sz});
    }

    void writeCamera(const SceneObject& object)
    {
        const CameraComponent& camera = *object.camera();
        m_json.setSubject(object);
        m_json.object([&] {
            m_json.write("type", "perspective");
            m_json.object("perspective", [&] {
                m_json.write("yfov", qDegreesToRadians(double(camera.fieldOfView)));
                m_json.write("znear", camera.nearPlane);
                m_json.write("zfar", camera.farPlane);
            });
        });
    }

    void writeLights()
    {
        if (m_plan.lights.empty())
            return;
        m_json.array("extensionsUsed", 1, [this](std::size_t) { m_json.element(lightsExtension); });
        m_json.object("extensions", [this] {
            m_json.object(lightsExtension, [this] {
                m_json.array("lights", m_plan.lights.size(),
                             [this](std::size_t i) { writeLight(*m_plan.lights[i]); });
            });
        });
    }

    void writeLight(const SceneObject& object)
    {
        const LightComponent& light = *object.light();
        m_json.setSubject(object);
        m_json.object([&] {
            m_json.write("type", gltfTypeOf(light.type));
            m_json.write("name", object.name());
            m_json.write("color", {light.color.r, light.color.g, light.color.b});
            m_json.write("intensity", light.intensity);
            // Without one it reaches everywhere, here and there.
            if (!(light.range <= 0))
                m_json.write("range", light.range);
            if (light.type == LightType::Spot) {
                const ConeOfLight cone = coneOf(light);
                m_json.object("spot", [&] {
                    m_json.write("innerConeAngle", cone.inner);
                    m_json.write("outerConeAngle", cone.outer);
                });
            }
        });
    }

    void writeMaterial(const MaterialComponent& material)
    {
        const lumo::Color& base = material.baseColor;
        const lumo::Color& glow = material.emissive;
        m_json.object([&] {
            m_json.object("pbrMetallicRoughness", [&] {
                m_json.write("baseColorFactor", {factorOf(base.r), factorOf(base.g),
                                                 factorOf(base.b), factorOf(base.a)});
                m_json.write("metallicFactor", factorOf(material.metallic));
                m_json.write("roughnessFactor", factorOf(material.roughness));
            });
            m_json.write("emissiveFactor", {factorOf(glow.r), factorOf(glow.g), factorOf(glow.b)});
            if (base.a < 1)
                m_json.write("alphaMode", "BLEND");
        });
    }

    void writeMesh(const GltfPlan::Mesh& mesh)
    {
        const GltfPlan::Geometry& geometry = m_plan.geometries[mesh.geometry];
        const auto primitive = [&](std::size_t) {
            m_json.object([&] {
                m_json.object("attributes", [&] {
                    m_json.write("POSITION", geometry.firstAccessor);
                    if (!geometry.isPoints())
                        m_json.write("NORMAL", geometry.firstAccessor + 1);
                });
                if (geometry.isPoints())
                    m_json.write("mode", modePoints);
                else
                    m_json.write("indices", geometry.firstAccessor + 2);
                m_json.write("material", mesh.material);
            });
        };
        m_json.setSubject(*mesh.firstUser);
        m_json.object([&] {
            m_json.write("name", mesh.firstUser->name());
            m_json.array("primitives", 1, primitive);
        });
    }

    void writeAccessors(const GltfPlan::Geometry& geometry)
    {
        const std::uint64_t vertexCount = geometry.geometry->vertices().size();
        const Box bounds = boundsOf(geometry);
        m_json.object([&] {
            writeAccessor(geometry.firstView, typeFloat, vertexCount, "VEC3");
            m_json.write("min", {bounds.lower.x(), bounds.lower.y(), bounds.lower.z()});
            m_json.write("max", {bounds.upper.x(), bounds.upper.y(), bounds.upper.z()});
        });
        if (geometry.isPoints())
            return;
        m_json.object([&] {
            m_json.write("byteOffset", GltfPlan::vertexStride / 2);
            writeAccessor(geometry.firstView, typeFloat, vertexCount, "VEC3");
        });
        m_json.object([&] {
            writeAccessor(geometry.firstView + 1, typeUnsigned, geometry.geometry->indices().size(),
                          "SCALAR");
        });
    }

    void writeAccessor(std::size_t view, int type, std::uint64_t count, const char* shape)
    {
        m_json.write("bufferView", view);
        m_json.write("componentType", type);
        m_json.write("count", count);
        m_json.write("type", shape);
    }

    // Of all vertices; those that belong to no triangle count too.
    static Box boundsOf(const GltfPlan::Geometry& geometry)
    {
        Box bounds;
        for (const MeshGeometry::Vertex& vertex : geometry.geometry->vertices()) {
            const QVector3D sum = vertex.position + vertex.normal;
            if (!std::isfinite(sum.x()) || !std::isfinite(sum.y()) || !std::isfinite(sum.z())) {
                throw WriteFailure{
                    QCoreApplication::translate(
                        "editor::SceneWriter", "the mesh of \"%1\" has a vertex that is not finite")
                        .arg(geometry.firstUser->displayName())};
            }
            bounds.include(vertex.position);
        }
        return bounds;
    }

    void writeViews(const GltfPlan::Geometry& geometry)
    {
        m_json.object([&] {
            writeView(geometry.offset, geometry.vertexBytes(), arrayBuffer);
            m_json.write("byteStride", GltfPlan::vertexStride);
        });
        if (geometry.isPoints())
            return;
        m_json.object([&] {
            writeView(geometry.offset + geometry.vertexBytes(), geometry.indexBytes(),
                      elementBuffer);
        });
    }

    void writeView(std::uint64_t offset, std::uint64_t bytes, int target)
    {
        m_json.write("buffer", 0);
        m_json.write("byteOffset", offset);
        m_json.write("byteLength", bytes);
        m_json.write("target", target);
    }

    void writeBuffer()
    {
        m_json.array("buffers", m_plan.bufferBytes > 0 ? 1 : 0, [this](std::size_t) {
            m_json.object([this] {
                m_json.write("byteLength", m_plan.bufferBytes);
                if (m_embedded) {
                    m_json.write("uri", "data:application/octet-stream;base64,");
                    // Before the closing quote.
                    m_dataPosition = m_json.size() - 1;
                }
            });
        });
    }

    const GltfPlan& m_plan;
    bool m_embedded;
    GltfJsonWriter m_json;
    std::size_t m_dataPosition = 0;
};

} // namespace

GltfJson makeGltfJson(const GltfPlan& plan, const std::string& sceneName, bool embedded,
                      const std::function<void(double)>& report)
{
    return JsonMaker(plan, embedded).make(sceneName, report);
}

} // namespace editor
