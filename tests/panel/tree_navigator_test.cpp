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
        navigator.setOutline(&model);
        navigator.setProperty("pageRows", 4);
    }

    /// Commands separated by commas: "click Tree", "Ctrl click Tree", "key Shift+Down", "type la",
    /// "arrow House".
    void run(const QString& commands)
    {
        for (const QString& command : commands.split(", ", Qt::SkipEmptyParts)) {
            const QString argument = command.section(' ', -1);
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
        return names.join(' ').toStdString();
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
        return names.join(' ').toStdString();
    }

    TreeNavigator navigator;
};

// At the start the rows are: House Walls North South Roof Door Tree Lamp Larch.
TEST(TreeNavigatorTest, selectsInOrderAndFocuses)
{
    // Commands, what is selected then, and the current row.
    const std::tuple<const char*, const char*, const char*> rows[] = {
        {"click Tree, click Lamp", "Lamp", "Lamp"},
        {"click Tree, Ctrl click House", "Tree House", "House"},
        {"click Tree, Ctrl click Lamp, Ctrl click Tree", "Lamp", "Tree"},
        {"click North, Shift click Door", "North South Roof Door", "Door"},
        {"click Roof, Shift click North", "North South Roof", "North"},
        {"click North, Shift click Door, Shift click South", "North South", "South"},
        {"click Roof, Shift click Door, Shift click South", "South Roof", "South"},
        {"Shift click Tree", "Tree", "Tree"},
        {"click North, Ctrl click Tree, Ctrl Shift click Larch", "North Tree Lamp Larch", "Larch"},
        {"click South, arrow Walls, Shift click Roof", "Walls Roof", "Roof"},
        {"click North, Shift click Roof, press South", "North South Roof", "South"},
        {"click North, Shift click Roof, menu South", "North South Roof", "South"},
        {"click North, menu Tree", "Tree", "Tree"},
        {"click North, key Down, key Down", "Roof", "Roof"},
        {"key Down", "House", "House"},
        {"click Walls, key Up, key Up, key Up", "House", "House"},
        {"click North, key End", "Larch", "Larch"},
        {"click North, key Shift+Home", "House Walls North", "House"},
        {"click Tree, key Shift+End", "Tree Lamp Larch", "Larch"},
        {"click House, key PgDown", "South", "South"},
        {"click Walls, key PgUp", "House", "House"},
        {"click House, key Shift+PgDown", "House Walls North South", "South"},
        {"click North, key Shift+Down, key Shift+Down, key Shift+Up", "North South", "South"},
        {"click North, key Ctrl+Down, key Ctrl+Down", "North", "Roof"},
        {"click North, key Ctrl+Down, key Ctrl+Down, key Ctrl+Space", "North Roof", "Roof"},
        {"click North, key Ctrl+Down, key Ctrl+Down, key Ctrl+Space, key Ctrl+Shift+Down",
         "North Roof Door", "Door"},
        {"click House, key Right", "Walls", "Walls"},
        {"click Lamp, key Right", "Lamp", "Lamp"},
        {"click Lamp, key Right, key Right", "Bulb", "Bulb"},
        {"click South, key Left", "Walls", "Walls"},
        {"click Walls, key Left", "Walls", "Walls"},
        {"click Tree, key Left", "Tree", "Tree"},
        {"click House, type l", "Lamp", "Lamp"},
        {"click House, type ll", "Larch", "Larch"},
        {"click Larch, type lll", "Lamp", "Lamp"},
        {"click House, type lar", "Larch", "Larch"},
        {"click Tree, type la", "Lamp", "Lamp"},
        {"click House, type l, pause x, type t", "Tree", "Tree"},
        {"click House, type x", "House", "House"},
        {"click House, type b", "House", "House"},
    };
    for (const auto& [commands, selected, current] : rows) {
        Gestures gestures;
        gestures.run(commands);
        EXPECT_EQ(gestures.selected(), selected) << commands;
        EXPECT_EQ(gestures.current(), current) << commands;
    }
}

TEST(TreeNavigatorTest, aRangeIsOneCallWithSiblingRunsFromTopToBottom)
{
    Gestures gestures;
    gestures.run("click Walls");
    QSignalSpy changes(gestures.selection, &QItemSelectionModel::selectionChanged);
    gestures.run("Shift click Lamp");
    ASSERT_EQ(changes.size(), 1);
    QStringList runs;
    for (const QItemSelectionRange& range : gestures.selection->selection())
        runs += range.topLeft().data().toString() + "-" + range.bottomRight().data().toString();
    EXPECT_EQ(runs.join(' ').toStdString(), "Walls-Walls North-South Roof-Door Tree-Lamp");
}

TEST(TreeNavigatorTest, focusFollowsIntoTheRowThatHidesIt)
{
    for (const char* close : {"arrow House", "Shift arrow House", "key Left, key Left, key Left"}) {
        Gestures gestures;
        gestures.run(QString("click North, Ctrl click Tree, click South, ") + close);
        EXPECT_EQ(gestures.current(), "House") << close;
        EXPECT_EQ(gestures.shown(), QLatin1String(close).startsWith(QLatin1String("key"))
                                        ? "House Walls Roof Door Tree Lamp Larch"
                                        : "House Tree Lamp Larch")
            << close;
    }
}

TEST(TreeNavigatorTest, shiftTakesTheBranchAlong)
{
    Gestures gestures;
    gestures.run("click House, key Shift+Right");
    EXPECT_EQ(gestures.shown(), "House Walls North South Roof Tile Door Tree Lamp Larch");
    gestures.run("key Shift+Left, key Right");
    EXPECT_EQ(gestures.shown(), "House Walls Roof Door Tree Lamp Larch");
    gestures.run("key *");
    EXPECT_EQ(gestures.shown(), "House Walls North South Roof Tile Door Tree Lamp Larch");
}

TEST(TreeNavigatorTest, thePrimaryObjectIsTheOneSelectedLast)
{
    Gestures gestures;
    EXPECT_FALSE(gestures.navigator.primaryIndex().isValid());
    gestures.run("click Tree, Ctrl click North");
    EXPECT_EQ(gestures.navigator.primaryIndex().data().toString(), "North");
}

TEST(TreeNavigatorTest, gesturesSurviveModelsThatGo)
{
    Gestures gestures;
    gestures.run("click South");
    gestures.scene.reset();
    EXPECT_EQ(gestures.model.count(), 0);
    gestures.run("key Down, key Shift+Right, type l");
    gestures.navigator.expandAll();
    gestures.model.setSelectionModel(nullptr);
    gestures.run("key Down");
    EXPECT_EQ(gestures.model.count(), 0);
}

} // namespace
