// The smallest complete program that shows the Scene Browser panel: an ordinary item model, an
// asset model over it, a browser, and three lines of QML.

#include <kyr_scene_outline/scene_browser_data.h>

#include <QDebug>
#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQmlContext>
#include <QStandardItemModel>

class ItemAssetModel : public IAssetModel
{
public:
    explicit ItemAssetModel(QAbstractItemModel* model) : m_model(model) {}
    QAbstractItemModel* itemModel() const override { return m_model; }
    QModelIndex indexOf(const kyr::ReflectedObject&) const override { return {}; }
    void setObjectHovered(const kyr::ReflectedObject&, bool) override {}
    void activateItem(const QModelIndex& index) override
    {
        qInfo() << "activated" << index.data().toString();
    }

private:
    QAbstractItemModel* m_model;
};

static void fill(QStandardItemModel& model)
{
    for (const char* name : {"Street", "Workshop"}) {
        auto* group = new QStandardItem(name);
        for (int lamp = 1; lamp <= 3; ++lamp)
            group->appendRow(new QStandardItem(QStringLiteral("Lamp %1").arg(lamp)));
        model.appendRow(group);
    }
}

int main(int argc, char** argv)
{
    QGuiApplication application(argc, argv);

    QStandardItemModel model;
    fill(model);
    ItemAssetModel assetModel(&model);
    SceneBrowserData browser(&assetModel, nullptr, nullptr);

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
