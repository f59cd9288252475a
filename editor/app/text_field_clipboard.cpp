#include "text_field_clipboard.h"

#include <tools/common/string_utils.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QQuickItem>
#include <QQuickWindow>
#include <QWindow>

namespace editor {

namespace {

bool isWritableTextField(const QObject& object)
{
    return (object.inherits("QQuickTextInput") || object.inherits("QQuickTextEdit")) &&
           !object.property("readOnly").toBool();
}

// In place of what is selected, as if it were typed.
void insertClipboardText(QObject& field)
{
    std::string text;
    if (!Zar::StringUtils::copyFromClipboardT(text))
        return;
    QString typed = QString::fromStdString(text);
    if (field.inherits("QQuickTextInput"))
        typed.replace(QLatin1Char('\n'), QLatin1Char(' '));
    QInputMethodEvent event;
    event.setCommitString(typed);
    QCoreApplication::sendEvent(&field, &event);
}

} // namespace

TextFieldClipboard::TextFieldClipboard(QObject* parent)
    : QObject(parent), m_wasBlocked(QGuiApplication::clipboard()->blockSignals(true))
{
    QCoreApplication::instance()->installEventFilter(this);
}

TextFieldClipboard::~TextFieldClipboard()
{
    QGuiApplication::clipboard()->blockSignals(m_wasBlocked);
}

// Of another program, or ours.
bool TextFieldClipboard::selectionAnswers()
{
    if (QGuiApplication::platformName() != QLatin1String("xcb") ||
        QGuiApplication::clipboard()->ownsSelection())
        return true;
    if (!m_selection)
        m_selection = Zar::platform::X11Clipboard::connect("PRIMARY");
    return !m_selection || m_selection->offersText() || m_selection->problem().empty();
}

bool TextFieldClipboard::eventFilter(QObject* receiver, QEvent* event)
{
    if (event->type() == QEvent::MouseButtonRelease &&
        static_cast<QMouseEvent*>(event)->button() == Qt::MiddleButton) {
        auto* window = qobject_cast<QQuickWindow*>(receiver);
        QQuickItem* field = window ? window->mouseGrabberItem() : nullptr;
        if (!field || !isWritableTextField(*field) || selectionAnswers())
            return false;
        field->ungrabMouse();
        return true;
    }
    if (event->type() != QEvent::KeyPress || !qobject_cast<QWindow*>(receiver))
        return false;
    QObject* field = QGuiApplication::focusObject();
    if (!field || !static_cast<QKeyEvent*>(event)->matches(QKeySequence::Paste) ||
        !isWritableTextField(*field))
        return false;
    insertClipboardText(*field);
    return true;
}

} // namespace editor
