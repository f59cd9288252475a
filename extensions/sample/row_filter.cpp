#include "row_filter.h"

#include <kyr_scene_outline/scene_browser_data.h>

namespace sample {

using lumo::datamodels::proxy::TextPredicate;

RowFilter::RowFilter(SceneBrowserData& browser, const QString& title, std::vector<Choice> choices)
    : m_browser(browser), m_title(title), m_choices(std::move(choices))
{
    connect(&browser, &SceneBrowserData::filterPredicateChanged, this, &RowFilter::followPredicate);
    followPredicate();
}

RowFilter::~RowFilter()
{
    if (m_predicate)
        m_predicate->setCondition(m_title, {});
}

QStringList RowFilter::labels()
{
    QStringList labels;
    for (const Choice& choice : m_choices)
        labels << choice.label;
    return labels;
}

void RowFilter::setCurrentIndex(int index)
{
    if (index == m_index || index < 0 || index >= int(m_choices.size()))
        return;
    m_index = index;
    apply();
    Q_EMIT currentIndexChanged();
}

void RowFilter::followPredicate()
{
    auto* predicate = qobject_cast<TextPredicate*>(m_browser.filterPredicate());
    if (m_predicate && m_predicate != predicate)
        m_predicate->setCondition(m_title, {});
    m_predicate = predicate;
    apply();
}

void RowFilter::apply()
{
    if (m_predicate)
        m_predicate->setCondition(m_title, m_choices[std::size_t(m_index)].condition);
}

} // namespace sample
