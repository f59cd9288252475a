#include "column_proxies.h"

#include "checkable_proxy_model.h"

#include <host/ui/base_filter_proxy_model.h>

#include <KSelectionProxyModel>

namespace kyr {
namespace {

using lumo::datamodels::proxy::BaseFilterProxyModel;

class RunningCall
{
public:
    explicit RunningCall(int& count) : m_count(count) { ++m_count; }
    ~RunningCall() { --m_count; }
    RunningCall(const RunningCall&) = delete;
    RunningCall& operator=(const RunningCall&) = delete;

private:
    int& m_count;
};

// The list that the panel checks columns in.
class CheckableColumns : public BaseFilterProxyModel
{
public:
    explicit CheckableColumns(int& runningCalls)
        : BaseFilterProxyModel(nullptr), m_runningCalls(runningCalls)
    {}
    bool setData(const QModelIndex& index, const QVariant& value, int role) override
    {
        const RunningCall running(m_runningCalls);
        return BaseFilterProxyModel::setData(index, value, role);
    }

private:
    int& m_runningCalls;
};

// Asks of any object what `QObject::sender` tells it: who called the slot that it runs.
class SlotWatch : public QObject
{
public:
    static bool runsSlot(const QObject& object) { return (object.*(&SlotWatch::sender))(); }
};

int columnOrderRole(const QAbstractItemModel& columns)
{
    return columns.roleNames().key("columnOrder", Qt::DisplayRole);
}

} // namespace

ColumnProxies::ColumnProxies(QAbstractItemModel* columns, QItemSelectionModel* chosen)
    : m_chosen(chosen)
    , m_selectionProxy(std::make_unique<KSelectionProxyModel>(chosen, nullptr))
    , m_checkableProxy(std::make_unique<SceneBrowserCheckableProxyModel>())
    , m_checkable(std::make_unique<CheckableColumns>(m_runningCalls))
    , m_selected(std::make_unique<BaseFilterProxyModel>(nullptr))
{
    m_selectionProxy->setFilterBehavior(KSelectionProxyModel::ExactSelection);
    m_selectionProxy->setSourceModel(columns);

    m_selected->setDynamicSortFilter(true);
    if (columns)
        m_selected->setSortRole(columnOrderRole(*columns));
    m_selected->setSourceModel(m_selectionProxy.get());
    m_selected->sort(0, Qt::AscendingOrder);

    m_checkableProxy->setSourceModel(columns);
    if (chosen)
        m_checkableProxy->setSelectionModel(chosen);

    m_checkable->setDynamicSortFilter(true);
    m_checkable->setFilterCaseSensitivity(Qt::CaseInsensitive);
    m_checkable->setFilteringMode(BaseFilterProxyModel::FilteringMode::Branches);
    m_checkable->setSourceModel(m_checkableProxy.get());
}

ColumnProxies::~ColumnProxies() = default;

void ColumnProxies::retire(ColumnProxies* proxies)
{
    if (proxies && proxies->isRunning())
        proxies->deleteLater();
    else
        delete proxies;
}

bool ColumnProxies::isRunning() const
{
    return m_runningCalls > 0 || SlotWatch::runsSlot(*m_selectionProxy) ||
           SlotWatch::runsSlot(*m_checkableProxy) || SlotWatch::runsSlot(*m_checkable) ||
           SlotWatch::runsSlot(*m_selected);
}

QAbstractItemModel* ColumnProxies::checkable() const
{
    return m_checkable.get();
}

QAbstractItemModel* ColumnProxies::selected() const
{
    return m_selected.get();
}

void ColumnProxies::setFilter(const QString& text)
{
    const RunningCall running(m_runningCalls);
    m_checkable->setFilterFixedString(text);
}

QModelIndex ColumnProxies::columnOf(const QModelIndex& selectedRow) const
{
    return m_selectionProxy->mapToSource(m_selected->mapToSource(selectedRow));
}

} // namespace kyr
