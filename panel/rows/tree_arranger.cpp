#include "tree_arranger.h"

namespace kyr::panel {

namespace {

constexpr int sliceMilliseconds = 4;

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
    m_slices.setInterval(0);
    connect(&m_slices, &QTimer::timeout, this, &TreeArranger::workSlice);
}

TreeArranger::~TreeArranger()
{
    if (m_list)
        m_list->cancelPreparation();
    show(nullptr);
}

void TreeArranger::setSourceModel(QAbstractItemModel* source)
{
    if (source == m_source && (source || !m_model))
        return;
    if (m_source)
        m_source->disconnect(this);
    m_source = source;
    if (source) {
        using Model = QAbstractItemModel;
        const auto begin = [this] { m_sourceChanges = true; };
        const auto end = [this] { m_sourceChanges = false; };
        connect(source, &Model::rowsAboutToBeInserted, this, begin);
        connect(source, &Model::rowsInserted, this, end);
        connect(source, &Model::rowsAboutToBeRemoved, this, begin);
        connect(source, &Model::rowsRemoved, this, end);
        connect(source, &Model::rowsAboutToBeMoved, this, begin);
        connect(source, &Model::rowsMoved, this, end);
        connect(source, &Model::layoutAboutToBeChanged, this, begin);
        connect(source, &Model::layoutChanged, this, end);
        connect(source, &Model::modelAboutToBeReset, this, begin);
        connect(source, &Model::modelReset, this, end);
        connect(source, &QObject::destroyed, this, &TreeArranger::startAnew);
    }
    startAnew();
    Q_EMIT settingsChanged();
}

/// Nothing of an old scene may show until the new one does.
void TreeArranger::startAnew()
{
    m_next.reset();
    m_sourceChanges = false;
    show(nullptr);
    m_shown.reset();
    update();
}

void TreeArranger::setPredicate(QObject* predicate)
{
    if (predicate == m_settings.predicate)
        return;
    if (m_settings.predicate)
        m_settings.predicate->disconnect(this);
    m_settings.predicate = predicate;
    if (predicate) {
        const QMetaObject* meta = predicate->metaObject();
        connect(predicate, meta->method(meta->indexOfSignal("changed()")), this,
                staticMetaObject.method(staticMetaObject.indexOfMethod("filter()")));
        connect(predicate, &QObject::destroyed, this, [this] { setPredicate(nullptr); });
    }
    filter();
    Q_EMIT settingsChanged();
}

void TreeArranger::setArrangement(const QString& arrangement)
{
    if (arrangement == m_arrangement)
        return;
    m_arrangement = arrangement;
    m_settings.arrangement = arrangementNamed(arrangement);
    update();
    Q_EMIT settingsChanged();
}

void TreeArranger::setSortRole(int role)
{
    if (role == m_settings.sorting.role)
        return;
    m_settings.sorting.role = role;
    update();
    Q_EMIT settingsChanged();
}

void TreeArranger::setSortDescending(bool descending)
{
    if (descending == isSortDescending())
        return;
    m_settings.sorting.order = descending ? Qt::DescendingOrder : Qt::AscendingOrder;
    update();
    Q_EMIT settingsChanged();
}

void TreeArranger::setList(FlatTreeModel* list)
{
    if (list == m_list)
        return;
    m_list = list;
    Q_EMIT settingsChanged();
}

bool TreeArranger::wantsArranging() const
{
    return m_source &&
           (m_settings.sorting.role >= 0 ||
            m_settings.arrangement != ArrangedTreeModel::Arrangement::Hierarchy ||
            (m_settings.predicate && m_settings.predicate->property("active").toBool()));
}

/// The predicate accepts other rows.
void TreeArranger::filter()
{
    if (m_list)
        m_list->forgetFound();
    update();
}

void TreeArranger::update()
{
    if (m_list)
        m_list->cancelPreparation();
    m_next.reset();
    if (wantsArranging())
        m_next = std::make_unique<ArrangedTreeModel>(m_source, m_settings);
    else if (m_model == m_source)
        return setWorking(false);
    setWorking(true);
    work(QDeadlineTimer(sliceMilliseconds, Qt::PreciseTimer));
}

void TreeArranger::finish()
{
    work(QDeadlineTimer(QDeadlineTimer::Forever));
}

void TreeArranger::workSlice()
{
    if (m_left)
        m_left.reset();
    else
        work(QDeadlineTimer(sliceMilliseconds, Qt::PreciseTimer));
    if (!m_working)
        m_slices.stop();
}

void TreeArranger::work(const QDeadlineTimer& deadline)
{
    // A model that comes to show half-way through a change would only hear of its second half.
    if (!m_working || m_sourceChanges || (m_next && !m_next->work(deadline)))
        return;
    QAbstractItemModel* next = m_next ? m_next.get() : m_source.data();
    // What shows the rows has work of its own, for which a slice that is used up has no time.
    if ((!m_list || m_list->prepare(next, deadline)) && !deadline.hasExpired())
        showNext();
}

void TreeArranger::showNext()
{
    m_left = std::exchange(m_shown, std::move(m_next));
    if (m_left && m_left->sourceModel())
        QObject::disconnect(m_left->sourceModel(), nullptr, m_left.get(), nullptr);
    show(m_shown ? m_shown.get() : m_source.data());
    setWorking(false);
}

void TreeArranger::setWorking(bool working)
{
    // When all is done there is something left to free.
    m_slices.start();
    if (working == m_working)
        return;
    m_working = working;
    Q_EMIT workingChanged();
}

void TreeArranger::show(QAbstractItemModel* model)
{
    if (model == m_model && (model || !m_model.isNull()))
        return;
    m_model = model;
    Q_EMIT modelChanged();
}

} // namespace kyr::panel
