#include <kyr_scene_outline/scene_browser_data.h>

#include "column_proxies.h"
#include <kyr_scene_outline/selection/row_selection_model.h>

#include <host/core/debug_message.h>
#include <host/core/stack_tracker.h>
#include <host/reflection/fuzzy_function.h>

#include <QPointer>
#include <QTimer>

namespace {

constexpr const char* sourceFile = "scene_browser_data";

using SelectionChangedSignature = void(const vex::Connection&,
                                       const IAssetSelection::SelectionChange&);

// Hands the selection-change notification to a callable that wants none of its arguments.
template <typename Callable>
IAssetSelection::SelectionChangedCallback withoutArguments(Callable callable)
{
    return kyr::FuzzyArgumentsAdaptor<SelectionChangedSignature, Callable>(std::move(callable));
}

} // namespace

SceneBrowserData::SceneBrowserData(IAssetModel* assetModel, IAssetSelection* assetSelection,
                                   QObject* parent)
    : QObject(parent), m_assetModel(assetModel), m_assetSelection(assetSelection)
{
    initActions();
    if (m_assetSelection) {
        subscribe(m_assetSelection->connectSelectionChanged(
            withoutArguments([this] { updateSelectionModelFromAssetSelection(); })));
        subscribe(m_assetSelection->connectHoverChanged(
            [this](const IAssetSelection::Objects& entered, const IAssetSelection::Objects& left) {
                onHoverChanged(entered, left);
            }));
    }
    if (!m_assetModel)
        return;

    connectItemModel();
    m_selectionModel.reset(new kyr::selection::RowSelectionModel(m_assetModel->itemModel(), this));
    connect(
        m_selectionModel.get(), &QItemSelectionModel::selectionChanged, m_selectionModel.get(),
        [this] { updateAssetSelection(m_selectionModel->finishedSelection()); },
        Qt::DirectConnection);
    updateAssetSelection(m_selectionModel->selection());
}

SceneBrowserData::~SceneBrowserData()
{
    const Zar::StackTrackerScope entry("SceneBrowserData::~SceneBrowserData", sourceFile);
    for (vex::Connection& connection : m_connections)
        connection.disconnect();
    m_connections.clear();
}

void SceneBrowserData::RetireSelection::operator()(kyr::selection::RowSelectionModel* model) const
{
    kyr::selection::RowSelectionModel::retire(model);
}

void SceneBrowserData::subscribe(vex::Connection connection)
{
    if (connection.isConnected())
        m_connections.push_back(std::move(connection));
}

// An asset model may have no item model; there is nothing to follow then.
void SceneBrowserData::connectItemModel()
{
    using Model = QAbstractItemModel;
    const auto follow = [this](auto signal, auto handler) {
        if (const QAbstractItemModel* itemModel = m_assetModel->itemModel())
            connect(itemModel, signal, this, handler);
    };
    const auto rebuildLater = [this] {
        QTimer::singleShot(0, this, [this] { updateSelectionModel(); });
    };
    const auto beginRowsUpdate = [this] { ++m_rowsUpdates; };

    follow(&Model::modelReset, rebuildLater);
    follow(&Model::layoutChanged, rebuildLater);
    follow(&Model::rowsAboutToBeRemoved, beginRowsUpdate);
    follow(&Model::rowsRemoved, [this] { finishRowsUpdate(); });
    follow(&Model::rowsAboutToBeInserted, beginRowsUpdate);
    follow(&Model::rowsInserted, [this](const QModelIndex& rowParent, int first, int last) {
        const QPointer<SceneBrowserData> self(this);
        finishRowsUpdate();
        if (self)
            syncSelectionOnInsert(rowParent, first, last);
    });
}

// The count goes down even when the model broke its contract, as the report then says. Who reads
// the report may destroy the browser.
void SceneBrowserData::finishRowsUpdate()
{
    const QPointer<SceneBrowserData> self(this);
    Zar::verify(m_rowsUpdates > 0, "m_rowsUpdates > 0", sourceFile);
    if (self)
        --m_rowsUpdates;
}

QAbstractItemModel* SceneBrowserData::model() const
{
    return m_assetModel ? m_assetModel->itemModel() : nullptr;
}

QItemSelectionModel* SceneBrowserData::selectionModel() const
{
    return m_selectionModel.get();
}

IAssetSelection* SceneBrowserData::assetSelection() const
{
    return m_assetSelection;
}
