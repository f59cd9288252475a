#include "build_commands.h"

#include "clipboard_text.h"
#include "long_task.h"
#include "object_jobs.h"

#include <editor/document/scene_building.h>
#include <editor/document/scene_commands.h>
#include <editor/viewport/viewport_controller.h>

namespace editor {

namespace {

QString countText(std::size_t count)
{
    return count == 1 ? BuildCommands::tr("1 object")
                      : BuildCommands::tr("%1 objects").arg(QLocale().toString(qulonglong(count)));
}

QMatrix4x4 placeInView(const OrbitCamera& camera, ObjectKind kind)
{
    if (kind == ObjectKind::Camera)
        return camera.view().inverted();
    QMatrix4x4 place;
    place.translate(camera.target());
    return place;
}

} // namespace

BuildCommands::BuildCommands(SceneDocument& document, IAssetSelection& selection,
                             const ViewportController& view, LongTask& task, QObject* parent)
    : QObject(parent), m_document(document), m_selection(selection), m_view(view), m_task(task)
{
    connect(&m_document, &SceneDocument::selectionSetsChanged, this,
            &BuildCommands::selectionSetsChanged);
}

void BuildCommands::add(const NewObject& what)
{
    addObject(m_document, m_selection, makeNewObject(what),
              placeInView(m_view.camera(), what.kind));
}

void BuildCommands::group()
{
    groupSelected(m_document, m_selection, tr("Group").toStdString());
}

void BuildCommands::ungroup()
{
    if (!ungroupSelected(m_document, m_selection))
        Q_EMIT reported(tr("No group is selected"));
}

void BuildCommands::copyObjects()
{
    startCopy([] {});
}

void BuildCommands::cutObjects()
{
    startCopy([this] { removeSelected(m_document, m_selection); });
}

void BuildCommands::startCopy(const std::function<void()>& copied)
{
    const SceneObjects objects = m_document.topmost(selectedObjects(m_document, m_selection));
    if (objects.empty())
        return;
    auto job = std::make_unique<ObjectCopyJob>(objects);
    const ObjectText& text = job->result();
    m_task.start(
        tr("Copying objects"), std::move(job), [this, &text, copied, count = objects.size()] {
            if (!text.error.isEmpty())
                Q_EMIT reported(tr("Nothing was copied: %1").arg(text.error));
            else if (!putClipboardText(text.text))
                Q_EMIT reported(tr("Nothing was copied; another program holds the clipboard"));
            else {
                Q_EMIT reported(tr("%1 copied").arg(countText(count)));
                copied();
            }
        });
}

void BuildCommands::pasteObjects()
{
    const std::optional<QByteArray> text = clipboardText();
    if (!text) {
        Q_EMIT reported(tr("There is no text on the clipboard"));
        return;
    }
    auto job = std::make_unique<ObjectPasteJob>(*text);
    const ObjectsOfText& read = job->result();
    m_task.start(tr("Pasting objects"), std::move(job), [this, &read] {
        if (!read.error.isEmpty())
            Q_EMIT reported(tr("Nothing was pasted: %1").arg(read.error));
        else if (editor::pasteObjects(m_document, m_selection, read.copied))
            Q_EMIT reported(tr("%1 pasted").arg(countText(m_selection.objects().size())));
    });
}

QStringList BuildCommands::selectionSets() const
{
    QStringList names;
    for (const SelectionSet& set : m_document.selectionSets())
        names.append(QString::fromStdString(set.name));
    return names;
}

bool BuildCommands::saveSelectionSet(const QString& name)
{
    return editor::saveSelectionSet(m_document, m_selection, name.trimmed().toStdString());
}

void BuildCommands::recallSelectionSet(int index)
{
    if (index < 0 || !editor::recallSelectionSet(m_document, m_selection, std::size_t(index)))
        Q_EMIT reported(tr("Nothing of the set is in the scene"));
}

void BuildCommands::removeSelectionSet(int index)
{
    if (index >= 0)
        editor::removeSelectionSet(m_document, std::size_t(index));
}

} // namespace editor
