#include "primitive_shapes.h"

#include <QtMath>

#include <charconv>
#include <cmath>

namespace editor {

namespace {

constexpr int roundSegments = 28;
constexpr int ringSegments = 14;
constexpr int maxNumbers = 3;

struct Shape
{
    std::vector<QVector3D> positions;
    std::vector<QVector3D> normals;
    std::vector<quint32> indices;

    quint32 add(const QVector3D& position, const QVector3D& normal)
    {
        positions.push_back(position);
        normals.push_back(normal);
        return quint32(positions.size() - 1);
    }

    /// A flat face, its corners counter-clockwise as seen from outside.
    void addFace(std::initializer_list<QVector3D> corners)
    {
        const QVector3D* corner = corners.begin();
        const QVector3D normal = QVector3D::normal(corner[1] - corner[0], corner[2] - corner[0]);
        const quint32 first = add(corner[0], normal);
        for (std::size_t i = 1; i < corners.size(); ++i)
            add(corner[i], normal);
        for (quint32 i = 2; i < corners.size(); ++i)
            indices.insert(indices.end(), {first, first + i - 1, first + i});
    }

    /// Joins a grid of vertices that was added row by row, `columns` a row.
    void joinGrid(quint32 first, quint32 rows, quint32 columns)
    {
        for (quint32 row = 0; row + 1 < rows; ++row) {
            for (quint32 column = 0; column + 1 < columns; ++column) {
                const quint32 a = first + row * columns + column;
                const quint32 b = a + columns;
                indices.insert(indices.end(), {a, b, a + 1, a + 1, b, b + 1});
            }
        }
    }
};

float turn(int step, int steps)
{
    return float(2 * M_PI * step / steps);
}

QVector3D around(float angle, float radius, float y)
{
    return {radius * std::cos(angle), y, -radius * std::sin(angle)};
}

Shape box(float width, float height, float depth)
{
    const float x = width / 2;
    const float y = height / 2;
    const float z = depth / 2;
    Shape shape;
    shape.addFace({{-x, -y, z}, {x, -y, z}, {x, y, z}, {-x, y, z}});
    shape.addFace({{x, -y, -z}, {-x, -y, -z}, {-x, y, -z}, {x, y, -z}});
    shape.addFace({{x, -y, z}, {x, -y, -z}, {x, y, -z}, {x, y, z}});
    shape.addFace({{-x, -y, -z}, {-x, -y, z}, {-x, y, z}, {-x, y, -z}});
    shape.addFace({{-x, y, z}, {x, y, z}, {x, y, -z}, {-x, y, -z}});
    shape.addFace({{-x, -y, -z}, {x, -y, -z}, {x, -y, z}, {-x, -y, z}});
    return shape;
}

Shape plane(float width, float depth)
{
    const float x = width / 2;
    const float z = depth / 2;
    Shape shape;
    shape.addFace({{-x, 0, z}, {x, 0, z}, {x, 0, -z}, {-x, 0, -z}});
    return shape;
}

Shape prism(float width, float height, float depth)
{
    const float x = width / 2;
    const float z = depth / 2;
    Shape shape;
    shape.addFace({{-x, 0, z}, {x, 0, z}, {0, height, z}});
    shape.addFace({{x, 0, -z}, {-x, 0, -z}, {0, height, -z}});
    shape.addFace({{x, 0, z}, {x, 0, -z}, {0, height, -z}, {0, height, z}});
    shape.addFace({{-x, 0, -z}, {-x, 0, z}, {0, height, z}, {0, height, -z}});
    shape.addFace({{-x, 0, -z}, {x, 0, -z}, {x, 0, z}, {-x, 0, z}});
    return shape;
}

void addDisc(Shape& shape, float radius, float y, bool facesUp)
{
    const QVector3D normal(0, facesUp ? 1 : -1, 0);
    const quint32 centre = shape.add({0, y, 0}, normal);
    for (int i = 0; i <= roundSegments; ++i)
        shape.add(around(turn(i, roundSegments), radius, y), normal);
    for (quint32 i = 1; i <= roundSegments; ++i) {
        const quint32 a = centre + i;
        const quint32 b = a + 1;
        shape.indices.insert(shape.indices.end(), {centre, facesUp ? a : b, facesUp ? b : a});
    }
}

Shape cone(float radius, float height, float topRadius)
{
    Shape shape;
    for (const bool isTop : {true, false}) {
        for (int i = 0; i <= roundSegments; ++i) {
            const float angle = turn(i, roundSegments);
            const QVector3D normal = around(angle, height, radius - topRadius).normalized();
            shape.add(around(angle, isTop ? topRadius : radius, isTop ? height : 0), normal);
        }
    }
    shape.joinGrid(0, 2, roundSegments + 1);
    addDisc(shape, radius, 0, false);
    if (topRadius > 0)
        addDisc(shape, topRadius, height, true);
    return shape;
}

Shape sphere(float radius)
{
    Shape shape;
    for (int ring = 0; ring <= ringSegments; ++ring) {
        const float down = turn(ring, 2 * ringSegments);
        for (int i = 0; i <= roundSegments; ++i) {
            const QVector3D normal = around(turn(i, roundSegments), std::sin(down), std::cos(down));
            shape.add(normal * radius, normal);
        }
    }
    shape.joinGrid(0, ringSegments + 1, roundSegments + 1);
    return shape;
}

Shape torus(float radius, float tubeRadius)
{
    Shape shape;
    for (int ring = 0; ring <= ringSegments; ++ring) {
        const float tube = -turn(ring, ringSegments);
        for (int i = 0; i <= roundSegments; ++i) {
            const float angle = turn(i, roundSegments);
            const QVector3D normal = around(angle, std::cos(tube), std::sin(tube));
            shape.add(around(angle, radius, 0) + normal * tubeRadius, normal);
        }
    }
    shape.joinGrid(0, ringSegments + 1, roundSegments + 1);
    return shape;
}

/// The numbers behind the first word; none when one of them is not finite or does not parse.
std::vector<float> numbersOf(std::string_view text)
{
    std::vector<float> numbers;
    const char* at = text.data();
    const char* const end = at + text.size();
    while (at != end) {
        float number = 0;
        const auto [rest, error] = std::from_chars(*at == ' ' ? at + 1 : at, end, number);
        if (error != std::errc() || !std::isfinite(number) || numbers.size() == maxNumbers)
            return {};
        numbers.push_back(number);
        at = rest;
    }
    return numbers;
}

bool shapeFrom(std::string_view word, const std::vector<float>& n, Shape& shape)
{
    if (word == "box" && n.size() == 3)
        shape = box(n[0], n[1], n[2]);
    else if (word == "plane" && n.size() == 2)
        shape = plane(n[0], n[1]);
    else if (word == "prism" && n.size() == 3)
        shape = prism(n[0], n[1], n[2]);
    else if (word == "cylinder" && n.size() == 2)
        shape = cone(n[0], n[1], n[0]);
    else if (word == "cone" && (n.size() == 2 || n.size() == 3))
        shape = cone(n[0], n[1], n.size() == 3 ? n[2] : 0);
    else if (word == "sphere" && n.size() == 1)
        shape = sphere(n[0]);
    else if (word == "torus" && n.size() == 2)
        shape = torus(n[0], n[1]);
    else
        return false;
    return true;
}

} // namespace

MeshAssetPtr makePrimitive(std::string_view source)
{
    const std::size_t space = source.find(' ');
    if (space == std::string_view::npos)
        return nullptr;
    Shape shape;
    if (!shapeFrom(source.substr(0, space), numbersOf(source.substr(space)), shape))
        return nullptr;
    auto asset = std::make_shared<MeshAsset>();
    asset->geometry =
        std::make_shared<MeshGeometry>(shape.positions, shape.normals, std::move(shape.indices));
    asset->source = std::string(source);
    return asset;
}

} // namespace editor
