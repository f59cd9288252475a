#include "batch_rename.h"

#include <editor/document/scene_commands.h>
#include <editor/document/step_name.h>
#include <editor/document/tree_order.h>
#include <host/undo/commit_changes_scope.h>

#include <algorithm>

namespace editor {

BatchRename::BatchRename(SceneDocument& document, IAssetSelection& selection, QObject* parent)
    : QAbstractListModel(parent), m_document(document), m_selection(selection)
{
    connect(&m_document, &SceneDocument::aboutToReset, this, &BatchRename::cancel);
}

int BatchRename::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : count();
}

QVariant BatchRename::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const QString before = m_objects[std::size_t(index.row())]->displayName();
    switch (role) {
    case BeforeRole:
        return before;
    case AfterRole:
        return m_rule.apply(before, index.row());
    default:
        return {};
    }
}

QHash<int, QByteArray> BatchRename::roleNames() const
{
    return {{BeforeRole, "before"}, {AfterRole, "after"}};
}

void BatchRename::setFind(const QString& text)
{
    m_rule.find = text;
    changeRule();
}

void BatchRename::setReplacement(const QString& text)
{
    m_rule.replacement = text;
    changeRule();
}

void BatchRename::setPattern(const QString& pattern)
{
    m_rule.pattern = pattern;
    changeRule();
}

void BatchRename::setFirst(int first)
{
    m_rule.first = first;
    changeRule();
}

void BatchRename::changeRule()
{
    Q_EMIT ruleChanged();
    if (!m_objects.empty())
        Q_EMIT dataChanged(index(0), index(count() - 1), {AfterRole});
}

void BatchRename::begin()
{
    SceneObjects objects = selectedObjects(m_document, m_selection);
    std::sort(objects.begin(), objects.end(), [](const SceneObjectPtr& a, const SceneObjectPtr& b) {
        return precedesInTree(*a, *b);
    });
    setObjects(std::move(objects));
}

void BatchRename::apply()
{
    {
        const Zar::CommitChangesScope scope(stepName("Rename", m_objects),
                                            m_document.changesController().get());
        for (int row = 0; row < count(); ++row) {
            const SceneObjectPtr& object = m_objects[std::size_t(row)];
            m_document.rename(object, m_rule.apply(object->displayName(), row));
        }
    }
    setObjects({});
}

void BatchRename::cancel()
{
    setObjects({});
}

void BatchRename::setObjects(SceneObjects objects)
{
    beginResetModel();
    m_objects = std::move(objects);
    endResetModel();
    Q_EMIT countChanged();
}

} // namespace editor
