#include "outline_rows.h"

#include <panel/gestures/tree_navigator.h>

#include <QKeySequence>
#include <QSignalSpy>

#include <gtest/gtest.h>

namespace {

using kyr::panel::TreeNavigator;

const char* const street = "+House\n"
                           "  +Walls\n"
                           "    North\n"
                           "    South\n"
                           "  Roof\n"
                           "    Tile\n"
                           "  Door\n"
                           "Tree\n"
                           "Lamp\n"
                           "  Bulb\n"
                           "Larch\n";

class Gestures : public Outline
{
public:
    Gestures() : Outline(street)
    {
        navigator.setFlatModel(&model);
        navigator.setProperty("pageRows", 4);
    }

    /// Commands separated by commas: "click Tree", "Ctrl click Tree", "key Shift+Down", "type la",
    /// "arrow House".
    void run(const QString& commands)
    {
        for (const QString& command : commands.split(QStringLiteral(", "), Qt::SkipEmptyParts)) {
            const QString argument = command.section(QLatin1Char(' '), -1);
            int modifiers = Qt::NoModifier;
            modifiers |= command.contains(QLatin1String("Ctrl ")) ? int(Qt::ControlModifier) : 0;
            modifiers |= command.contains(QLatin1String("Shift ")) ? int(Qt::ShiftModifier) : 0;
            const int row = scene ? model.rowOf(scene->find(argument)) : -1;
            if (command.startsWith(QLatin1String("key"))) {
                const int key = QKeySequence(argument)[0];
                const int mask = int(Qt::KeyboardModifierMask);
                navigator.key(key & ~mask, key & mask, {});
            } else if (command.startsWith(QLatin1String("type"))) {
                for (const QChar letter : argument)
                    navigator.key(letter.toUpper().unicode(), Qt::NoModifier, letter);
            } else if (command.startsWith(QLatin1String("pause"))) {
                navigator.typeAhead().stop();
            } else if (command.contains(QLatin1String("press"))) {
                navigator.press(row, modifiers);
            } else if (command.contains(QLatin1String("menu"))) {
                navigator.pressForMenu(row);
            } else if (command.contains(QLatin1String("arrow"))) {
                navigator.toggle(row, modifiers);
            } else {
                navigator.press(row, modifiers);
                navigator.release(row, modifiers);
            }
        }
    }

    std::string selected() const
    {
        QStringList names;
        for (const QModelIndex& index : selection->selection().indexes())
            names += index.data().toString();
        return names.join(QLatin1Char(' ')).toStdString();
    }
    std::string current() const
    {
        return selection->currentIndex().data().toString().toStdString();
    }
    std::string shown() const
    {
        QStringList names;
        for (int row = 0; row < model.count(); ++row)
            names += model.index(row).data().toString();
        return names.join(QLatin1Char(' ')).toStdString();
    }

