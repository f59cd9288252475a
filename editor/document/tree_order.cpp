#include "tree_order.h"

namespace editor {

namespace {

int depthOf(const SceneObject& object)
{
    int depth = 0;
    for (const SceneObject* at = object.parent(); at; at = at->parent())
        ++depth;
    return depth;
}

} // namespace

bool precedesInTree(const SceneObject& a, const SceneObject& b)
{
    const SceneObject* left = &a;
    const SceneObject* right = &b;
    if (left->parent() == right->parent())
        return left->row() < right->row();
    const int leftDepth = depthOf(a);
    const int rightDepth = depthOf(b);
    for (int depth = leftDepth; depth > rightDepth; --depth)
        left = left->parent();
    for (int depth = rightDepth; depth > leftDepth; --depth)
        right = right->parent();
    if (left == right)
        return leftDepth < rightDepth;
    while (left->parent() != right->parent()) {
        left = left->parent();
        right = right->parent();
    }
    return left->row() < right->row();
}

std::vector<RowRun> runsOf(const std::vector<SceneObjectPtr>& objects)
{
    std::vector<RowRun> runs;
    for (const SceneObjectPtr& object : objects) {
        const int row = object->row();
        if (!runs.empty() && runs.back().parent == object->parent() &&
            runs.back().first + runs.back().count == row)
            ++runs.back().count;
        else
            runs.push_back({object->parent(), row, 1});
    }
    return runs;
}

} // namespace editor
