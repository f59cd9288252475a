#include "selection_status.h"

namespace editor {

SelectionStatus::SelectionStatus(SceneDocument& document, IAssetSelection& selection,
                                 QObject* parent)
    : QObject(parent), m_document(document), m_selection(selection)
{
    m_selectionChanged = m_selection.connectSelectionChanged([this](auto&&, auto&&) { update(); });
    connect(&m_document, &SceneDocument::structureChanged, this, &SelectionStatus::update);
    connect(&m_document, &SceneDocument::objectsChanged, this, &SelectionStatus::update);
}

QString SelectionStatus::summary() const
{
    if (m_count == 0)
        return tr("Nothing selected");
    return m_count == 1 ? tr("1 object selected")
                        : tr("%1 objects selected").arg(QLocale().toString(m_count));
}

SceneObject* SelectionStatus::primary() const
{
    const IAssetSelection::Objects& objects = m_selection.objects();
    SceneObject* object = objects.empty() ? nullptr : sceneObjectOf(objects.back().object());
    return m_document.contains(object) ? object : nullptr;
}

bool SelectionStatus::hasOtherThanRoot() const
{
    const SceneObject* object = primary();
    return object && (m_selection.objects().size() > 1 || object->parent());
}

void SelectionStatus::update()
{
    const SceneObject* primary = this->primary();
    m_count = int(m_selection.objects().size());
    m_primaryName = primary ? primary->displayName() : QString();
    m_primaryType = primary ? kindId(primary->kind()) : QString();
    Q_EMIT changed();
}

} // namespace editor
