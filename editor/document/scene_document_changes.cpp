#include "scene_document_changes.h"

namespace editor {

SceneDocument::Change::Change(SceneDocument& document)
    : m_document(document), m_before(document.m_version), m_after(++document.m_lastVersion)
{}

void SceneDocument::Change::changes(SceneObjectPtr object)
{
    const quint32 before = object->m_version;
    m_states.push_back({std::move(object), before});
}

void SceneDocument::Change::redo()
{
    apply();
    stamp();
}

void SceneDocument::Change::stamp()
{
    for (const State& state : m_states)
        m_document.setVersion(*state.object, m_after);
    m_document.m_version = m_after;
}

void SceneDocument::Change::undo()
{
    revert();
    for (const State& state : m_states)
        m_document.setVersion(*state.object, state.before);
    m_document.m_version = m_before;
}

SceneDocument::PropertyChange::PropertyChange(SceneDocument& document,
                                              const kyr::BoundProperty& property,
                                              lumo::Variant before, lumo::Variant after)
    : Change(document), m_property(property), m_before(std::move(before)), m_after(std::move(after))
{
    changes(std::static_pointer_cast<SceneObject>(property.topLevel()));
}

void SceneDocument::PropertyChange::apply()
{
    m_property.set(m_after, kyr::SetterFlag::Replay);
}

void SceneDocument::PropertyChange::revert()
{
    m_property.set(m_before, kyr::SetterFlag::Replay);
}

SceneDocument::RowsChange::RowsChange(SceneDocument& document, SceneObjectPtr parent, int row,
                                      SceneObjects objects)
    : Change(document)
    , m_owner(&document)
    , m_parent(std::move(parent))
    , m_objects(std::move(objects))
    , m_row(row)
    , m_count(int(m_objects.size()))
    , m_isInsertion(true)
{
    changes(m_parent);
}

SceneDocument::RowsChange::RowsChange(SceneDocument& document, SceneObjectPtr parent, int row,
                                      int count)
    : Change(document)
    , m_owner(&document)
    , m_parent(std::move(parent))
    , m_row(row)
    , m_count(count)
    , m_isInsertion(false)
{
    changes(m_parent);
}

SceneDocument::RowsChange::~RowsChange()
{
    for (SceneObjectPtr& object : m_objects) {
        if (m_owner)
            m_owner->m_release.add(std::move(object));
    }
}

void SceneDocument::RowsChange::put()
{
    document().insertRows(*m_parent, m_row, std::exchange(m_objects, {}));
}

void SceneDocument::RowsChange::take()
{
    m_objects = document().takeRows(*m_parent, m_row, m_count);
}

SceneDocument::MoveChange::MoveChange(SceneDocument& document, SceneObjectPtr from, int first,
                                      int count, SceneObjectPtr to, int row)
    : Change(document)
    , m_from(std::move(from))
    , m_to(std::move(to))
    , m_first(first)
    , m_count(count)
    , m_row(row)
{
    changes(m_from);
    if (m_to != m_from)
        changes(m_to);
    for (int i = first; i < first + count; ++i)
        changes(m_from->m_children[std::size_t(i)]);
}

void SceneDocument::MoveChange::apply()
{
    document().moveRows(*m_from, m_first, m_count, *m_to, m_row);
}

void SceneDocument::MoveChange::revert()
{
    const bool isSameParent = m_from == m_to;
    const int movedTo = isSameParent && m_row > m_first ? m_row - m_count : m_row;
    const int movedBack = isSameParent && movedTo < m_first ? m_first + m_count : m_first;
    document().moveRows(*m_to, movedTo, m_count, *m_from, movedBack);
}

SceneDocument::OrderChange::OrderChange(SceneDocument& document, SceneObjectPtr parent,
                                        std::vector<int> oldRows)
    : Change(document), m_parent(std::move(parent)), m_oldRows(std::move(oldRows))
{
    changes(m_parent);
}

void SceneDocument::OrderChange::apply()
{
    document().reorder(*m_parent, m_oldRows);
}

void SceneDocument::OrderChange::revert()
{
    std::vector<int> rows(m_oldRows.size());
    for (std::size_t row = 0; row < rows.size(); ++row)
        rows[std::size_t(m_oldRows[row])] = int(row);
    document().reorder(*m_parent, rows);
}

SceneDocument::SetsChange::SetsChange(SceneDocument& document, SelectionSets sets)
    : Change(document), m_sets(std::move(sets))
{
    changes(document.m_root);
}

void SceneDocument::SetsChange::apply()
{
    SceneObject& root = *document().m_root;
    SelectionSets present = root.selectionSets();
    root.setSelectionSets(std::exchange(m_sets, std::move(present)));
    Q_EMIT document().selectionSetsChanged();
}

} // namespace editor
