#pragma once

#include <QItemSelectionModel>
#include <QObject>
#include <QPointer>

#include <memory>

class KSelectionProxyModel;
class SceneBrowserCheckableProxyModel;

namespace lumo::datamodels::proxy {
class BaseFilterProxyModel;
}

namespace kyr {

/// The models between an editor's columns model and the panel: all columns with a check box, and
/// the chosen ones in order. A column is chosen when its row is selected in the selection model.
/// Both models are the editor's, either may be null.
class ColumnProxies : public QObject
{
    Q_OBJECT

public:
    ColumnProxies(QAbstractItemModel* columns, QItemSelectionModel* chosen);
    ~ColumnProxies() override;

    /// Deletes `proxies`: at once, or from the event loop when one of its models is about to return
    /// to whoever let this happen.
    static void retire(ColumnProxies* proxies);

    QAbstractItemModel* checkable() const;
    QAbstractItemModel* selected() const;
    QItemSelectionModel* chosen() const { return m_chosen; }
    void setFilter(const QString& text);
    /// The row of the columns model that a row of `selected()` shows.
    QModelIndex columnOf(const QModelIndex& selectedRow) const;

private:
    bool isRunning() const;

    const QPointer<QItemSelectionModel> m_chosen;
    /// Calls from outside that run in one of the models.
    int m_runningCalls = 0;

    // Each is destroyed before its source.
    std::unique_ptr<KSelectionProxyModel> m_selectionProxy;
    std::unique_ptr<SceneBrowserCheckableProxyModel> m_checkableProxy;
    std::unique_ptr<lumo::datamodels::proxy::BaseFilterProxyModel> m_checkable;
    std::unique_ptr<lumo::datamodels::proxy::BaseFilterProxyModel> m_selected;
};

} // namespace kyr
