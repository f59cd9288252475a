#include "scene_samples.h"

#include <editor/files/scene_import.h>
#include <editor/files/scene_loader.h>

#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <gmock/gmock.h>

namespace {

using namespace editor;
using namespace test;
using testing::HasSubstr;

struct Figures
{
    int objects;
    int meshes;
    int lights;
    int cameras;

    friend bool operator==(const Figures& a, const Figures& b)
    {
        return a.objects == b.objects && a.meshes == b.meshes && a.lights == b.lights &&
               a.cameras == b.cameras;
    }
};

void PrintTo(const Figures& f, std::ostream* stream)
{
    *stream << f.objects << " objects, " << f.meshes << " meshes, " << f.lights << " lights, "
            << f.cameras << " cameras";
}

Figures figuresOf(const SceneObjectPtr& root)
{
    SceneDocument document;
    document.open(root, {});
    Figures figures{};
    for (const SceneObjectPtr& object : allObjects(document)) {
        ++figures.objects;
        figures.meshes += object->mesh() != nullptr;
        figures.lights += object->light() != nullptr;
        figures.cameras += object->camera() != nullptr;
    }
    return figures;
}

struct ModelFile
{
    const char* path;
    Figures figures;
    /// Part of the reason when it cannot be read.
    const char* reason;
};

void PrintTo(const ModelFile& file, std::ostream* stream)
{
    *stream << file.path;
}

struct ModelFileTest : testing::TestWithParam<ModelFile>
{};

TEST_P(ModelFileTest, opensOrSaysWhyNot)
{
    const QString path = QDir(QStringLiteral(KYR_TEST_MODELS)).filePath(GetParam().path);
    ASSERT_TRUE(QFile::exists(path)) << "the package assimp-testmodels is missing";
    const SceneImport import = importScene(path);
    if (GetParam().reason) {
        EXPECT_FALSE(import.root);
        EXPECT_THAT(import.error.toStdString(), HasSubstr("\"" + path.toStdString() + "\""));
        EXPECT_THAT(import.error.toStdString(), HasSubstr(GetParam().reason));
        return;
    }
    ASSERT_TRUE(import.root) << import.error.toStdString();
    EXPECT_EQ(figuresOf(import.root), GetParam().figures);
}

INSTANTIATE_TEST_SUITE_P(
    Readable, ModelFileTest,
    testing::Values(
        ModelFile{"glTF2/2CylinderEngine-glTF-Binary/2CylinderEngine.glb", {158, 115, 0, 1}, {}},
        ModelFile{"glTF2/cameras/Cameras.gltf", {3, 1, 0, 2}, {}},
        ModelFile{"glTF2/BoxWithInfinites-glTF-Binary/BoxWithInfinites.glb", {2, 1, 0, 0}, {}},
        ModelFile{"FBX/spider.fbx", {21, 19, 1, 1}, {}},
        ModelFile{"FBX/cubes_with_mirroring_and_pivot.fbx", {4, 4, 0, 0}, {}},
        ModelFile{"Collada/duck.dae", {4, 1, 1, 1}, {}},
        ModelFile{"Collada/lights.dae", {6, 0, 5, 0}, {}},
        ModelFile{"Collada/anims_with_full_rotations_between_keys.DAE", {129, 64, 0, 0}, {}},
        ModelFile{"OBJ/box.obj", {1, 1, 0, 0}, {}},
        ModelFile{"3DS/cube_with_diffuse_texture.3DS", {2, 1, 0, 0}, {}},
        ModelFile{"PLY/points.ply", {1, 1, 0, 0}, {}}));

INSTANTIATE_TEST_SUITE_P(
    Broken, ModelFileTest,
    testing::Values(
        ModelFile{"invalid/empty.obj", {}, "the file is empty"},
        ModelFile{"invalid/malformed.obj", {}, "Invalid face index"},
        ModelFile{"invalid/emptyIrrMesh.xml", {}, "Unable to read a mesh"},
        ModelFile{"glTF2/MissingBin/BoxTextured.gltf", {}, "BoxTextured0.bin"},
        ModelFile{"glTF2/RecursiveNodes/RecursiveNodes.gltf", {}, "is below itself"},
        ModelFile{"glTF2/IndexOutOfRange/AllIndicesOutOfRange.gltf", {}, "has no faces"},
        ModelFile{"glTF2/wrongTypes/badArray.gltf", {}, "was not of type \"array\""},
        ModelFile{"FBX/transparentTest.fbx", {}, "out of range"},
        ModelFile{"OpenGEX/empty_camera.ogex", {}, "holds no scene"},
        ModelFile{"glTF2/textureTransform/UV.png", {}, "\".png\" is no known scene format"},
        ModelFile{"glTF2", {}, "it is a folder"}));

TEST(SceneImport, namesAMissingFile)
{
    const SceneImport import = importScene(QStringLiteral("/nowhere/a.glb"));
    EXPECT_EQ(import.error,
              QStringLiteral("Cannot open \"/nowhere/a.glb\": the file does not exist."));
}

struct BadText
{
    const char* text;
    const char* reason;
};

void PrintTo(const BadText& bad, std::ostream* stream)
{
    *stream << bad.text;
}

struct BadKyrsceneTest : testing::TestWithParam<BadText>
{};

TEST_P(BadKyrsceneTest, isRefusedWithItsReason)
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("bad.kyrscene"));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(GetParam().text);
    file.close();
    const SceneImport import = importScene(path);
    EXPECT_FALSE(import.root);
    EXPECT_THAT(import.error.toStdString(), HasSubstr(GetParam().reason));
}

