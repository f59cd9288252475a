// The choices of modes and filters in the panel's window.

#include "editor_parts.h"
#include "scene_panel_fixture.h"

#include <QQmlProperty>

namespace {

class PanelChoicesTest : public ScenePanelTest
{
protected:
    void openChoices()
    {
        open(house());
        browser->setSelectableData(&mode);
        browser->addFilterData(&kind);
        browser->addFilterData(&visibility);
        window.settle();
    }
    /// Opens the choice and clicks on one of its entries.
    void choose(const char* choice, int entry)
    {
        const QQuickItem* combo = window.item(choice);
        ASSERT_TRUE(combo) << choice;
        window.click(window.middle(choice));
        auto* list =
            QQmlProperty::read(combo, QStringLiteral("popup.contentItem")).value<QQuickItem*>();
        QQuickItem* label = nullptr;
        ASSERT_TRUE(QTest::qWaitFor([&] {
            QMetaObject::invokeMethod(list, "itemAtIndex", Q_RETURN_ARG(QQuickItem*, label),
                                      Q_ARG(int, entry));
            return label && QQmlProperty::read(combo, QStringLiteral("popup.opened")).toBool();
        }));
        window.click(label->mapToScene({label->width() / 2, label->height() / 2}).toPoint());
    }

    Modes mode;
    Filter kind{"Type", {"All", "Meshes", "Lights"}};
    Filter visibility{"Visibility", {"All", "Visible", "Hidden"}};
};

TEST_F(PanelChoicesTest, FiltersAreChosenByMouseAndByKeys)
{
    openChoices();
    choose("filter_choice_1", 2);
    EXPECT_EQ(visibility.currentIndex(), 2);
    window.press(Qt::Key_Space);
    window.press(Qt::Key_Up);
    EXPECT_EQ(visibility.currentIndex(), 2) << "not before it is confirmed";
    window.press(Qt::Key_Return);
    EXPECT_EQ(visibility.currentIndex(), 1);
    EXPECT_EQ(kind.currentIndex(), 0);
}

TEST_F(PanelChoicesTest, NoChoiceIsCutShort)
{
    openChoices();
    for (const char* name : {"mode_choice", "filter_choice_0", "filter_choice_1"}) {
        const QQuickItem* combo = window.item(name);
        const auto* text = combo->property("contentItem").value<QQuickItem*>();
        EXPECT_FALSE(text->property("truncated").toBool()) << name;
        EXPECT_LE(combo->x() + combo->width(), PanelWindow::width) << name;
    }
}

} // namespace
