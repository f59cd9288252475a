#pragma once

#include <panel/source_rows.h>

#include <QPersistentModelIndex>
#include <QSet>
#include <QString>

#include <vector>

namespace kyr::panel {

class ArrangedTreeModel;

/// Which rows of a scene stand open, kept by rows of the scene itself while they show filtered,
/// sorted or grouped. A filter opens what it finds; what was open before comes back after it.
class ExpansionMemory
{
public:
    enum class View
    {
        Tree,
        Found,
        Groups,
        List,
    };
    /// What the model shows; a tree when there is none.
    static View viewOf(const ArrangedTreeModel* arranged);

    void clear();
    /// The rows that are found next all show open.
    void forgetFound() { m_forgetsFound = true; }

    /// Takes the states of the rows that showed as `m_view`. `toOrigin` gives the scene's index.
    void take(const SourceRows& rows,
              const std::function<QModelIndex(const QModelIndex&)>& toOrigin);
    /// Reads the rows anew, each as it was when it last showed in such a view.
    void restore(SourceRows& rows, View view,
                 const std::function<QModelIndex(const QModelIndex&)>& toOrigin);

private:
    struct SavedRow
    {
        QPersistentModelIndex index;
        SourceRows::Start start;
    };

    View m_view = View::Tree;
    std::vector<SavedRow> m_tree;
    quint32 m_rootFlags = 0;
    std::vector<SavedRow> m_closedFound;
    bool m_forgetsFound = false;
    QSet<QString> m_closedGroups;
};

} // namespace kyr::panel
