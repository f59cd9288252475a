#include "scene_samples.h"

#include <editor/document/display_color.h>
#include <editor/document/object_path.h>
#include <editor/document/transform_math.h>
#include <editor/geometry/primitive_shapes.h>
#include <host/variant/variant_converter.h>

#include <support/message_log.h>

#include <gtest/gtest.h>

namespace {

using namespace editor;
using namespace test;

TEST(TransformMath, matricesComeBackFromPositionRotationAndScale)
{
    std::mt19937 random(7);
    std::uniform_real_distribution<float> angle(-180, 180);
    std::uniform_real_distribution<float> length(0.1f, 4);
    for (int i = 0; i < 500; ++i) {
        TransformComponent transform;
        transform.position = {angle(random), angle(random), angle(random)};
        transform.rotation = {angle(random), i % 5 == 0 ? 90.0f : angle(random), angle(random)};
        transform.scale = {length(random), i % 3 == 0 ? -length(random) : length(random),
                           length(random)};
        const QMatrix4x4 matrix = matrixOf(transform);
        TransformComponent found;
        setFromMatrix(found, matrix);
        const QMatrix4x4 again = matrixOf(found);
        for (int k = 0; k < 16; ++k)
            ASSERT_NEAR(matrix.constData()[k], again.constData()[k], 2e-3) << i;
    }
}

TEST(ObjectPath, findsEveryObjectWhateverItsName)
{
    SceneDocument document;
    const SceneObjectPtr root = SceneObject::create(ObjectKind::Scene, "Scene");
    const std::string names[] = {"a/b", "[2]", "a", "a", "", "", "\\", "a[2]", "ä ö", "a\\/"};
    for (const std::string& name : names) {
        const SceneObjectPtr group = SceneObject::create(ObjectKind::Group, name);
        for (const std::string& below : names)
            group->append(SceneObject::create(ObjectKind::Group, below));
        root->append(group);
    }
    document.open(root, {});
    for (const SceneObjectPtr& object : allObjects(document))
        EXPECT_EQ(objectAtPath(*root, objectPath(*object)), object.get()) << objectPath(*object);
    for (const char* path : {"b", "a/", "a[3]", "a[0]", "a[x]", "a[2", "a[2]b", "\\", "a//a"})
        EXPECT_EQ(objectAtPath(*root, path) == nullptr, std::string(path) != "a/") << path;
}

TEST(ObjectReference, isTextByPath)
{
    SceneDocument document;
    document.open(sceneFrom("group A\n  mesh B\ncamera C"), {});
    const kyr::BoundProperty target =
        propertyAtPath(at(document, "C")->reflected(), "camera.target");
    ASSERT_TRUE(target.set(lumo::Variant("A/B")));
    EXPECT_EQ(sceneObjectOf(at(document, "C")->camera()->target.object()),
              at(document, "A/B").get());
    std::string text;
    EXPECT_TRUE(lumo::VariantConverter::toText(target.get(), text));
    EXPECT_EQ(text, "A/B");
    MessageLog log;
    EXPECT_FALSE(target.set(lumo::Variant("A/X")));
    EXPECT_EQ(log.take().size(), 1u);
    EXPECT_TRUE(target.set(lumo::Variant("")));
    EXPECT_FALSE(at(document, "C")->camera()->target.object().isValid());
}

TEST(SceneObject, copiesLookAtCopies)
{
    const SceneObjectPtr root = sceneFrom("group A\n  camera C\n  mesh B\nmesh D");
    const SceneObjectPtr group = root->children()[0];
    const auto lookAt = [&group](const SceneObjectPtr& target) {
        group->children()[0]->camera()->target = kyr::PersistentObject(target->reflected());
        const SceneObjectPtr copy = SceneObject::cloneAll({group}).front();
        return std::make_pair(copy, sceneObjectOf(copy->children()[0]->camera()->target.object()));
    };
    const auto [inside, copiedTarget] = lookAt(group->children()[1]);
    EXPECT_EQ(copiedTarget, inside->children()[1].get());
    EXPECT_EQ(lookAt(root->children()[1]).second, root->children()[1].get());
}

TEST(PrimitiveShapes, areClosedAndFaceOutwards)
{
    for (const char* source : {"box 1 2 3", "prism 1 2 3", "cylinder 1 2", "cone 1 2",
                               "cone 1 2 0.5", "sphere 2", "torus 2 0.5"}) {
        const MeshAssetPtr asset = makePrimitive(source);
        ASSERT_TRUE(asset) << source;
        const MeshGeometry& geometry = *asset->geometry;
        // The volume under all triangles is positive when they face outwards.
        double volume = 0;
        for (quint32 i = 0; i < geometry.triangleCount(); ++i) {
            const Triangle t = geometry.triangle(i);
            volume += QVector3D::dotProduct(t[0], QVector3D::crossProduct(t[1], t[2])) / 6;
            const QVector3D face = QVector3D::crossProduct(t[1] - t[0], t[2] - t[0]);
            const QVector3D normal = geometry.vertices()[geometry.indices()[i * 3]].normal;
            ASSERT_GE(QVector3D::dotProduct(face, normal), -1e-6f) << source;
        }
        EXPECT_GT(volume, 0.5) << source;
    }
    for (const char* source : {"", "box", "box 1 2", "box 1 2 3 4", "box 1 2 x", "ball 1",
                               "sphere inf", "sphere nan", "box 1  2 3"})
        EXPECT_FALSE(makePrimitive(source)) << source;
}

TEST(DisplayColor, comesBackTheSame)
{
    for (int value = 0; value < 256; ++value) {
        const QColor color(value, 255 - value, value / 2, value);
        EXPECT_EQ(displayColor(linearColor(color)).rgba(), color.rgba());
    }
    EXPECT_EQ(displayColor({40, -1, 0, 1}), QColor(255, 0, 0));
}

} // namespace
