#include "viewport_types.h"

#include "gizmo_surface.h"
#include "render/tool_icon.h"
#include "viewport_controller.h"
#include "viewport_surface.h"

#include <QCoreApplication>
#include <QSurfaceFormat>
#include <QtQml>

static void initializeResources()
{
    Q_INIT_RESOURCE(viewport);
}

namespace editor {

void registerViewportTypes()
{
    initializeResources();
    const char* module = "Editor.Viewport";
    qmlRegisterType<ViewportSurface>(module, 1, 0, "ViewportSurface");
    qmlRegisterType<GizmoSurface>(module, 1, 0, "GizmoSurface");
    qmlRegisterType<ToolIcon>(module, 1, 0, "ToolIcon");
    qmlRegisterUncreatableMetaObject(Gizmo::staticMetaObject, module, 1, 0, "Gizmo",
                                     QStringLiteral("Holds enumerations"));
    qmlRegisterUncreatableType<GizmoController>(module, 1, 0, "GizmoController",
                                                QStringLiteral("Made by the viewport"));
    qmlRegisterUncreatableType<ViewportController>(module, 1, 0, "ViewportController",
                                                   QStringLiteral("Made by the editor"));
    qmlRegisterType(QUrl(QStringLiteral("qrc:/editor/viewport/Viewport3D.qml")), module, 1, 0,
                    "Viewport3D");
}

void requestViewportGraphics()
{
    QSurfaceFormat format = QSurfaceFormat::defaultFormat();
    format.setVersion(3, 3);
    format.setProfile(QSurfaceFormat::CoreProfile);
    format.setDepthBufferSize(24);
    format.setStencilBufferSize(8);
    QSurfaceFormat::setDefaultFormat(format);
}

} // namespace editor
