#include "scene_samples.h"

#include <editor/document/object_path.h>
#include <editor/document/rename_rule.h>
#include <editor/document/transform_math.h>
#include <host/undo/commit_changes_scope.h>

#include <QCoreApplication>

#include <gmock/gmock.h>

#include <thread>

namespace {

using namespace editor;
using namespace test;
using testing::ElementsAre;

const char* const sample = "group A\n"
                           "  mesh A1\n"
                           "  group A2\n"
                           "    light L\n"
                           "  mesh A3\n"
                           "group B\n"
                           "  camera C\n"
                           "mesh D";

struct SceneDocumentTest : testing::Test
{
    SceneDocumentTest() { document.open(sceneFrom(sample), QStringLiteral("sample.kyrscene")); }

    SceneDocument document;
};

TEST_F(SceneDocumentTest, anOperationIsOneStepThatUndoTakesBackWhole)
{
    using Document = SceneDocument;
    const std::tuple<const char*, std::function<bool(Document&)>, const char*> rows[] = {
        {"Rename D", [](Document& d) { return d.rename(at(d, "D"), " E "); },
         "A(A1 A2(L) A3) B(C) E"},
        {"Delete 2 objects",
         [](Document& d) { return d.remove(objectsAt(d, "A/A3", "A/A2/L", "A/A2")); },
         "A(A1) B(C) D"},
        {"Delete 3 objects",
         [](Document& d) {
             SceneObjects all = allObjects(d);
             all.push_back(d.root());
             return d.remove(all);
         },
         ""},
        {"Duplicate 3 objects",
         [](Document& d) { return d.duplicate(objectsAt(d, "D", "A/A2", "A/A1")).size() == 3; },
         "A(A1 A2(L) A1 2 A2 2(L) A3) B(C) D D 2"},
        {"Move 2 objects",
         [](Document& d) { return d.reparent(objectsAt(d, "D", "A/A1"), *at(d, "B"), 0); },
         "A(A2(L) A3) B(A1 D C)"},
        {"Move 2 objects",
         [](Document& d) { return d.reparent(objectsAt(d, "A/A1", "A/A3"), *at(d, "A"), 1); },
         "A(A1 A3 A2(L)) B(C) D"},
        {"Move A", [](Document& d) { return d.reparent(objectsAt(d, "A"), *d.root()); },
         "B(C) D A(A1 A2(L) A3)"},
        {"Group 2 objects",
         [](Document& d) { return d.group(objectsAt(d, "B/C", "A/A2", "A/A2/L"), "A") != nullptr; },
         "A 2(A2(L) C) A(A1 A3) B D"},
        {"Ungroup 2 objects",
         [](Document& d) { return d.ungroup(objectsAt(d, "A", "B", "D")).size() == 4; },
         "A1 A2(L) A3 C D"},
        {"Save Set S",
         [](Document& d) {
             d.setSelectionSets({{"S", {1, 2}}}, "Save Set S");
             return d.selectionSets().size() == 1;
         },
         "A(A1 A2(L) A3) B(C) D"},
        {"Add N",
         [](Document& d) {
             return d.insert(SceneObject::create(ObjectKind::Mesh, "N"), *at(d, "B"), 0);
         },
         "A(A1 A2(L) A3) B(N C) D"},
    };
    for (const auto& [stepName, run, shape] : rows) {
        SCOPED_TRACE(stepName);
        document.open(sceneFrom(sample), {});
        const std::string before = contentOf(*document.root());
        ASSERT_TRUE(run(document));
        EXPECT_EQ(shapeOf(*document.root()), shape);
        ASSERT_EQ(document.undoStack().count(), 1);
        EXPECT_EQ(document.undoStack().text(0), QLatin1String(stepName));
        EXPECT_TRUE(document.isModified());

        const std::string after = contentOf(*document.root());
        document.undoStack().undo();
        EXPECT_EQ(contentOf(*document.root()), before);
        EXPECT_FALSE(document.isModified());
        for (const SceneObjectPtr& object : allObjects(document))
            EXPECT_FALSE(object->isModified()) << object->name();
        document.undoStack().redo();
        EXPECT_EQ(contentOf(*document.root()), after);
    }
}

TEST(RenameRuleTest, makesNamesFromPatterns)
{
    const std::pair<RenameRule, const char*> rows[] = {
        {{}, "Lamp 7"},
        {{"", "", "Light_##", 1, 1}, "Light_02"},
        {{"", "", "#-*", -1, 10}, "9-Lamp 7"},
        {{"", "", "###", -2, 1}, "-001"},
        {{"Lamp", "", "*", 1, 1}, "7"},
        {{"Lamp 7", "", " * ", 1, 1}, ""},
        {{"*", "#", "*", 1, 1}, "Lamp 7"},
    };
    for (const auto& [rule, second] : rows)
        EXPECT_EQ(rule.apply(QStringLiteral("Lamp 7"), 1), QLatin1String(second));
}

TEST_F(SceneDocumentTest, refusesWhatChangesNothing)
{
    EXPECT_FALSE(document.rename(at(document, "D"), QStringLiteral("D")));
    EXPECT_FALSE(document.rename(at(document, "D"), QStringLiteral("  ")));
    EXPECT_FALSE(document.remove({document.root()}));
    EXPECT_FALSE(document.reparent(objectsAt(document, "A"), *at(document, "A/A2")));
    EXPECT_FALSE(document.reparent(objectsAt(document, "A"), *at(document, "A")));
    EXPECT_FALSE(document.reparent(objectsAt(document, "A"), *document.root(), 4));
    EXPECT_TRUE(document.duplicate({document.root()}).empty());
    EXPECT_EQ(document.setProperty(objectsAt(document, "D"), "visible", lumo::Variant(true)), 0);
    EXPECT_EQ(document.setProperty(objectsAt(document, "D"), "light.range", lumo::Variant(1.0f)),
              0);
    const SceneObjectPtr stranger = SceneObject::create(ObjectKind::Mesh, "S");
    EXPECT_FALSE(document.remove({stranger}));
    EXPECT_FALSE(document.rename(stranger, QStringLiteral("T")));
    EXPECT_TRUE(document.reparent(objectsAt(document, "A/A1"), *at(document, "A"), 0));
    EXPECT_EQ(document.undoStack().count(), 0);
    EXPECT_FALSE(document.isModified());
}

TEST_F(SceneDocumentTest, whatIsLockedStaysAsItIsAndSaysSoOnce)
{
    QStringList reasons;
    QObject::connect(&document, &SceneDocument::refused,
                     [&reasons](const QString& reason) { reasons << reason; });
    document.setProperty(objectsAt(document, "A/A2", "D"), "locked", lumo::Variant(true));
    const std::string before = contentOf(*document.root());
    const SceneObjectPtr light = at(document, "A/A2/L");
    const kyr::ReflectedObject values = light->reflected();

    EXPECT_FALSE(document.rename(light, QStringLiteral("M")));
    EXPECT_FALSE(document.remove({light}));
    EXPECT_FALSE(document.reparent({light}, *document.root()));
    EXPECT_EQ(document.setProperty({light}, "light.range", lumo::Variant(3.0f)), 0);
    EXPECT_FALSE(propertyAtPath(values, "transform.position").set(lumo::Variant(lumo::Vector3())));
    EXPECT_FALSE(values.property("locked").set(lumo::Variant(true))) << "such as a paste sets it";
    QCoreApplication::processEvents();
    EXPECT_EQ(reasons, QStringList{QStringLiteral("“L” is locked with “A2”")});
    EXPECT_TRUE(document.duplicate({light}).empty());
    EXPECT_FALSE(document.reparent(objectsAt(document, "A/A1"), *at(document, "A/A2")));
    EXPECT_FALSE(document.insert(SceneObject::create(ObjectKind::Mesh, "N"), *light, 0));
    EXPECT_FALSE(document.remove(objectsAt(document, "A", "D"))) << "A holds something locked";
    QCoreApplication::processEvents();
    EXPECT_EQ(reasons.last(), QStringLiteral("3 objects are locked"));
    EXPECT_EQ(contentOf(*document.root()), before);

    EXPECT_TRUE(document.reparent(objectsAt(document, "D", "A/A1"), *at(document, "B")));
    EXPECT_EQ(document.undoStack().undoText(), QStringLiteral("Move A1"));
    document.undoStack().undo();
    {
        const Zar::CommitChangesScope step("Both", document.changesController().get());
        const kyr::ReflectedObject mesh = at(document, "A/A1")->reflected();
        EXPECT_TRUE(mesh.property("locked").set(lumo::Variant(true)));
        EXPECT_TRUE(mesh.property("visible").set(lumo::Variant(false))) << "locked by this step";
        EXPECT_EQ(document.setProperty(objectsAt(document, "D"), "locked", lumo::Variant(false)),
                  1);
        EXPECT_FALSE(document.rename(at(document, "D"), QStringLiteral("E")));
    }
    EXPECT_FALSE(document.rename(at(document, "A/A1"), QStringLiteral("E")));
    EXPECT_TRUE(document.rename(at(document, "D"), QStringLiteral("E")));
    document.undoStack().setIndex(0);
    EXPECT_TRUE(document.rename(at(document, "D"), QStringLiteral("E"))) << "unlocked by undo";
}

TEST_F(SceneDocumentTest, scatteredRowsAreRemovedAndMovedWithoutManySignals)
{
    document.open(gridScene(1001, 1000), {});
    const SceneObjectPtr group = document.root()->children().front();
    SceneObjects alternate;
    for (std::size_t i = 0; i < group->children().size(); i += 2)
        alternate.push_back(group->children()[i]);
    const std::string before = contentOf(*document.root());
    int removals = 0;
    QObject::connect(&document, &SceneDocument::rowsRemoved, [&removals] { ++removals; });

    ASSERT_TRUE(document.remove(alternate));
    EXPECT_EQ(removals, 1);
    EXPECT_EQ(group->children().size(), 500u);
    document.undoStack().undo();
    EXPECT_EQ(contentOf(*document.root()), before);

    const SceneObjects inReverse(alternate.rbegin(), alternate.rend());
    ASSERT_TRUE(document.reparent(inReverse, *document.root()));
    const auto& top = document.root()->children();
    EXPECT_EQ(SceneObjects(top.begin() + 1, top.end()), alternate);
    document.undoStack().undo();
    EXPECT_EQ(contentOf(*document.root()), before);
}

TEST_F(SceneDocumentTest, movedObjectsKeepTheirPlaceInTheWorld)
{
    const auto set = [this](const char* path, const char* property, const lumo::Vector3& value) {
        document.setProperty({at(document, path)}, property, lumo::Variant(value));
    };
    set("A", "transform.position", {5, 0, 0});
    set("A", "transform.rotation", {0, 90, 0});
    set("B", "transform.scale", {2, 2, 2});
    set("B", "transform.rotation", {30, 0, 45});
    set("A/A1", "transform.position", {1, 2, 3});
    const SceneObjectPtr moved = at(document, "A/A1");
    const QMatrix4x4 before = worldTransform(*moved);
    document.reparent({moved}, *at(document, "B"));
    const QMatrix4x4 after = worldTransform(*moved);
    for (int i = 0; i < 16; ++i)
        EXPECT_NEAR(before.constData()[i], after.constData()[i], 1e-4) << i;
}

TEST_F(SceneDocumentTest, marksWhatDiffersFromTheFile)
{
    const auto modified = [this] {
        std::vector<std::string> names;
        for (const SceneObjectPtr& object : allObjects(document)) {
            if (object->isModified())
                names.push_back(object->name());
        }
        return names;
    };
    const auto hide = [this](const char* path) {
        document.setProperty({at(document, path)}, "visible", lumo::Variant(false));
    };
    hide("D");
    EXPECT_THAT(modified(), ElementsAre("D"));
    document.markSaved(QStringLiteral("other.kyrscene"));
    EXPECT_THAT(modified(), ElementsAre());
    EXPECT_EQ(document.title(), QStringLiteral("other.kyrscene"));
    document.undoStack().undo();
    EXPECT_THAT(modified(), ElementsAre("D")) << "undone to before the save";
    EXPECT_TRUE(document.isModified());

    // Another change than the one that was saved: never back to unmodified.
    document.rename(at(document, "D"), QStringLiteral("E"));
    EXPECT_THAT(modified(), ElementsAre("E"));
    EXPECT_TRUE(document.isModified());

    document.markSaved(document.filePath());
    document.remove(objectsAt(document, "A/A2"));
    EXPECT_THAT(modified(), ElementsAre("A"));
    document.markSaved(document.filePath());
    document.undoStack().undo();
    EXPECT_THAT(modified(), ElementsAre("A", "A2", "L")) << "the file does not have them";
}

TEST_F(SceneDocumentTest, tellsOfAStepAtItsEndAndOfWhatItInherits)
{
    std::vector<std::string> told;
    QObject::connect(&document, &SceneDocument::objectsChanged, [&told](const auto& changes) {
        told.emplace_back();
        for (const ObjectChange& change : changes)
            told.back() += change.object->name() + " ";
    });
    {
        const Zar::CommitChangesScope scope("Both", document.changesController().get());
        document.setProperty(objectsAt(document, "A/A2", "A/A3"), "visible", lumo::Variant(false));
        document.setProperty(objectsAt(document, "A"), "visible", lumo::Variant(false));
        EXPECT_THAT(told, ElementsAre());
    }
    EXPECT_THAT(told, ElementsAre("A2 L A3 A A1 "));
    EXPECT_FALSE(at(document, "A/A1")->isEffectivelyVisible());
    EXPECT_TRUE(at(document, "A/A1")->isVisible());
    document.undoStack().undo();
    EXPECT_EQ(told.size(), 2u);
    EXPECT_TRUE(at(document, "A/A2/L")->isEffectivelyVisible());

    document.setProperty(objectsAt(document, "B"), "visible", lumo::Variant(false));
    document.reparent(objectsAt(document, "A/A1"), *at(document, "B"));
    EXPECT_FALSE(at(document, "B/A1")->isEffectivelyVisible());
    document.undoStack().undo();
    EXPECT_TRUE(at(document, "A/A1")->isEffectivelyVisible());
}

TEST_F(SceneDocumentTest, findsObjectsByIdOnlyWhileTheyAreInTheScene)
{
    const SceneObjectPtr light = at(document, "A/A2/L");
    const quint32 id = light->id();
    EXPECT_EQ(document.objectById(id), light.get());
    document.remove(objectsAt(document, "A"));
    EXPECT_EQ(document.objectById(id), nullptr);
    EXPECT_FALSE(document.contains(light.get()));
    document.insert(SceneObject::create(ObjectKind::Mesh, "N"), *document.root(), 0);
    EXPECT_NE(at(document, "N")->id(), id);
    document.undoStack().undo();
    document.undoStack().undo();
    EXPECT_EQ(document.objectById(id), light.get());
    EXPECT_EQ(document.objectCount(), 8);
}

// While a scene is prepared, the open one is saved and edited.
TEST_F(SceneDocumentTest, opensWhatAnotherThreadPreparedAndLetsGoOfTheSceneBefore)
{
    const SceneObjectPtr next = sceneFrom(sample);
    next->children()[0]->setId(7);
    next->children()[1]->setId(7);
    PreparedScene prepared;
    std::thread([&] { prepared = PreparedScene::from(next); }).join();
    EXPECT_EQ(next->document(), nullptr);
    document.rename(at(document, "D"), "E");
    document.markSaved(QStringLiteral("sample.kyrscene"));

    const SceneObjectPtr held = at(document, "A/A2");
    const std::weak_ptr<SceneObject> below = at(document, "A/A2/L");
    const std::weak_ptr<SceneObject> other = at(document, "B/C");
    document.open(std::move(prepared), {});
    EXPECT_FALSE(document.contains(held.get()));
    EXPECT_EQ(document.objectCount(), 8);
    EXPECT_EQ(document.objectById(7), at(document, "A").get());
    EXPECT_NE(at(document, "B")->id(), 7u);
    EXPECT_FALSE(at(document, "A")->isModified() || document.isModified());
    document.rename(at(document, "A"), "F");
    EXPECT_TRUE(at(document, "F")->isModified());

    EXPECT_FALSE(other.expired()) << "one piece";
    QCoreApplication::processEvents();
    EXPECT_TRUE(other.expired());
    EXPECT_EQ(held->parent(), nullptr);
    EXPECT_FALSE(below.expired()) << "held from above";
}

TEST(SceneDocumentLifetimeTest, goesWithALargeStepThatHoldsWhatWasRemoved)
{
    std::weak_ptr<SceneObject> removed;
    {
        SceneDocument document;
        document.open(gridScene(1000, 4), {});
        SceneObjects oneOfEachGroup;
        for (const SceneObjectPtr& group : document.root()->children())
            oneOfEachGroup.push_back(group->children().front());
        ASSERT_GT(oneOfEachGroup.size(), 100u);
        ASSERT_TRUE(document.remove(oneOfEachGroup));
        removed = oneOfEachGroup.front();
    }
    EXPECT_TRUE(removed.expired());
}

TEST_F(SceneDocumentTest, undoOfRandomEditsRestoresEveryState)
{
    for (unsigned seed = 0; seed < 20; ++seed) {
        std::mt19937 random(seed);
        document.open(sceneFrom(sample), {});
        std::vector<std::string> states{contentOf(*document.root())};
        for (int i = 0; i < 60; ++i) {
            editAtRandom(document, random);
            if (document.undoStack().count() == int(states.size()))
                states.push_back(contentOf(*document.root()));
            ASSERT_EQ(contentOf(*document.root()), states.back());
        }
        for (const int step : {1, -1}) {
            int index = document.undoStack().index();
            for (std::size_t i = 1; i < states.size(); ++i) {
                index -= step;
                document.undoStack().setIndex(index);
                ASSERT_EQ(contentOf(*document.root()), states[std::size_t(index)])
                    << "seed " << seed << " state " << index;
            }
        }
    }
}

} // namespace
