#include "scene_export.h"

#include "report.h"

#include <editor/files/export_report.h>

#include <QDir>
#include <QFileInfo>

namespace editor {

SceneExport::SceneExport(SceneDocument& document, QObject* parent)
    : QObject(parent), m_document(document), m_saver(document)
{
    connect(&m_saver, &SceneSaver::saved, this, [this](const QString& path) {
        reportNote(tr("Exported %1").arg(QDir::toNativeSeparators(path)));
        for (const QString& loss : qAsConst(m_losses))
            reportNote(tr("Not in the file: %1").arg(loss));
        Q_EMIT exported(path);
    });
    connect(&m_saver, &SceneSaver::failed, this,
            [this](const QString& path, const QString& reason) {
                reportFailure(reason);
                Q_EMIT failed(path, reason);
            });
    connect(&m_saver, &SceneSaver::canceled, this, [](const QString& path) {
        reportNote(tr("Exporting %1 was cancelled").arg(QDir::toNativeSeparators(path)));
    });
}

void SceneExport::begin()
{
    m_losses = exportLosses(*m_document.root());
    if (m_losses.isEmpty())
        chooseFile();
    else
        setAsking(true);
}

void SceneExport::chooseFile()
{
    setAsking(false);
    m_dialog.askToWrite(
        {tr("Export Scene"),
         {tr("Binary glTF 2 (*.glb)"), tr("glTF 2 (*.gltf)")},
         m_document.filePath(),
         QFileInfo(m_document.filePath()).completeBaseName()},
        [this](const QString& path) { m_saver.save(path); }, [] {});
}

void SceneExport::giveUp()
{
    setAsking(false);
}

void SceneExport::setAsking(bool asking)
{
    m_asking = asking;
    Q_EMIT askingChanged();
}

} // namespace editor
