#include <editor/columns/column_choice.h>
#include <editor/document/scene_document.h>
#include <editor/document/scene_properties.h>
#include <editor/rows/scene_item_model.h>

#include <scene/scene_samples.h>

#include <QAbstractItemModelTester>
#include <QColor>
#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

using namespace editor;

struct ColumnChoiceTest : testing::Test
{
    ColumnChoiceTest()
    {
        QSettings::setDefaultFormat(QSettings::IniFormat);
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, folder.path());
        QCoreApplication::setOrganizationName("Tests");
    }

    /// The ids that show, in their order.
    static QStringList shown(const ColumnChoice& choice)
    {
        QMultiMap<int, QString> byOrder;
        for (const QModelIndex& column : choice.selectedIndexes()) {
            byOrder.insert(column.data(SceneColumnsModel::ColumnOrderRole).toInt(),
                           column.data(SceneColumnsModel::ColumnIdRole).toString());
        }
        return byOrder.values();
    }

    QTemporaryDir folder;
};

TEST(SceneColumnsModelTest, hasTheOwnColumnsOfRowsAndTheirProperties)
{
    SceneColumnsModel columns;
    const QAbstractItemModelTester tester(&columns,
                                          QAbstractItemModelTester::FailureReportingMode::Fatal);
    for (const auto& [id, path] : {std::pair("type", "Object/Type"),
                                   {"transform.position.x", "Transform/Position X"},
                                   {"light.type", "Light/Light type"}}) {
        const QModelIndex column = columns.indexOf(id);
        EXPECT_EQ(column.parent().data().toString() + "/" + column.data().toString(), path);
    }
    EXPECT_FALSE(columns.indexOf("name").isValid()) << "names have the tree's own column";
    EXPECT_TRUE(columns.indexOf("visible").data(SceneColumnsModel::ToggleRole).toBool());
    EXPECT_FALSE(columns.indexOf("modified").data(SceneColumnsModel::ToggleRole).toBool());
    EXPECT_FALSE(columns.index(0, 0).flags().testFlag(Qt::ItemIsSelectable));

    QStringList titles;
    for (const QModelIndex& column : columns.columns())
        titles << column.data().toString();
    EXPECT_EQ(titles.removeDuplicates(), 0) << titles.join(", ").toStdString();
}

TEST_F(ColumnChoiceTest, comesBackWithWhatIsLeftOfIt)
{
    {
        SceneColumnsModel columns;
        ColumnChoice choice(columns);
        EXPECT_EQ(shown(choice), QStringList({"type"}));
        const auto choose = [&](const char* id) {
            choice.select(columns.indexOf(id), QItemSelectionModel::Select);
        };
        choose("light.intensity");
        choose("count");
        columns.setData(columns.indexOf("type"), 100, SceneColumnsModel::ColumnOrderRole);
        EXPECT_EQ(shown(choice), QStringList({"light.intensity", "count", "type"}));
        choice.select(columns.indexOf("count"), QItemSelectionModel::Deselect);
        choose("count");
        EXPECT_EQ(shown(choice).last(), "count");
        choice.clear();
    }
    SceneColumnsModel columns;
    EXPECT_EQ(shown(ColumnChoice(columns)), QStringList()) << "no column is a choice as well";
    QSettings().setValue("columns/chosen", QStringList({"gone", "count", "type"}));
    EXPECT_EQ(shown(ColumnChoice(columns)), QStringList({"count", "type"})) << "one is no more";
}

struct ScenePropertyTest : testing::Test
{
    ScenePropertyTest()
    {
        document.open(test::sceneFrom("light Lamp | transform.position=0.1 2 -3 | "
                                      "light.color=0 1 0 1 | light.type=spot\n"
                                      "camera Camera"),
                      {});
        document.setProperty({test::at(document, "Camera")}, "camera.target",
                             lumo::Variant("Lamp"));
    }

    static int role(const char* path)
    {
        return SceneColumnsModel().indexOf(path).data(valueRole).toInt();
    }
    QModelIndex row(int number) const { return model.index(number, 0, model.index(0, 0)); }
    QVariant value(int number, const char* path) const { return row(number).data(role(path)); }

