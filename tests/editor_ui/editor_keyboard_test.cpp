// Who has the keyboard, with keys that the display sends; and that the window draws nothing at
// rest.

#include "editor_test.h"
#include "row_of_boxes.h"

#include <editor/files/scene_writer.h>
#include <host/core/debug_message.h>
#include <support/contrast_check.h>

#include <QDir>
#include <QFile>
#include <QSet>
#include <QSignalSpy>
#include <QTemporaryDir>

namespace test {

/// Goes after the editor, which has its journal there.
struct TestFolder
{
    QTemporaryDir directory;
};

class EditorKeyboardTest : protected TestFolder, public EditorTest
{
protected:
    QQuickItem* overlay() { return window->property("_q_QQuickOverlay").value<QQuickItem*>(); }
    bool popupHasFocus()
    {
        return overlay() && window->activeFocusItem() &&
               overlay()->isAncestorOf(window->activeFocusItem());
    }
    QObject* dialog(const QString& name) { return window->findChild<QObject*>(name); }
    bool isOpen(const QString& name) { return dialog(name)->property("visible").toBool(); }
    bool opens(const QString& name)
    {
        return QTest::qWaitFor([&] { return isOpen(name) && popupHasFocus(); });
    }
    bool closes(const QString& name)
    {
        return QTest::qWaitFor([&] { return !isOpen(name); });
    }
    /// In both themes.
    void expectLegible(std::initializer_list<QQuickItem*> items)
    {
        for (const bool dark : {false, true}) {
            session.theme()->show(dark);
            for (QQuickItem* item : items) {
                ContrastCheck check;
                check.skipsDisabled = true;
                check.look(item, 1);
                EXPECT_GT(check.checked(), 1);
            }
        }
    }
    QString state()
    {
        return QString("%1 %2 %3")
            .arg(session.document()->undoStack().index())
            .arg(session.document()->objectCount())
            .arg(selection().join(' '));
    }
};

TEST_F(EditorKeyboardTest, popupsOwnTheKeysUntilEscapeAndCanBeRead)
{
    const QString file = directory.filePath("stage.kyrscene");
    session.document()->markSaved(file);
    session.files()->save();
    ASSERT_TRUE(QTest::qWaitFor([this] { return !session.files()->saver()->isSaving(); }));
    session.document()->rename(object("Near"), "Nearer");
    click(rowPoint("Nearer"));
    display.press("ctrl+shift+c");
    const QString before = state();
    expectLegible({item("inspector"), item("status_bar"), item("log_view"), item("browser_panel")});
    // Name, how it opens, and whether Enter leaves it and does nothing else.
    const std::tuple<const char*, std::function<void()>, bool> popups[] = {
        {"confirm_dialog", [this] { display.press("ctrl+q"); }, false},
        {"message_dialog",
         [this] {
             QMetaObject::invokeMethod(dialog("message_dialog"), "show", Q_ARG(QVariant, "Oh"),
                                       Q_ARG(QVariant, "<b>no</b>"));
         },
         true},
        {"help_dialog", [this] { display.press("F1"); }, true},
        {"column_chooser", [this] { click(centre(item("choose_columns"))); }, false},
        {"file_menu", [this] { display.press("F10"); }, false},
        {"edit_menu", [this] { display.press("F10 Right"); }, false},
        {"batch_rename_dialog", [this] { display.press("ctrl+shift+r"); }, false},
        {"selection_sets_dialog", [this] { display.press("ctrl+alt+s"); }, false},
        {"paste_special_dialog", [this] { display.press("ctrl+alt+v"); }, false},
        {"part_menu",
         [this] {
             display.click(item("property_material.roughness")->mapToScene({20, 10}).toPoint(), 3);
         },
         false},
        {"hidden_dialog", [this] { Q_EMIT session.hiddenQuestion()->asked("Delete", 1); }, true},
        {"revert_dialog", [this, file] { session.files()->openFile(file); }, true},
        {"export_dialog", [this] { display.press("ctrl+shift+e"); }, false},
        {"changed_file_dialog",
         [this, file] {
             QFile(file).resize(0);
             session.files()->save();
         },
         false},
        {"recovery_dialog",
         [this, file] {
             QDir(directory.path()).mkpath("journals/old");
             QFile::copy(file, directory.filePath("journals/old/Untitled.kyrscene"));
             session.recovery()->start(directory.filePath("journals"));
         },
         false},
    };
    for (const auto& [name, open, enterLeaves] : popups) {
        SCOPED_TRACE(name);
        open();
        ASSERT_TRUE(opens(name));
        display.press("ctrl+z ctrl+a ctrl+d Delete F2 q ctrl+v Tab");
        for (int i = 0; i < 4; ++i) {
            EXPECT_TRUE(popupHasFocus()) << "Tab " << i;
            display.press("Tab");
        }
        EXPECT_EQ(state().toStdString(), before.toStdString());
        expectLegible({overlay()});
        display.press("Escape");
        EXPECT_TRUE(closes(name));
        EXPECT_EQ(state().toStdString(), before.toStdString());
        if (enterLeaves) {
            open();
            ASSERT_TRUE(opens(name));
            display.press("Return");
            EXPECT_TRUE(closes(name));
            EXPECT_EQ(state().toStdString(), before.toStdString());
        }
    }
    display.press("ctrl+z");
    EXPECT_NE(state(), before) << "the keys work again";
}

TEST_F(EditorKeyboardTest, unsavedChangesAreAskedForAndEnterSavesThem)
{
    session.document()->markSaved(directory.filePath("stage.kyrscene"));
    session.document()->rename(object("Near"), "Nearer");
    QSignalSpy quit(session.files(), &editor::FileCommands::quitConfirmed);
    QSignalSpy saved(session.files(), &editor::FileCommands::saved);
    for (const auto& [keys, count] : {std::pair("Escape", 0), {"Return", 1}}) {
        display.press("ctrl+q");
        ASSERT_TRUE(QTest::qWaitFor([this] { return popupHasFocus(); }));
        display.press(keys);
        EXPECT_TRUE(closes("confirm_dialog")) << keys;
        EXPECT_EQ(saved.count(), count) << keys;
        EXPECT_EQ(quit.count(), count) << keys;
    }
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
        display.press("ctrl+z");
        EXPECT_NE(object("Near"), nullptr);
        display.press(redo);
        EXPECT_NE(object("Nearer"), nullptr) << redo;
    }
    display.press("alt+e u");
    EXPECT_NE(object("Near"), nullptr) << "by the letter in the menu";
}

