#pragma once

#include <host/ui/text_predicate.h>
#include <kyr_scene_outline/abstract_filter_data.h>

#include <QPointer>

#include <vector>

class SceneBrowserData;

namespace sample {

/// A filter each of whose labels is one condition on the browser's row predicate. A predicate that
/// the browser lets go of is rid of it: the condition is code of this plug-in.
class RowFilter : public AbstractFilterData
{
    Q_OBJECT

public:
    struct Choice
    {
        QString label;
        lumo::datamodels::proxy::TextPredicate::Condition condition;
    };

    /// The first choice is to accept every row, without a condition. The title tells the filter's
    /// condition from those of others. The browser must outlive the filter.
    RowFilter(SceneBrowserData& browser, const QString& title, std::vector<Choice> choices);
    ~RowFilter() override;

    QString title() override { return m_title; }
    QStringList labels() override;
    int currentIndex() override { return m_index; }
    void setCurrentIndex(int index) override;

private:
    void followPredicate();
    void apply();

    SceneBrowserData& m_browser;
    QPointer<lumo::datamodels::proxy::TextPredicate> m_predicate;
    QString m_title;
    std::vector<Choice> m_choices;
    int m_index = 0;
};

} // namespace sample
