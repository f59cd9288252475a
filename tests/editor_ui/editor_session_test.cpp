// What comes back when the editor starts again, and which files it knows.

#include "editor_test.h"

#include <editor/app/open_file_mark.h>

#include <QFile>
#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <memory>

namespace test {

namespace {

/// What is remembered of a window: sizes, log, mode and filter of the tree, and the gizmo's bar.
QVariantList viewOf(EditorDriver& editor)
{
    return {editor.window->size(),
            int(editor.item("browser_panel")->width()),
            editor.shows("log_view"),
            editor.session.browser()->selectableData()->property("currentIndex"),
            editor.session.browser()->filterPredicate()->property("text"),
            editor.text("gizmo_space") + editor.text("gizmo_pivot") + editor.text("gizmo_step") +
                editor.item("gizmo_snap")->property("checked").toString()};
}

} // namespace

TEST(EditorSessionTest, windowComesBackAsItWasLeft)
{
    auto editor = std::make_unique<EditorDriver>();
    const QVariantList before = viewOf(*editor);
    editor->window->resize(1100, 650);
    ASSERT_TRUE(QTest::qWaitFor([&] { return editor->window->width() == 1100; }));
    const QPoint border(int(editor->item("browser_panel")->width()) + 1, 400);
    editor->drag(border, border + QPoint(60, 0));
    editor->key(Qt::Key_L, Qt::ControlModifier);
    editor->session.browser()->selectableData()->setProperty("currentIndex", 1);
    editor->key(Qt::Key_F, Qt::ControlModifier);
    editor->type("near");
    ASSERT_TRUE(editor->waitForRows({"Near"}));
    for (const char* button : {"gizmo_space", "gizmo_pivot", "gizmo_snap", "gizmo_step"})
        editor->click(editor->centre(editor->item(button)));
    const QVariantList left = viewOf(*editor);
    EXPECT_EQ(left.last(), "LocalCentre1 mtrue");
    for (int i = 0; i < left.size(); ++i)
        EXPECT_NE(left[i], before[i]) << i;

    editor.reset();
    editor = std::make_unique<EditorDriver>();
    EXPECT_EQ(viewOf(*editor), left);
    EXPECT_TRUE(editor->waitForRows({"Near"}));
}

class EditorRecentTest : public EditorTest
{
protected:
    QString save(const char* name)
    {
        const QString path = directory.filePath(name);
        session.document()->markSaved(path);
        session.document()->rename(session.document()->root(), name);
        session.files()->save();
        EXPECT_TRUE(QTest::qWaitFor([this] { return !session.document()->isModified(); }));
        return path;
    }

    QTemporaryDir directory;
};

TEST_F(EditorRecentTest, filesAreKnownRevertedAndClosed)
{
    const QString first = save("first.kyrscene");
    openRow("Lamps");
    const QString second = save("second.kyrscene");
    const QString copy = directory.filePath("copy.kyrscene");
    QFile::copy(second, copy);
    EXPECT_EQ(session.recent()->paths(), QStringList({second, first}));
    QFile::remove(first);
    QSignalSpy failed(session.loader(), &editor::LoadController::failed);
    session.files()->openFile(first);
    ASSERT_TRUE(failed.wait());
    EXPECT_EQ(session.recent()->paths(), QStringList({second}));
    key(Qt::Key_Escape);

    openRow("Lamps");
    session.viewport()->lookFrom(80, 10);
    session.files()->newScene();
    openFile(second);
    EXPECT_TRUE(waitForRows({"second.kyrscene", "Lamps", "Near", "Far"})) << "closed since";
    EXPECT_FLOAT_EQ(float(session.viewport()->yaw()), 80);
    openFile(copy);
    EXPECT_TRUE(waitForRows({"second.kyrscene", "Lamps", "Left", "Right", "Near", "Far"}))
        << "the file has it";
    openFile(second);

    session.files()->openFile(second);
    EXPECT_EQ(text("message_text"), "“second.kyrscene” is open already");
    session.document()->rename(object("Near"), "Nearer");
    session.files()->openFile(second);
    QSignalSpy loaded(session.loader(), &editor::LoadController::loaded);
    QObject* dialog = window->findChild<QObject*>("revert_dialog");
    ASSERT_TRUE(QTest::qWaitFor([&] { return dialog->property("opened").toBool(); }));
    display.press("shift+Tab Return");
    ASSERT_TRUE(loaded.count() > 0 || loaded.wait());
    EXPECT_NE(object("Near"), nullptr);

    for (const char* keys : {"ctrl+n", "ctrl+w"}) {
        session.build()->add(editor::newObjects().front());
        display.press(keys);
        EXPECT_TRUE(session.files()->isConfirming()) << keys;
        const QObject* question = window->findChild<QObject*>("confirm_dialog");
        ASSERT_TRUE(QTest::qWaitFor([&] { return question->property("opened").toBool(); }));
        display.press("Tab Return");
        EXPECT_FALSE(session.files()->isConfirming()) << "discarded";
        EXPECT_EQ(session.document()->filePath(), QString());
        EXPECT_EQ(session.document()->objectCount(), 0);
        EXPECT_FALSE(session.document()->isModified());
    }
}

TEST_F(EditorRecentTest, sampleOpensWithoutAFileAndASecondOpenIsTold)
{
    const QString path = save("sample.kyrscene");
    editor::OpenFileMark other;
    QSignalSpy told(&other, &editor::OpenFileMark::openElsewhere);
    other.follow(path);
    EXPECT_EQ(told.count(), 1);

    session.loader()->setSampleFolder(directory.path());
    session.files()->newScene();
    session.loader()->generate({5000, editor::SceneShape::Bushy});
    openFile(path);
    EXPECT_EQ(session.viewport()->itemCount(), session.document()->objectCount() + 1);
    EXPECT_EQ(session.document()->filePath(), QString());
    EXPECT_NE(object("Near"), nullptr);
    other.follow({});
    other.follow(path);
    EXPECT_EQ(told.count(), 1) << "nobody has the file open";
}

} // namespace test
