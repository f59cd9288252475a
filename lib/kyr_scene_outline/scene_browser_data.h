#pragma once

#include <host/scene/asset_model.h>
#include <host/scene/asset_selection.h>
#include <host/ui/action.h>
#include <host/ui/popup_menu.h>
#include <host/ui/text_predicate.h>
#include <kyr_cpp_utils/signal.h>
#include <kyr_scene_outline/export.h>
#include <kyr_scene_outline/property_job.h>

#include <QAbstractItemModel>
#include <QItemSelectionModel>
#include <QObject>
#include <QVariant>

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

class AbstractFilterData;
class AbstractSelectableData;
class SceneBrowserPanelBase;

namespace kyr {
class ColumnProxies;
namespace selection {
class RowSelectionModel;
}
} // namespace kyr

/// The data side of one Scene Browser panel: the panel's QML binds to its properties, signals and
/// invokable methods, the editor's code calls the rest.
///
/// Everything that is handed in stays its owner's and must outlive its use here; setting null
/// detaches it. Setters announce every call, also when the value is the same. All calls belong on
/// the GUI thread. Either model may be null, and what needs it then does nothing.
///
/// The browser may be destroyed inside every notification and every call of the editor that it
/// causes; what it was about to do is then left. What the editor's callbacks and models throw
/// passes through.
///
/// A change of the selection costs O(n log n) in its ranges and O(n) in the objects that are
/// selected then, `selectAll` O(n) in the rows of the scene. Each row that comes asks `isSelected`
/// once. Hover costs the objects that enter and leave, copy and paste objects times properties.
class KYR_SCENE_OUTLINE_EXPORT SceneBrowserData : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QAbstractItemModel* model READ model CONSTANT)
    Q_PROPERTY(QItemSelectionModel* selectionModel READ selectionModel CONSTANT)
    Q_PROPERTY(QObject* headerPanel READ headerPanel NOTIFY headerPanelChanged)
    Q_PROPERTY(QObject* footerPanel READ footerPanel NOTIFY footerPanelChanged)
    Q_PROPERTY(QObject* selectableData READ selectableData NOTIFY selectableDataChanged)
    Q_PROPERTY(QList<QVariant> filterData READ filterData NOTIFY filterDataChanged)
    Q_PROPERTY(QObject* filterPredicate READ filterPredicate NOTIFY filterPredicateChanged)
    Q_PROPERTY(QAbstractItemModel* columnsModel READ columnsModel NOTIFY columnsModelChanged)
    Q_PROPERTY(QAbstractItemModel* checkableColumnsModel READ checkableColumnsModel CONSTANT)
    Q_PROPERTY(QAbstractItemModel* selectedColumnsModel READ selectedColumnsModel CONSTANT)
    Q_PROPERTY(IAssetSelection* assetSelection READ assetSelection CONSTANT)