    static constexpr int valueRole = SceneColumnsModel::ValueRole;
    SceneDocument document;
    SceneItemModel model{document};
};

TEST_F(ScenePropertyTest, giveValuesFitToShowAndSort)
{
    EXPECT_EQ(value(0, "transform.position.x"), QVariant(0.1));
    EXPECT_EQ(value(0, "transform.position"), QVariant("0.1 2 -3"));
    EXPECT_EQ(value(0, "light.color"), QVariant(QColor(0, 255, 0)));
    EXPECT_EQ(value(0, "light.type"), QVariant("spot"));
    EXPECT_EQ(value(0, "visible"), QVariant(true));
    EXPECT_EQ(value(1, "camera.target"), QVariant("Lamp"));
    EXPECT_FALSE(value(1, "light.intensity").isValid());
    EXPECT_FALSE(model.index(0, 0).data(role("transform.position.x")).isValid());
    EXPECT_EQ(value(0, "type"), QVariant("light"));
    EXPECT_EQ(model.roleNames().value(role("light.intensity")), "light.intensity");
}

TEST_F(ScenePropertyTest, textsAreTakenForWhatTheyMeanOrRefused)
{
    const auto set = [this](const char* path, const char* text) {
        return model.setData(row(0), QString::fromUtf8(text), role(path));
    };
    const std::tuple<const char*, const char*, const char*, QVariant> rows[] = {
        {"transform.position.x", " 2.5", "transform.position", "2.5 2 -3"},
        {"transform.position", "1 2 3", "transform.position.z", 3.0},
        {"light.color", "#ff0000", "light.color", QColor(255, 0, 0)},
        {"light.type", "point", "light.type", "point"},
        {"light.intensity", "-4", "light.intensity", 0.0}, // within its bounds
        {"transform.position.x", "*2,5", "transform.position.x", 2.5},
    };
    for (const auto& [path, text, read, expected] : rows) {
        EXPECT_TRUE(set(path, text)) << path;
        EXPECT_EQ(value(0, read), expected) << path;
    }
    const int steps = document.undoStack().count();
    for (const auto& [path, text] : {std::pair("transform.position.x", "two"),
                                     {"transform.position", "1 2"},
                                     {"light.color", "reddish"},
                                     {"light.type", "spotty"},
                                     {"light.intensity", "inf"},
                                     {"id", "7"},
                                     {"type", "mesh"}})
        EXPECT_FALSE(set(path, text)) << path;
    EXPECT_FALSE(model.setData(row(1), "1", role("light.intensity"))) << "no light";
    EXPECT_EQ(document.undoStack().count(), steps);
    SceneColumnsModel columns;
    EXPECT_TRUE(columns.indexOf("light.type")
                    .data(SceneColumnsModel::ChoicesRole)
                    .toStringList()
                    .contains("spot"));
    EXPECT_FALSE(columns.indexOf("id").data(SceneColumnsModel::EditableRole).toBool());
}

TEST_F(ScenePropertyTest, pathsFollowTheNamesAbove)
{
    document.open(test::sceneFrom("group Group\n  group Inner\n    mesh Mesh"), {});
    const QPersistentModelIndex innerRow = model.index(0, 0, row(0));
    const QPersistentModelIndex mesh = model.index(0, 0, innerRow);
    const auto path = [](const QModelIndex& index) {
        return index.data(SceneItemModel::PathRole).toString();
    };
    EXPECT_EQ(path(row(0)), "");
    EXPECT_EQ(path(mesh), "Group / Inner");
    QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
    const auto tells = [&](const QModelIndex& index) {
        return std::any_of(changed.begin(), changed.end(), [&](const QList<QVariant>& change) {
            return change[0].toModelIndex() == index &&
                   change[2].value<QVector<int>>().contains(SceneItemModel::PathRole);
        });
    };
    document.rename(test::at(document, "Group"), "Box");
    EXPECT_EQ(path(mesh), "Box / Inner");
    EXPECT_TRUE(tells(mesh));
    changed.clear();
    document.reparent({test::at(document, "Box/Inner")}, *document.root(), 0);
    EXPECT_EQ(path(mesh), "Inner");
    EXPECT_TRUE(tells(innerRow) && tells(mesh));
}

} // namespace
