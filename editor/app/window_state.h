#pragma once

class QWindow;

namespace editor {

// Size and place of the main window, from one run to the next.

/// Before the window shows. Leaves it as it is when nothing is remembered, and keeps it on a screen
/// that is there.
void restoreWindow(QWindow& window);
void rememberWindow(const QWindow& window);

} // namespace editor
