// Who has the keyboard, with keys that the display sends; and that the window draws nothing at
// rest.

#include "display_input.h"
#include "editor_test.h"

#include <host/core/debug_message.h>

#include <QSet>
#include <QSignalSpy>
#include <QTemporaryDir>

namespace test {

class EditorKeyboardTest : public EditorTest
{
protected:
    bool popupHasFocus()
    {
        const QQuickItem* overlay = window->property("_q_QQuickOverlay").value<QQuickItem*>();
        return overlay && window->activeFocusItem() &&
               overlay->isAncestorOf(window->activeFocusItem());
    }
    QObject* dialog(const QString& name) { return window->findChild<QObject*>(name); }
    bool isOpen(const QString& name) { return dialog(name)->property("visible").toBool(); }
    bool closes(const QString& name)
    {
        return QTest::qWaitFor([&] { return !isOpen(name); });
    }
    QString state()
    {
        return QString("%1 %2 %3")
            .arg(session.document()->undoStack().index())
            .arg(session.document()->objectCount())
            .arg(selection().join(' '));
    }

    DisplayInput display{window};
    QTemporaryDir directory;
};

TEST_F(EditorKeyboardTest, popupsOwnTheKeysUntilEscape)
{
    session.document()->rename(object("Far"), "Further");
    session.document()->markSaved(directory.filePath("stage.kyrscene"));
    session.document()->rename(object("Near"), "Nearer");
    click(rowPoint("Nearer"));
    const QString before = state();
    const std::pair<const char*, std::function<void()>> popups[] = {
        {"confirm_dialog", [this] { display.press({"ctrl+q"}); }},
        {"message_dialog",
         [this] {
             QMetaObject::invokeMethod(dialog("message_dialog"), "show", Q_ARG(QVariant, "Oh"),
                                       Q_ARG(QVariant, "<b>no</b>"));
         }},
        {"help_dialog", [this] { display.press({"F1"}); }},
        {"column_chooser", [this] { click(centre(item("choose_columns"))); }},
        {"file_menu", [this] { display.press({"F10"}); }},
    };
    for (const auto& [name, open] : popups) {
        open();
        ASSERT_TRUE(QTest::qWaitFor([&] { return isOpen(name) && popupHasFocus(); })) << name;
        display.press({"ctrl+z", "ctrl+a", "ctrl+d", "Delete", "F2"});
        for (int i = 0; i < 6; ++i) {
            display.press({"Tab"});
            EXPECT_TRUE(popupHasFocus()) << name << ", Tab " << i;
        }
        EXPECT_EQ(state(), before) << name;
        display.press({"Escape"});
        EXPECT_TRUE(closes(name)) << name;
        EXPECT_EQ(state(), before) << name;
    }
    display.press({"ctrl+z"});
    EXPECT_NE(state(), before) << "the keys work again";
}

TEST_F(EditorKeyboardTest, enterPressesTheDefaultButtonAndTabTheOthers)
{
    session.document()->markSaved(directory.filePath("stage.kyrscene"));
    session.document()->rename(object("Near"), "Nearer");
    QSignalSpy quit(session.files(), &editor::FileCommands::quitConfirmed);
    QSignalSpy saved(session.files(), &editor::FileCommands::saved);
    display.press({"ctrl+q"});
    ASSERT_TRUE(QTest::qWaitFor([this] { return popupHasFocus(); }));
    display.press({"Return"});
    EXPECT_TRUE(closes("confirm_dialog"));
    EXPECT_EQ(saved.count(), 1);
    EXPECT_EQ(quit.count(), 1);
}

TEST_F(EditorKeyboardTest, eachKeyMeansOneCommandAndRedoHasTwo)
{
    QSet<QString> keys;
    for (const QVariant& entry : session.actions()->actions()) {
        for (const QString& key : entry.value<editor::EditorAction*>()->shortcuts()) {
            EXPECT_FALSE(keys.contains(key)) << qPrintable(key);
            keys.insert(key);
        }
    }
    session.document()->rename(object("Near"), "Nearer");
    for (const char* redo : {"ctrl+shift+z", "ctrl+y"}) {
        display.press({"ctrl+z"});
        EXPECT_NE(object("Near"), nullptr);
        display.press({redo});
        EXPECT_NE(object("Nearer"), nullptr) << redo;
    }
}

TEST_F(EditorKeyboardTest, nothingIsDrawnAtRest)
{
    int frames = 0;
    QObject receiver;
    QObject::connect(window, &QQuickWindow::frameSwapped, &receiver, [&frames] { ++frames; });
    const auto comesToRest = [&frames] {
        for (int look = 0; look < 12; ++look) {
            frames = 0;
            QTest::qWait(400);
            if (frames == 0)
                return true;
        }
        return false;
    };
    const std::pair<const char*, std::function<void()>> works[] = {
        {"opening", [] {}},
        {"messages",
         [] {
             for (int line = 0; line < 20000; ++line)
                 Zar::DebugMessageHelper(0, 4).message("%d", line);
         }},
        {"select all and copy",
         [this] {
             display.press({"ctrl+a", "ctrl+shift+c", "ctrl+shift+v"});
         }},
        {"delete and undo",
         [this] {
             display.press({"ctrl+d", "Delete", "ctrl+z"});
         }},
        {"menu",
         [this] {
             display.press({"F10", "Right", "Escape"});
         }},
        {"dialog",
         [this] {
             display.press({"F1", "Escape"});
         }},
        {"columns",
         [this] {
             click(centre(item("choose_columns")));
             display.press({"Escape"});
         }},
        {"filter",
         [this] {
             display.press({"ctrl+f", "l", "Escape", "Escape"});
         }},
    };
    for (const auto& [name, work] : works) {
        work();
        EXPECT_TRUE(comesToRest()) << name << ": " << frames << " frames in 400 ms";
    }
}

} // namespace test
