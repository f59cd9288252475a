// The panel over the library's own browser: what one calls the other must have.

#include "panel_window.h"

#include <browser/browser_fixture.h>

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
                           ->property("flatModel")
                           .value<QAbstractItemModel*>();
    ASSERT_EQ(flat->rowCount(), 4);
    const int selectedRole = flat->roleNames().key("selected");
    EXPECT_TRUE(flat->index(1, 0).data(selectedRole).toBool());
    EXPECT_FALSE(flat->index(2, 0).data(selectedRole).toBool());
}

} // namespace
