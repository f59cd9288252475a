#pragma once

#include <host/core/debug_message.h>

#include <QString>

namespace editor {

// The program's own messages go where those of the host go.

inline void reportNote(const QString& text)
{
    Zar::DebugMessageHelper(0, 2).message("%s", text.toUtf8().constData());
}

inline void reportWarning(const QString& text)
{
    Zar::DebugMessageHelper(0, 4).message("%s", text.toUtf8().constData());
}

inline void reportFailure(const QString& text)
{
    Zar::DebugMessageHelper(0, 5).message("%s", text.toUtf8().constData());
}

} // namespace editor