TEST_F(EditorKeyboardTest, nothingIsDrawnAtRest)
{
    int frames = 0;
    QObject receiver;
    QObject::connect(window, &QQuickWindow::frameSwapped, &receiver, [&frames] { ++frames; });
    const auto comesToRest = [&frames] {
        for (int look = 0; look < 20; ++look) {
            frames = 0;
            QTest::qWait(300);
            if (frames == 0)
                return true;
        }
        return false;
    };
    const QString file = directory.filePath("boxes.kyrscene");
    ASSERT_EQ(editor::writeScene(*makeRowOfBoxes(5000, 0.5f), file), "");
    const auto taskEnds = [this] {
        return QTest::qWaitFor([this] { return !session.task()->isRunning(); }, 60000);
    };
    const auto pressing = [this](const char* keys) {
        return [this, keys] {
            display.press(keys);
            return true;
        };
    };
    const std::pair<const char*, std::function<bool()>> works[] = {
        {"messages",
         [] {
             for (int line = 0; line < 20000; ++line)
                 Zar::DebugMessageHelper(0, 4).message("%d", line);
             return true;
         }},
        {"opening",
         [this, file] {
             openFile(file);
             return true;
         }},
        {"properties of many",
         [this, taskEnds] {
             display.press("ctrl+a ctrl+shift+c");
             const bool isCopied = taskEnds();
             session.edit()->pasteProperties();
             return isCopied && taskEnds();
         }},
        {"objects of many",
         [this, taskEnds] {
             session.build()->copyObjects();
             const bool isCopied = taskEnds();
             session.build()->pasteObjects();
             return isCopied && taskEnds();
         }},
        {"saving",
         [this] {
             session.files()->save();
             return QTest::qWaitFor([this] { return !session.files()->saver()->isSaving(); });
         }},
        {"delete and undo", pressing("ctrl+d Delete ctrl+z")},
        {"menu and dialog", pressing("F10 Right Escape F1 Escape")},
        {"columns",
         [this] {
             click(centre(item("choose_columns")));
             display.press("Escape");
             return true;
         }},
        {"filter", pressing("ctrl+f l Escape Escape")},
        {"hover and gizmo",
         [this] {
             display.drag(centre(item("viewport")), centre(item("viewport")) + QPoint(40, 30));
             return true;
         }},
    };
    for (const auto& [name, work] : works) {
        EXPECT_TRUE(work()) << name;
        EXPECT_TRUE(comesToRest()) << name << ": " << frames << " frames in 300 ms";
    }
}

} // namespace test
