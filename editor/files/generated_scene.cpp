#include "generated_scene.h"

#include <editor/geometry/primitive_shapes.h>

#include <QCoreApplication>

#include <algorithm>
#include <array>
#include <cmath>
#include <new>

namespace editor {

namespace {

struct ShapeName
{
    const char* name;
    SceneShape shape;
};

// In the order of the shapes.
constexpr std::array<ShapeName, 5> shapeNames{{{"flat", SceneShape::Flat},
                                               {"levels", SceneShape::ThousandLevels},
                                               {"chain", SceneShape::Chain},
                                               {"parents", SceneShape::ThousandParents},
                                               {"bushy", SceneShape::Bushy}}};
constexpr int reportEvery = 4096;
constexpr float distance = 2;
// Their signs in the view would cover everything else.
constexpr int mostLights = 200;

/// Makes objects by their number. Nothing is turned or scaled above another object, so that deep
/// scenes keep their places.
class ObjectMaker
{
public:
    explicit ObjectMaker(int count)
        : m_side(int(std::ceil(std::sqrt(count))))
        , m_lightEvery(std::max(10, count / mostLights) | 1)
    {}

    SceneObjectPtr make(int number, int parent, bool isParent) const
    {
        const ObjectKind kind = kindOf(number, isParent);
        const char* name = kind == ObjectKind::Group   ? "Group "
                           : kind == ObjectKind::Light ? "Light "
                                                       : "Mesh ";
        const SceneObjectPtr object = SceneObject::create(kind, name + std::to_string(number + 1));
        const lumo::Vector3 place = placeOf(number);
        const lumo::Vector3 above = parent < 0 ? lumo::Vector3{0, 0, 0} : placeOf(parent);
        object->transform()->position = {place.x - above.x, 0, place.z - above.z};
        // Identifiers follow the root's.
        object->setId(quint32(number) + 2);
        if (kind == ObjectKind::Light)
            shine(*object, number);
        else if (kind == ObjectKind::Mesh)
            dress(*object, number, isParent);
        return object;
    }

private:
    ObjectKind kindOf(int number, bool isParent) const
    {
        if (isParent)
            return number % 3 == 2 ? ObjectKind::Mesh : ObjectKind::Group;
        return number % m_lightEvery == m_lightEvery - 1 ? ObjectKind::Light : ObjectKind::Mesh;
    }

    lumo::Vector3 placeOf(int number) const
    {
        const int half = m_side / 2;
        return {distance * float(number % m_side - half), 0,
                distance * float(number / m_side - half)};
    }

    void dress(SceneObject& object, int number, bool isParent) const
    {
        object.mesh()->asset = m_asset;
        const float shade = float(number % 7) / 6;
        object.material()->baseColor = {0.5f + 0.4f * shade, 0.7f, 0.9f - 0.4f * shade, 1};
        object.material()->roughness = 0.3f + 0.1f * float(number % 5);
        if (!isParent)
            object.transform()->scale = {1, 0.5f + 0.5f * float(number % 4), 1};
    }

    static void shine(SceneObject& object, int number)
    {
        LightComponent& light = *object.light();
        light.type = LightType::Point;
        light.intensity = float(1 + number % 9);
        object.transform()->position.y += 3;
    }

    MeshAssetPtr m_asset = makePrimitive("box 1.6 1 1.6");
    int m_side;
    // Odd, so that they do not stand in line.
    int m_lightEvery;
};

SceneImport makeScene(const SceneRecipe& recipe, const ImportProgress& progress)
{
    const std::vector<int> parents = parentsOf(recipe.shape, recipe.size);
    std::vector<bool> isParent(parents.size());
    for (const int parent : parents) {
        if (parent >= 0)
            isParent[std::size_t(parent)] = true;
    }
    const SceneObjectPtr root = SceneObject::create(ObjectKind::Scene, "Scene");
    root->setId(1);
    root->setExpanded(true);
    const ObjectMaker maker(recipe.size);
    std::vector<SceneObject*> objects(parents.size());
    for (int number = 0; number < recipe.size; ++number) {
        if (number % reportEvery == 0 && !progress(double(number) / recipe.size))
            return {};
        const int parent = parents[std::size_t(number)];
        SceneObjectPtr object = maker.make(number, parent, isParent[std::size_t(number)]);
        objects[std::size_t(number)] = object.get();
        (parent < 0 ? *root : *objects[std::size_t(parent)]).append(std::move(object));
    }
    return {root};
}

} // namespace

std::optional<SceneShape> sceneShapeOf(const QString& name)
{
    for (const ShapeName& known : shapeNames) {
        if (name == QLatin1String(known.name))
            return known.shape;
    }
    return {};
}

QString titleOf(const SceneRecipe& recipe)
{
    return QCoreApplication::translate("editor::GeneratedScene", "generated scene (%1)")
        .arg(QLatin1String(shapeNames[std::size_t(recipe.shape)].name));
}

SceneImport generateScene(const SceneRecipe& recipe, const ImportProgress& progress)
{
    try {
        return makeScene(recipe, progress);
    } catch (const std::bad_alloc&) {
        return {nullptr, QCoreApplication::translate(
                             "editor::GeneratedScene",
                             "Cannot make the scene: it needs more memory than there is.")};
    }
}

} // namespace editor
