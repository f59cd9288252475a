#include "scene_samples.h"

#include <editor/files/export_report.h>
#include <editor/files/scene_import.h>
#include <editor/files/scene_saver.h>
#include <editor/files/scene_writer.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <gmock/gmock.h>

#include <random>

#include <cmath>
#include <csignal>
#include <limits>
#include <sys/resource.h>

namespace {

using namespace editor;
using namespace test;
using testing::HasSubstr;

/// A bit of everything, with values that no default has.
const char* const sample = "group A | transform.position=1 2 3 | transform.scale=0.1 2 -3\n"
                           "  mesh B | transform.rotation=10 20 30 | material.metallic=0.7 | "
                           "material.baseColor=0.1 0.2 0.3 0.5\n"
                           "    light P | light.range=7.3\n"
                           "  light L | light.type=spot | light.color=1 0.5 0.25 1 | "
                           "light.intensity=12.5 | light.innerAngle=15\n"
                           "mesh D | shape=cone 1 2\n"
                           "camera C | camera.fieldOfView=35";

const char* const allFormats[] = {"scene.kyrscene", "scene.gltf", "scene.glb"};

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
        ASSERT_EQ(document.setProperty(objectsAt(document, object), property, lumo::Variant(text)),
                  1)
            << property;
    }

    void openSample()
    {
        document.open(sceneFrom(sample), {});
        setMesh(*at(document, "A/B"), {{0, 0, 0}, {1, 0.1f, 0}, {0, 1, 0}}, {0, 1, 2});
        set("C", "camera.target", "A/B");
    }
    static void setMesh(SceneObject& object, std::vector<QVector3D> points,
                        std::vector<quint32> indices)
    {
        object.mesh()->asset = std::make_shared<MeshAsset>(
            MeshAsset{std::make_shared<MeshGeometry>(std::move(points), std::vector<QVector3D>(),
                                                     std::move(indices)),
                      {}});
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
    document.remove(objectsAt(document, "A/B/P"));
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
    document.open(gridScene(200, 9), {});
    saveAndOpen("grid.kyrscene");
    const SceneObjects all = allObjects(document);
    EXPECT_EQ(all.size(), 200u);
    EXPECT_EQ(all[1]->mesh()->asset, all.back()->mesh()->asset);
}

TEST_F(SceneWriterTest, allFormatsKeepWhatGltfCanSay)
{
    const char* const scenes[] = {
        "",
        "group A",
        sample,
        "group Wheels\n"
        "  mesh Wheels | transform.position=0.009 0 1e-30\n"
        "  mesh Wheels | transform.scale=1.009 1 1\n"
        "  light Wheels | light.range=0\n"
        "mesh Wheels | transform.rotation=0 0.5 0\n"
        "mesh Dots\n"
        "group <ä & \"ö\">/[2]\\",
    };
    for (const char* name : allFormats) {
        for (const char* scene : scenes) {
            document.open(sceneFrom(scene), {});
            for (const SceneObjectPtr& object : allObjects(document)) {
                const bool dots = object->name() == "Dots";
                if (object->mesh())
                    setMesh(*object, {{1, 2, 3}, {4, 5, 6}, {7, 8, 8}},
                            dots ? std::vector<quint32>() : std::vector<quint32>{0, 1, 2});
            }
            const std::string before = contentOf(*document.root());
            saveAndOpen(name);
            EXPECT_EQ(contentOf(*document.root()), before) << name;
        }
    }
}

