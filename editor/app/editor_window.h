#pragma once

#include <editor/app/extensions.h>
#include <editor/app/text_field_clipboard.h>

#include <QQmlApplicationEngine>
#include <QQuickWindow>

namespace editor {

class EditorSession;

/// What the program needs before its application object is made.
void prepareApplication();
/// What it needs before its first window: style and QML types.
void prepareWindows();

/// The scene that opens when none is named.
QString bundledScene();
/// Where the sessions of this user keep unsaved work.
QString recoveryFolder();

/// The editor's main window over a session.
class EditorWindow final : public QObject
{
    Q_OBJECT

public:
    /// Shows the window as it was left last. The session must outlive it.
    explicit EditorWindow(EditorSession& session, QObject* parent = nullptr);
    ~EditorWindow() override;

    /// Null when the window's QML did not load; the reason is in the log then.
    QQuickWindow* window() const;

private:
    void restoreView();
    void rememberView() const;

    EditorSession& m_session;
    TextFieldClipboard m_textFields;
    Extensions m_extensions;
    QQmlApplicationEngine m_engine;
};

} // namespace editor
