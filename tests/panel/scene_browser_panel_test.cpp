#include "fake_browser.h"
#include "fake_scene.h"

#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickView>
#include <QRegularExpression>
#include <QStandardItemModel>
#include <QTest>

#include <gtest/gtest.h>

namespace {

constexpr int headerHeight = 24;
constexpr int rowHeight = 22;

/// The panel in a window of its own, over a browser that records what it is asked.
class ScenePanelTest : public ::testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        QQuickWindow::setSceneGraphBackend(QSGRendererInterface::Software);
    }
    ScenePanelTest()
    {
        QObject::connect(view.engine(), &QQmlEngine::warnings, &view,
                         [this](const QList<QQmlError>& errors) {
                             for (const QQmlError& error : errors)
                                 warnings += error.toString();
                         });
        view.engine()->addImportPath(QStringLiteral(KYR_QML_DIR));
        view.resize(320, headerHeight + 10 * rowHeight);
    }
    void TearDown() override
    {
        EXPECT_TRUE(warnings.isEmpty()) << warnings.join(QLatin1Char('\n')).toStdString();
    }

    void open(std::unique_ptr<FakeScene> newScene)
    {
        scene = std::move(newScene);
        browser = std::make_unique<FakeBrowser>(scene.get());
        QQmlComponent component(view.engine());
        component.setData("import Kyr.SceneOutline 1.0\nSceneBrowserPanel { focus: true }", {});
        panel = qobject_cast<QQuickItem*>(component.create());
        ASSERT_TRUE(panel) << component.errorString().toStdString();
        view.setContent({}, nullptr, panel);
        view.setResizeMode(QQuickView::SizeRootObjectToView);
        view.resize(320, headerHeight + 10 * rowHeight);
        panel->setProperty("browser", QVariant::fromValue<QObject*>(browser.get()));
        view.show();
        view.requestActivate();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&view));
        list = panel->findChild<QQuickItem*>(QStringLiteral("outline_list"));
        ASSERT_TRUE(list);
    }
    QPoint at(int x, int visibleRow) const
    {
        return {x, headerHeight + visibleRow * rowHeight + rowHeight / 2};
    }
    void click(QPoint point, Qt::KeyboardModifiers modifiers = {},
               Qt::MouseButton button = Qt::LeftButton)
    {
        QTest::mouseClick(&view, button, modifiers, point);
        QTest::qWait(1);
    }
    int count() const { return list->property("count").toInt(); }
    int scrolled() const
    {
        return int(list->property("contentY").toReal() - list->property("originY").toReal());
    }
    std::string selected() const
    {
        QStringList names;
        for (const QModelIndex& index : browser->selectionModel()->selection().indexes())
            names += index.data().toString();
        return names.join(QLatin1Char(' ')).toStdString();
    }
    QStringList calls(const QString& kind)
    {
        return browser->takeCalls().filter(QRegularExpression(QLatin1Char('^') + kind));
    }

    std::unique_ptr<FakeScene> scene;
    std::unique_ptr<FakeBrowser> browser;
    QStringList warnings;
    QQuickView view;
    QQuickItem* panel = nullptr;
    QQuickItem* list = nullptr;
};

std::unique_ptr<FakeScene> house()
{
    return FakeScene::fromText(QStringLiteral("+House\n  Wall\n  Roof\n    Tile\nTree\n"));
}

