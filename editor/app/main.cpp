#include "command_line.h"
#include "editor_application.h"
#include "editor_session.h"
#include "editor_window.h"
#include "screenshot.h"

#include <QFileInfo>
#include <QSettings>
#include <QTemporaryDir>

namespace {

/// Ends the event loop with a picture written, or with the reason why not on the error stream.
void runUnattended(editor::EditorSession& session, editor::Screenshot& screenshot)
{
    const auto fail = [](const QString& reason) {
        editor::printError(reason);
        QCoreApplication::exit(EXIT_FAILURE);
    };
    QObject::connect(session.loader(), &editor::LoadController::loaded, &screenshot,
                     &editor::Screenshot::start);
    QObject::connect(session.loader(), &editor::LoadController::failed, &screenshot,
                     [fail](const QString&, const QString& reason) { fail(reason); });
    QObject::connect(&screenshot, &editor::Screenshot::failed, &screenshot, fail);
    QObject::connect(&screenshot, &editor::Screenshot::written, qApp, &QCoreApplication::quit);
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication::setOrganizationName(QStringLiteral("Kelvane"));
    QCoreApplication::setApplicationName(QStringLiteral("Scene Editor"));
    editor::prepareApplication();
    editor::answerQuestions(argc, argv);
    const editor::EditorApplication application(argc, argv);
    const editor::CommandLine options = editor::parseCommandLine(QCoreApplication::arguments());
    editor::prepareWindows();

    // A picture shows the editor as it starts for the first time, and leaves nothing behind.
    const QTemporaryDir noSettings;
    if (!options.screenshot.isEmpty()) {
        qputenv("QML_DISABLE_DISK_CACHE", "1");
        QCoreApplication::setAttribute(Qt::AA_DisableShaderDiskCache);
        QSettings::setDefaultFormat(QSettings::IniFormat);
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, noSettings.path());
    }

    editor::EditorSession session;
    session.loader()->setSampleFolder(QFileInfo(editor::bundledScene()).path());
    if (options.dark)
        session.theme()->show(*options.dark);
    const editor::EditorWindow editorWindow(session);
    if (!editorWindow.window())
        return EXIT_FAILURE;

    editor::Screenshot screenshot(editorWindow.window(), options.screenshot);
    if (!options.screenshot.isEmpty())
        runUnattended(session, screenshot);
    else
        session.recovery()->start(editor::recoveryFolder());
    if (options.generated)
        session.loader()->generate(*options.generated);
    else
        session.files()->openFile(options.scene.isEmpty() ? editor::bundledScene() : options.scene);
    return editor::EditorApplication::exec();
}
