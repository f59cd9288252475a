#include "scene_samples.h"

#include "grid_scene.h"
#include <editor/document/transform_math.h>
#include <editor/files/scene_import.h>
#include <editor/files/scene_writer.h>
#include <editor/geometry/primitive_shapes.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

namespace {

using namespace editor;
using namespace test;
using testing::HasSubstr;

struct SceneWriterTest : testing::Test
{
    QString file(const char* name) const { return folder.filePath(QString::fromLatin1(name)); }

    /// Writes the document and opens the file in its place.
    void saveAndOpen(const char* name)
    {
        ASSERT_EQ(writeScene(*document.root(), file(name)), QString());
        const SceneImport import = importScene(file(name));
        ASSERT_TRUE(import.root) << import.error.toStdString();
        document.open(import.root, file(name));
    }

    void set(const char* object, const char* property, const char* text)
    {
        ASSERT_EQ(document.setProperty(at(document, {object}), property, lumo::Variant(text)), 1)
            << property;
    }

    /// A bit of everything, with values that no default has.
    void openSample()
    {
        document.open(sceneFrom("group A\n  mesh B\n    light P\n  light L\nmesh D\ncamera C"), {});
        const MeshGeometryPtr triangle = std::make_shared<MeshGeometry>(
            std::vector<QVector3D>{{0, 0, 0}, {1, 0.1f, 0}, {0, 1, 0}}, std::vector<QVector3D>(),
            std::vector<quint32>{0, 1, 2});
        at(document, "A/B")->mesh()->asset = std::make_shared<MeshAsset>(MeshAsset{triangle, {}});
        at(document, "D")->mesh()->asset = makePrimitive("cone 1 2");
        set("A", "transform.position", "1 2 3");
        set("A", "transform.scale", "0.1 2 -3");
        set("A/B", "transform.rotation", "10 20 30");
        set("A/B", "material.baseColor", "0.1 0.2 0.3 0.5");
        set("A/B", "material.metallic", "0.7");
        set("A/L", "light.type", "spot");
        set("A/L", "light.color", "1 0.5 0.25 1");
        set("A/L", "light.intensity", "12.5");
        set("A/L", "light.innerAngle", "15");
        set("C", "camera.fieldOfView", "35");
        set("C", "camera.target", "A/B");
    }

    SceneDocument document;
    QTemporaryDir folder;
};

TEST_F(SceneWriterTest, ownFormatKeepsEverything)
{
    openSample();
    set("D", "visible", "false");
    set("A", "locked", "true");
    document.rename(at(document, "D"), QStringLiteral("<ä & \"ö\">/[2]\\"));
    at(document, "A")->setExpanded(true);
    document.remove(at(document, {"A/B/P"}));
    const std::string before = contentOf(*document.root());
    const MeshGeometry& geometry = *at(document, "A/B")->mesh()->asset->geometry;
    const std::vector<quint32> indices = geometry.indices();
    const QVector3D corner = geometry.vertices()[1].position;

    saveAndOpen("scene.kyrscene");
    EXPECT_EQ(contentOf(*document.root()), before);
    EXPECT_TRUE(at(document, "A")->isExpanded());
    const MeshGeometry& read = *at(document, "A/B")->mesh()->asset->geometry;
    EXPECT_EQ(read.indices(), indices);
    EXPECT_EQ(read.vertices()[1].position, corner);
    EXPECT_FALSE(document.isModified());
}

TEST_F(SceneWriterTest, ownFormatSharesMeshesAsTheSceneDoes)
{
    document.open(makeGridScene(200, 9), {});
    saveAndOpen("grid.kyrscene");
    const SceneObjects all = allObjects(document);
    EXPECT_EQ(all.size(), 200u);
    EXPECT_EQ(all[1]->mesh()->asset, all.back()->mesh()->asset);
}

TEST_F(SceneWriterTest, gltfKeepsWhatItCanSay)
{
    for (const char* name : {"scene.gltf", "scene.glb"}) {
        openSample();
        const std::string shape = shapeOf(*document.root());
        const QMatrix4x4 place = worldTransform(*at(document, "A/B"));
        saveAndOpen(name);
        EXPECT_EQ(shapeOf(*document.root()), shape) << name;
        const SceneObject& mesh = *at(document, "A/B");
        EXPECT_TRUE(qFuzzyCompare(worldTransform(mesh), place));
        EXPECT_EQ(mesh.mesh()->triangleCount(), 1);
        EXPECT_EQ(mesh.material()->baseColor, (lumo::Color{0.1f, 0.2f, 0.3f, 0.5f}));
        EXPECT_FLOAT_EQ(mesh.material()->metallic, 0.7f);
        const LightComponent& light = *at(document, "A/L")->light();
        EXPECT_EQ(light.type, LightType::Spot);
        EXPECT_FLOAT_EQ(light.intensity, 12.5f);
        EXPECT_EQ(light.color, (lumo::Color{1, 0.5f, 0.25f, 1}));
        EXPECT_NEAR(light.innerAngle, 15, 1e-3);
        EXPECT_NEAR(light.outerAngle, 30, 1e-3);
        EXPECT_EQ(at(document, "A/B/P")->light()->type, LightType::Point);
        EXPECT_NEAR(at(document, "C")->camera()->fieldOfView, 35, 1e-3);
    }
}

TEST_F(SceneWriterTest, anEmptySceneCanBeSaved)
{
    for (const char* name : {"empty.kyrscene", "empty.gltf", "empty.glb"}) {
        document.open(sceneFrom("group A"), {});
        saveAndOpen(name);
        EXPECT_EQ(shapeOf(*document.root()), "group A") << name;
    }
}

TEST_F(SceneWriterTest, aFailedSaveNamesTheReasonAndKeepsTheFile)
{
    openSample();
    const std::string nowhere = writeScene(*document.root(), file("no/folder.glb")).toStdString();
    EXPECT_THAT(nowhere, HasSubstr("Cannot save \"" + file("no/folder.glb").toStdString()));
    EXPECT_THAT(nowhere, HasSubstr("No such file"));
    EXPECT_THAT(writeScene(*document.root(), file("a.obj")).toStdString(), HasSubstr("\".obj\""));

    SceneObjectPtr last = SceneObject::create(ObjectKind::Scene, "Deep");
    const SceneObjectPtr deep = last;
    for (int i = 0; i < 3000; ++i) {
        const SceneObjectPtr next = SceneObject::create(ObjectKind::Group, "G");
        last->append(next);
        last = next;
    }
    QFile old(file("old.glb"));
    ASSERT_TRUE(old.open(QIODevice::WriteOnly));
    old.write("old");
    old.close();
    EXPECT_THAT(writeScene(*deep, file("old.glb")).toStdString(), HasSubstr("too deeply"));
    ASSERT_TRUE(old.open(QIODevice::ReadOnly));
    EXPECT_EQ(old.readAll(), QByteArray("old"));
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList{"old.glb"});
}

} // namespace