TEST_F(SceneWriterTest, whatGltfDoesNotKeepIsSaidBeforehand)
{
    const std::pair<const char*, const char*> lines[] = {
        {"light L | light.type=area", "Area lights"},
        {"light L | light.innerAngle=3", "lights that have no cone"},
        {"light L | light.range=-1", "Ranges"},
        {"light L | light.color=1 1 1 0.5", "Alphas"},
        {"mesh M | material.emissive=1 0 0 0.5", "Alphas"},
        {"light L | light.type=spot | light.innerAngle=29.9999", "Cones"},
        {"light L | light.type=spot | light.innerAngle=0 | light.outerAngle=0.001", "Cones"},
        {"light L | light.type=spot | light.outerAngle=91", "Cones"},
        {"mesh M | material.roughness=1.5", "outside 0 to 1"},
        {"mesh M | transform.rotation=0 91 0", "Angles"},
        {"mesh M | visible=false", "Hidden"},
        {"group G | locked=true", "Locked"},
        {"mesh E", "without geometry"},
        {"light L | light.type=spot | light.innerAngle=12.34567 | light.outerAngle=90", nullptr},
        {"light L | light.color=3 -2 0.1 1 | light.intensity=-1e-20", nullptr},
        {"camera C | camera.fieldOfView=35.12345 | camera.nearPlane=0.003", nullptr},
    };
    for (const auto& [scene, loss] : lines) {
        document.open(sceneFrom(scene), {});
        for (const SceneObjectPtr& object : allObjects(document)) {
            if (object->name() == "M")
                setMesh(*object, {{1, 2, 3}, {4, 5, 6}, {7, 8, 8}}, {0, 1, 2});
        }
        const std::string before = contentOf(*document.root());
        const QStringList losses = exportLosses(*document.root());
        EXPECT_EQ(losses.size(), loss ? 1 : 0) << scene;
        EXPECT_THAT(losses.join("").toStdString(), HasSubstr(loss ? loss : ""));
        saveAndOpen("scene.glb");
        EXPECT_EQ(contentOf(*document.root()) == before, loss == nullptr) << scene;
    }
}

TEST_F(SceneWriterTest, gltfKeepsTransformsToTheLastBit)
{
    std::mt19937 random(7);
    const auto vector = [&random](float range) {
        std::uniform_real_distribution<float> in(-range, range);
        return lumo::Vector3{in(random), in(random) / 2, in(random)};
    };
    const SceneObjectPtr root = SceneObject::create(ObjectKind::Scene, "Turned");
    for (int i = 0; i < 5000; ++i) {
        const SceneObjectPtr group = SceneObject::create(ObjectKind::Group, "G");
        group->transform()->position = vector(1e4f);
        group->transform()->rotation = vector(179.9f);
        group->transform()->scale = vector(1e-2f);
        root->append(group);
    }
    ASSERT_EQ(writeScene(*root, file("turned.gltf")), QString());
    const SceneImport import = importScene(file("turned.gltf"));
    ASSERT_TRUE(import.root) << import.error.toStdString();
    ASSERT_EQ(import.root->children().size(), root->children().size());
    for (std::size_t i = 0; i < root->children().size(); ++i) {
        const TransformComponent& was = *root->children()[i]->transform();
        const TransformComponent& is = *import.root->children()[i]->transform();
        EXPECT_EQ(is.position, was.position);
        EXPECT_EQ(is.rotation, was.rotation) << i;
        EXPECT_EQ(is.scale, was.scale);
    }
}

TEST_F(SceneWriterTest, theDeepestSceneCanBeSaved)
{
    // As deep as files may be, all of one name.
    SceneObjectPtr deep = deepScene(100000);
    for (const char* name : allFormats) {
        ASSERT_EQ(writeScene(*deep, file(name)), QString());
        EXPECT_LT(QFileInfo(file(name)).size(), 20 << 20) << name;
    }
    const SceneImport import = importScene(file("scene.kyrscene"));
    ASSERT_TRUE(import.root) << import.error.toStdString();
    document.open(import.root, {});
    EXPECT_EQ(document.objectCount(), 100000);
    const std::weak_ptr<SceneObject> released = std::exchange(deep, nullptr);
    EXPECT_TRUE(released.expired());
}

/// No file of this process may get larger while it lives, as on a disk that is full.
class FullDisk
{
public:
    explicit FullDisk(rlim_t bytes)
    {
        std::signal(SIGXFSZ, SIG_IGN);
        ::getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit full{bytes, m_before.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &full);
    }
    ~FullDisk() { ::setrlimit(RLIMIT_FSIZE, &m_before); }

private:
    rlimit m_before{};
};

