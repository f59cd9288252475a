#include "editor_parts.h"
#include "scene_panel_fixture.h"

#include <host/ui/text_predicate.h>

#include <QStandardItemModel>

#include <gtest/gtest.h>

namespace {

constexpr int rowHeight = PanelWindow::rowHeight;

TEST_F(ScenePanelTest, selectsByMouseAndKeyboard)
{
    open(house());
    EXPECT_EQ(window.count(), 4);
    window.click(window.at(120, 1));
    EXPECT_EQ(selectedRows(), "Wall");
    window.click(window.at(120, 3), Qt::ControlModifier);
    EXPECT_EQ(selectedRows(), "Wall Tree");
    EXPECT_EQ(test::names(selection.objects()), "Wall Tree");
    window.press(Qt::Key_Up, Qt::ShiftModifier);
    EXPECT_EQ(selectedRows(), "Roof Tree");
    window.press(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(selectedRows(), "Tile Wall Roof House Tree");
    window.click(window.at(120, 8));
    EXPECT_EQ(selectedRows(), "");
}

TEST_F(ScenePanelTest, opensRowsByTheirArrowsThatTellWhatTheyHide)
{
    open(house(), "Tile");
    EXPECT_EQ(window.panel()->property("statusText").toString(), "1 selected");
    const auto mark = [this] {
        return PanelWindow::itemBelow(window.item("row_Roof"), "hidden_mark")->isVisible();
    };
    EXPECT_TRUE(mark());
    window.click(window.at(26, 2));
    EXPECT_EQ(window.count(), 5);
    EXPECT_FALSE(mark());
    browser->selectionModel()->clear();
    window.click(window.at(26, 2));
    EXPECT_FALSE(mark());
    model->item(model->find("Tile"))->hovered = true;
    const QModelIndex tile = model->find("Tile");
    Q_EMIT model->dataChanged(tile, tile, {TreeModel::HoverRole});
    EXPECT_TRUE(mark());
    window.click(window.at(26, 2));
    EXPECT_EQ(selectedRows(), "");
    window.click(window.at(12, 0));
    EXPECT_EQ(window.count(), 2);
    browser->expandAll();
    EXPECT_EQ(window.count(), 5);
    browser->collapseAll();
    EXPECT_EQ(window.count(), 2);
}

TEST_F(ScenePanelTest, tellsTheBrowserOfHoverMenuAndActivation)
{
    open(house());
    const auto menus = std::make_shared<MenuRequests>();
    browser->setPopupMenuProvider(menus);
    for (const QPoint point :
         {window.at(100, 1), window.at(160, 1), window.at(100, 2), QPoint(100, 5)})
        window.movePointer(point);
    EXPECT_EQ(selection.takeLog(), "hover(Wall) hover(Roof) hover() ");
    window.click(window.at(100, 3), {}, Qt::RightButton);
    EXPECT_EQ(selectedRows(), "Tree");
    EXPECT_EQ(menus->count, 1);
    window.doubleClick(window.at(100, 1));
    EXPECT_EQ(assetModel->activated(), QModelIndexList{model->find("Wall")});

    window.movePointer(window.at(100, 3));
    selection.takeLog();
    model->remove({}, 1, 1); // the row under the pointer
    window.settle();
    EXPECT_EQ(selection.takeLog(), "hover() ");
}

TEST_F(ScenePanelTest, marksRowsThatComeForObjectsThatAreSelected)
{
    open(house());
    // The browser selects their rows while they are being inserted.
    const auto late = std::make_shared<test::NamedObject>("Gate");
    selection.setSelection({kyr::PersistentObject(kyr::ReflectedObject(late))}, false);
    model->insertObjects(model->find("House"), 0, {late});
    EXPECT_EQ(selectedRows(), "Gate");
    window.settle();
    EXPECT_TRUE(window.item("row_Gate")->property("selected").toBool());
    EXPECT_FALSE(window.item("row_Wall")->property("selected").toBool());
}

TEST_F(ScenePanelTest, rowButtonsSetTheirStateAndLeaveTheSelectionAlone)
{
    open(house());
    const QModelIndex wall = model->find("Wall");
    const QModelIndex tree = model->find("Tree");
    browser->selectionModel()->select(tree, QItemSelectionModel::Select);
    window.click(window.at(310, 1));
    EXPECT_FALSE(model->item(wall)->visible);
    EXPECT_TRUE(model->item(tree)->visible) << "a row that is not selected goes alone";
    window.click(window.at(310, 1));
    EXPECT_TRUE(model->item(wall)->visible);
    EXPECT_EQ(selectedRows(), "Tree");
}

TEST_F(ScenePanelTest, revealsWhatIsHiddenAndNeverScrollsWhatIsInView)
{
    open(TreeModel::wide(100, 3));
    window.panel()->setProperty("alwaysReveal", true);
    const auto selectElsewhere = [&](const char* name) {
        selectRow(name);
        window.settle();
    };
    selectElsewhere("group 4");
    EXPECT_EQ(window.scrolled(), 0);
    selectElsewhere("mesh 50.1");
    EXPECT_EQ(window.count(), 103);
    EXPECT_EQ(window.scrolled(), (50 + 2 + 1 - 10) * rowHeight) << "only as far as it takes";
    selectElsewhere("group 45");
    EXPECT_EQ(window.scrolled(), 43 * rowHeight) << "in view already";
    Q_EMIT browser->onShowItem(model->find("group 0"));
    EXPECT_EQ(window.scrolled(), 0);
    window.press(Qt::Key_F);
    EXPECT_EQ(window.scrolled(), (45 + 1 - 10) * rowHeight);
}

TEST_F(ScenePanelTest, keepsTheTopRowWhenAllRowsOpen)
{
    open(TreeModel::wide(200, 5));
    Q_EMIT browser->onShowItem(model->find("group 100"));
    const int top = window.scrolled() / rowHeight;
    browser->expandAll();
    window.settle();
    EXPECT_EQ(window.scrolled(), top * 6 * rowHeight);
}

TEST_F(ScenePanelTest, sortingKeepsTheCurrentRowInPlaceOrTheTop)
{
    open(TreeModel::wide(200, 5));
    const QPoint nameHeader(40, 10);
    window.click(nameHeader);
    window.click(nameHeader);
    EXPECT_TRUE(QTest::qWaitFor([this] { return window.rows().rfind("group 199 ", 0) == 0; }));
    EXPECT_EQ(window.scrolled(), 0);
    window.click(nameHeader);
    Q_EMIT browser->onShowItem(model->find("group 60"));
    const int place = 60 - window.scrolled() / rowHeight;
    window.click(window.at(120, place));
    ASSERT_EQ(selectedRows(), "group 60");
    window.click(nameHeader);
    window.click(nameHeader);
    const int expected = (199 - 60 - place) * rowHeight;
    EXPECT_TRUE(QTest::qWaitFor([&] { return window.scrolled() == expected; }))
        << window.scrolled() << ", not " << expected;
}

/// Gives twenty of its rows at a time, below its open first row too.
class LazyScene : public TreeModel
{
public:
    bool canFetchMore(const QModelIndex& parent) const override
    {
        return parent.row() <= 0 && !parent.parent().isValid() && rowCount(parent) < 100;
    }
    bool hasChildren(const QModelIndex& parent) const override
    {
        return canFetchMore(parent) || TreeModel::hasChildren(parent);
    }
    void fetchMore(const QModelIndex& parent) override
    {
        insert(parent, rowCount(parent), TreeModel::wide(20, 0));
    }
};

TEST_F(ScenePanelTest, fetchesRowsWhileScrollingAndOnRequest)
{
    open(std::make_unique<LazyScene>());
    EXPECT_TRUE(QTest::qWaitFor([this] { return window.count() >= 40; }));
    window.settle();
    EXPECT_LT(window.count(), 100);
    const auto seeAll = [this] {
        for (int page = 0; page < 24; ++page) {
            window.press(Qt::Key_PageDown);
            window.settle();
        }
        return window.count();
    };
    EXPECT_EQ(seeAll(), 100);
    window.press(Qt::Key_Home);
    window.press(Qt::Key_Right);
    EXPECT_TRUE(QTest::qWaitFor([this] { return window.count() >= 120; })) << window.count();
    window.settle();
    EXPECT_LT(window.count(), 200);
    EXPECT_EQ(seeAll(), 200);

    lumo::datamodels::proxy::TextPredicate predicate;
    predicate.setCondition("any", [](const QModelIndex&) { return true; });
    PanelWindow other;
    LazyScene half;
    test::TreeAssetModel halfAssets(&half);
    SceneBrowserData filtered(&halfAssets, nullptr, nullptr);
    filtered.setFilterPredicate(&predicate);
    other.open(&filtered);
    half.fetchMore({});
    ASSERT_TRUE(QTest::qWaitFor([&] { return other.item("fetch_all")->isVisible(); }));
    other.settle();
    EXPECT_LT(other.count(), 100);
    other.click(other.middle("fetch_all"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return other.count() == 200; })) << other.count();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !other.item("fetch_all")->isVisible(); }));
    filtered.setFilterPredicate(nullptr);
}

