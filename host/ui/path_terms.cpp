#include "path_terms.h"

#include <algorithm>

namespace lumo::datamodels::proxy {

void PathTerms::start(const QAbstractItemModel* model, const std::vector<FilterTerm>* terms)
{
    if (m_model != model) {
        if (m_model)
            m_model->disconnect(this);
        m_model = model;
        if (model)
            follow(*model);
    }
    m_terms = terms;
    forget();
}

void PathTerms::follow(const QAbstractItemModel& model)
{
    using Model = QAbstractItemModel;
    connect(&model, &Model::rowsInserted, this, &PathTerms::forget);
    connect(&model, &Model::rowsRemoved, this, &PathTerms::forget);
    connect(&model, &Model::layoutChanged, this, &PathTerms::forget);
    connect(&model, &Model::modelReset, this, &PathTerms::forget);
    const auto outdate = [this] {
        const bool wasAsked = !m_known.isEmpty();
        forget();
        if (wasAsked)
            Q_EMIT outdated();
    };
    connect(&model, &Model::rowsMoved, this,
            [this, outdate](const QModelIndex& from, int, int, const QModelIndex& to) {
                // Within one parent the names above stay, but what is known goes by row numbers.
                if (from != to)
                    outdate();
                else
                    forget();
            });
    connect(&model, &Model::dataChanged, this,
            [this, outdate](const QModelIndex& first, const QModelIndex& last,
                            const QVector<int>& roles) {
                if (!roles.isEmpty() && !roles.contains(Qt::DisplayRole))
                    return;
                for (int row = first.row(); row <= last.row(); ++row) {
                    if (m_known.contains(first.sibling(row, 0)))
                        return outdate();
                }
            });
}

PathTerms::Terms PathTerms::above(const QModelIndex& row)
{
    // Rows of another model may change unheard.
    if (row.model() != m_model)
        forget();
    std::vector<QModelIndex> unknown;
    Terms terms = 0;
    for (QModelIndex up = row.parent(); up.isValid(); up = up.parent()) {
        const auto known = m_known.constFind(up);
        if (known != m_known.constEnd()) {
            terms = *known;
            break;
        }
        unknown.push_back(up);
    }
    for (auto up = unknown.rbegin(); up != unknown.rend(); ++up) {
        terms |= termsIn(up->data().toString());
        m_known.insert(*up, terms);
    }
    return terms;
}

PathTerms::Terms PathTerms::termsIn(const QString& name) const
{
    Terms terms = 0;
    const std::size_t count = std::min(m_terms->size(), mostTerms);
    for (std::size_t i = 0; i < count; ++i) {
        const FilterTerm& term = (*m_terms)[i];
        if (!term.hasWords)
            continue;
        if (std::any_of(term.tests.begin(), term.tests.end(), [&name](const FilterTest& test) {
                return test.isWord() && test.isIn(name);
            }))
            terms |= Terms(1) << i;
    }
    return terms;
}

} // namespace lumo::datamodels::proxy
