// The panel over the library's own browser: what one calls the other must have.

#include "panel_window.h"

#include <browser/browser_fixture.h>

#include <QStandardItemModel>

namespace {

class PanelBrowserTest : public test::BrowserTest
{};

TEST_F(PanelBrowserTest, SelectionHoverAndActivationReachTheAssetModel)
{
    create("House\n  Wall\n  Roof\nTree");
    PanelWindow window;
    window.open(browser.get());
    EXPECT_EQ(window.count(), 2);
    browser->expandAll();
    EXPECT_EQ(window.count(), 4);
    window.click(window.at(120, 1));
    window.click(window.at(120, 3), Qt::ControlModifier);
    EXPECT_EQ(test::names(selection.objects()), "Wall Tree");
    window.press(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(selection.objects().size(), 4u);
    selection.setSelection(objects({"Roof"}), false);
    EXPECT_EQ(selectedRows(), "Roof");
    window.movePointer(window.at(120, 3));
    EXPECT_EQ(test::names(selection.hoveredObjects()), "Tree");
    window.doubleClick(window.at(120, 2));
    ASSERT_EQ(assetModel->activated().size(), 1);
    EXPECT_EQ(assetModel->activated()[0].data().toString(), QStringLiteral("Roof"));
    browser->collapseAll();
    EXPECT_EQ(window.count(), 2);
    Q_EMIT browser->onShowItem(model->find("Wall"));
    EXPECT_EQ(window.count(), 4);
}

TEST_F(PanelBrowserTest, RowsInsertedUnderASelectedObjectAreMarkedOnceTheyExist)
{
    create("House\n  Wall\nTree");
    PanelWindow window;
    window.open(browser.get());
    browser->expandAll();
    // The browser selects the rows of selected objects while they are being inserted.
    const auto late = std::make_shared<test::NamedObject>("Gate");
    selection.setSelection({kyr::PersistentObject(kyr::ReflectedObject(late))}, false);
    model->insertObjects(model->find("House"), 0, {late});
    EXPECT_EQ(selectedRows(), "Gate");
    const auto* flat = window.panel()
                           ->property("tree")
                           .value<QQuickItem*>()
                           ->property("outline")
                           .value<QAbstractItemModel*>();
    ASSERT_EQ(flat->rowCount(), 4);
    const int selectedRole = flat->roleNames().key("selected");
    EXPECT_TRUE(flat->index(1, 0).data(selectedRole).toBool());
    EXPECT_FALSE(flat->index(2, 0).data(selectedRole).toBool());
}

/// Two groups of columns.
class GroupedColumns : public QStandardItemModel
{
public:
    GroupedColumns()
    {
        setItemRoleNames({{Qt::DisplayRole, "display"},
                          {Qt::UserRole, "columnOrder"},
                          {Qt::UserRole + 1, "valueRole"}});
        int order = 0;
        for (const char* group : {"Object", "Light"}) {
            auto* groupItem = new QStandardItem(QLatin1String(group));
            appendRow(groupItem);
            for (const char* column : {"Type", "Size"}) {
                const QString title = QLatin1String(group) + QLatin1String(column);
                auto* item = new QStandardItem(title);
                item->setData(order++, Qt::UserRole);
                item->setData(int(Qt::DisplayRole), Qt::UserRole + 1);
                groupItem->appendRow(item);
            }
        }
    }
};

TEST_F(PanelBrowserTest, TheChooserChecksFindsAndRemovesColumns)
{
    create("House\nTree");
    PanelWindow window;
    window.open(browser.get());
    GroupedColumns columns;
    QItemSelectionModel chosen(&columns);
    browser->setColumnsModel(&columns, &chosen);
    QQmlComponent component(window.engine());
    component.setData("import Kyr.SceneOutline 1.0\nColumnChooser {}", {});
    const std::unique_ptr<QObject> chooser(component.create());
    ASSERT_TRUE(chooser) << component.errorString().toStdString();
    chooser->setProperty("parent", QVariant::fromValue(window.panel()));
    chooser->setProperty("browser", QVariant::fromValue<QObject*>(browser.get()));
    const vex::Connection opening = browser->connectShowColumnsDialog(
        [&] { QMetaObject::invokeMethod(chooser.get(), "open"); });
    window.panel()->window()->resize(720, 560);
    window.settle();
    window.click(window.middle("choose_columns"));
    auto* content = chooser->property("contentItem").value<QQuickItem*>();
    const auto middle = [&](std::initializer_list<const char*> path) {
        QQuickItem* item = content;
        for (const char* name : path)
            item = PanelWindow::itemBelow(item, name);
        return item ? item->mapToScene({item->width() / 2, item->height() / 2}).toPoint()
                    : QPoint(-1, -1);
    };
    const auto chosenTitles = [&] { return test::names(chosen.selection()); };
    QPoint place;
    ASSERT_TRUE(QTest::qWaitFor([&] {
        const QPoint before = std::exchange(place, middle({"column_LightSize"}));
        return chooser->property("opened").toBool() && place == before && place.x() > 0;
    })) << "its rows stand still";
    window.click(middle({"column_LightSize"}));
    window.click(middle({"column_ObjectType"}));
    window.click(middle({"column_Light"}));
    EXPECT_EQ(chosenTitles(), "LightSize ObjectType") << "a group is no column";
    EXPECT_EQ(browser->selectedColumnsModel()->index(0, 0).data().toString(),
              QStringLiteral("ObjectType"));
    window.click(middle({"columns_search"}));
    window.type("size");
    window.settle();
    EXPECT_FALSE(PanelWindow::itemBelow(PanelWindow::itemBelow(content, "available_columns"),
                                        "column_ObjectType"));
    window.click(middle({"column_ObjectSize"}));
    EXPECT_EQ(chosenTitles(), "LightSize ObjectType ObjectSize");
    window.click(middle({"chosen_columns", "column_ObjectType", "remove_button"}));
    EXPECT_EQ(chosenTitles(), "LightSize ObjectSize");
    window.click(middle({"clear_columns"}));
    EXPECT_EQ(chosenTitles(), "");
    QMetaObject::invokeMethod(chooser.get(), "close");
}

} // namespace
