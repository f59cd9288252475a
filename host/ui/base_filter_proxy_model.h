#pragma once

#include <QSortFilterProxyModel>

namespace lumo::datamodels::proxy {

/// Filtering and sorting proxy of the editor's lists, at the costs of its base. With branches, a
/// row that does not match costs its depth.
class BaseFilterProxyModel : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    enum class FilteringMode
    {
        /// A row shows when it matches and all its ancestors do.
        Rows = 0,
        /// A row shows when it, a row above it or a row below it matches.
        Branches = 1,
    };

    explicit BaseFilterProxyModel(QObject* parent = nullptr);

    void setFilteringMode(FilteringMode mode);
    void setSourceModel(QAbstractItemModel* source) override;

protected:
    bool filterAcceptsRow(int row, const QModelIndex& parent) const override;
    /// Numbers by value, texts by locale with digits in numeric order, ties by source row.
    bool lessThan(const QModelIndex& left, const QModelIndex& right) const override;

private:
    FilteringMode m_filteringMode = FilteringMode::Rows;
    QMetaObject::Connection m_dataChanged;
};

} // namespace lumo::datamodels::proxy
