// Building a scene with the keys and the pointer of the display: one journey a feature.

#include "editor_test.h"
#include "row_of_boxes.h"

#include <editor/document/transform_math.h>

#include <QClipboard>
#include <QMenu>
#include <QTemporaryDir>

namespace test {

class EditorBuildingTest : public EditorTest
{
protected:
    QString children(const char* name)
    {
        QStringList names;
        for (const editor::SceneObjectPtr& child : object(name)->children())
            names.append(child->displayName());
        return names.join(' ');
    }
    QMatrix4x4 world(const char* name) { return editor::worldTransform(*object(name)); }
    QStringList menuEntries()
    {
        display.press("Menu");
        QMenu* menu = openedMenu();
        QStringList entries;
        for (const QAction* action : menu->actions()) {
            if (!action->isSeparator())
                entries.append(action->objectName());
        }
        menu->close();
        return entries;
    }

    QTemporaryDir directory;
};

TEST_F(EditorBuildingTest, groupsKeepPlacesInTheWorld)
{
    set("Lamps", "transform.position", "1 2 3");
    set("Lamps", "transform.rotation", "0 90 0");
    const QMatrix4x4 left = world("Left");
    const QMatrix4x4 near = world("Near");
    click(rowPoint("Near"));
    select({"Near", "Left"});
    display.press("ctrl+g");
    EXPECT_EQ(children("Group"), "Left Near");
    EXPECT_EQ(children("Stage"), "Group Lamps Far") << "where Left was";
    EXPECT_EQ(undoName(), "Group 2 objects");
    EXPECT_EQ(selection(), QStringList({"Group"}));
    EXPECT_TRUE(qFuzzyCompare(world("Left"), left));
    EXPECT_EQ(world("Near"), near);

    set("Group", "transform.scale", "2 2 2");
    const QMatrix4x4 scaled = world("Near");
    display.press("ctrl+shift+g");
    EXPECT_EQ(children("Stage"), "Left Near Lamps Far");
    EXPECT_EQ(undoName(), "Ungroup Group");
    EXPECT_TRUE(qFuzzyCompare(world("Near"), scaled));
    display.press("ctrl+z ctrl+z ctrl+z");
    EXPECT_EQ(children("Stage"), "Lamps Near Far");
    EXPECT_EQ(world("Left"), left);
}

TEST_F(EditorBuildingTest, objectsTravelOverTheClipboard)
{
    click(rowPoint("Lamps"));
    display.press("ctrl+c ctrl+v");
    EXPECT_EQ(children("Stage"), "Lamps Lamps 2 Near Far");
    EXPECT_EQ(children("Lamps 2"), "Left Right");
    EXPECT_EQ(undoName(), "Paste Lamps 2");
    EXPECT_NE(object("Lamps 2")->id(), object("Lamps")->id());
    display.press("ctrl+d");
    EXPECT_EQ(undoName(), "Duplicate Lamps 2");
    display.press("ctrl+z");

    click(rowPoint("Far"));
    display.press("ctrl+x");
    EXPECT_EQ(object("Far"), nullptr);
    const QString text = QGuiApplication::clipboard()->text();
    EXPECT_TRUE(text.startsWith("<?xml"));
    set("Lamps", "transform.position", "5 0 0");
    select({"Left"});
    display.press("ctrl+v");
    EXPECT_EQ(children("Lamps"), "Left Far Right");
    EXPECT_EQ(object("Far")->transform()->position.x, -3) << "2 in the world, below 5";
}

TEST_F(EditorBuildingTest, manyObjectsTravelWhileTheWindowStaysLive)
{
    constexpr int count = 50000;
    session.document()->open(makeRowOfBoxes(count, 0.5f), {});
    QGuiApplication::clipboard()->setText("mine");
    display.press("ctrl+a");
    const std::pair<const char*, std::function<void()>> commands[] = {
        {"Copying objects was cancelled", [this] { session.build()->copyObjects(); }},
        {"Pasting objects was cancelled", [this] { session.build()->pasteObjects(); }},
    };
    for (const auto& [canceled, run] : commands) {
        run();
        ASSERT_TRUE(session.task()->isRunning()) << canceled;
        display.press("Delete Escape");
        EXPECT_FALSE(session.task()->isRunning());
        EXPECT_EQ(message(), canceled);
        EXPECT_EQ(session.document()->objectCount(), count);
        EXPECT_FALSE(session.document()->isModified());
        run();
        ASSERT_TRUE(QTest::qWaitFor([this] { return !session.task()->isRunning(); }, 60000));
    }
    EXPECT_EQ(session.document()->objectCount(), 2 * count);
    EXPECT_EQ(session.selection().objects().size(), std::size_t(count));
    EXPECT_EQ(undoName(), "Paste 50000 objects");
}

TEST_F(EditorBuildingTest, hostileClipboardIsRefusedWithAReason)
{
    const auto scene = [](const QString& inside) {
        return "<kyrscene version=\"1\"><scene>" + inside + "</scene></kyrscene>";
    };
    const std::pair<QString, const char*> texts[] = {
        {"no document", "no objects"},
        {"<root><objects/></root>", "Paste Properties"},
        {scene({}), "empty scene"},
        {scene("<object kind=\"demon\"/>"), "no kind of object"},
        {"<kyrscene version=\"1\"><scene>", "line 1"},
        {scene(QString("<object kind=\"group\">").repeated(2000) +
               QString("</object>").repeated(2000)),
         "levels deep"},
        {scene(QString("<object kind=\"group\"/>").repeated(200001)), "more than 200000 objects"},
        {"<kyrscene version=\"1\"><geometry id=\"1\">AAAA</geometry><scene/></kyrscene>",
         "damaged"},
    };
    click(rowPoint("Near"));
    for (const auto& [text, reason] : texts) {
        QGuiApplication::clipboard()->setText(text);
        display.press("ctrl+v");
        EXPECT_TRUE(QTest::qWaitFor([&, part = reason] { return message().contains(part); }))
            << reason << ": " << qPrintable(message());
        EXPECT_FALSE(session.document()->isModified()) << reason;
    }
}

TEST_F(EditorBuildingTest, addedObjectsStandInTheViewAndAreSelected)
{
    click(rowPoint("Lamps"));
    display.press("alt+a");
    EXPECT_TRUE(QTest::qWaitFor([this] { return shows("add_box"); }));
    click(centre(item("add_box")));
    ASSERT_EQ(selection(), QStringList({"Box"}));
    EXPECT_EQ(children("Lamps"), "Left Right Box");
    EXPECT_EQ(undoName(), "Add Box");
    EXPECT_TRUE(
        qFuzzyCompare(world("Box").column(3).toVector3D(), session.viewport()->camera().target()));
    for (const editor::NewObject& what : editor::newObjects()) {
        session.build()->add(what);
        const editor::SceneObject* added = session.selectionStatus()->primary();
        EXPECT_EQ(added->kind(), what.kind);
        EXPECT_TRUE(!added->mesh() || added->mesh()->triangleCount() > 0) << what.name;
    }
}

TEST_F(EditorBuildingTest, manyAreRenamedByAPatternThatShowsFirst)
{
    click(rowPoint("Near"));
    select({"Far", "Near"});
    display.press("ctrl+shift+r");
    QQuickItem* preview = item("rename_preview");
    display.press("B o x underscore numbersign numbersign");
    const QAbstractItemModel& names = *session.batchRename();
    EXPECT_EQ(preview->property("count"), 2);
    EXPECT_EQ(names.index(1, 0).data().toString(), "Far") << "in tree order";
    EXPECT_EQ(names.index(1, 0).data(editor::BatchRename::AfterRole), "Box_02");
    display.press("Return");
    EXPECT_EQ(children("Stage"), "Lamps Box_01 Box_02");
    EXPECT_EQ(undoName(), "Rename 2 objects");
    display.press("ctrl+z");
    EXPECT_EQ(children("Stage"), "Lamps Near Far");
}

TEST_F(EditorBuildingTest, selectionSetsAreInTheFile)
{
    click(rowPoint("Near"));
    select({"Left", "Near"});
    display.press("ctrl+alt+s");
    item("set_name");
    display.press("P a i r Return Escape");
    EXPECT_EQ(session.build()->selectionSets(), QStringList({"Pair"}));
    EXPECT_EQ(undoName(), "Save Set Pair");
    session.document()->markSaved(directory.filePath("stage.kyrscene"));
    session.document()->rename(object("Far"), "Further");
    display.press("ctrl+s");
    ASSERT_TRUE(QTest::qWaitFor([this] { return !session.document()->isModified(); }));

    reload();
    display.press("ctrl+alt+s");
    item("set_list");
    display.press("Down Return");
    EXPECT_EQ(selection(), QStringList({"Left", "Near"}));
    session.build()->removeSelectionSet(0);
    EXPECT_EQ(session.build()->selectionSets(), QStringList());
    display.press("ctrl+z");
    EXPECT_EQ(session.build()->selectionSets(), QStringList({"Pair"}));
}

TEST_F(EditorBuildingTest, contextMenuHoldsWhatItsRowAllows)
{
    const std::tuple<const char*, QStringList, QStringList> rows[] = {
        {"Stage", {"rename", "select_children"}, {"delete", "group", "ungroup", "select_parent"}},
        {"Lamps", {"ungroup", "select_children", "select_parent", "delete"}, {}},
        {"Near",
         {"group", "hide", "lock", "frame", "reveal", "copy"},
         {"ungroup", "select_children"}},
    };
    for (const auto& [row, allowed, refused] : rows) {
        click(rowPoint(row));
        const QStringList entries = menuEntries();
        for (const QString& entry : allowed)
            EXPECT_TRUE(entries.contains(entry)) << row << qPrintable(entry);
        for (const QString& entry : refused)
            EXPECT_FALSE(entries.contains(entry)) << row << qPrintable(entry);
    }
    display.press("ctrl+shift+i");
    click(viewPoint("Far"));
    EXPECT_EQ(selection(), QStringList()) << "Near shows alone";
    click(centre(item("end_isolation")));
    EXPECT_FALSE(session.view()->isIsolated());
    EXPECT_FALSE(session.document()->isModified());
    click(rowPoint("Near"));
    display.press("ctrl+h");
    EXPECT_FALSE(object("Near")->isVisible());
    EXPECT_EQ(undoName(), "Hide Near");
}

} // namespace test
