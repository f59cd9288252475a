#include "tree_arranger.h"

#include <QScopedValueRollback>

namespace kyr::panel {

namespace {

ArrangedTreeModel::Arrangement arrangementNamed(const QString& name)
{
    if (name == QLatin1String("flat"))
        return ArrangedTreeModel::Arrangement::Flat;
    if (name == QLatin1String("type"))
        return ArrangedTreeModel::Arrangement::ByType;
    return ArrangedTreeModel::Arrangement::Hierarchy;
}

} // namespace

TreeArranger::TreeArranger(QObject* parent) : QObject(parent)
{
    connect(&m_arranged, &ArrangedTreeModel::workingChanged, this, &TreeArranger::workingChanged);
    connect(&m_arranged, &ArrangedTreeModel::arranged, this, [this] {
        if (!m_updating && m_arranged.sourceModel())
            show(&m_arranged);
    });
}

TreeArranger::~TreeArranger()
{
    m_updating = true;
    show(nullptr);
}

void TreeArranger::setSourceModel(QAbstractItemModel* source)
{
    if (source == m_source && (source || !m_model))
        return;
    if (m_source)
        m_source->disconnect(this);
    m_source = source;
    if (source)
        connect(source, &QObject::destroyed, this, [this] { setSourceModel(nullptr); });
    update();
    Q_EMIT settingsChanged();
}

void TreeArranger::setPredicate(QObject* predicate)
{
    if (predicate == m_predicate)
        return;
    if (m_predicate)
        m_predicate->disconnect(this);
    m_predicate = predicate;
    if (predicate) {
        const QMetaObject* meta = predicate->metaObject();
        connect(predicate, meta->method(meta->indexOfSignal("changed()")), this,
                staticMetaObject.method(staticMetaObject.indexOfMethod("update()")));
        connect(predicate, &QObject::destroyed, this, [this] { setPredicate(nullptr); });
    }
    update();
    Q_EMIT settingsChanged();
}

void TreeArranger::setArrangement(const QString& arrangement)
{
    if (arrangement == m_arrangement)
        return;
    m_arrangement = arrangement;
    update();
    Q_EMIT settingsChanged();
}

void TreeArranger::setSortRole(int role)
{
    if (role == m_sorting.role)
        return;
    m_sorting.role = role;
    update();
    Q_EMIT settingsChanged();
}

void TreeArranger::setSortDescending(bool descending)
{
    if (descending == isSortDescending())
        return;
    m_sorting.order = descending ? Qt::DescendingOrder : Qt::AscendingOrder;
    update();
    Q_EMIT settingsChanged();
}

bool TreeArranger::wantsArranging() const
{
    return m_source &&
           (m_sorting.role >= 0 ||
            arrangementNamed(m_arrangement) != ArrangedTreeModel::Arrangement::Hierarchy ||
            (m_predicate && m_predicate->property("active").toBool()));
}

void TreeArranger::update()
{
    if (!wantsArranging()) {
        show(m_source);
        const QScopedValueRollback<bool> guard(m_updating, true);
        m_arranged.setSourceModel(nullptr);
        m_arranged.setPredicate(nullptr);
        return;
    }
    {
        const QScopedValueRollback<bool> guard(m_updating, true);
        m_arranged.setArrangement(arrangementNamed(m_arrangement));
        m_arranged.setSorting(m_sorting);
        if (m_arranged.sourceModel() != m_source) {
            // With a predicate, reading the source would ask it about every row at once.
            m_arranged.setPredicate(nullptr);
            m_arranged.setSourceModel(m_source);
        }
        m_arranged.setPredicate(m_predicate);
    }
    if (!m_arranged.isWorking())
        show(&m_arranged);
}

void TreeArranger::show(QAbstractItemModel* model)
{
    if (model == m_model && (model || !m_model.isNull()))
        return;
    m_model = model;
    Q_EMIT modelChanged();
}

} // namespace kyr::panel
