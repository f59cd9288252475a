#pragma once

#include <QCollator>
#include <QVariant>

#include <cmath>
#include <variant>

namespace kyr::panel {

/// What a row is sorted by: numbers come before texts, and rows without a value last.
class SortKey
{
public:
    SortKey() = default;
    SortKey(const QVariant& value, const QCollator& collator)
    {
        const int type = value.userType();
        const bool isNumber =
            type == QMetaType::Float || (type >= QMetaType::Bool && type <= QMetaType::Double);
        // What is no number comes neither before nor after one.
        if (isNumber && !std::isnan(value.toDouble()))
            m_value = value.toDouble();
        else if (!isNumber && value.isValid())
            m_value = collator.sortKey(value.toString());
    }

    /// Whether `a` comes before `b`. Kinds keep their order when the sorting descends.
    static bool precedes(const SortKey& a, const SortKey& b, Qt::SortOrder order)
    {
        if (a.m_value.index() != b.m_value.index())
            return a.m_value.index() < b.m_value.index();
        return order == Qt::AscendingOrder ? a.isLess(b) : b.isLess(a);
    }

private:
    bool isLess(const SortKey& other) const
    {
        if (const double* number = std::get_if<double>(&m_value))
            return *number < std::get<double>(other.m_value);
        const auto* text = std::get_if<QCollatorSortKey>(&m_value);
        return text && text->compare(std::get<QCollatorSortKey>(other.m_value)) < 0;
    }

    std::variant<double, QCollatorSortKey, std::monostate> m_value{std::monostate()};
};

static_assert(QMetaType::Bool == 1 && QMetaType::Double == 6, "numbers have the types 1 to 6");

} // namespace kyr::panel
