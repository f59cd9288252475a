// The smallest complete program that shows the Scene Browser panel: a scene with its selection, a
// browser, and three lines of QML.

#include "lamp_scene.h"

#include <host/scene/recorded_asset_selection.h>
#include <kyr_scene_outline/scene_browser_data.h>

#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQmlContext>

int main(int argc, char** argv)
{
    QGuiApplication application(argc, argv);

    LampScene scene;
    RecordedAssetSelection selection;
    SceneBrowserData browser(&scene, &selection, nullptr);

    QQmlApplicationEngine engine;
    engine.addImportPath(QStringLiteral(KYR_QML_IMPORT_PATH));
    engine.rootContext()->setContextProperty("outline", &browser);
    engine.loadData(R"(
        import QtQuick.Controls 2.15
        import Kyr.SceneOutline 1.0
        ApplicationWindow {
            width: 360; height: 480; visible: true; title: "Outline"
            SceneBrowserPanel { anchors.fill: parent; browser: outline }
        })");
    return engine.rootObjects().isEmpty() ? 1 : application.exec();
}
