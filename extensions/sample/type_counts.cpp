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
    tellLater();
}

void TypeCounts::clear()
{
    m_counts.clear();
    m_total = 0;
    tellLater();
}

void TypeCounts::setHeld(bool held)
{
    m_held = held;
    tellLater();
}

void TypeCounts::tellLater()
{
    if (!m_held && !m_notification.isActive())
        m_notification.start();
}

} // namespace sample
