#include "sort_key.h"

namespace kyr::panel {

namespace {

bool isNumber(const QVariant& value)
{
    switch (static_cast<QMetaType::Type>(value.userType())) {
    case QMetaType::Bool:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Float:
    case QMetaType::Double:
        return true;
    default:
        return false;
    }
}

} // namespace

SortKey::SortKey(const QVariant& value, const QCollator& collator)
{
    if (isNumber(value)) {
        m_kind = Kind::Number;
        m_number = value.toDouble();
    } else if (value.isValid()) {
        m_kind = Kind::Text;
        m_text = collator.sortKey(value.toString());
    }
}

bool SortKey::isLess(const SortKey& other) const
{
    return m_kind == Kind::Number ? m_number < other.m_number
                                  : m_kind == Kind::Text && m_text->compare(*other.m_text) < 0;
}

bool SortKey::precedes(const SortKey& a, const SortKey& b, Qt::SortOrder order)
{
    if (a.m_kind != b.m_kind)
        return a.m_kind < b.m_kind;
    return order == Qt::AscendingOrder ? a.isLess(b) : b.isLess(a);
}

} // namespace kyr::panel
