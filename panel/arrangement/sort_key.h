#pragma once

#include <QCollator>
#include <QVariant>

#include <optional>

namespace kyr::panel {

/// What a row is sorted by: numbers come before texts, and rows without a value last.
class SortKey
{
public:
    SortKey() = default;
    SortKey(const QVariant& value, const QCollator& collator);

    /// Whether `a` comes before `b`. Kinds keep their order when the sorting descends.
    static bool precedes(const SortKey& a, const SortKey& b, Qt::SortOrder order);

private:
    enum class Kind
    {
        Number,
        Text,
        None,
    };

    bool isLess(const SortKey& other) const;

    Kind m_kind = Kind::None;
    double m_number = 0;
    std::optional<QCollatorSortKey> m_text;
};

} // namespace kyr::panel
