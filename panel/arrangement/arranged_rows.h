#pragma once

#include <panel/rows/row_tree.h>

#include <QHash>
#include <QString>

#include <vector>

namespace kyr::panel {

/// Rows of a scene in another order than its own, and rows of groups, which stand for no object.
///
/// Nodes of the scene's rows are called scene nodes, those of this tree shown ones, though some may
/// be below a closed row.
class ArrangedRows
{
public:
    using Node = RowTree::Node;

    RowTree tree;

    /// None for groups.
    Node sceneNode(Node shown) const { return m_scene[shown]; }
    /// None for a row that is filtered out.
    Node shownNode(Node scene) const
    {
        return scene < m_shown.size() ? m_shown[scene] : RowTree::none;
    }
    bool isGroup(Node shown) const
    {
        return shown != RowTree::none && m_scene[shown] == RowTree::none;
    }
    QString type(Node group) const { return m_types.value(group); }
    Node group(const QString& type) const { return m_groups.value(type, RowTree::none); }

    Node create(Node scene, int depth, quint32 flags)
    {
        const Node shown = tree.create(depth, flags);
        link(shown, scene);
        return shown;
    }
    Node createGroup(const QString& type, quint32 flags)
    {
        const Node shown = create(RowTree::none, 0, flags);
        m_groups.insert(type, shown);
        m_types.insert(shown, type);
        return shown;
    }
    /// Rows that were taken out of the tree.
    void destroy(const std::vector<Node>& rows)
    {
        for (const Node row : rows) {
            if (m_scene[row] != RowTree::none)
                m_shown[m_scene[row]] = RowTree::none;
            else
                m_groups.remove(m_types.take(row));
        }
        tree.destroy(rows);
    }

    std::size_t bytesUsed() const
    {
        return tree.bytesUsed() + (m_scene.capacity() + m_shown.capacity()) * sizeof(Node);
    }

private:
    void link(Node shown, Node scene)
    {
        if (shown >= m_scene.size())
            m_scene.resize(shown + 1, RowTree::none);
        m_scene[shown] = scene;
        if (scene == RowTree::none)
            return;
        if (scene >= m_shown.size())
            m_shown.resize(scene + 1, RowTree::none);
        m_shown[scene] = shown;
    }

    std::vector<Node> m_scene{RowTree::none};
    std::vector<Node> m_shown;
    QHash<QString, Node> m_groups;
    QHash<Node, QString> m_types;
};

} // namespace kyr::panel
