#include "marker_shapes.h"

#include <QPointF>
#include <QtMath>

namespace editor {

namespace {

class SignBuilder
{
public:
    SignBuilder() { addDisc(1.0f, 0.0f); }

    void addDisc(float radius, float layer)
    {
        constexpr int corners = 24;
        for (int i = 0; i < corners; ++i) {
            addTriangle({0, 0}, onCircle(radius, i, corners), onCircle(radius, i + 1, corners),
                        layer);
        }
    }
    void addRing(float inner, float outer)
    {
        constexpr int corners = 24;
        for (int i = 0; i < corners; ++i) {
            addQuad(onCircle(inner, i, corners), onCircle(outer, i, corners),
                    onCircle(outer, i + 1, corners), onCircle(inner, i + 1, corners));
        }
    }
    void addRays(int count, float inner, float outer, float halfWidth)
    {
        for (int i = 0; i < count; ++i) {
            const QPointF along = onCircle(1.0f, i, count);
            const QPointF across = QPointF(-along.y(), along.x()) * double(halfWidth);
            addQuad(along * double(inner) - across, along * double(outer) - across,
                    along * double(outer) + across, along * double(inner) + across);
        }
    }
    void addQuad(QPointF a, QPointF b, QPointF c, QPointF d)
    {
        addTriangle(a, b, c, 1.0f);
        addTriangle(a, c, d, 1.0f);
    }
    MeshGeometryPtr build() const
    {
        return std::make_shared<const MeshGeometry>(m_positions, m_normals, m_indices);
    }

private:
    static QPointF onCircle(float radius, int index, int count)
    {
        const double angle = 2.0 * M_PI * index / count;
        return QPointF(std::cos(angle), std::sin(angle)) * double(radius);
    }
    void addTriangle(QPointF a, QPointF b, QPointF c, float layer)
    {
        for (const QPointF& corner : {a, b, c}) {
            m_indices.push_back(quint32(m_positions.size()));
            m_positions.emplace_back(float(corner.x()), float(corner.y()), 0.0f);
            m_normals.emplace_back(layer, 0.0f, 0.0f);
        }
    }

    std::vector<QVector3D> m_positions;
    std::vector<QVector3D> m_normals;
    std::vector<quint32> m_indices;
};

} // namespace

MeshGeometryPtr makeLightSign()
{
    SignBuilder sign;
    sign.addDisc(0.32f, 1.0f);
    sign.addRays(8, 0.46f, 0.72f, 0.055f);
    sign.addRing(0.90f, 1.0f);
    return sign.build();
}

MeshGeometryPtr makeCameraSign()
{
    SignBuilder sign;
    sign.addQuad({-0.58, -0.32}, {0.18, -0.32}, {0.18, 0.32}, {-0.58, 0.32});
    sign.addQuad({0.24, -0.10}, {0.58, -0.32}, {0.58, 0.32}, {0.24, 0.10});
    sign.addRing(0.90f, 1.0f);
    return sign.build();
}

} // namespace editor
