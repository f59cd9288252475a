#include "type_counts.h"

#include <kyr_scene_outline/item_roles.h>

namespace sample {

TypeCounts::TypeCounts()
{
    m_notification.setSingleShot(true);
    connect(&m_notification, &QTimer::timeout, this, &TypeCounts::changed);
}

QVariantMap TypeCounts::counts() const
{
    QVariantMap counts;
    for (auto count = m_counts.begin(); count != m_counts.end(); ++count)
        counts.insert(count.key(), count.value());
    return counts;
}

void TypeCounts::add(const QModelIndex& row, int count)
{
    m_counts[row.data(kyr::TypeRole).toString()] += count;
    m_total += count;
    if (!m_notification.isActive())
        m_notification.start();
}

void TypeCounts::clear()
{
    m_counts.clear();
    m_total = 0;
    m_notification.start();
}

} // namespace sample
