#pragma once

#include <panel/arrangement/sort_key.h>
#include <panel/rows/row_marks.h>

#include <QAbstractItemModel>
#include <QMetaMethod>
#include <QPointer>
#include <QString>

namespace kyr::panel {

/// How a scene is to show, as the user chose it.
struct ArrangementSettings
{
    /// Anything with an invokable `bool accepts(QModelIndex)`, a property "active" and a signal
    /// `changed()`; null shows every row.
    QPointer<QObject> predicate;
    QString arrangement; ///< "flat", "type", or below their parents for all else.
    int sortRole = -1;   ///< -1 keeps the scene's order.
    Qt::SortOrder sortOrder = Qt::AscendingOrder;

    bool filters() const { return predicate && predicate->property("active").toBool(); }
    bool sorts() const { return sortRole >= 0; }
    bool groups() const { return arrangement == QLatin1String("type"); }
    /// Whether rows stand below their parents.
    bool nests() const { return !groups() && arrangement != QLatin1String("flat"); }
    /// False when the scene shows as it is.
    bool arranges() const { return sorts() || !nests() || filters(); }
};

/// What settings of some moment say of each row of a scene.
class ArrangementRules
{
public:
    explicit ArrangementRules(const ArrangementSettings& settings, const QAbstractItemModel& scene);

    bool filters() const { return m_filters; }
    bool sorts() const { return m_settings.sorts(); }
    bool sortsBy(const QVector<int>& roles) const
    {
        return sorts() && (roles.isEmpty() || roles.contains(m_settings.sortRole));
    }
    bool groups() const { return m_settings.groups(); }
    bool nests() const { return m_settings.nests(); }
    /// Whether rows are open where the scene's are.
    bool followsScene() const { return nests() && !filters(); }
    /// What a filter finds shows open; a list of all has nothing to open.
    RowMarks::Mark closedBy() const
    {
        return followsScene() ? RowMarks::Closed : RowMarks::ClosedWhileFound;
    }

    bool accepts(const QModelIndex& index) const;
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