TEST_F(SceneWriterTest, aFailedSaveNamesTheReasonAndKeepsTheFile)
{
    const auto refusal = [this](const char* name, const WriteProgress& progress = {},
                                rlim_t diskBytes = RLIM_INFINITY) {
        QFile old(file(name));
        EXPECT_TRUE(old.open(QIODevice::WriteOnly));
        old.write("old");
        old.close();
        const std::string reason = [&] {
            const FullDisk disk(diskBytes);
            return writeScene(*document.root(), old.fileName(), progress).toStdString();
        }();
        EXPECT_TRUE(old.open(QIODevice::ReadOnly));
        EXPECT_EQ(old.readAll(), QByteArray("old")) << name;
        EXPECT_THAT(reason, HasSubstr("Cannot save \"" + file(name).toStdString()));
        return reason;
    };
    for (const char* name : allFormats) {
        document.open(gridScene(2000, 9), {});
        for (const rlim_t bytes : {0, 100, 30000})
            EXPECT_THAT(refusal(name, {}, bytes), HasSubstr("File too large")) << bytes;
        for (const double share : {0.0, 0.3, 0.6})
            EXPECT_THAT(refusal(name, [share](double done) { return done <= share; }),
                        HasSubstr("cancelled"));
    }
    const float infinity = std::numeric_limits<float>::infinity();
    const std::pair<const char*, std::function<void()>> flaws[] = {
        {"the translation of \"A\" has a number that is not finite",
         [&] { at(document, "A")->transform()->position.y = infinity; }},
        {"the material of \"B\" has a number that is not finite",
         [&] { at(document, "A/B")->material()->roughness = std::nanf(""); }},
        {"the intensity of \"L\" has a number that is not finite",
         [&] { at(document, "A/L")->light()->intensity = infinity; }},
        {"the name of \"\xef\xbf\xbd\" is no valid UTF-8",
         [&] { document.setProperty({at(document, "D")}, "name", lumo::Variant("\xff")); }},
        {"the mesh of \"D\" has a vertex that is not finite",
         [&] {
             setMesh(*at(document, "D"), {{infinity, 0, 0}}, {});
         }},
    };
    for (const auto& [reason, spoil] : flaws) {
        openSample();
        spoil();
        EXPECT_THAT(refusal("scene.glb"), HasSubstr(reason));
    }
    EXPECT_THAT(refusal("a.obj"), HasSubstr("\".obj\""));
    EXPECT_THAT(writeScene(*document.root(), file("no/folder.glb")).toStdString(),
                HasSubstr("No such file"));
    openSample();
    const auto takePlace = [this](double) { return QDir().mkpath(file("late.glb")); };
    EXPECT_THAT(writeScene(*document.root(), file("late.glb"), takePlace).toStdString(),
                HasSubstr("Cannot save"))
        << "a folder of that name came meanwhile";
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files).size(), 4) << "nothing half-written";
}

TEST_F(SceneWriterTest, savingGoesOnWhileTheSceneIsEdited)
{
    SceneSaver saver(document);
    QSignalSpy saved(&saver, &SceneSaver::saved);
    QSignalSpy canceled(&saver, &SceneSaver::canceled);
    // Whether the file says what the document does.
    const auto holdsTheScene = [&] {
        EXPECT_TRUE(saved.count() > 0 || saved.wait());
        const SceneImport import = importScene(file("scene.kyrscene"));
        SceneDocument read;
        read.open(import.root, {});
        return contentOf(*read.root()) == contentOf(*document.root());
    };
    openSample();
    saver.save(file("scene.kyrscene"));
    EXPECT_TRUE(holdsTheScene()) << "references too";

    document.open(gridScene(50000, 9), {});
    saved.clear();
    saver.save(file("scene.kyrscene"));
    document.remove({document.root()->children().front()});
    EXPECT_TRUE(holdsTheScene()) << "an edit before it is copied is in it";
    EXPECT_TRUE(saved.at(0).at(1).toBool());

    saved.clear();
    saver.save(file("scene.kyrscene"));
    ASSERT_TRUE(QTest::qWaitFor([&] { return saver.progress() > 0.3; }));
    document.remove({document.root()->children().front()});
    EXPECT_FALSE(holdsTheScene()) << "a later one is not";
    EXPECT_FALSE(saved.at(0).at(1).toBool());

    for (const double share : {0.0, 0.3}) {
        saved.clear();
        canceled.clear();
        saver.save(file("other.kyrscene"));
        ASSERT_TRUE(QTest::qWaitFor([&] { return saver.progress() >= share; }));
        saver.cancel();
        EXPECT_TRUE(canceled.count() > 0 || canceled.wait()) << share;
        EXPECT_FALSE(QFile::exists(file("other.kyrscene")));
    }
}

} // namespace
