#pragma once

#include <QString>

namespace test {

constexpr int unknownCount = -1;

/// How many objects the file's nodes make by the import library's own reading, in a process of its
/// own: one a node, and one for each mesh, light and camera that shares its node. Unknown when the
/// library does not read the file. Call while there is one thread.
int objectsByLibrary(const QString& path);

} // namespace test