TEST_F(ScenePanelTest, showsAnOrdinaryModelWithoutABrowser)
{
    open(house());
    QStandardItemModel plain;
    plain.appendRow(new QStandardItem("one"));
    plain.item(0)->appendRow(new QStandardItem("two"));
    window.panel()->setProperty("browser", QVariant::fromValue<QObject*>(nullptr));
    window.panel()->setProperty("model", QVariant::fromValue<QObject*>(&plain));
    EXPECT_EQ(window.count(), 1);
    window.settle();
    window.click(window.at(12, 0));
    EXPECT_EQ(window.count(), 2);
    const auto* own = window.panel()->property("selectionModel").value<QItemSelectionModel*>();
    ASSERT_TRUE(own);
    window.click(window.at(120, 1));
    window.press(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(own->selectedIndexes().size(), 2);
    window.panel()->setProperty("model", QVariant::fromValue<QObject*>(nullptr));
    EXPECT_EQ(window.count(), 0);
}

TEST_F(ScenePanelTest, showsWhatTheEditorHangsAboveTheTree)
{
    open(house());
    QQmlComponent component(window.engine());
    component.setData("import QtQuick 2.15\n"
                      "Item { implicitHeight: context.objectName === 'statistics' ? 30 : 7 }",
                      {});
    QObject context;
    context.setObjectName("statistics");
    Header header;
    header.component = &component;
    header.context = &context;
    browser->setHeaderPanel(&header);
    EXPECT_EQ(window.item("header_slot")->height(), 30);
    window.click(QPoint(120, 30 + PanelWindow::headerHeight + 5));
    EXPECT_EQ(selectedRows(), "House");
    browser->setHeaderPanel(nullptr);
    EXPECT_EQ(window.item("header_slot")->height(), 0);
}

} // namespace