INSTANTIATE_TEST_SUITE_P(
    Texts, BadKyrsceneTest,
    testing::Values(
        BadText{"<kyrscene>\n<scene>\n</kyrscene>", "line 3"},
        BadText{"hello", "No document element"},
        BadText{"<other><scene/></other>", "no scene file"},
        BadText{"<kyrscene version='2'><scene/></kyrscene>", "newer version"},
        BadText{"<kyrscene><scene><object kind='scene'/></scene></kyrscene>", "no kind"},
        BadText{"<kyrscene><geometry id='1'>AAAA</geometry><scene/></kyrscene>", "damaged"},
        BadText{"<kyrscene><geometry id='1'>/////3icAAAA</geometry><scene/></kyrscene>", "damaged"},
        BadText{"<kyrscene><scene><object kind='mesh'><mesh source='egg 1'/></object></scene>"
                "</kyrscene>",
                "no shape"},
        BadText{"<kyrscene><scene><object kind='mesh'><mesh geometry='1'/></object></scene>"
                "</kyrscene>",
                "is missing"}));

TEST(SceneImport, readsAndReleasesTreesOfAnyDepth)
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("deep.kyrscene"));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    constexpr int depth = 100000;
    file.write("<kyrscene version='1'><scene>");
    for (int i = 0; i < depth; ++i)
        file.write("<object kind='group'>");
    for (int i = 0; i < depth; ++i)
        file.write("</object>");
    file.write("</scene></kyrscene>");
    file.close();
    const SceneImport import = importScene(path);
    ASSERT_TRUE(import.root) << import.error.toStdString();
    int found = 0;
    for (const SceneObject* at = import.root.get(); !at->children().empty();
         at = at->children().front().get())
        ++found;
    EXPECT_EQ(found, depth);
}

struct SceneLoaderTest : testing::Test
{
    SceneLoaderTest()
    {
        QObject::connect(&loader, &SceneLoader::loaded,
                         [this](const SceneObjectPtr& root, const QString&) { scene = root; });
    }

    SceneLoader loader;
    SceneObjectPtr scene;
    QSignalSpy loaded{&loader, &SceneLoader::loaded};
    QSignalSpy failed{&loader, &SceneLoader::failed};
    QSignalSpy canceled{&loader, &SceneLoader::canceled};
    QSignalSpy progress{&loader, &SceneLoader::progressChanged};
    const QString street = QStringLiteral(KYR_ASSETS "/street.kyrscene");
    const QString engine =
        QStringLiteral(KYR_TEST_MODELS "/glTF2/2CylinderEngine-glTF-Binary/2CylinderEngine.glb");
};

TEST_F(SceneLoaderTest, handsOverTheSceneWithRisingProgress)
{
    loader.load(engine);
    EXPECT_TRUE(loader.isLoading());
    ASSERT_TRUE(loaded.wait(20000));
    EXPECT_FALSE(loader.isLoading());
    EXPECT_EQ(scene->name(), "2CylinderEngine");
    EXPECT_EQ(failed.count() + canceled.count(), 0);
    ASSERT_GT(progress.count(), 3);
    for (int i = 1; i < progress.count(); ++i)
        EXPECT_GT(progress[i][1].toDouble(), progress[i - 1][1].toDouble());
}

TEST_F(SceneLoaderTest, aLaterFileTakesTheEarlierOnesPlace)
{
    loader.load(engine);
    loader.load(street);
    EXPECT_EQ(canceled.count(), 1);
    EXPECT_EQ(canceled[0][0].toString(), engine);
    ASSERT_TRUE(loaded.wait(20000));
    EXPECT_EQ(loaded[0][1].toString(), street);
    QTest::qWait(300);
    EXPECT_EQ(loaded.count() + failed.count() + canceled.count(), 2);
}

TEST_F(SceneLoaderTest, canceledAndFailedLoadsAreToldOnce)
{
    loader.load(engine);
    loader.cancel();
    loader.cancel();
    EXPECT_FALSE(loader.isLoading());
    loader.load(QStringLiteral("/nowhere/b.fbx"));
    ASSERT_TRUE(failed.wait(20000));
    EXPECT_THAT(failed[0][1].toString().toStdString(), HasSubstr("/nowhere/b.fbx"));
    EXPECT_EQ(canceled.count(), 1);
    EXPECT_EQ(loaded.count(), 0);
}

TEST_F(SceneLoaderTest, canBeDestroyedWhileItLoads)
{
    auto other = std::make_unique<SceneLoader>();
    QSignalSpy any(other.get(), &SceneLoader::loaded);
    other->load(engine);
    other.reset();
    QTest::qWait(50);
    EXPECT_EQ(any.count(), 0);
}

TEST(BundledScene, hasEverythingAStreetNeeds)
{
    const SceneImport import = importScene(QStringLiteral(KYR_ASSETS "/street.kyrscene"));
    ASSERT_TRUE(import.root) << import.error.toStdString();
    EXPECT_TRUE(import.root->isExpanded());
    const Figures figures = figuresOf(import.root);
    EXPECT_GE(figures.objects, 60);
    EXPECT_GE(figures.lights, 5);
    EXPECT_GE(figures.cameras, 2);
    SceneDocument document;
    document.open(importScene(QStringLiteral(KYR_ASSETS "/street.kyrscene")).root, {});
    const SceneObjectPtr camera = test::at(document, "Cameras/Street view");
    ASSERT_TRUE(camera);
    EXPECT_EQ(sceneObjectOf(camera->camera()->target.object()),
              test::at(document, "Square/Fountain").get());
}

} // namespace
