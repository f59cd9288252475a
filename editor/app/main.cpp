#include "command_line.h"
#include "editor_session.h"
#include "editor_window.h"
#include "screenshot.h"

#include <QApplication>

#include <cstdio>

namespace {

void printError(const QString& text)
{
    std::fprintf(stderr, "%s\n", text.toLocal8Bit().constData());
}

/// Ends the event loop with a picture written, or with the reason why not on the error stream.
void runUnattended(editor::EditorSession& session, editor::Screenshot& screenshot)
{
    const auto fail = [](const QString& reason) {
        printError(reason);
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
    editor::prepareApplication();
    QApplication application(argc, argv);
    QApplication::setOrganizationName(QStringLiteral("Kelvane"));
    QApplication::setApplicationName(QStringLiteral("Scene Editor"));
    const editor::CommandLine options = editor::parseCommandLine(QCoreApplication::arguments());
    editor::prepareWindows();

    editor::EditorSession session;
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
    session.files()->openFile(options.scene.isEmpty() ? editor::bundledScene() : options.scene);
    return QApplication::exec();
}