TEST_F(ScenePanelTest, SelectsByMouseAndKeyboard)
{
    open(house());
    EXPECT_EQ(count(), 4);
    click(at(120, 1));
    EXPECT_EQ(selected(), "Wall");
    click(at(120, 3), Qt::ControlModifier);
    EXPECT_EQ(selected(), "Wall Tree");
    QTest::keyClick(&view, Qt::Key_Up, Qt::ShiftModifier);
    EXPECT_EQ(selected(), "Roof Tree");
    QTest::keyClick(&view, Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(calls(QStringLiteral("select")), QStringList{QStringLiteral("select all")});
    click(at(120, 8));
    EXPECT_EQ(selected(), "");
}

TEST_F(ScenePanelTest, OpensRowsByTheirArrows)
{
    open(house());
    click(at(26, 2));
    EXPECT_EQ(count(), 5);
    EXPECT_EQ(selected(), "");
    click(at(12, 0));
    EXPECT_EQ(count(), 2);
    Q_EMIT browser->expandAllRequested();
    EXPECT_EQ(count(), 5);
    Q_EMIT browser->collapseAllRequested();
    EXPECT_EQ(count(), 2);
}

TEST_F(ScenePanelTest, TellsTheBrowserOfHoverMenuAndActivation)
{
    open(house());
    for (const QPoint point : {at(100, 1), at(160, 1), at(100, 2), QPoint(100, 5)})
        QTest::mouseMove(&view, point);
    EXPECT_EQ(calls(QStringLiteral("(un)?hover")).join(QLatin1Char(',')).toStdString(),
              "hover Wall,hover Roof,unhover");
    click(at(100, 3), {}, Qt::RightButton);
    EXPECT_EQ(selected(), "Tree");
    EXPECT_EQ(calls(QStringLiteral("menu")).size(), 1);
    QTest::mouseDClick(&view, Qt::LeftButton, {}, at(100, 1));
    EXPECT_EQ(calls(QStringLiteral("activate")), QStringList{QStringLiteral("activate Wall")});
}

TEST_F(ScenePanelTest, HoverEndsWhenTheRowUnderThePointerGoes)
{
    open(house());
    QTest::mouseMove(&view, at(100, 3));
    EXPECT_EQ(calls(QStringLiteral("hover")).size(), 1);
    scene->remove({}, 1, 1);
    QTest::qWait(1);
    EXPECT_EQ(calls(QStringLiteral("unhover")).size(), 1);
}

TEST_F(ScenePanelTest, RowButtonsSetTheirStateAndLeaveTheSelectionAlone)
{
    open(house());
    const QModelIndex wall = scene->find(QStringLiteral("Wall"));
    click(at(310, 1));
    EXPECT_FALSE(scene->item(wall)->visible);
    click(at(310, 1));
    EXPECT_TRUE(scene->item(wall)->visible);
    EXPECT_EQ(selected(), "");
}

TEST_F(ScenePanelTest, RevealsWhatIsHiddenAndNeverScrollsWhatIsInView)
{
    open(FakeScene::wide(100, 3));
    panel->setProperty("alwaysReveal", true);
    const auto selectElsewhere = [&](const char* name) {
        browser->selectionModel()->select(scene->find(QLatin1String(name)),
                                          QItemSelectionModel::ClearAndSelect);
        QTest::qWait(1);
    };
    selectElsewhere("group 4");
    EXPECT_EQ(scrolled(), 0);
    selectElsewhere("mesh 50.1");
    EXPECT_EQ(count(), 103);
    EXPECT_EQ(scrolled(), (50 + 2 + 1 - 10) * rowHeight) << "only as far as it takes";
    selectElsewhere("group 45");
    EXPECT_EQ(scrolled(), 43 * rowHeight) << "in view already";
    Q_EMIT browser->onShowItem(scene->find(QStringLiteral("group 0")));
    EXPECT_EQ(scrolled(), 0);
    QTest::keyClick(&view, Qt::Key_F);
    EXPECT_EQ(scrolled(), (45 + 1 - 10) * rowHeight);
}

TEST_F(ScenePanelTest, KeepsTheTopRowWhenAllRowsOpen)
{
    open(FakeScene::wide(200, 5));
    Q_EMIT browser->onShowItem(scene->find(QStringLiteral("group 100")));
    const int top = scrolled() / rowHeight;
    Q_EMIT browser->expandAllRequested();
    QTest::qWait(1);
    EXPECT_EQ(scrolled(), top * 6 * rowHeight);
}

TEST_F(ScenePanelTest, ShowsAnOrdinaryModelWithoutABrowser)
{
    open(house());
    QStandardItemModel model;
    model.appendRow(new QStandardItem(QStringLiteral("one")));
    model.item(0)->appendRow(new QStandardItem(QStringLiteral("two")));
    panel->setProperty("browser", QVariant::fromValue<QObject*>(nullptr));
    panel->setProperty("model", QVariant::fromValue<QObject*>(&model));
    EXPECT_EQ(count(), 1);
    QTest::qWait(1);
    click(at(12, 0));
    EXPECT_EQ(count(), 2);
    const auto* selection = panel->property("selectionModel").value<QItemSelectionModel*>();
    ASSERT_TRUE(selection);
    click(at(120, 1));
    QTest::keyClick(&view, Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(selection->selectedIndexes().size(), 2);
    panel->setProperty("model", QVariant::fromValue<QObject*>(nullptr));
    EXPECT_EQ(count(), 0);
}

TEST_F(ScenePanelTest, ShowsWhatTheEditorHangsAboveTheTree)
{
    open(house());
    QQmlComponent component(view.engine());
    component.setData("import QtQuick 2.15\n"
                      "Item { implicitHeight: context.objectName === 'statistics' ? 30 : 7 }",
                      {});
    QObject context;
    context.setObjectName(QStringLiteral("statistics"));
    FakePanel header;
    header.component = &component;
    header.context = &context;
    browser->setProperty("headerPanel", QVariant::fromValue(&header));
    EXPECT_EQ(panel->findChild<QQuickItem*>(QStringLiteral("header_slot"))->height(), 30);
    click(QPoint(120, 30 + headerHeight + 5));
    EXPECT_EQ(selected(), "House");
    browser->setProperty("headerPanel", QVariant::fromValue<QObject*>(nullptr));
    EXPECT_EQ(panel->findChild<QQuickItem*>(QStringLiteral("header_slot"))->height(), 0);
}

} // namespace
