#include "base_filter_proxy_model.h"

#include "number_value.h"

#include <QCollator>
#include <QLocale>

namespace lumo::datamodels::proxy {
namespace {

int compareTexts(const QString& left, const QString& right)
{
    static const QCollator collator = [] {
        // The C locale knows no numeric order.
        const QLocale locale;
        QCollator numeric(locale.language() == QLocale::C ? QLocale(QLocale::English) : locale);
        numeric.setNumericMode(true);
        numeric.setCaseSensitivity(Qt::CaseInsensitive);
        return numeric;
    }();
    return collator.compare(left, right);
}

} // namespace

BaseFilterProxyModel::BaseFilterProxyModel(QObject* parent) : QSortFilterProxyModel(parent) {}

void BaseFilterProxyModel::setFilteringMode(FilteringMode mode)
{
    m_filteringMode = mode;
    setRecursiveFilteringEnabled(mode == FilteringMode::Branches);
}

void BaseFilterProxyModel::setSourceModel(QAbstractItemModel* source)
{
    disconnect(m_dataChanged);
    QSortFilterProxyModel::setSourceModel(source);
    if (!source)
        return;
    // The base class looks at changed rows and those above them, but not below.
    m_dataChanged =
        connect(source, &QAbstractItemModel::dataChanged, this, [this](const QModelIndex& first) {
            if (m_filteringMode == FilteringMode::Branches && sourceModel()->hasChildren(first))
                invalidateFilter();
        });
}

bool BaseFilterProxyModel::filterAcceptsRow(int row, const QModelIndex& parent) const
{
    if (QSortFilterProxyModel::filterAcceptsRow(row, parent))
        return true;
    if (m_filteringMode != FilteringMode::Branches)
        return false;
    for (QModelIndex above = parent; above.isValid(); above = above.parent()) {
        if (QSortFilterProxyModel::filterAcceptsRow(above.row(), above.parent()))
            return true;
    }
    return false;
}

bool BaseFilterProxyModel::lessThan(const QModelIndex& left, const QModelIndex& right) const
{
    const QVariant leftValue = left.data(sortRole());
    const QVariant rightValue = right.data(sortRole());
    if (isNumber(leftValue) && isNumber(rightValue)) {
        const double leftNumber = leftValue.toDouble();
        const double rightNumber = rightValue.toDouble();
        if (leftNumber != rightNumber)
            return leftNumber < rightNumber;
    } else if (const int order = compareTexts(leftValue.toString(), rightValue.toString())) {
        return order < 0;
    }
    return left.row() < right.row();
}

} // namespace lumo::datamodels::proxy
