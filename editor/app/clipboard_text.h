#pragma once

#include <QByteArray>

#include <optional>

namespace editor {

/// Puts a text on the system clipboard; false when another program holds it.
bool putClipboardText(const QByteArray& text);
/// Nothing when there is no text, or it cannot be had.
std::optional<QByteArray> clipboardText();

} // namespace editor
