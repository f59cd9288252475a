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

void SelectionStatus::update()
{
    const IAssetSelection::Objects& objects = m_selection.objects();
    const SceneObject* primary = objects.empty() ? nullptr : sceneObjectOf(objects.back().object());
    m_count = int(objects.size());
    m_primaryName = primary ? primary->displayName() : QString();
    m_primaryType = primary ? kindId(primary->kind()) : QString();
    Q_EMIT changed();
}

} // namespace editor