    TreeNavigator navigator;
};

struct Case
{
    const char* name;
    const char* commands;
    const char* selected;
    const char* current;
};

class TreeNavigatorSelectionTest : public ::testing::TestWithParam<Case>
{};

// At the start the rows are: House Walls North South Roof Door Tree Lamp Larch.
TEST_P(TreeNavigatorSelectionTest, SelectsInOrderAndFocuses)
{
    Gestures gestures;
    gestures.run(QLatin1String(GetParam().commands));
    EXPECT_EQ(gestures.selected(), GetParam().selected);
    EXPECT_EQ(gestures.current(), GetParam().current);
}

INSTANTIATE_TEST_SUITE_P(
    MouseAndKeys, TreeNavigatorSelectionTest,
    ::testing::Values(
        Case{"click", "click Tree, click Lamp", "Lamp", "Lamp"},
        Case{"ctrl_adds_last", "click Tree, Ctrl click House", "Tree House", "House"},
        Case{"ctrl_takes_away", "click Tree, Ctrl click Lamp, Ctrl click Tree", "Lamp", "Tree"},
        Case{"shift_over_levels", "click North, Shift click Door", "North South Roof Door", "Door"},
        Case{"shift_upwards", "click Roof, Shift click North", "North South Roof", "North"},
        Case{"shift_shrinks", "click North, Shift click Door, Shift click South", "North South",
             "South"},
        Case{"shift_turns_round", "click Roof, Shift click Door, Shift click South", "South Roof",
             "South"},
        Case{"shift_without_anchor", "Shift click Tree", "Tree", "Tree"},
        Case{"ctrl_shift_adds", "click North, Ctrl click Tree, Ctrl Shift click Larch",
             "North Tree Lamp Larch", "Larch"},
        Case{"anchor_in_closed_branch", "click South, arrow Walls, Shift click Roof", "Walls Roof",
             "Roof"},
        Case{"press_keeps_selection", "click North, Shift click Roof, press South",
             "North South Roof", "South"},
        Case{"menu_inside_selection", "click North, Shift click Roof, menu South",
             "North South Roof", "South"},
        Case{"menu_outside_selection", "click North, menu Tree", "Tree", "Tree"},
        Case{"down", "click North, key Down, key Down", "Roof", "Roof"},
        Case{"first_down", "key Down", "House", "House"},
        Case{"up_stops_at_top", "click Walls, key Up, key Up, key Up", "House", "House"},
        Case{"home_end", "click North, key End", "Larch", "Larch"},
        Case{"shift_home", "click North, key Shift+Home", "House Walls North", "House"},
        Case{"shift_end", "click Tree, key Shift+End", "Tree Lamp Larch", "Larch"},
        Case{"page_down", "click House, key PgDown", "South", "South"},
        Case{"page_up_to_top", "click Walls, key PgUp", "House", "House"},
        Case{"shift_page", "click House, key Shift+PgDown", "House Walls North South", "South"},
        Case{"shift_down_then_up", "click North, key Shift+Down, key Shift+Down, key Shift+Up",
             "North South", "South"},
        Case{"ctrl_moves_focus_alone", "click North, key Ctrl+Down, key Ctrl+Down", "North",
             "Roof"},
        Case{"ctrl_space_toggles", "click North, key Ctrl+Down, key Ctrl+Down, key Ctrl+Space",
             "North Roof", "Roof"},
        Case{"ctrl_shift_down_adds",
             "click North, key Ctrl+Down, key Ctrl+Down, key Ctrl+Space, key Ctrl+Shift+Down",
             "North Roof Door", "Door"},
        Case{"right_to_first_child", "click House, key Right", "Walls", "Walls"},
        Case{"right_opens_first", "click Lamp, key Right", "Lamp", "Lamp"},
        Case{"right_opens_then_enters", "click Lamp, key Right, key Right", "Bulb", "Bulb"},
        Case{"left_to_parent", "click South, key Left", "Walls", "Walls"},
        Case{"left_closes_first", "click Walls, key Left", "Walls", "Walls"},
        Case{"left_on_a_leaf_at_top", "click Tree, key Left", "Tree", "Tree"},
        Case{"type_one", "click House, type l", "Lamp", "Lamp"},
        Case{"type_again_steps", "click House, type ll", "Larch", "Larch"},
        Case{"type_wraps", "click Larch, type lll", "Lamp", "Lamp"},
        Case{"type_more_narrows", "click House, type lar", "Larch", "Larch"},
        Case{"type_after_pause", "click House, type l, pause x, type t", "Tree", "Tree"},
        Case{"type_nothing", "click House, type x", "House", "House"},
        Case{"type_skips_hidden", "click House, type b", "House", "House"}),
    [](const auto& test) { return test.param.name; });

TEST(TreeNavigatorTest, ARangeIsOneCallWithSiblingRunsFromTopToBottom)
{
    Gestures gestures;
    gestures.run(QStringLiteral("click Walls"));
    QSignalSpy changes(gestures.selection, &QItemSelectionModel::selectionChanged);
    gestures.run(QStringLiteral("Shift click Lamp"));
    ASSERT_EQ(changes.size(), 1);
    QStringList runs;
    for (const QItemSelectionRange& range : gestures.selection->selection())
        runs += QStringLiteral("%1-%2").arg(range.topLeft().data().toString(),
                                            range.bottomRight().data().toString());
    EXPECT_EQ(runs.join(QLatin1Char(' ')).toStdString(),
              "Walls-Walls North-South Roof-Door Tree-Lamp");
}

TEST(TreeNavigatorTest, FocusFollowsIntoTheRowThatHidesIt)
{
    for (const char* close : {"arrow House", "Shift arrow House", "key Left, key Left, key Left"}) {
        Gestures gestures;
        gestures.run(QStringLiteral("click North, Ctrl click Tree, click South, ") +
                     QLatin1String(close));
        EXPECT_EQ(gestures.current(), "House") << close;
        EXPECT_EQ(gestures.shown(), QLatin1String(close).startsWith(QLatin1String("key"))
                                        ? "House Walls Roof Door Tree Lamp Larch"
                                        : "House Tree Lamp Larch")
            << close;
    }
}

TEST(TreeNavigatorTest, ShiftTakesTheBranchAlong)
{
    Gestures gestures;
    gestures.run(QStringLiteral("click House, key Shift+Right"));
    EXPECT_EQ(gestures.shown(), "House Walls North South Roof Tile Door Tree Lamp Larch");
    gestures.run(QStringLiteral("key Shift+Left, key Right"));
    EXPECT_EQ(gestures.shown(), "House Walls Roof Door Tree Lamp Larch");
    gestures.run(QStringLiteral("key *"));
    EXPECT_EQ(gestures.shown(), "House Walls North South Roof Tile Door Tree Lamp Larch");
}

TEST(TreeNavigatorTest, ThePrimaryObjectIsTheOneSelectedLast)
{
    Gestures gestures;
    EXPECT_FALSE(gestures.navigator.primaryIndex().isValid());
    gestures.run(QStringLiteral("click Tree, Ctrl click North"));
    EXPECT_EQ(gestures.navigator.primaryIndex().data().toString(), QStringLiteral("North"));
}

TEST(TreeNavigatorTest, GesturesSurviveModelsThatGo)
{
    Gestures gestures;
    gestures.run(QStringLiteral("click South"));
    gestures.scene.reset();
    EXPECT_EQ(gestures.model.count(), 0);
    gestures.run(QStringLiteral("key Down, key Shift+Right, type l"));
    gestures.navigator.expandAll();
    gestures.model.setSelectionModel(nullptr);
    gestures.run(QStringLiteral("key Down"));
    EXPECT_EQ(gestures.model.count(), 0);
}

} // namespace
