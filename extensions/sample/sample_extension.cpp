#include "sample_extension.h"

#include "arrangement_modes.h"
#include "qml_panel.h"
#include "sample_filters.h"
#include "scene_statistics.h"
#include "selection_summary.h"

#include <kyr_scene_outline/scene_browser_data.h>

namespace sample {

struct SampleExtension::Attachments
{
    Attachments(SceneBrowserData& to, QQmlEngine& engine)
        : browser(to)
        , typeFilter(to, tr("Type"), typeChoices())
        , visibilityFilter(to, tr("Visibility"), visibilityChoices())
        , statistics(to.model())
        , summary(to.selectionModel())
        , header(engine, QStringLiteral("StatisticsHeader"), statistics)
        , footer(engine, QStringLiteral("SelectionFooter"), summary)
    {
        browser.addFilterData(&typeFilter);
        browser.addFilterData(&visibilityFilter);
        browser.setSelectableData(&modes);
        browser.setHeaderPanel(&header);
        browser.setFooterPanel(&footer);
    }
    ~Attachments()
    {
        browser.setFooterPanel(nullptr);
        browser.setHeaderPanel(nullptr);
        browser.setSelectableData(nullptr);
        browser.removeFilterData(&visibilityFilter);
        browser.removeFilterData(&typeFilter);
    }

    SceneBrowserData& browser;
    RowFilter typeFilter;
    RowFilter visibilityFilter;
    ArrangementModes modes;
    SceneStatistics statistics;
    SelectionSummary summary;
    QmlPanel header;
    QmlPanel footer;
};

SampleExtension::SampleExtension() = default;
SampleExtension::~SampleExtension() = default;

void SampleExtension::attach(SceneBrowserData& browser, QQmlEngine& engine)
{
    m_attachments[&browser] = std::make_unique<Attachments>(browser, engine);
}

void SampleExtension::detach(SceneBrowserData& browser)
{
    m_attachments.erase(&browser);
}

} // namespace sample
