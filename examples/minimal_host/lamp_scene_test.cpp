// Whether the scene and its selection are what the browser relies on: the test kit's checks and
// 20,000 random steps.

#include "lamp_scene.h"

#include <host/scene/recorded_asset_selection.h>
#include <kyr_scene_outline_testkit/contract.h>
#include <kyr_scene_outline_testkit/random_driver.h>

#include <QCoreApplication>
#include <QUndoStack>

#include <iostream>

class LampSceneUnderTest : public kyr::testkit::SceneUnderTest
{
public:
    IAssetModel& assetModel() override { return m_scene; }
    IAssetSelection& assetSelection() override { return m_selection; }
    bool insertRow(const QModelIndex& parent, int row) override
    {
        QStandardItemModel& model = m_scene.model();
        QStandardItem* item = model.itemFromIndex(parent);
        m_scene.add(item ? *item : *model.invisibleRootItem(), row, QStringLiteral("Lamp"));
        return true;
    }
    bool undo() override
    {
        m_changes->stack().undo();
        return true;
    }
    bool redo() override
    {
        m_changes->stack().redo();
        return true;
    }

private:
    LampScene m_scene;
    std::shared_ptr<Zar::ChangesController> m_changes = std::make_shared<Zar::ChangesController>();
    RecordedAssetSelection m_selection{m_changes};
};

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    const auto makeScene = [] { return std::make_unique<LampSceneUnderTest>(); };
    const std::string wrong = kyr::testkit::contractViolations(makeScene) +
                              kyr::testkit::firstFailure(makeScene, 1, 20000);
    std::cerr << wrong;
    return wrong.empty() ? 0 : 1;
}
