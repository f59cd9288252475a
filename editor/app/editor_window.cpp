#include "editor_window.h"

#include "editor_session.h"
#include "window_state.h"

#include <editor/app/actions/popup_watch.h>
#include <editor/viewport/viewport_types.h>

#include <QApplication>
#include <QDir>
#include <QQmlContext>
#include <QSettings>
#include <QStandardPaths>
#include <QStyleFactory>

static void initializeResources()
{
    Q_INIT_RESOURCE(editor_app);
}

namespace editor {

static const auto modeKey = QStringLiteral("window/mode");
static const auto filterKey = QStringLiteral("window/filter");

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
    qmlRegisterType<PopupWatch>("Editor.App", 1, 0, "PopupWatch");
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
    if (QQuickWindow* shown = window()) {
        restoreView();
        restoreWindow(*shown);
        shown->show();
        // Nobody else does it on a display without a window manager.
        shown->requestActivate();
    }
}

// How the panel arranges and filters the rows, which the window's parts share through the browser.
void EditorWindow::restoreView()
{
    const QSettings settings;
    QObject* mode = m_session.browser()->selectableData();
    if (mode && settings.contains(modeKey))
        mode->setProperty("currentIndex", settings.value(modeKey));
    m_session.browser()->filterPredicate()->setProperty("text", settings.value(filterKey));
}

void EditorWindow::rememberView() const
{
    QSettings settings;
    if (const QObject* mode = m_session.browser()->selectableData())
        settings.setValue(modeKey, mode->property("currentIndex"));
    settings.setValue(filterKey, m_session.browser()->filterPredicate()->property("text"));
}

EditorWindow::~EditorWindow()
{
    if (const QQuickWindow* shown = window()) {
        rememberView();
        rememberWindow(*shown);
    }
    m_extensions.detach(*m_session.browser());
}

QQuickWindow* EditorWindow::window() const
{
    return qobject_cast<QQuickWindow*>(m_engine.rootObjects().value(0));
}

} // namespace editor
