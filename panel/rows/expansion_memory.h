#pragma once

#include <panel/rows/source_rows.h>

#include <QHash>
#include <QPersistentModelIndex>
#include <QSet>
#include <QString>
#include <QVector>

namespace kyr::panel {

class ArrangedTreeModel;

/// Which rows of a scene stand open, kept by rows of the scene itself while they show filtered,
/// sorted or grouped. A filter opens what it finds; what was open before comes back after it.
///
/// To go from one view to the next: `startTaking`, `take` for each row that shows or is kept,
/// `startRestoring`, `restoreSome` until it returns true; then `startOf` knows each row.
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

    /// False when no row has anything to tell.
    bool startTaking(const SourceRows& rows);
    void take(const SourceRows& rows, RowTree::Node node, const QModelIndex& shown);

    void startRestoring(View view);
    bool restoreSome(int count);
    quint32 rootFlags() const { return m_view == View::Tree ? m_rootFlags : 0; }
    /// How each of these rows was when it last showed in such a view. The rows may not go first.
    SourceRows::StartOf startOf(const SourceRows& rows) const;
    /// Nothing more is to be asked of `startOf`.
    void endRestoring() { m_starts.clear(); }

private:
    struct SavedRow
    {
        QPersistentModelIndex index;
        SourceRows::Start start;
    };

    View m_view = View::Tree;
    QVector<SavedRow> m_tree;
    quint32 m_rootFlags = 0;
    QVector<SavedRow> m_closedFound;
    bool m_forgetsFound = false;
    QSet<QString> m_closedGroups;
    QHash<QModelIndex, SourceRows::Start> m_starts;
    int m_restored = 0;
};

} // namespace kyr::panel
