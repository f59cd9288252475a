#pragma once

#include <QtGlobal>

#include <functional>

namespace editor {

// What this process may use of the machine. It reads what nobody has checked.

/// Sets the limits for a start: memory, processor time, no files written, no other programs, no
/// network, no core file. Ends with the process that started this one. Call before any input is
/// opened, and once.
void limitProcess();

/// Raises memory and time in keeping with an input of so many bytes, up to what the machine bears.
void allowForInput(qint64 bytes);

/// Runs `work` to its end on a stack that deeply nested files need.
void runOnLargeStack(const std::function<void()>& work);

} // namespace editor
