// The panel as a screen reader walks it.

#include "scene_panel_fixture.h"

#include <QAccessible>

#include <algorithm>
#include <iterator>

namespace {

class PanelAccessibilityTest : public ScenePanelTest
{
protected:
    static QAccessibleInterface* interfaceOf(QQuickItem* item)
    {
        return QAccessible::queryAccessibleInterface(item);
    }
    static std::string text(QAccessibleInterface* of, QAccessible::Text kind)
    {
        return of->text(kind).toStdString();
    }
    /// Children that show, from top to bottom.
    static std::vector<QAccessibleInterface*> children(QAccessibleInterface* of)
    {
        std::vector<QAccessibleInterface*> shown;
        for (int i = 0; i < of->childCount(); ++i) {
            if (!of->child(i)->state().invisible)
                shown.push_back(of->child(i));
        }
        std::stable_sort(shown.begin(), shown.end(),
                         [](auto* a, auto* b) { return a->rect().top() < b->rect().top(); });
        return shown;
    }
    std::vector<QAccessibleInterface*> rows() const
    {
        std::vector<QAccessibleInterface*> rows =
            children(interfaceOf(window.item("outline_list")));
        rows.erase(std::remove_if(rows.begin(), rows.end(),
                                  [](auto* row) { return row->role() != QAccessible::TreeItem; }),
                   rows.end());
        return rows;
    }
};

TEST_F(PanelAccessibilityTest, rowsTellTheirNameLevelAndState)
{
    open(house());
    QAccessibleInterface* tree = interfaceOf(window.item("outline_list"));
    ASSERT_TRUE(tree);
    EXPECT_EQ(tree->role(), QAccessible::Tree);
    EXPECT_EQ(text(tree, QAccessible::Name), "Scene");
    window.click(window.at(120, 2));
    const std::pair<const char*, const char*> expected[] = {
        {"House", "mesh, level 1, expanded"},
        {"Wall", "mesh, level 2"},
        {"Roof", "mesh, level 2, collapsed, selected"},
        {"Tree", "mesh, level 1"},
    };
    const auto shown = rows();
    ASSERT_EQ(shown.size(), std::size(expected));
    for (std::size_t row = 0; row < shown.size(); ++row) {
        EXPECT_EQ(text(shown[row], QAccessible::Name), expected[row].first);
        EXPECT_EQ(text(shown[row], QAccessible::Description), expected[row].second);
        EXPECT_EQ(shown[row]->state().selectable, 1u);
        EXPECT_EQ(shown[row]->state().selected, row == 2 ? 1u : 0u) << row;
        EXPECT_EQ(shown[row]->state().focused, row == 2 ? 1u : 0u) << row;
        EXPECT_EQ(shown[row]->parent()->object(), tree->object());
    }
    window.press(Qt::Key_Right);
    EXPECT_EQ(text(rows()[2], QAccessible::Description), "mesh, level 2, expanded, selected");
    EXPECT_EQ(text(rows()[3], QAccessible::Name), "Tile");
    EXPECT_EQ(text(rows()[3], QAccessible::Description), "mesh, level 3");
}

TEST_F(PanelAccessibilityTest, rowButtonsAreCheckBoxes)
{
    open(house());
    const auto button = [this] {
        for (QAccessibleInterface* child : children(rows()[1])) {
            if (child->role() == QAccessible::CheckBox)
                return child;
        }
        return static_cast<QAccessibleInterface*>(nullptr);
    };
    ASSERT_TRUE(button());
    EXPECT_EQ(text(button(), QAccessible::Name), "Visible");
    EXPECT_EQ(button()->state().checkable, 1u);
    EXPECT_EQ(button()->state().checked, 1u);
    model->setData(model->find("Wall"), false, TreeModel::EnabledRole);
    EXPECT_EQ(button()->state().checked, 0u);
}

} // namespace
