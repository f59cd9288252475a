// Filtering and renaming in the panel's window.

#include "editor_parts.h"
#include "scene_panel_fixture.h"

#include <host/ui/text_predicate.h>

#include <QSignalSpy>

namespace {

using lumo::datamodels::proxy::TextPredicate;

class PanelEditingTest : public ScenePanelTest
{
protected:
    void openFilter(TreeModel::Items rows)
    {
        open(std::move(rows));
        browser->setFilterPredicate(&predicate);
        window.settle();
    }

    TextPredicate predicate;
};

TEST_F(PanelEditingTest, filtersByKeyboardAndCountsWhatItHides)
{
    openFilter(house());
    selectRow("Tree", QItemSelectionModel::Select);
    window.press(Qt::Key_F, Qt::ControlModifier);
    window.type("tile");
    EXPECT_TRUE(QTest::qWaitFor([this] { return window.rows() == "House Roof Tile"; }))
        << window.rows();
    window.settle();
    EXPECT_EQ(window.item("match_count")->property("text").toString(), "1");
    EXPECT_EQ(selectedRows(), "Tree");
    window.press(Qt::Key_Down);
    window.press(Qt::Key_End);
    EXPECT_EQ(selectedRows(), "Tile") << "Down goes to the tree";
    window.press(Qt::Key_F, Qt::ControlModifier);
    window.press(Qt::Key_Escape);
    EXPECT_EQ(window.rows(), "House Wall Roof Tree");
    EXPECT_EQ(predicate.text(), QString());
    EXPECT_FALSE(window.item("match_count")->isVisible());
}

TEST_F(PanelEditingTest, countsWhatTheFilterHidesBelowACollapsedRow)
{
    openFilter(house());
    predicate.setText("o");
    ASSERT_TRUE(QTest::qWaitFor([this] { return window.rows() == "House Roof"; }));
    window.press(Qt::Key_F, Qt::ControlModifier);
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Home, Qt::Key_Left})
        window.press(key);
    ASSERT_EQ(window.rows(), "House");
    selectRow("Roof");
    const auto hidden = [this] { return window.panel()->property("hiddenSelectionCount").toInt(); };
    window.settle();
    EXPECT_EQ(hidden(), 0);
    model->setData(model->find("Roof"), "Gable", Qt::EditRole);
    EXPECT_TRUE(QTest::qWaitFor([&] { return hidden() == 1; }));
}

TEST_F(PanelEditingTest, saysWhatItDoesNotUnderstand)
{
    openFilter(house());
    const QQuickItem* error = window.item("filter_error");
    window.press(Qt::Key_F, Qt::ControlModifier);
    window.type("tile siz>2");
    ASSERT_TRUE(QTest::qWaitFor([this] { return window.rows() == "House Roof Tile"; }));
    EXPECT_TRUE(error->isVisible());
    EXPECT_EQ(error->property("text").toString(), "No property is called “siz”");
    window.press(Qt::Key_Escape);
    EXPECT_FALSE(error->isVisible());
    window.click(window.middle("expression_switch"));
    EXPECT_TRUE(predicate.isRegularExpression());
    window.press(Qt::Key_F, Qt::ControlModifier);
    window.type("(");
    EXPECT_TRUE(error->isVisible());
    EXPECT_EQ(window.rows(), "House Wall Roof Tree");
    window.type("a)");
    EXPECT_FALSE(error->isVisible());
}

TEST_F(PanelEditingTest, namesTheFilterThatFindsNothingAndClearsIt)
{
    Filter kind("Type", {"All", "Lights"});
    openFilter(house());
    browser->addFilterData(&kind);
    kind.setProperty("currentIndex", 1);
    window.press(Qt::Key_F, Qt::ControlModifier);
    window.type("<b>");
    const QQuickItem* text = window.item("empty_text");
    ASSERT_TRUE(QTest::qWaitFor([&] { return text->isVisible(); }));
    EXPECT_EQ(text->property("text").toString(), "Nothing found for “<b>”, Type: Lights");
    window.click(window.middle("clear_filter"));
    EXPECT_TRUE(QTest::qWaitFor([this] { return window.rows() == "House Wall Roof Tree"; }));
    EXPECT_EQ(kind.currentIndex(), 0);
    EXPECT_EQ(window.item("filter_field")->property("text").toString(), QString());
}

TEST_F(PanelEditingTest, helpGivesExamplesToUse)
{
    openFilter(house());
    window.press(Qt::Key_F, Qt::ControlModifier);
    for (const Qt::Key key : {Qt::Key_F1, Qt::Key_Down, Qt::Key_Down, Qt::Key_Return})
        window.press(key);
    EXPECT_EQ(predicate.text(), "lamp type:light");
    EXPECT_EQ(window.item("filter_field")->property("text").toString(), predicate.text());
    window.type("x");
    EXPECT_EQ(predicate.text(), "lamp type:lightx") << "typing goes on";
    predicate.setText("roof");
    EXPECT_EQ(window.item("filter_field")->property("text").toString(), "roof");
}

TEST_F(PanelEditingTest, renamesInPlaceUntilTheNameIsGood)
{
    open(house());
    QSignalSpy steps(window.panel(), SIGNAL(editBegins(QString)));
    window.click(window.at(120, 1));
    window.press(Qt::Key_F2);
    window.press(Qt::Key_Delete);
    window.press(Qt::Key_Return);
    EXPECT_TRUE(window.item("cell_field")->isVisible()) << "an empty name is refused";
    window.type("Fence");
    window.press(Qt::Key_Return);
    EXPECT_EQ(window.rows(), "House Fence Roof Tree");
    EXPECT_FALSE(window.item("cell_field")->isVisible());
    EXPECT_EQ(steps.size(), 2);
    window.press(Qt::Key_F2);
    window.type("Gate");
    window.press(Qt::Key_Escape);
    EXPECT_EQ(window.rows(), "House Fence Roof Tree");
    window.press(Qt::Key_Down);
    EXPECT_EQ(selectedRows(), "Roof") << "the tree has the keyboard again";
}

TEST_F(PanelEditingTest, renamingEndsWithItsRow)
{
    open(house());
    window.click(window.at(120, 1));
    window.press(Qt::Key_F2);
    model->remove(model->find("House"), 0, 1);
    window.settle();
    EXPECT_FALSE(window.item("cell_field")->isVisible());
    EXPECT_EQ(window.rows(), "House Roof Tree");
}

} // namespace
