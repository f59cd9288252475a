#pragma once

#include <panel/arrangement/sort_key.h>
#include <panel/rows/row_tree.h>

#include <QAbstractItemModel>
#include <QMetaMethod>
#include <QPointer>
#include <QString>

namespace kyr::panel {

enum class Arrangement
{
    Hierarchy,
    Flat,
    ByType,
};

/// How a scene is to show, as the user chose it.
struct ArrangementSettings
{
    /// Anything with an invokable `bool accepts(QModelIndex)`, a property "active" and a signal
    /// `changed()`; null shows every row.
    QPointer<QObject> predicate;
    Arrangement arrangement = Arrangement::Hierarchy;
    int sortRole = -1; ///< -1 keeps the scene's order.
    Qt::SortOrder sortOrder = Qt::AscendingOrder;

    bool isFiltering() const { return predicate && predicate->property("active").toBool(); }
    bool isSorting() const { return sortRole >= 0; }
    /// False when the scene shows as it is.
    bool arranges() const
    {
        return isSorting() || arrangement != Arrangement::Hierarchy || isFiltering();
    }
};

/// What these settings say of each row of a scene.
class ArrangementRules
{
public:
    ArrangementRules(const ArrangementSettings& settings, const QAbstractItemModel& model);

    Arrangement arrangement() const { return m_settings.arrangement; }
    bool filters() const { return m_filters; }
    bool sorts() const { return m_settings.isSorting(); }
    /// Whether rows stand below their parents.
    bool nests() const { return m_settings.arrangement == Arrangement::Hierarchy; }
    bool groups() const { return m_settings.arrangement == Arrangement::ByType; }

    bool accepts(const QModelIndex& index) const;
    /// What a filter finds shows open; a list of all has nothing to open.
    bool startsOpen(const RowTree& scene, RowTree::Node node) const
    {
        if (!nests())
            return false;
        return m_filters ? !scene.has(node, RowTree::ClosedWhileFound)
                         : scene.has(node, RowTree::Expanded);
    }
    QString type(const QModelIndex& index) const { return index.data(m_typeRole).toString(); }
    SortKey key(const QModelIndex& index) const
    {
        return SortKey(index.data(m_settings.sortRole), m_collator);
    }
    bool precedes(const SortKey& a, const SortKey& b) const
    {
        return SortKey::precedes(a, b, m_settings.sortOrder);
    }

private:
    ArrangementSettings m_settings;
    QMetaMethod m_accepts;
    bool m_filters = false;
    int m_typeRole = -1;
    QCollator m_collator;
};

} // namespace kyr::panel
