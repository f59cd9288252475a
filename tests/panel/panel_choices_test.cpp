// The choices of modes and filters in the panel's window.

#include "editor_parts.h"
#include "scene_panel_fixture.h"

#include <QQmlProperty>

namespace {

TEST_F(ScenePanelTest, choicesShowInFullAndAreMadeByMouseAndByKeys)
{
    Modes mode;
    Filter kind("Type", {"All", "Meshes", "Lights"});
    Filter visibility("Visibility", {"All", "Visible", "Hidden"});
    open(house());
    browser->setSelectableData(&mode);
    browser->addFilterData(&kind);
    browser->addFilterData(&visibility);
    window.settle();
    for (const char* name : {"mode_choice", "filter_choice_0", "filter_choice_1"}) {
        const QQuickItem* combo = window.item(name);
        const auto* text = combo->property("contentItem").value<QQuickItem*>();
        EXPECT_FALSE(text->property("truncated").toBool()) << name;
        EXPECT_LE(combo->x() + combo->width(), PanelWindow::width) << name;
    }

    const QQuickItem* choice = window.item("filter_choice_1");
    window.click(window.middle("filter_choice_1"));
    auto* list = QQmlProperty::read(choice, "popup.contentItem").value<QQuickItem*>();
    QQuickItem* hidden = nullptr;
    ASSERT_TRUE(QTest::qWaitFor([&] {
        QMetaObject::invokeMethod(list, "itemAtIndex", Q_RETURN_ARG(QQuickItem*, hidden),
                                  Q_ARG(int, 2));
        return hidden && QQmlProperty::read(choice, "popup.opened").toBool();
    }));
    window.click(hidden->mapToScene({hidden->width() / 2, hidden->height() / 2}).toPoint());
    EXPECT_EQ(visibility.currentIndex(), 2);
    window.press(Qt::Key_Space);
    window.press(Qt::Key_Up);
    EXPECT_EQ(visibility.currentIndex(), 2) << "not before it is confirmed";
    window.press(Qt::Key_Return);
    EXPECT_EQ(visibility.currentIndex(), 1);
    EXPECT_EQ(kind.currentIndex(), 0);
    visibility.setLabels({"All", "Shown", "Hidden", "Half"});
    EXPECT_EQ(choice->property("displayText").toString(), "Visibility: Shown");
    browser->setSelectableData(nullptr);
    browser->removeFilterData(&kind);
    browser->removeFilterData(&visibility);
}

} // namespace
