// The arrangement of an outline: what the user chooses, the pass that works it out in slices, and
// the one place where its rows come to show.

#include "outline_model.h"

#include <QMetaMethod>

namespace kyr::panel {

namespace {

/// Scenes that change all the time are worked on in one go after as many attempts.
constexpr int patience = 4;

const QDeadlineTimer forever(QDeadlineTimer::Forever);

} // namespace

OutlineModel::OutlineModel(QObject* parent) : OutlineRows(parent)
{
    connect(&m_slices, &QTimer::timeout, this, &OutlineModel::workSlice);
    connect(&m_mirror, &SceneMirror::aboutToChange, this, &OutlineModel::aboutToChange);
    connect(&m_mirror, &SceneMirror::changed, this, &OutlineModel::changed);
    connect(&m_mirror, &SceneMirror::dataChanged, this, &OutlineModel::sceneDataChanged);
    connect(this, &OutlineModel::countChanged, this, &OutlineModel::selectedCountChanged);
}

OutlineModel::~OutlineModel() = default;

void OutlineModel::setSourceModel(QAbstractItemModel* source)
{
    if (source == sourceModel())
        return;
    beginReset();
    m_focusedGroup = RowTree::none;
    m_hovered.clear();
    m_mirror.setModel(source);
    m_rules.reset();
    m_arranged.reset();
    if (source && m_settings.arranges()) {
        // Nothing of a scene shows until it is arranged.
        m_rules.emplace(m_settings, *source);
        m_arranged = std::make_unique<RowTree>(m_mirror.marks(), m_rules->closedBy());
    }
    m_mirror.setReadsBranches(m_arranged != nullptr);
    readRoles();
    readSelection();
    tellPredicate();
    endReset();
    arrange();
    Q_EMIT sourceModelChanged();
    Q_EMIT rearranged();
}

void OutlineModel::setPredicate(QObject* predicate)
{
    if (predicate == m_settings.predicate)
        return;
    if (m_settings.predicate)
        m_settings.predicate->disconnect(this);
    m_settings.predicate = predicate;
    tellPredicate();
    if (predicate) {
        const QMetaObject* meta = predicate->metaObject();
        connect(predicate, meta->method(meta->indexOfSignal("changed()")), this,
                staticMetaObject.method(staticMetaObject.indexOfMethod("filter()")));
        // The pointer to it is null by then.
        connect(predicate, &QObject::destroyed, this, [this] {
            filter();
            Q_EMIT settingsChanged();
        });
    }
    filter();
    Q_EMIT settingsChanged();
}

/// The filter's keys are the roles and columns of what it filters.
void OutlineModel::tellPredicate()
{
    if (predicate() && predicate()->metaObject()->indexOfProperty("model") >= 0)
        predicate()->setProperty("model", QVariant::fromValue(sourceModel()));
}

/// The predicate accepts other rows.
void OutlineModel::filter()
{
    m_forgetsClosed = true;
    arrange();
}

void OutlineModel::finish()
{
    endTurn();
    if (m_outdated)
        restart();
    work(forever);
    if (m_writesBack && canOpen())
        m_writesBack = !m_mirror.writeAllBack(forever);
}

/// All that changed together has been told.
void OutlineModel::endTurn()
{
    m_touched = 0;
    if (!m_working && !m_mirror.isChanging() && m_changed.size() > 1)
        placeAgain({m_settings.sortRole});
    if (!m_working)
        m_changed.clear();
}

void OutlineModel::workSlice()
{
    endTurn();
    const QDeadlineTimer deadline(m_sliceBudget, Qt::PreciseTimer);
    if (m_fetching && !canOpen())
        setFetching(sourceModel() != nullptr);
    else if (m_fetching)
        fetchSome(deadline);
    else if (m_working)
        work(deadline);
    else if (m_writesBack && canOpen())
        m_writesBack = !m_mirror.writeAllBack(deadline);
    if (!m_working && !m_writesBack && !m_fetching)
        m_slices.stop();
}

void OutlineModel::arrange()
{
    m_restarts = 0;
    restart();
    if (!m_mirror.isChanging())
        work(QDeadlineTimer(m_sliceBudget, Qt::PreciseTimer));
}

/// Works the arrangement out anew, once for all that changes in this turn.
void OutlineModel::restart()
{
    m_pass.reset();
    setWorking(true);
}

void OutlineModel::work(const QDeadlineTimer& deadline)
{
    if (!m_working || m_mirror.isChanging())
        return;
    if (!sourceModel() || !m_settings.arranges()) {
        m_outdated = false;
        return finishPass();
    }
    if (m_pass && m_pass->version() != m_mirror.version()) {
        m_pass.reset();
        ++m_restarts;
    }
    if (!m_pass) {
        m_changed.clear();
        m_outdated = false;
        m_pass = std::make_unique<ArrangementPass>(m_mirror, m_settings);
    }
    const bool endless = m_restarts > patience;
    // To show the rows takes about a slice.
    const auto hasTime = [&] {
        return deadline.isForever() || m_sliceBudget == 0 ||
               deadline.remainingTime() > m_sliceBudget / 2;
    };
    if (m_pass->work(endless ? forever : deadline) && (endless || hasTime()))
        finishPass();
}

/// Shows what the pass has worked out, or the scene as it is if there is none.
void OutlineModel::finishPass()
{
    const std::unique_ptr<ArrangementPass> pass = std::move(m_pass);
    const bool forgets =
        std::exchange(m_forgetsClosed, false) && marks().count(RowMarks::ClosedWhileFound) > 0;
    if (forgets)
        m_mirror.forgetClosedWhileFound();
    if (pass && !forgets && shows(*pass))
        m_rules.emplace(pass->rules());
    else if (pass || m_arranged)
        replace(pass.get());
    setMatchCount(pass && m_rules->filters() ? pass->matchCount() : -1);
    setPartial(pass && pass->isPartial());
    m_restarts = 0;
    // A slot may have begun another one.
    setWorking(m_outdated || m_pass);
    if (!m_working)
        placeAgain({});
}

/// Whether these rows show already.
bool OutlineModel::shows(const ArrangementPass& pass) const
{
    if (!m_arranged || m_rules->nests() != pass.rules().nests() ||
        m_rules->closedBy() != pass.rules().closedBy() ||
        std::size_t(m_arranged->size()) != pass.rows().size())
        return false;
    std::size_t leads = 0;
    Node node = m_arranged->atOrder(0);
    for (const RowTree::Row& row : pass.rows()) {
        if (row.node != node || row.depth != m_arranged->depth(node))
            return false;
        leads += matches(node) ? 0 : 1;
        node = m_arranged->next(node);
    }
    return leads == pass.leads().size() &&
           std::none_of(pass.leads().begin(), pass.leads().end(),
                        [this](Node lead) { return matches(lead); });
}

void OutlineModel::replace(const ArrangementPass* pass)
{
    std::unique_ptr<RowTree> next;
    if (pass) {
        for (const RowTree::Row& row : pass->rows())
            m_mirror.marks().set(row.node, RowMarks::Leads, false);
        for (const Node node : pass->leads())
            m_mirror.marks().set(node, RowMarks::Leads, true);
        next = std::make_unique<RowTree>(m_mirror.marks(), pass->rules().closedBy());
        next->rebuild(pass->rows());
    }
    const bool quiet = isResetting();
    if (!quiet)
        Q_EMIT aboutToRearrange();
    const int before = count();
    const int after = next ? next->shownCount() : m_mirror.rows().shownCount();
    const int kept = std::min(before, after);
    if (!quiet && before > kept) {
        beginRemoveRows({}, kept, before - 1);
        m_countLimit = kept;
        endRemoveRows();
    }
    m_mirror.setReadsBranches(pass != nullptr);
    m_arranged = std::move(next);
    m_rules.reset();
    if (pass)
        m_rules.emplace(pass->rules());
    if (!pass || !m_rules->groups())
        m_focusedGroup = RowTree::none;
    m_indexedRow = -1;
    m_countLimit = std::numeric_limits<int>::max();
    if (quiet)
        return;
    m_countLimit = kept;
    allChanged();
    if (after > kept)
        beginInsertRows({}, kept, after - 1);
    m_countLimit = std::numeric_limits<int>::max();
    if (after > kept)
        endInsertRows();
    Q_EMIT rearranged();
    Q_EMIT countChanged();
}

void OutlineModel::setWorking(bool working)
{
    if (working)
        m_slices.start(0);
    if (working == m_working)
        return;
    m_working = working;
    Q_EMIT workingChanged();
}

void OutlineModel::setMatchCount(int count)
{
    if (count == m_matches)
        return;
    m_matches = count;
    Q_EMIT matchCountChanged();
}

} // namespace kyr::panel
