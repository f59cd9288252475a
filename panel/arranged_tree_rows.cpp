// Which rows an arranged tree shows, and in which order.

#include "arranged_tree_model.h"

#include <algorithm>
#include <map>

namespace kyr::panel {

namespace {

/// What a row is sorted by: numbers come before texts, and rows without a value last.
struct SortKey
{
    enum class Kind
    {
        Number,
        Text,
        None,
    };
    Kind kind;
    double number;
    QCollatorSortKey text;
};

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

SortKey keyOf(const QVariant& value, const QCollator& collator)
{
    if (isNumber(value))
        return {SortKey::Kind::Number, value.toDouble(), collator.sortKey({})};
    const SortKey::Kind kind = value.isValid() ? SortKey::Kind::Text : SortKey::Kind::None;
    return {kind, 0, collator.sortKey(value.toString())};
}

bool comesBefore(const SortKey& a, const SortKey& b)
{
    if (a.kind == SortKey::Kind::Number)
        return a.number < b.number;
    return a.text.compare(b.text) < 0;
}

} // namespace

void ArrangedTreeModel::fillShown()
{
    m_groups.clear();
    m_root.shownChildren.clear();
    m_matchCount = 0;
    for (Item& item : m_items) {
        item.matches = item.nextMatches;
        item.shownChildren.clear();
        item.shownParent = nullptr;
        item.shownRow = -1;
        m_matchCount += item.matches ? 1 : 0;
    }
    switch (m_arrangement) {
    case Arrangement::Hierarchy:
        showHierarchy();
        break;
    case Arrangement::Flat:
        for (Item& item : m_items) {
            if (item.matches)
                show(nullptr, &item);
        }
        break;
    case Arrangement::ByType:
        showByType();
        break;
    }
    if (m_sorting.role >= 0)
        sortShown();
}

void ArrangedTreeModel::show(Item* parent, Item* child)
{
    std::vector<Item*>& rows = parent ? parent->shownChildren : m_root.shownChildren;
    child->shownParent = parent;
    child->shownRow = static_cast<int>(rows.size());
    rows.push_back(child);
}

void ArrangedTreeModel::showHierarchy()
{
    for (Item& item : m_items)
        item.shown = item.matches;
    // Children come after their parents, so one pass from the end reaches every ancestor.
    for (auto item = m_items.rbegin(); item != m_items.rend(); ++item) {
        if (item->shown && item->sourceParent)
            item->sourceParent->shown = true;
    }
    for (Item& item : m_items) {
        if (item.shown)
            show(item.sourceParent, &item);
    }
}

void ArrangedTreeModel::showByType()
{
    std::map<QString, Item*> groups;
    for (Item& item : m_items) {
        if (!item.matches)
            continue;
        const QString type = sourceModel()->data(sourceIndexOf(&item), m_typeRole).toString();
        Item*& group = groups[type];
        if (!group) {
            group = &m_groups.emplace_back();
            group->group = type;
        }
        show(group, &item);
    }
    for (const auto& [type, group] : groups)
        show(nullptr, group);
}

void ArrangedTreeModel::sortShown()
{
    if (m_arrangement != Arrangement::ByType)
        sortRows(m_root.shownChildren);
    for (std::deque<Item>* items : {&m_items, &m_groups}) {
        for (Item& item : *items) {
            if (item.shownChildren.size() > 1)
                sortRows(item.shownChildren);
        }
    }
}

void ArrangedTreeModel::sortRows(std::vector<Item*>& rows) const
{
    std::vector<std::pair<SortKey, Item*>> keyed;
    keyed.reserve(rows.size());
    for (Item* row : rows) {
        const QVariant value = sourceModel()->data(sourceIndexOf(row), m_sorting.role);
        keyed.emplace_back(keyOf(value, m_collator), row);
    }
    const bool descends = m_sorting.order == Qt::DescendingOrder;
    std::stable_sort(keyed.begin(), keyed.end(), [descends](const auto& a, const auto& b) {
        // Rows without a value stay last either way.
        if (a.first.kind != b.first.kind)
            return a.first.kind < b.first.kind;
        return descends ? comesBefore(b.first, a.first) : comesBefore(a.first, b.first);
    });
    for (std::size_t i = 0; i < rows.size(); ++i) {
        rows[i] = keyed[i].second;
        rows[i]->shownRow = static_cast<int>(i);
    }
}

} // namespace kyr::panel
