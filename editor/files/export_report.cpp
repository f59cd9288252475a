#include "export_report.h"

#include "gltf_values.h"

#include <QCoreApplication>
#include <QtMath>

#include <algorithm>
#include <vector>

namespace editor {

namespace {

constexpr int namesShown = 3;

QString tr(const char* text)
{
    return QCoreApplication::translate("editor::ExportReport", text);
}

struct Loss
{
    const char* text;
    bool (*concerns)(const SceneObject&);
    int count = 0;
    QStringList names = {};

    void look(const SceneObject& object)
    {
        if (!concerns(object))
            return;
        if (++count <= namesShown)
            names.append(object.displayName());
    }
    QString line() const
    {
        const QString some = names.join(QStringLiteral(", "));
        return tr("%1: %2 (%3)")
            .arg(tr(text))
            .arg(count)
            .arg(count > namesShown ? some + QStringLiteral(", …") : some);
    }
};

bool isHidden(const SceneObject& object)
{
    return !object.isVisible();
}

bool isLocked(const SceneObject& object)
{
    return object.isLocked();
}

bool isAreaLight(const SceneObject& object)
{
    return object.light() && object.light()->type == LightType::Area;
}

bool hasUnsayableCone(const SceneObject& object)
{
    if (!object.light() || object.light()->type != LightType::Spot)
        return false;
    const LightComponent& light = *object.light();
    const ConeOfLight cone = coneOf(light);
    return cone.inner != qDegreesToRadians(double(light.innerAngle)) ||
           cone.outer != qDegreesToRadians(double(light.outerAngle));
}

bool hasUnusedCone(const SceneObject& object)
{
    if (!object.light() || object.light()->type == LightType::Spot)
        return false;
    const LightComponent usual;
    return object.light()->innerAngle != usual.innerAngle ||
           object.light()->outerAngle != usual.outerAngle;
}

bool hasUnsayableRange(const SceneObject& object)
{
    return object.light() && object.light()->range < 0;
}

bool isSeeThrough(const SceneObject& object)
{
    return (object.light() && object.light()->color.a != 1) ||
           (object.material() && object.material()->emissive.a != 1);
}

bool hasTarget(const SceneObject& object)
{
    return object.camera() && object.camera()->target.object().isValid();
}

bool isMeshOfNothing(const SceneObject& object)
{
    return object.mesh() &&
           (!object.mesh()->asset || object.mesh()->asset->geometry->vertices().empty());
}

bool isShape(const SceneObject& object)
{
    return object.mesh() && object.mesh()->asset && !object.mesh()->asset->source.empty();
}

bool isBrighterThanWhite(const SceneObject& object)
{
    if (!object.material())
        return false;
    const MaterialComponent& material = *object.material();
    const auto [r, g, b, a] = material.baseColor;
    const float values[] = {r,
                            g,
                            b,
                            a,
                            material.metallic,
                            material.roughness,
                            material.emissive.r,
                            material.emissive.g,
                            material.emissive.b};
    return std::any_of(std::begin(values), std::end(values),
                       [](float value) { return factorOf(value) != value; });
}

bool turnsInAnotherWay(const SceneObject& object)
{
    return object.transform() && !keepsAngles(object.transform()->rotation);
}

} // namespace

QStringList exportLosses(const SceneObject& root)
{
    Loss losses[] = {
        {"Hidden objects, which other programs show", isHidden},
        {"Locked objects, which other programs can edit", isLocked},
        {"Area lights, written as point lights", isAreaLight},
        {"Cones of spot lights outside what the format allows, cut off", hasUnsayableCone},
        {"Cone angles of lights that have no cone", hasUnusedCone},
        {"Ranges of lights below 0, written as without an end", hasUnsayableRange},
        {"Alphas of the colours of lights and of glowing materials", isSeeThrough},
        {"Cameras that look at an object, written without it", hasTarget},
        {"Meshes without geometry, written as groups", isMeshOfNothing},
        {"Shapes, written as plain meshes", isShape},
        {"Materials with values outside 0 to 1, cut off", isBrighterThanWhite},
        {"Angles that come back as other angles of the same turn", turnsInAnotherWay},
    };
    std::vector<const SceneObject*> open{&root};
    for (std::size_t i = 0; i < open.size(); ++i) {
        for (const SceneObjectPtr& child : open[i]->children()) {
            open.push_back(child.get());
            for (Loss& loss : losses)
                loss.look(*child);
        }
    }
    QStringList lines;
    for (const Loss& loss : losses) {
        if (loss.count > 0)
            lines.append(loss.line());
    }
    if (!root.selectionSets().empty())
        lines.append(tr("Selection sets: %1").arg(root.selectionSets().size()));
    return lines;
}

} // namespace editor
