#pragma once

#include <QSortFilterProxyModel>

namespace lumo::datamodels::proxy {

/// Filtering and sorting proxy of the editor's lists.
class BaseFilterProxyModel : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    enum class FilteringMode
    {
        /// A row shows when it matches and all its ancestors do.
        Rows = 0,
        /// A row shows when it or a row below it matches.
        RowsAndAncestors = 1,
    };

    explicit BaseFilterProxyModel(QObject* parent = nullptr);

    FilteringMode filteringMode() const noexcept { return m_filteringMode; }
    void setFilteringMode(FilteringMode mode);

protected:
    /// Numbers by value, texts by locale with digits in numeric order, ties by source row.
    bool lessThan(const QModelIndex& left, const QModelIndex& right) const override;

private:
    FilteringMode m_filteringMode = FilteringMode::Rows;
};

} // namespace lumo::datamodels::proxy
