#include "scene_samples.h"

#include <editor/document/scene_properties.h>
#include <editor/rows/scene_asset_model.h>
#include <host/scene/recorded_asset_selection.h>
#include <kyr_scene_outline/item_roles.h>
#include <kyr_scene_outline_testkit/contract.h>
#include <kyr_scene_outline_testkit/random_driver.h>
#include <support/driver_steps.h>

#include <QAbstractItemModelTester>
#include <QMimeData>
#include <QSignalSpy>
#include <QUndoStack>

#include <gmock/gmock.h>

namespace {

using namespace editor;
using namespace test;
using testing::ElementsAre;

struct SceneItemModelTest : testing::Test
{
    SceneItemModelTest() { document.open(sceneFrom("group A\n  mesh B\n  light C\nmesh D"), {}); }

    QModelIndex index(const char* path) const
    {
        return model.indexOf(test::at(document, path).get());
    }
    QVariant value(const char* path, int role) const { return index(path).data(role); }

    /// The changes since the last call as "first-last role role", without roles of properties.
    std::vector<std::string> changes()
    {
        std::vector<std::string> texts;
        for (const QVariantList& call : dataChanged) {
            const auto first = call[0].toModelIndex();
            const auto last = call[1].toModelIndex();
            EXPECT_EQ(first.parent(), last.parent());
            std::string text = first.data().toString().toStdString();
            if (first != last)
                text += "-" + last.data().toString().toStdString();
            for (const int role : call[2].value<QVector<int>>()) {
                if (!SceneProperties::all().find(role))
                    text += " " + model.roleNames().value(role).toStdString();
            }
            texts.push_back(text);
        }
        dataChanged.clear();
        return texts;
    }

    SceneDocument document;
    SceneAssetModel assets{document};
    SceneItemModel& model = *assets.sceneModel();
    QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::Fatal};
    QSignalSpy dataChanged{&model, &QAbstractItemModel::dataChanged};
};

TEST_F(SceneItemModelTest, rowButtonsHideAndLock)
{
    const auto button = [this](int at) {
        return value("A", kyr::RowButtonsModelRole).toList()[at].toMap();
    };
    EXPECT_EQ(button(0)[QStringLiteral("id")], QStringLiteral("visible"));
    EXPECT_EQ(button(1)[QStringLiteral("id")], QStringLiteral("locked"));
    EXPECT_TRUE(button(0)[QStringLiteral("checked")].toBool());
    EXPECT_TRUE(model.setData(index("A"), true, kyr::ExpandedRole));
    EXPECT_TRUE(value("A", kyr::ExpandedRole).toBool());
    EXPECT_EQ(value("A", kyr::CountRole).toInt(), 2);
    EXPECT_EQ(document.undoStack().count(), 0);

    const auto press = [this](const QVariantMap& states) {
        return model.setData(index("A"), states, kyr::RowButtonsModelRole);
    };
    EXPECT_FALSE(press({{QStringLiteral("other"), true}, {QStringLiteral("visible"), false}}));
    EXPECT_FALSE(press({}));
    EXPECT_TRUE(press({{QStringLiteral("visible"), false}, {QStringLiteral("locked"), true}}));
    EXPECT_FALSE(button(0)[QStringLiteral("checked")].toBool());
    EXPECT_TRUE(button(1)[QStringLiteral("checked")].toBool());
    EXPECT_FALSE(value("A/B", kyr::EnabledRole).toBool());
    EXPECT_TRUE(value("D", kyr::EnabledRole).toBool());
    EXPECT_EQ(document.undoStack().undoText(), QStringLiteral("Hide A"));
    document.undoStack().undo();
    EXPECT_TRUE(value("A/B", kyr::EnabledRole).toBool());
}

TEST_F(SceneItemModelTest, changesAreToldInRangesOfSiblings)
{
    document.setProperty(objectsAt(document, "A"), "visible", lumo::Variant(false));
    EXPECT_THAT(changes(), ElementsAre("A enabled rowButtonsModel modified object",
                                       "B-C enabled rowButtonsModel object"));
    document.setProperty(objectsAt(document, "A/B", "A/C"), "transform.position",
                         lumo::Variant(lumo::Vector3{1, 2, 3}));
    EXPECT_THAT(changes(), ElementsAre("B-C modified object"));
    model.setData(index("D"), QStringLiteral("E"), Qt::EditRole);
    EXPECT_THAT(changes(), ElementsAre("E display edit modified object"));
    document.remove(objectsAt(document, "A/B"));
    EXPECT_THAT(changes(), ElementsAre("A count"));

    document.open(gridScene(10000, 10000), {});
    changes();
    document.setProperty(document.root()->children(), "visible", lumo::Variant(false));
    EXPECT_THAT(changes(), ElementsAre("Group 1 enabled rowButtonsModel modified object",
                                       "Box 1-Box 9999 enabled rowButtonsModel object"));
}

TEST_F(SceneItemModelTest, hoverMarksRowsOfObjectsAndTheirComponents)
{
    const auto light = test::at(document, "A/C")->reflected();
    assets.setObjectHovered(light, true);
    assets.setObjectHovered(light, true);
    EXPECT_THAT(changes(), ElementsAre("C hoverRole"));
    EXPECT_TRUE(value("A/C", kyr::HoverRole).toBool());
    assets.setObjectHovered(kyr::ReflectedObject(light.property("light")), false);
    EXPECT_FALSE(value("A/C", kyr::HoverRole).toBool());
    assets.setObjectHovered({}, true);

    QSignalSpy activated(&assets, &SceneAssetModel::activated);
    assets.activateItem(index("D"));
    assets.activateItem({});
    EXPECT_EQ(activated.count(), 1);
}

