#include "editor_application.h"

#include <QThread>

namespace editor {

EditorApplication* EditorApplication::current()
{
    return qobject_cast<EditorApplication*>(QCoreApplication::instance());
}

// Events of other threads come by here as well.
bool EditorApplication::notify(QObject* receiver, QEvent* event)
{
    if (!m_times || QThread::currentThread() != thread())
        return QApplication::notify(receiver, event);
    const OperationTimes::Piece piece(*m_times, *event);
    return QApplication::notify(receiver, event);
}

} // namespace editor
