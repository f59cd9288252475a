#include "editor_window.h"

#include "editor_session.h"

#include <editor/viewport/viewport_types.h>

#include <QApplication>
#include <QDir>
#include <QQmlContext>
#include <QStandardPaths>
#include <QStyleFactory>

static void initializeResources()
{
    Q_INIT_RESOURCE(editor_app);
}

namespace editor {

namespace {

/// Beside the program's folder, where build and installation keep the same layout.
QString besideProgram(const char* path)
{
    return QDir::cleanPath(QCoreApplication::applicationDirPath() + QLatin1String("/../") +
                           QLatin1String(path));
}

} // namespace

void prepareApplication()
{
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    requestViewportGraphics();
}

void prepareWindows()
{
    initializeResources();
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    qputenv("QT_QUICK_CONTROLS_STYLE", "Fusion");
    registerViewportTypes();
    qmlRegisterUncreatableType<FileCommands>("Editor.App", 1, 0, "FileCommands",
                                             QStringLiteral("Comes with the session"));
    qRegisterMetaType<SceneObjectPtr>();
}

QString bundledScene()
{
    return besideProgram(KYR_DATA_DIR "/street.kyrscene");
}

QString recoveryFolder()
{
    return QDir(QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation))
        .filePath(QStringLiteral("recovery"));
}

EditorWindow::EditorWindow(EditorSession& session, QObject* parent)
    : QObject(parent), m_session(session), m_extensions(besideProgram(KYR_EXTENSION_DIR))
{
    m_engine.addImportPath(besideProgram(KYR_QML_DIR));
    m_engine.rootContext()->setContextProperty(QStringLiteral("session"), &session);
    m_engine.rootContext()->setContextProperty(QStringLiteral("theme"), session.theme());
    m_extensions.attach(*session.browser(), m_engine);
    m_engine.load(QUrl(QStringLiteral("qrc:/editor/app/Main.qml")));
}

EditorWindow::~EditorWindow()
{
    m_extensions.detach(*m_session.browser());
}

QQuickWindow* EditorWindow::window() const
{
    return qobject_cast<QQuickWindow*>(m_engine.rootObjects().value(0));
}

} // namespace editor
