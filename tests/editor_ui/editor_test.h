#pragma once

#include "display_input.h"

#include <editor/app/editor_session.h>
#include <editor/app/editor_window.h>

#include <QQuickItem>
#include <QTest>

#include <gtest/gtest.h>

class QMenu;

namespace test {

/// One start of the editor: the real window, driven as a user would, over a scene of two boxes,
/// "Near" and "Far", and a group "Lamps" with the lights "Left" and "Right", which differ in x and
/// intensity.
class EditorDriver
{
public:
    EditorDriver();

    editor::SceneObjectPtr object(const char* name);
    std::vector<quint32> ids(std::initializer_list<const char*> names);
    /// Names of the editor's selected objects, first to last.
    QStringList selection();
    /// Names of the objects of the tree's selected rows, top to bottom.
    QStringList selectedRows();
    QModelIndex row(const char* name);
    void select(std::initializer_list<const char*> names);
    /// One step that gives a property of an object the value that the text says.
    void set(const char* name, const char* property, const char* text);

    /// The visible item of that object name in the window or one of its items; waits until there
    /// is one.
    QQuickItem* item(const QString& objectName, QQuickItem* inside = nullptr);
    QString text(const QString& objectName);
    QPoint centre(QQuickItem* item) const;
    bool shows(const QString& objectName);
    /// Names of the tree's rows, top to bottom.
    QStringList rows();
    bool waitForRows(const QStringList& names);
    /// Waits for the row, which has to be in view.
    QQuickItem* rowItem(const char* name);
    QPoint rowPoint(const char* name);
    /// Where an object shows in the 3D view, in the window.
    QPoint viewPoint(const char* name);

    /// Clicks on the arrow, which closes the row again.
    void openRow(const char* name);
    void click(const QPoint& point, Qt::KeyboardModifiers modifiers = {},
               Qt::MouseButton button = Qt::LeftButton);
    void drag(const QPoint& from, const QPoint& to, Qt::KeyboardModifiers modifiers = {});
    void moveTo(const QPoint& point);
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {});
    void undo();
    void redo();
    /// Of the undo stack that are done.
    int steps();
    QString undoName() { return session.undoStatus()->undoName(); }
    QString message() { return text("message_text"); }
    /// Waits for it.
    QMenu* openedMenu();
    /// Clicks on an entry of the context menu that opens; false when it has none of that text.
    bool chooseInMenu(const QString& text);
    void type(const QString& text);
    /// Waits until it is open.
    void openFile(const QString& path);
    void reload();

    editor::EditorSession session;
    editor::EditorWindow editorWindow{session};
    QQuickWindow* window = editorWindow.window();
    DisplayInput display{window};
};

class EditorTest : public ::testing::Test, public EditorDriver
{};

} // namespace test
