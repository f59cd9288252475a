#pragma once

#include <editor/files/scene_import.h>

namespace editor {

/// Exit codes by which the importer tells what it has no words left for.
enum class ImporterExit
{
    Done = 0,
    Failed = 1,
    OutOfMemory = 3,
};

/// Reads a file of another program's format in a process of its own, `scene_importer` beside this
/// one, which has limits of memory and time. `error` is the bare reason. When the progress function
/// says stop, the process is killed. Blocks.
SceneImport importInProcess(const QString& path, const ImportProgress& progress);

} // namespace editor
