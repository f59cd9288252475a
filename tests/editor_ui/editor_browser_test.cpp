// The Scene Browser as the editor's users have it: columns, filter, modes, edits of the tree.

#include "editor_test.h"

#include <QSettings>
#include <QTcpServer>

#include <memory>

namespace test {

class EditorBrowserTest : public EditorTest
{
protected:
    const QStringList closed{"Stage", "Lamps", "Near", "Far"};

    bool waitForStatus(const QString& text)
    {
        return QTest::qWaitFor([&] { return this->text("selection_text") == text; });
    }
    /// With keys, from the choice's entry that is current.
    void choose(const char* choice, std::initializer_list<Qt::Key> keys)
    {
        click(centre(item(choice)));
        for (const Qt::Key pressed : keys)
            key(pressed);
        key(Qt::Key_Return);
    }
};

class EditorColumnsTest : public ::testing::Test
{
protected:
    ~EditorColumnsTest() override { QSettings().clear(); }

    using SearchesAndTitles = std::initializer_list<std::pair<const char*, const char*>>;
    static void chooseColumns(EditorDriver& editor, SearchesAndTitles columns)
    {
        editor.click(editor.centre(editor.item("choose_columns")));
        for (const auto& [search, title] : columns) {
            editor.click(editor.centre(editor.item("columns_search")));
            editor.key(Qt::Key_A, Qt::ControlModifier);
            editor.type(search);
            QQuickItem* available = editor.item("available_columns");
            editor.click(editor.centre(editor.item(QStringLiteral("column_") + title, available)));
        }
        editor.key(Qt::Key_Escape);
        EXPECT_TRUE(QTest::qWaitFor([&] { return !editor.shows("columns_search"); }));
    }
    /// Ids of the columns beside the names, left to right.
    static QStringList columns(EditorDriver& editor, std::initializer_list<const char*> ids)
    {
        QMap<qreal, QString> byPlace;
        for (const char* id : ids) {
            if (editor.shows(QStringLiteral("header_") + id))
                byPlace.insert(editor.item(QStringLiteral("header_") + id)->x(), id);
        }
        return byPlace.values();
    }
};

TEST_F(EditorColumnsTest, chosenColumnsShowInTheirOrderAfterARestart)
{
    const auto all = {"type", "light.intensity", "transform.position.x"};
    const QStringList chosen{"light.intensity", "transform.position.x", "type"};
    qreal width = 0;
    {
        EditorDriver editor;
        chooseColumns(editor, {{"intens", "Intensity"}, {"position", "Position X"}});

        QQuickItem* type = editor.item("header_type");
        const QPoint from = editor.centre(type);
        editor.drag(from, from + QPoint(600, 0));
        ASSERT_TRUE(QTest::qWaitFor([&] { return columns(editor, all) == chosen; }))
            << columns(editor, all).join(" ").toStdString();

        QQuickItem* position = editor.item("header_transform.position.x");
        const QPoint border = position->mapToScene({1, position->height() / 2}).toPoint();
        editor.drag(border, border - QPoint(12, 0));
        width = editor.item("header_transform.position.x")->width();

        editor.openRow("Lamps");
        QQuickItem* row = editor.rowItem("Left");
        EXPECT_EQ(editor.item("cell_light.intensity", row)->property("text"), "4");
        EXPECT_EQ(editor.item("cell_transform.position.x", row)->property("text"), "-2");
    }
    EditorDriver editor;
    EXPECT_EQ(columns(editor, all), chosen);
    EXPECT_EQ(editor.item("header_transform.position.x")->width(), width);

    editor.openRow("Lamps");
    editor.click(editor.rowPoint("Left"));
    editor.click(editor.rowPoint("Right"), Qt::ControlModifier);
    QQuickItem* cell = editor.item("cell_light.intensity", editor.rowItem("Right"));
    const QString before = cell->property("text").toString();
    QTest::mouseDClick(editor.window, Qt::LeftButton, {}, editor.centre(cell));
    editor.type("7");
    editor.key(Qt::Key_Return);
    EXPECT_EQ(cell->property("text"), "7");
    EXPECT_EQ(editor.object("Left")->light()->intensity, 7);
    EXPECT_EQ(editor.selection(), QStringList({"Left", "Right"}));
    editor.undo();
    EXPECT_EQ(cell->property("text"), before);
    EXPECT_EQ(editor.object("Left")->light()->intensity, 4);

    editor.click(editor.centre(editor.item("choose_columns")));
    QQuickItem* type = editor.item("column_Type", editor.item("chosen_columns"));
    editor.click(editor.centre(editor.item("remove_button", type)));
    EXPECT_EQ(columns(editor, all), QStringList({"light.intensity", "transform.position.x"}));
    editor.click(editor.centre(editor.item("clear_columns")));
    EXPECT_EQ(columns(editor, all), QStringList());
}

TEST_F(EditorColumnsTest, toggleActsOnAllSelectedRowsAsOneStep)
{
    EditorDriver editor;
    chooseColumns(editor, {{"visible", "Visible"}});
    const auto visible = [&editor] {
        return QList<bool>{editor.object("Near")->isVisible(), editor.object("Far")->isVisible(),
                           editor.object("Lamps")->isVisible()};
    };

    for (const char* part : {"cell_visible", "button_visible"}) {
        editor.select({"Far", "Near"});
        const int steps = editor.steps();
        editor.click(editor.centre(editor.item(part, editor.rowItem("Near"))));
        EXPECT_EQ(visible(), QList<bool>({false, false, true})) << part;
        EXPECT_EQ(editor.selection(), QStringList({"Far", "Near"})) << part;
        EXPECT_EQ(editor.steps(), steps + 1) << part;
        EXPECT_EQ(editor.undoName().right(9), "2 objects") << part;

        editor.click(editor.centre(editor.item(part, editor.rowItem("Lamps"))));
        EXPECT_EQ(visible(), QList<bool>({false, false, false})) << "a row that is not selected";
        EXPECT_EQ(editor.selection(), QStringList({"Far", "Near"})) << part;
        editor.undo();
        editor.undo();
        EXPECT_EQ(visible(), QList<bool>({true, true, true})) << part;
    }
    editor.click(editor.rowPoint("Lamps"));
    editor.key(Qt::Key_Right, Qt::ControlModifier);
    editor.key(Qt::Key_Space);
    EXPECT_EQ(visible(), QList<bool>({true, true, false})) << "by keyboard";
}

TEST_F(EditorBrowserTest, filterHidesSelectedRowsAndKeepsThemSelected)
{
    click(rowPoint("Far"));
    click(rowPoint("Near"), Qt::ControlModifier);
    openRow("Lamps");
    click(rowPoint("Left"), Qt::ControlModifier);
    openRow("Lamps");
    ASSERT_EQ(selection(), QStringList({"Far", "Near", "Left"}));

    key(Qt::Key_F, Qt::ControlModifier);
    type("type:light");
    EXPECT_TRUE(waitForRows({"Stage", "Lamps", "Left", "Right"}));
    EXPECT_TRUE(waitForStatus("3 selected, 2 hidden"));
    EXPECT_EQ(session.viewport()->selectedIds(), ids({"Far", "Near", "Left"}));
    EXPECT_TRUE(rowItem("Lamps")->property("dimmed").toBool()) << "it only leads to the lights";
    EXPECT_FALSE(rowItem("Left")->property("dimmed").toBool());

    key(Qt::Key_F, Qt::ControlModifier);
    key(Qt::Key_Escape);
    EXPECT_TRUE(waitForRows(closed)) << "the group was closed before";
    EXPECT_EQ(selection(), QStringList({"Far", "Near", "Left"}));
    EXPECT_TRUE(waitForStatus("3 objects selected"));
}

TEST_F(EditorBrowserTest, commandsTakeWhatTheFilterFoundAndAskForWhatItHides)
{
    key(Qt::Key_F, Qt::ControlModifier);
    type("type:light");
    ASSERT_TRUE(waitForRows({"Stage", "Lamps", "Left", "Right"}));
    key(Qt::Key_Down);
    key(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(selection(), QStringList({"Left", "Right"}));
    select({"Far"});
    click(centre(item("select_matches")));
    EXPECT_EQ(selection(), QStringList({"Left", "Right"}));
    const auto* dialog = window->findChild<QObject*>("hidden_dialog");
    const auto isOpen = [dialog] { return dialog->property("opened").toBool(); };
    const auto command = [this](const char* name) {
        session.actions()->refresh();
        session.actions()->find(name)->trigger();
    };
    command("select_all");
    EXPECT_TRUE(waitForStatus("6 selected, 2 hidden"));
    for (const char* name :
         {"cut", "duplicate", "delete", "hide", "lock", "group", "rename_many"}) {
        command(name);
        ASSERT_TRUE(QTest::qWaitFor(isOpen)) << name;
        EXPECT_EQ(dialog->property("hidden"), 2) << name;
        display.press("Escape");
        ASSERT_TRUE(QTest::qWaitFor([&] { return !isOpen(); })) << name;
    }
    EXPECT_FALSE(session.document()->isModified());
    display.press("Delete");
    ASSERT_TRUE(QTest::qWaitFor(isOpen));
    display.press("shift+Tab Return");
    EXPECT_TRUE(QTest::qWaitFor([this] { return session.document()->objectCount() == 0; }));
}

TEST_F(EditorBrowserTest, modesAndFilterChoicesArrangeTheRowsAndKeepTheSelection)
{
    click(rowPoint("Far"));
    choose("mode_choice", {Qt::Key_Down});
    EXPECT_TRUE(waitForRows({"Stage", "Lamps", "Left", "Right", "Near", "Far"}));
    EXPECT_EQ(selectedRows(), QStringList({"Far"}));
    choose("mode_choice", {Qt::Key_Down});
    EXPECT_TRUE(waitForRows(
        {"Group", "Lamps", "Light", "Left", "Right", "Mesh", "Near", "Far", "Scene", "Stage"}));
    EXPECT_EQ(selection(), QStringList({"Far"}));
    session.browser()->selectableData()->setProperty("currentIndex", 0);
    EXPECT_TRUE(waitForRows(closed));
    EXPECT_EQ(item("mode_choice")->property("currentIndex"), 0) << "after the user's own choice";
    EXPECT_EQ(session.browser()->selectionModel()->selectedRows().size(), 1);

    set("Near", "visible", "false");
    choose("filter_choice_1", {Qt::Key_Down});
    EXPECT_TRUE(waitForRows({"Stage", "Lamps", "Left", "Right", "Far"}))
        << rows().join(" ").toStdString();
    choose("filter_choice_1", {Qt::Key_Home});
    EXPECT_TRUE(waitForRows(closed));
}

TEST_F(EditorBrowserTest, renamedAndDraggedRowsKeepSelectionAndExpansionThroughUndo)
{
    click(rowPoint("Near"));
    key(Qt::Key_F2);
    type("Closest");
    key(Qt::Key_Return);
    EXPECT_EQ(selectedRows(), QStringList({"Closest"}));
    EXPECT_EQ(rows(), QStringList({"Stage", "Lamps", "Closest", "Far"}));
    EXPECT_EQ(undoName(), "Rename Near");
    undo();
    EXPECT_EQ(selectedRows(), QStringList({"Near"}));
    EXPECT_FALSE(session.document()->isModified());

    openRow("Lamps");
    click(rowPoint("Far"), Qt::ControlModifier);
    drag(rowPoint("Near"), rowPoint("Lamps"));
    EXPECT_EQ(undoName(), "Move 2 objects");
    for (const char* parent : {"Lamps", "Stage"}) {
        EXPECT_EQ(object("Near")->parent(), object(parent).get());
        EXPECT_EQ(object("Far")->parent(), object(parent).get());
        EXPECT_EQ(selection(), QStringList({"Near", "Far"})) << parent;
        EXPECT_EQ(selectedRows(), QStringList({"Far", "Near"})) << parent;
        EXPECT_EQ(rows(), QStringList({"Stage", "Lamps", "Left", "Right", "Near", "Far"}));
        if (object("Near")->parent() != object("Stage").get())
            undo();
    }
    EXPECT_FALSE(session.document()->isModified());
}

/// Texts of the window, in menus and popups too, whether they show or not.
std::vector<QQuickItem*> textsBelow(QObject* window)
{
    QObjectList waiting{window};
    QSet<QObject*> seen;
    std::vector<QQuickItem*> texts;
    while (!waiting.isEmpty()) {
        QObject* of = waiting.takeLast();
        auto* item = qobject_cast<QQuickItem*>(of);
        if (!of || seen.contains(of))
            continue;
        seen.insert(of);
        waiting += of->children();
        if (!item)
            continue;
        for (QQuickItem* child : item->childItems())
            waiting.append(child);
        // Styles leave headers behind that a dialog has replaced, without a place.
        if (item->parentItem() && of->inherits("QQuickText") &&
            !of->inherits("QQuickPlaceholderText"))
            texts.push_back(item);
    }
    return texts;
}

TEST_F(EditorBrowserTest, markupInNamesIsNeitherShownNorFetched)
{
    QTcpServer server;
    ASSERT_TRUE(server.listen(QHostAddress::LocalHost));
    int requests = 0;
    QObject::connect(&server, &QTcpServer::newConnection, [&] { ++requests; });
    const QString name = QStringLiteral("<img src=\"http://127.0.0.1:%1/x.png\"> & a long name")
                             .arg(server.serverPort());
    click(rowPoint("Near"));
    session.document()->rename(object("Near"), name);
    QQuickItem* row = rowItem(name.toUtf8());
    moveTo(centre(row));
    ASSERT_TRUE(QTest::qWaitFor([row] { return row->property("elided").toBool(); }));
    moveTo(centre(row) + QPoint(5, 0));
    const auto tipShows = [&] {
        const std::vector<QQuickItem*> texts = textsBelow(window);
        return std::any_of(texts.begin(), texts.end(), [&](const QQuickItem* text) {
            return text->property("text") == name && text->isVisible() &&
                   text->property("wrapMode").toInt() != 0;
        });
    };
    EXPECT_TRUE(QTest::qWaitFor(tipShows)) << "the tool tip shows the name as it is";
    // Steps are called by the name that was.
    session.document()->rename(object(name.toUtf8()), QStringLiteral("Near"));
    key(Qt::Key_E, Qt::AltModifier);
    const std::vector<QQuickItem*> texts = textsBelow(window);
    EXPECT_GT(texts.size(), 100u);
    int undoTexts = 0;
    for (const QQuickItem* text : texts) {
        const QString shown = text->property("text").toString();
        undoTexts +=
            shown.contains(QStringLiteral("img")) && shown.contains(QStringLiteral("Undo"));
        EXPECT_EQ(text->property("textFormat").toInt(), int(Qt::PlainText))
            << text->metaObject()->className() << ' ' << shown.toStdString();
    }
    EXPECT_GE(undoTexts, 1) << "menu and status name the step";
    EXPECT_EQ(requests, 0);
}

} // namespace test
