// Copying and pasting properties as the editor's users do: with keys and menus, over the display's
// own clipboard, and onto many objects.

#include "editor_test.h"
#include "row_of_boxes.h"

#include <kyr_scene_outline/item_roles.h>

#include <QClipboard>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QSettings>
#include <QTemporaryDir>

#include <csignal>

namespace test {

using editor::SceneObjectPtr;

class EditorClipboardTest : public EditorTest
{
protected:
    void copy() { key(Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier); }
    void paste() { key(Qt::Key_V, Qt::ControlModifier | Qt::ShiftModifier); }
    bool isModified(const char* name) { return row(name).data(kyr::ModifiedRole).toBool(); }
    float intensity(const char* name) { return object(name)->light()->intensity; }

    QTemporaryDir directory;
};

TEST_F(EditorClipboardTest, pastedValuesShowAndAreUndoneInOneStep)
{
    select({"Left"});
    copy();
    EXPECT_EQ(message(), "Properties copied");
    select({"Far", "Right"});
    const int before = steps();
    paste();
    EXPECT_EQ(message(), "1 property of 1 object changed; no match for Colour, Inner angle, "
                         "Intensity and 3 more");
    EXPECT_EQ(object("Right")->transform()->position.x, 2) << "at first all but the transform";
    EXPECT_EQ(intensity("Right"), 4);
    EXPECT_EQ(steps(), before + 1);
    EXPECT_TRUE(isModified("Right"));
    EXPECT_FALSE(isModified("Left"));
    EXPECT_EQ(selection(), QStringList({"Right", "Far"})) << "in the order of their rows";

    undo();
    EXPECT_EQ(message(), "");
    EXPECT_EQ(intensity("Right"), 5);
    EXPECT_FALSE(isModified("Right"));
    EXPECT_EQ(selection(), QStringList({"Far", "Right"}));

    QGuiApplication::clipboard()->setText("no document");
    paste();
    EXPECT_EQ(message(), "The text on the clipboard holds no properties");
    EXPECT_FALSE(session.document()->isModified());
}

TEST_F(EditorClipboardTest, contextMenuPastesAndTheFileKeepsIt)
{
    select({"Left"});
    copy();
    select({"Right"});
    session.browser()->requestMenu();
    ASSERT_TRUE(chooseInMenu("Paste Properties"));
    EXPECT_EQ(intensity("Right"), 4);

    session.document()->markSaved(directory.filePath("stage.kyrscene"));
    undo();
    redo();
    key(Qt::Key_S, Qt::ControlModifier);
    EXPECT_FALSE(isModified("Right"));
    ASSERT_TRUE(
        QTest::qWaitFor([this] { return QFile::exists(directory.filePath("stage.kyrscene")); }));
    reload();
    EXPECT_EQ(intensity("Right"), 4);
}

TEST_F(EditorClipboardTest, pasteSpecialCountsAndRemembersWhatIsChosen)
{
    select({"Left"});
    copy();
    select({"Far", "Right"});
    display.press("ctrl+alt+v");
    item("paste_special_list");
    editor::PasteSpecialModel& model = *session.edit()->pasteSpecialModel();
    const auto rowOf = [&model](const char* label) {
        return model.match(model.index(0), Qt::DisplayRole, label).value(0);
    };
    const auto numbers = [&](const char* label) {
        const QModelIndex index = rowOf(label);
        return QList<int>{index.data(editor::PasteSpecialModel::TakersRole).toInt(),
                          index.data(editor::PasteSpecialModel::DifferingRole).toInt(),
                          index.data(editor::PasteSpecialModel::CheckedRole).toInt()};
    };
    EXPECT_EQ(model.targetCount(), 2);
    EXPECT_EQ(numbers("Visible"), (QList<int>{2, 0, Qt::Checked}));
    EXPECT_EQ(numbers("Intensity"), (QList<int>{1, 1, Qt::Checked}));
    EXPECT_EQ(numbers("Position"), (QList<int>{2, 2, Qt::Unchecked}));
    EXPECT_EQ(numbers("Transform").last(), Qt::Unchecked);
    EXPECT_FALSE(rowOf("Name").isValid());
    EXPECT_EQ(rowOf("Intensity").data(editor::PasteSpecialModel::ProblemRole), "not in 1");

    display.click(centre(item("paste_none")));
    EXPECT_FALSE(item("paste_special_accept")->isEnabled());
    display.press("shift+Tab shift+Tab"); // from None to the list
    for (int row = 0; row < rowOf("Position").row(); ++row)
        display.press("Down");
    display.press("space");
    EXPECT_EQ(numbers("Transform").last(), Qt::PartiallyChecked);
    display.press("Return");
    EXPECT_EQ(object("Right")->transform()->position.x, -2);
    EXPECT_EQ(intensity("Right"), 5);
    ASSERT_TRUE(QTest::qWaitFor([this] { return !shows("paste_special_list"); }));
    undo();
    paste();
    EXPECT_EQ(object("Far")->transform()->position.x, -2) << "as chosen last";
    EXPECT_EQ(intensity("Right"), 5);

    session.edit()->copyPart("light");
    select({"Right"});
    session.edit()->pastePart("light.intensity");
    EXPECT_EQ(intensity("Right"), 5) << "its own";
    QSettings().remove("paste");
}

TEST_F(EditorClipboardTest, anOwnerThatHangsIsNamedAndTheWindowStaysLive)
{
    QProcess xclip;
    xclip.start("xclip", {"-i", "-selection", "clipboard", "-quiet"});
    xclip.write("text");
    xclip.closeWriteChannel();
    ASSERT_TRUE(QTest::qWaitFor([] { return QGuiApplication::clipboard()->text() == "text"; }));
    QProcess selected;
    selected.start("xclip", {"-i", "-selection", "primary", "-quiet"});
    selected.write("text");
    selected.closeWriteChannel();
    ASSERT_TRUE(QTest::qWaitFor(
        [] { return QGuiApplication::clipboard()->text(QClipboard::Selection) == "text"; }));
    ::kill(pid_t(xclip.processId()), SIGSTOP);
    ::kill(pid_t(selected.processId()), SIGSTOP);
    QElapsedTimer clock;
    clock.start();
    select({"Left"});
    paste();
    EXPECT_TRUE(message().contains("does not answer")) << qPrintable(message());
    session.document()->rename(object("Near"), "Nearer");
    key(Qt::Key_F2);
    key(Qt::Key_V, Qt::ControlModifier);
    QQuickItem* field = window->activeFocusItem();
    const QPoint middle = field->mapToScene(field->boundingRect().center()).toPoint();
    QTest::mouseClick(window, Qt::MiddleButton, {}, middle);
    EXPECT_EQ(field->property("text"), "Left");
    key(Qt::Key_Escape);
    EXPECT_LT(clock.elapsed(), 3500);
    for (QProcess* owner : {&xclip, &selected}) {
        owner->kill();
        owner->waitForFinished();
    }
}

/// Pastes that take long enough to be seen at work.
class EditorLongPasteTest : public EditorClipboardTest
{
protected:
    static void SetUpTestSuite() { QSettings().setValue("paste/leftOut", QStringList()); }
    static void TearDownTestSuite() { QSettings().remove("paste"); }