TEST_F(SceneItemModelTest, indexesFollowRandomEdits)
{
    for (unsigned seed = 100; seed < 110; ++seed) {
        std::mt19937 random(seed);
        std::vector<std::pair<QPersistentModelIndex, SceneObjectPtr>> followed;
        for (int i = 0; i < 60; ++i) {
            for (const SceneObjectPtr& object : allObjects(document)) {
                if (random() % 8 == 0)
                    followed.emplace_back(model.indexOf(object.get()), object);
            }
            switch (random() % 4) {
            case 0:
                document.undoStack().undo();
                break;
            case 1:
                document.undoStack().redo();
                break;
            default:
                editAtRandom(document, random);
            }
            const auto isGone = [this](const auto& entry) {
                return !document.contains(entry.second.get());
            };
            for (const auto& entry : followed)
                ASSERT_EQ(entry.first.isValid(), !isGone(entry)) << entry.second->name();
            followed.erase(std::remove_if(followed.begin(), followed.end(), isGone),
                           followed.end());
            for (const auto& [index, object] : followed) {
                ASSERT_EQ(model.objectAt(index), object.get());
                ASSERT_EQ(QModelIndex(index), assets.indexOf(object->reflected()));
                ASSERT_EQ(object->parent()->children()[std::size_t(index.row())], object);
            }
        }
    }
    EXPECT_FALSE(assets.indexOf({}).isValid());
}

TEST_F(SceneItemModelTest, draggedRowsMoveWithinTheirSceneOnly)
{
    const auto drag = [this](const QModelIndexList& rows) {
        return std::unique_ptr<QMimeData>(model.mimeData(rows));
    };
    const auto data = drag({index("D"), index("A/C")});
    EXPECT_FALSE(model.canDropMimeData(data.get(), Qt::CopyAction, 0, 0, index("A")));
    EXPECT_FALSE(model.canDropMimeData(data.get(), Qt::MoveAction, 0, 0, index("D")));
    EXPECT_FALSE(model.canDropMimeData(nullptr, Qt::MoveAction, 0, 0, index("A")));
    EXPECT_FALSE(model.dropMimeData(data.get(), Qt::MoveAction, 0, 0, {}));
    const QPersistentModelIndex moved = index("D");
    EXPECT_TRUE(model.dropMimeData(data.get(), Qt::MoveAction, 0, 0, index("A")));
    EXPECT_EQ(shapeOf(*document.root()), "A(C D B)");
    EXPECT_EQ(moved, index("A/D"));
    document.undoStack().undo();
    EXPECT_EQ(shapeOf(*document.root()), "A(B C) D");
    EXPECT_EQ(moved, index("D"));
    document.undoStack().redo();

    EXPECT_TRUE(model.moveRows(index("A"), 0, 2, model.index(0, 0), 0));
    EXPECT_EQ(shapeOf(*document.root()), "C D A(B)");
    EXPECT_FALSE(model.moveRows(index("A"), 0, 2, model.index(0, 0), 0));

    SceneDocument other;
    other.open(sceneFrom("group A\n  mesh B\n  light C\nmesh D"), {});
    SceneItemModel otherModel(other);
    EXPECT_FALSE(
        otherModel.canDropMimeData(data.get(), Qt::MoveAction, 0, 0, otherModel.index(0, 0)));
}

/// The reference editor's scene and selection, as the kit drives them.
class EditorScene : public kyr::testkit::SceneUnderTest
{
public:
    EditorScene()
    {
        const SceneObjectPtr root =
            sceneFrom("light A\n  light B\n  group C\n    light D\nlight E\nlight F");
        for (const SceneObjectPtr& object : root->children())
            spread(*object);
        m_document.open(root, {});
    }
    IAssetModel& assetModel() override { return m_assets; }
    IAssetSelection& assetSelection() override { return m_selection; }
    bool insertRow(const QModelIndex& parent, int row) override
    {
        const SceneObjectPtr object = SceneObject::create(ObjectKind::Light, "new");
        spread(*object);
        SceneObject* above = parent.isValid() ? model().objectAt(parent) : m_document.root().get();
        return m_document.insert(object, *above, row);
    }
    bool removeRows(const QModelIndex& parent, int row, int count) override
    {
        SceneObjects objects;
        for (int i = row; i < row + count; ++i)
            objects.push_back(model().objectAt(model().index(i, 0, parent))->shared_from_this());
        return m_document.remove(objects);
    }
    bool recordsRows() const override { return true; }
    bool undo() override
    {
        m_document.changesController()->stack().undo();
        return true;
    }
    bool redo() override
    {
        m_document.changesController()->stack().redo();
        return true;
    }

private:
    SceneItemModel& model() { return *m_assets.sceneModel(); }
    /// No two objects are at one place.
    void spread(SceneObject& object)
    {
        const kyr::ReflectedObject transform(object.reflected().property("transform"));
        transform.property("position").set(lumo::Variant(lumo::Vector3{m_places++, 0, 0}));
    }
    float m_places = 0;

    SceneDocument m_document;
    SceneAssetModel m_assets{m_document};
    RecordedAssetSelection m_selection{m_document.changesController()};
};

TEST(EditorScene, keepsTheContractsAndStaysInStepWithBothBrowsers)
{
    const auto makeScene = [] { return std::make_unique<EditorScene>(); };
    EXPECT_EQ("", kyr::testkit::contractViolations(makeScene));
    EXPECT_EQ("", kyr::testkit::firstFailure(makeScene, 1, test::driverSteps(50000)));
}

} // namespace
