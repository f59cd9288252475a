// The panel in a dock of a Widgets editor, beside a tree view on the same selection model: what is
// selected in one is selected in the other, and undo takes both back.

#include <host/reflection/class_builder.h>
#include <host/scene/recorded_asset_selection.h>
#include <kyr_scene_outline/item_roles.h>
#include <kyr_scene_outline/scene_browser_data.h>

#include <QApplication>
#include <QDockWidget>
#include <QMainWindow>
#include <QMenuBar>
#include <QQmlComponent>
#include <QQmlContext>
#include <QQmlEngine>
#include <QQuickWidget>
#include <QStandardItemModel>
#include <QStatusBar>
#include <QTreeView>

#include <algorithm>
#include <map>

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

/// Names and intensities. Every cell of a row has the row's object, so an object comes once for
/// each of its cells that is selected.
class LampModel : public IAssetModel
{
public:
    LampModel()
    {
        m_items.setHorizontalHeaderLabels({"Name", "Intensity"});
        QHash<int, QByteArray> names = m_items.roleNames();
        for (auto role = kyr::itemRoleNames.begin(); role != kyr::itemRoleNames.end(); ++role)
            names.insert(role.key(), role.value());
        m_items.setItemRoleNames(names);
        for (const char* street : {"Harbour", "Market"}) {
            auto* group = new QStandardItem(street);
            m_items.appendRow({group, new QStandardItem});
            for (int number = 1; number <= 5; ++number)
                addLamp(*group, number);
            group->setData(group->rowCount(), kyr::CountRole);
        }
    }

    QAbstractItemModel* itemModel() const override { return &m_items; }
    QModelIndex indexOf(const kyr::ReflectedObject& object) const override
    {
        const auto row = m_rows.find(object.get());
        return row == m_rows.end() ? QModelIndex() : m_items.indexFromItem(row->second);
    }
    void setObjectHovered(const kyr::ReflectedObject& object, bool hovered) override
    {
        if (const QModelIndex row = indexOf(object); row.isValid())
            m_items.setData(row, hovered, kyr::HoverRole);
    }
    void activateItem(const QModelIndex&) override {}

private:
    void addLamp(QStandardItem& group, int number)
    {
        const auto lamp = std::make_shared<Lamp>();
        auto* name = new QStandardItem(QStringLiteral("Lamp %1").arg(number));
        auto* intensity = new QStandardItem(QString::number(double(lamp->intensity)));
        for (QStandardItem* cell : {name, intensity})
            cell->setData(QVariant::fromValue(kyr::ReflectedObject(lamp)), kyr::ObjectRole);
        name->setData("light", kyr::TypeRole);
        m_rows.emplace(lamp.get(), name);
        group.appendRow({name, intensity});
    }

    mutable QStandardItemModel m_items;
    std::map<const kyr::IReflected*, QStandardItem*> m_rows;
};

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    const auto changes = std::make_shared<Zar::ChangesController>();
    LampModel lamps;
    RecordedAssetSelection selection(changes);
    SceneBrowserData browser(&lamps, &selection, nullptr);

    QMainWindow window;
    window.resize(900, 600);
    QMenu* edit = window.menuBar()->addMenu("&Edit");
    QUndoStack& stack = changes->stack();
    edit->addAction("&Undo", &stack, &QUndoStack::undo, QKeySequence::Undo);
    edit->addAction("&Redo", &stack, &QUndoStack::redo, QKeySequence::Redo);

    auto* tree = new QTreeView;
    tree->setModel(browser.model());
    tree->setSelectionModel(browser.selectionModel());
    tree->setSelectionMode(QAbstractItemView::ExtendedSelection);
    tree->expandAll();
    window.setCentralWidget(tree);

    auto* outline = new QQuickWidget;
    outline->engine()->addImportPath(QStringLiteral(KYR_QML_IMPORT_PATH));
    outline->rootContext()->setContextProperty("outline", &browser);
    outline->setResizeMode(QQuickWidget::SizeRootObjectToView);
    QQmlComponent component(outline->engine());
    component.setData("import Kyr.SceneOutline 1.0; SceneBrowserPanel { browser: outline }",
                      QUrl());
    QObject* panel = component.create(outline->rootContext());
    if (!panel)
        qFatal("%s", qPrintable(component.errorString()));
    outline->setContent(QUrl(), &component, panel);
    auto* dock = new QDockWidget("Outline", &window);
    dock->setWidget(outline);
    window.addDockWidget(Qt::LeftDockWidgetArea, dock);

    vex::Connection counting =
        selection.connectSelectionChanged([&](const auto&, const auto& change) {
            const auto& chosen = change.after;
            const auto count = std::count_if(chosen.begin(), chosen.end(), [](const auto& object) {
                return object.object().isValid(); // a street has none
            });
            window.statusBar()->showMessage(QStringLiteral("%1 selected").arg(count));
        });
    window.show();
    const int status = application.exec();

    // The panel goes before what it shows, and the window's status bar before the selection.
    delete dock;
    counting.disconnect();
    return status;
}