public:
    /// Ends with an empty selection handed to `assetSelection`: the editor's selection is not
    /// pulled, it is replaced.
    SceneBrowserData(IAssetModel* assetModel, IAssetSelection* assetSelection, QObject* parent);
    ~SceneBrowserData() override;

    /// The asset model's own item model, never a proxy.
    QAbstractItemModel* model() const;
    QItemSelectionModel* selectionModel() const;
    IAssetSelection* assetSelection() const;

    // Attachments
    QObject* headerPanel() const;
    void setHeaderPanel(SceneBrowserPanelBase* panel);
    QObject* footerPanel() const;
    void setFooterPanel(SceneBrowserPanelBase* panel);
    QObject* selectableData() const;
    void setSelectableData(AbstractSelectableData* data);
    QList<QVariant> filterData() const;
    /// Filters keep the order in which they were added; one that is there already stays where it
    /// is.
    void addFilterData(AbstractFilterData* filter);
    void removeFilterData(AbstractFilterData* filter);
    QObject* filterPredicate() const;
    void setFilterPredicate(lumo::datamodels::proxy::TextPredicate* predicate);

    // Columns
    QAbstractItemModel* columnsModel() const;
    /// Every column, checkable; null before `setColumnsModel`. Read it again after
    /// `columnsModelChanged`.
    QAbstractItemModel* checkableColumnsModel() const;
    /// The chosen columns in the order of their "columnOrder" role; null before `setColumnsModel`.
    /// Read it again after `columnsModelChanged`.
    QAbstractItemModel* selectedColumnsModel() const;
    /// A column is chosen when its row is selected in `selectionModel`, which may be null. Either
    /// model may die before the browser, which then goes on without it.
    void setColumnsModel(QAbstractItemModel* columnsModel, QItemSelectionModel* selectionModel);
    /// Dropping the returned connection ends the subscription. A callback may subscribe, end
    /// subscriptions, ask again or destroy the browser; what it throws leaves `showColumnsDialog`.
    vex::Connection connectShowColumnsDialog(std::function<void()> callback);

    // Actions and context menu
    void setPopupMenuProvider(std::shared_ptr<lumo::IPopupMenuProvider> provider);
    void expandAll();
    void collapseAll();
    /// Whether any top-level row has children.
    bool checkExpandable() const;

    // Property clipboard
    /// Copies the properties of the editor's selected objects to the system clipboard. Reports why
    /// not and returns false when it cannot.
    bool copyProperties();
    /// Sets the properties of the editor's selected objects from the system clipboard, as one
    /// undoable change. Reports why not and returns false when it cannot.
    bool pasteProperties();
    /// The same as jobs that the editor works off in slices, for many objects, and with a choice of
    /// properties; null, with the reason reported, when there is nothing to do. The job is
    /// independent of the browser.
    std::unique_ptr<PropertyJob> startCopy(PropertyChoice choice = {});
    std::unique_ptr<PropertyJob> startPaste(PropertyChoice choice = {});
    /// Counts what a paste of everything would do, and changes nothing.
    std::unique_ptr<PropertyJob> startPastePreview();
    /// What the last `pasteProperties` did; all zero when it came to nothing.
    const PropertyPasteReport& lastPasteReport() const;

    // The panel's commands
    Q_INVOKABLE void clearSelectedColumns();
    /// Rows of `selectedColumnsModel`.
    Q_INVOKABLE void removeFromSelectedColumns(const QModelIndexList& indexes);
    Q_INVOKABLE void setColumnsFilter(QString filter);
    Q_INVOKABLE void showColumnsDialog();
    Q_INVOKABLE void syncHover(const QModelIndex& hoveredItem);
    Q_INVOKABLE void resetHover();
    Q_INVOKABLE void onDoubleClicked(const QModelIndex& index);
    /// Selects every row that the model reports; fetches nothing.
    Q_INVOKABLE void selectAll();
    Q_INVOKABLE void requestMenu();

Q_SIGNALS:
    void headerPanelChanged();
    void footerPanelChanged();
    void columnsModelChanged();
    void selectableDataChanged();
    void filterDataChanged();
    void filterPredicateChanged();
    void expandAllRequested();
    void collapseAllRequested();
    /// Emitted by others to ask the panel to show a row.
    void onShowItem(QModelIndex index);

private:
    // They end what may be about to return to whoever destroys the browser.
    struct RetireSelection
    {
        void operator()(kyr::selection::RowSelectionModel* model) const;
    };
    struct RetireColumns
    {
        void operator()(kyr::ColumnProxies* columns) const;
    };

    std::unique_ptr<PropertyJob> makePasteJob(PropertyChoice choice, bool isPreview);
    void initActions();
    void subscribe(vex::Connection connection);
    void connectItemModel();
    void finishRowsUpdate();

    void updateAssetSelection(const QItemSelection& selection);
    void updateSelectionModel();
    void updateSelectionModelFromAssetSelection();
    void syncSelectionOnInsert(const QModelIndex& parent, int first, int last);
    void onHoverChanged(const IAssetSelection::Objects& entered,
                        const IAssetSelection::Objects& left);

    // Members are destroyed from the last to the first.
    std::vector<vex::Connection> m_connections;
    vex::Signal<void()> m_showColumnsDialog;
    std::shared_ptr<lumo::IPopupMenuProvider> m_popupMenuProvider;
    std::unique_ptr<kyr::selection::RowSelectionModel, RetireSelection> m_selectionModel;
    std::unique_ptr<kyr::ColumnProxies, RetireColumns> m_columns;
    std::unique_ptr<lumo::Action> m_expandAllAction;
    std::unique_ptr<lumo::Action> m_collapseAllAction;
    IAssetModel* m_assetModel = nullptr;
    IAssetSelection* m_assetSelection = nullptr;
    SceneBrowserPanelBase* m_headerPanel = nullptr;
    SceneBrowserPanelBase* m_footerPanel = nullptr;
    AbstractSelectableData* m_selectableData = nullptr;
    QList<QVariant> m_filterData;
    lumo::datamodels::proxy::TextPredicate* m_filterPredicate = nullptr;
    QAbstractItemModel* m_columnsModel = nullptr;
    PropertyPasteReport m_lastPasteReport;
    /// Set while the browser itself writes one side of the selection.
    bool m_updatingSelection = false;
    /// Row insertions and removals that the item model announced and has not finished.
    std::uint32_t m_rowsUpdates = 0;
};
