// The library over an editor's own undo: selects two rows and takes the selection back, step by
// step. Ends with 0 when the journal and the tree agree.

#include <host/reflection/class_builder.h>
#include <host/scene/recorded_asset_selection.h>
#include <kyr_scene_outline/item_roles.h>
#include <kyr_scene_outline/scene_browser_data.h>

#include <QCoreApplication>
#include <QStandardItemModel>

#include <cstdio>

namespace {

struct Lamp final : kyr::IReflected
{
    const kyr::ReflectedClass& reflectedClass() const override
    {
        static const kyr::ReflectedClass description =
            kyr::ClassBuilder<Lamp>("Lamp").value("intensity", &Lamp::intensity).build();
        return description;
    }

    float intensity = 1;
};

class LampModel : public IAssetModel
{
public:
    LampModel()
    {
        for (const auto& lamp : m_lamps) {
            auto* item = new QStandardItem(QStringLiteral("Lamp"));
            item->setData(QVariant::fromValue(kyr::ReflectedObject(lamp)), kyr::ObjectRole);
            m_items.appendRow(item);
        }
    }

    QAbstractItemModel* itemModel() const override { return &m_items; }
    QModelIndex indexOf(const kyr::ReflectedObject& object) const override
    {
        for (int row = 0; row < m_items.rowCount(); ++row) {
            if (object.get() == m_lamps[row].get())
                return m_items.index(row, 0);
        }
        return {};
    }
    void setObjectHovered(const kyr::ReflectedObject&, bool) override {}
    void activateItem(const QModelIndex&) override {}

private:
    std::shared_ptr<Lamp> m_lamps[3] = {std::make_shared<Lamp>(), std::make_shared<Lamp>(),
                                        std::make_shared<Lamp>()};
    mutable QStandardItemModel m_items;
};

bool expect(bool holds, const char* what)
{
    if (!holds)
        std::fprintf(stderr, "%s\n", what);
    return holds;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    const auto journal = std::make_shared<Zar::ChangesController>();
    LampModel lamps;
    RecordedAssetSelection selection(journal);
    SceneBrowserData browser(&lamps, &selection, nullptr);
    QItemSelectionModel* rows = browser.selectionModel();

    rows->select(browser.model()->index(0, 0), QItemSelectionModel::ClearAndSelect);
    rows->select(browser.model()->index(2, 0), QItemSelectionModel::Select);
    bool agrees = expect(journal->stepCount() == 2, "two clicks are two steps") &&
                  expect(journal->lastName() == "Set asset selection", "a step has its name");
    agrees &= expect(journal->undo() && rows->selectedIndexes().size() == 1, "undo takes one back");
    agrees &=
        expect(journal->redo() && rows->selectedIndexes().size() == 2, "redo brings it again");
    return agrees ? 0 : 1;
}
