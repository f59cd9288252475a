#pragma once

#include <editor/document/scene_object.h>

#include <vector>

namespace editor {

/// Whether a comes before b when the tree is read from the top: parents before their children.
/// Both in the same tree. Linear in depth.
bool precedesInTree(const SceneObject& a, const SceneObject& b);

/// Adjacent children of one parent.
struct RowRun
{
    SceneObject* parent;
    int first;
    int count;
};

/// The runs that objects in tree order make up, a run wherever one or more stand side by side.
std::vector<RowRun> runsOf(const std::vector<SceneObjectPtr>& objects);

} // namespace editor
