#pragma once

#include <editor/document/scene_object.h>

#include <QString>
#include <QStringList>

#include <functional>

namespace editor {

/// The outcome of reading a file: a free tree, or the reason why there is none.
struct SceneImport
{
    /// Null on failure.
    SceneObjectPtr root;
    /// One sentence that names the file; empty when the import was stopped.
    QString error = {};
    /// What the file holds and the scene does not, and what had to be mended; a sentence each.
    QStringList notes = {};
};

/// Told how far an import got, from 0 to 1, and asked often; answers false to stop it.
using ImportProgress = std::function<bool(double)>;

/// Reads a scene file of any known format. Re-entrant; blocks. Throws nothing. The bundled format
/// is read here, any other by a process of its own, which a stop ends at once.
SceneImport importScene(const QString& path, const ImportProgress& progress = {});

/// Patterns of the files that `importScene` reads, such as "*.gltf".
QStringList importPatterns();

} // namespace editor
