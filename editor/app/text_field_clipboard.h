#pragma once

#include <host/clipboard/x11_clipboard.h>

#include <QObject>

#include <memory>

namespace editor {

/// Text fields ask the clipboard's owner what it holds whenever it changes, eight fields eight
/// times, and wait five seconds for each answer. While this object lives they are not told of
/// changes, and what is pasted into them is read as properties are: an owner that does not answer
/// is waited for half a second, once. So it is with what a click of the middle button pastes.
class TextFieldClipboard final : public QObject
{
    Q_OBJECT

public:
    explicit TextFieldClipboard(QObject* parent = nullptr);
    ~TextFieldClipboard() override;

    bool eventFilter(QObject* receiver, QEvent* event) override;

private:
    bool selectionAnswers();

    bool m_wasBlocked;
    std::unique_ptr<Zar::platform::X11Clipboard> m_selection;
};

} // namespace editor
