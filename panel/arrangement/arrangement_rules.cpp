#include "arrangement_rules.h"

#include <QLocale>

namespace kyr::panel {

namespace {

// The C locale knows no numeric order.
QLocale sortingLocale()
{
    const QLocale locale;
    return locale.language() == QLocale::C ? QLocale(QLocale::English) : locale;
}

} // namespace

ArrangementRules::ArrangementRules(const ArrangementSettings& settings,
                                   const QAbstractItemModel& scene)
    : m_settings(settings)
    , m_typeRole(scene.roleNames().key("type", -1))
    , m_collator(sortingLocale())
{
    m_collator.setNumericMode(true);
    m_collator.setCaseSensitivity(Qt::CaseInsensitive);
    if (const QObject* predicate = settings.predicate) {
        const QMetaObject* meta = predicate->metaObject();
        m_accepts = meta->method(meta->indexOfMethod("accepts(QModelIndex)"));
        m_filters = m_accepts.isValid() && settings.filters();
    }
}

bool ArrangementRules::accepts(const QModelIndex& index) const
{
    bool accepted = true;
    if (m_filters && m_settings.predicate)
        m_accepts.invoke(m_settings.predicate, Qt::DirectConnection, Q_RETURN_ARG(bool, accepted),
                         Q_ARG(QModelIndex, index));
    return accepted;
}

} // namespace kyr::panel
