#include <kyr_scene_outline/abstract_filter_data.h>
#include <kyr_scene_outline/abstract_selectable_data.h>
#include <kyr_scene_outline/scene_browser_data.h>
#include <kyr_scene_outline/scene_browser_panel_base.h>

QObject* SceneBrowserData::headerPanel() const
{
    return m_headerPanel;
}

void SceneBrowserData::setHeaderPanel(SceneBrowserPanelBase* panel)
{
    m_headerPanel = panel;
    Q_EMIT headerPanelChanged();
}

QObject* SceneBrowserData::footerPanel() const
{
    return m_footerPanel;
}

void SceneBrowserData::setFooterPanel(SceneBrowserPanelBase* panel)
{
    m_footerPanel = panel;
    Q_EMIT footerPanelChanged();
}

QObject* SceneBrowserData::selectableData() const
{
    return m_selectableData;
}

void SceneBrowserData::setSelectableData(AbstractSelectableData* data)
{
    m_selectableData = data;
    Q_EMIT selectableDataChanged();
}

QList<QVariant> SceneBrowserData::filterData() const
{
    return m_filterData;
}

void SceneBrowserData::addFilterData(AbstractFilterData* filter)
{
    const QVariant entry = QVariant::fromValue(filter);
    if (m_filterData.contains(entry))
        return;
    m_filterData.append(entry);
    Q_EMIT filterDataChanged();
}

void SceneBrowserData::removeFilterData(AbstractFilterData* filter)
{
    if (m_filterData.removeOne(QVariant::fromValue(filter)))
        Q_EMIT filterDataChanged();
}

QObject* SceneBrowserData::filterPredicate() const
{
    return m_filterPredicate;
}

void SceneBrowserData::setFilterPredicate(lumo::datamodels::proxy::TextPredicate* predicate)
{
    m_filterPredicate = predicate;
    Q_EMIT filterPredicateChanged();
}