    void open(int objectCount, float height)
    {
        session.document()->open(makeRowOfBoxes(objectCount, height), {});
        key(Qt::Key_A, Qt::ControlModifier);
        key(Qt::Key_A, Qt::ControlModifier | Qt::ShiftModifier);
        ASSERT_EQ(session.selection().objects().size(), std::size_t(objectCount));
    }
    /// Copies from one scene, and selects all of another one that has other values.
    void prepare(int objectCount)
    {
        open(objectCount, 2);
        copy();
        ASSERT_TRUE(QTest::qWaitFor([this] { return !session.task()->isRunning(); }, 60000));
        open(objectCount, 1);
    }
    /// How many objects have the values of that height.
    int countAt(float height)
    {
        int count = 0;
        for (const SceneObjectPtr& box : session.document()->root()->children()) {
            count += box->transform()->position.y == height / 3 &&
                     box->transform()->scale.x == height &&
                     box->material()->roughness == height / 7 && box->isLocked() == (height > 1);
        }
        return count;
    }
};

TEST_F(EditorLongPasteTest, cancelTakesAllBackAndTheWindowStaysLive)
{
    constexpr int objectCount = 100000;
    prepare(objectCount);
    const int before = steps();
    for (const bool byKey : {true, false}) {
        session.edit()->pasteProperties();
        ASSERT_TRUE(session.task()->isRunning()) << qPrintable(message());
        ASSERT_TRUE(QTest::qWaitFor([this] { return countAt(1) < objectCount; }, 60000));
        key(Qt::Key_Delete);
        undo();
        EXPECT_EQ(countAt(1) + countAt(2), objectCount) << "nothing else edits the scene meanwhile";
        EXPECT_EQ(steps(), before) << "nor is anything undone";
        QQuickItem* button = item("cancel_button");
        EXPECT_LT(countAt(1), objectCount);
        EXPECT_GT(countAt(1), 0);
        EXPECT_GT(session.task()->progress(), 0);
        if (byKey)
            key(Qt::Key_Escape);
        else
            click(centre(button));
        EXPECT_FALSE(session.task()->isRunning());
        EXPECT_EQ(message(), "Pasting properties was cancelled");
        EXPECT_EQ(countAt(1), objectCount);
        EXPECT_EQ(session.selection().objects().size(), std::size_t(objectCount));
        EXPECT_EQ(steps(), before);
        EXPECT_TRUE(QTest::qWaitFor([this] { return !session.document()->isModified(); }));
    }

    int frames = 0;
    QObject receiver;
    QObject::connect(window, &QQuickWindow::frameSwapped, &receiver, [&frames] { ++frames; });
    session.edit()->pasteProperties();
    ASSERT_TRUE(QTest::qWaitFor([this] { return !session.task()->isRunning(); }, 60000));
    EXPECT_GT(frames, 0);
    EXPECT_EQ(countAt(2), objectCount);
    EXPECT_EQ(steps(), before + 1);
    EXPECT_EQ(session.selection().objects().size(), std::size_t(objectCount));
    undo();
    EXPECT_EQ(countAt(1), objectCount);
}

TEST_F(EditorLongPasteTest, sceneAndEditorMayGoInTheMiddle)
{
    constexpr int objectCount = 20000;
    prepare(objectCount);
    session.edit()->pasteProperties();
    ASSERT_TRUE(session.task()->isRunning()) << qPrintable(message());
    session.document()->open(makeRowOfBoxes(objectCount, 4), {});
    EXPECT_FALSE(session.task()->isRunning());
    EXPECT_EQ(countAt(4), objectCount);
    EXPECT_EQ(steps(), 0);
    EXPECT_FALSE(session.document()->isModified());
    key(Qt::Key_A, Qt::ControlModifier);
    session.edit()->pasteProperties();
    EXPECT_TRUE(session.task()->isRunning()) << qPrintable(message());
}

} // namespace test
