#pragma once

#include <panel/rows/row_tree.h>

#include <QModelIndex>
#include <QVector>

#include <vector>

namespace kyr::panel {

/// What a mirror tells of each change of its scene, once before it is made and once after.
///
/// In between rows are those of before; they may be read, not opened or marked. Rows that were
/// never read come and go without a word, except for `beginChange`, `endChange` and
/// `childrenChanged`.
class IMirrorObserver
{
public:
    using Node = RowTree::Node;

    virtual void beginChange() = 0;
    virtual void aboutToInsert(Node parent, int order, int count) = 0;
    virtual void inserted(Node parent, int order, int count) = 0;
    virtual void aboutToRemove(Node parent, int order, int count) = 0;
    virtual void removed() = 0;
    virtual void aboutToMove(Node from, int order, int count, Node to, int target) = 0;
    /// `order` is where they are now.
    virtual void moved(Node from, Node to, int order, int count) = 0;
    virtual void aboutToRelayout() = 0;
    virtual void relaidOut() = 0;
    virtual void aboutToReset() = 0;
    virtual void wasReset() = 0;
    /// All is well again.
    virtual void endChange() = 0;

    /// A row that has come would like to be open.
    virtual void wishesToOpen(Node node) = 0;
    virtual void childrenChanged(const QModelIndex& parent) = 0;
    virtual void dataChanged(const QModelIndex& first, const QModelIndex& last,
                             const QVector<int>& roles) = 0;

protected:
    ~IMirrorObserver() = default;
};

} // namespace kyr::panel
