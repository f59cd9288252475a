// The arrangement of an outline: what the user chooses, the pass that works it out in slices, and
// the one place where its rows come to show.

#include "outline_core.h"

#include <QMetaMethod>

namespace kyr::panel {

namespace {

constexpr int sliceMilliseconds = 4;
/// Scenes that change all the time are worked on in one go after as many attempts.
constexpr int patience = 4;

Arrangement arrangementNamed(const QString& name)
{
    if (name == QLatin1String("flat"))
        return Arrangement::Flat;
    if (name == QLatin1String("type"))
        return Arrangement::ByType;
    return Arrangement::Hierarchy;
}

} // namespace

void OutlineModel::setSourceModel(QAbstractItemModel* source)
{
    if (source == sourceModel())
        return;
    beginResetModel();
    m_core->changeScene(source);
    endResetModel();
    m_core->arrange();
    Q_EMIT sourceModelChanged();
    Q_EMIT rearranged();
}

/// Nothing of a scene shows until it is arranged.
void OutlineModel::Core::changeScene(QAbstractItemModel* scene)
{
    m_pass.reset();
    m_delayedMarks.clear();
    m_focusedGroup.reset();
    m_hovered.clear();
    m_closedGroups.clear();
    m_indexedRow = -1;
    m_rules.reset();
    m_arranged.reset();
    m_mirror.setModel(scene);
    readRoles();
    readSelection();
    if (scene && m_settings.arranges()) {
        m_rules.emplace(m_settings, *scene);
        m_arranged = std::make_unique<ArrangedRows>();
    }
    m_mirror.setReadsBranches(m_arranged != nullptr);
}

void OutlineModel::setPredicate(QObject* predicate)
{
    ArrangementSettings& settings = m_core->m_settings;
    if (predicate == settings.predicate)
        return;
    if (settings.predicate)
        settings.predicate->disconnect(this);
    settings.predicate = predicate;
    if (predicate) {
        const QMetaObject* meta = predicate->metaObject();
        connect(predicate, meta->method(meta->indexOfSignal("changed()")), this,
                staticMetaObject.method(staticMetaObject.indexOfMethod("filter()")));
        connect(predicate, &QObject::destroyed, this, [this] { setPredicate(nullptr); });
    }
    filter();
    Q_EMIT settingsChanged();
}

/// The predicate accepts other rows.
void OutlineModel::filter()
{
    m_core->m_mirror.forgetFound();
    m_core->arrange();
}

void OutlineModel::setArrangement(const QString& arrangement)
{
    if (arrangement == m_core->m_arrangement)
        return;
    m_core->m_arrangement = arrangement;
    m_core->m_settings.arrangement = arrangementNamed(arrangement);
    m_core->arrange();
    Q_EMIT settingsChanged();
}

void OutlineModel::setSortRole(int role)
{
    if (role == sortRole())
        return;
    m_core->m_settings.sortRole = role;
    m_core->arrange();
    Q_EMIT settingsChanged();
}

void OutlineModel::setSortDescending(bool descending)
{
    if (descending == isSortDescending())
        return;
    m_core->m_settings.sortOrder = descending ? Qt::DescendingOrder : Qt::AscendingOrder;
    m_core->arrange();
    Q_EMIT settingsChanged();
}

void OutlineModel::finish()
{
    const QDeadlineTimer forever(QDeadlineTimer::Forever);
    m_core->work(forever);
    if (m_core->m_writesBack && m_core->canOpen())
        m_core->m_writesBack = !m_core->m_mirror.writeAllBack(forever);
}

void OutlineModel::workSlice()
{
    m_core->workSlice();
}

void OutlineModel::Core::arrange()
{
    m_pass.reset();
    m_restarts = 0;
    if (m_mirror.model() && m_settings.arranges()) {
        setWorking(true);
        work(QDeadlineTimer(sliceMilliseconds, Qt::PreciseTimer));
    } else if (m_mirror.isChanging()) {
        setWorking(true);
    } else {
        if (m_arranged)
            replace(nullptr);
        setMatchCount(-1);
        setPartial(false);
        setWorking(false);
    }
}

void OutlineModel::Core::restart()
{
    m_pass.reset();
    setWorking(true);
}

void OutlineModel::Core::workSlice()
{
    m_touched = 0;
    const QDeadlineTimer deadline(sliceMilliseconds, Qt::PreciseTimer);
    if (m_fetching && !canOpen())
        setFetching(m_mirror.model() != nullptr);
    else if (m_fetching)
        fetchSome(deadline);
    else if (m_working)
        work(deadline);
    else if (m_writesBack && canOpen())
        m_writesBack = !m_mirror.writeAllBack(deadline);
    if (!m_working && !m_writesBack && !m_fetching)
        m_slices.stop();
}

void OutlineModel::Core::work(const QDeadlineTimer& deadline)
{
    if (!m_working || m_mirror.isChanging())
        return;
    if (!m_settings.arranges())
        return arrange();
    if (m_pass && m_pass->version() != m_mirror.version()) {
        m_pass.reset();
        ++m_restarts;
    }
    if (!m_pass) {
        m_changedMeanwhile.clear();
        m_pass = std::make_unique<ArrangementPass>(m_mirror, m_settings, m_closedGroups);
    }
    const bool endless = m_restarts > patience;
    if (m_pass->work(endless ? QDeadlineTimer(QDeadlineTimer::Forever) : deadline) &&
        (endless || !deadline.hasExpired()))
        finishPass();
}

void OutlineModel::Core::finishPass()
{
    const std::unique_ptr<ArrangementPass> pass = std::move(m_pass);
    m_rules.emplace(pass->rules());
    std::unique_ptr<ArrangedRows> next = pass->take();
    if (!isShown(*next))
        replace(std::move(next));
    setMatchCount(m_rules->filters() ? pass->matchCount() : -1);
    setPartial(pass->isPartial());
    setWorking(false);
    for (const QPersistentModelIndex& index : std::exchange(m_changedMeanwhile, {})) {
        if (index.isValid())
            placeChanged(index, index, {});
    }
}

/// Whether these rows show already.
bool OutlineModel::Core::isShown(const ArrangedRows& next) const
{
    if (!m_arranged || next.tree.size() != rows().size())
        return false;
    const RowTree& now = rows();
    Node a = now.atOrder(0);
    Node b = next.tree.atOrder(0);
    for (; a != RowTree::none; a = now.next(a), b = next.tree.next(b)) {
        if (m_arranged->sceneNode(a) != next.sceneNode(b) || now.depth(a) != next.tree.depth(b) ||
            now.flags(a) != next.tree.flags(b) || m_arranged->type(a) != next.type(b))
            return false;
    }
    return true;
}

/// Shows these rows, or the scene as it is.
void OutlineModel::Core::replace(std::unique_ptr<ArrangedRows> next)
{
    Q_EMIT q.aboutToRearrange();
    const int before = count();
    const int after = next ? next->tree.shownCount() : m_mirror.rows().shownCount();
    const int kept = std::min(before, after);
    if (before > kept) {
        q.beginRemoveRows({}, kept, before - 1);
        m_countLimit = kept;
        q.endRemoveRows();
    }
    m_countLimit = kept;
    m_arranged = std::move(next);
    if (!m_arranged)
        m_rules.reset();
    m_mirror.setReadsBranches(m_arranged != nullptr);
    m_indexedRow = -1;
    allChanged();
    if (after > kept)
        q.beginInsertRows({}, kept, after - 1);
    m_countLimit = std::numeric_limits<int>::max();
    if (after > kept)
        q.endInsertRows();
    Q_EMIT q.rearranged();
}

/// For a scene whose rows are not the same any more.
void OutlineModel::Core::arrangeNow()
{
    m_pass.reset();
    m_arranged.reset();
    m_rules.reset();
    if (!m_mirror.model() || !m_settings.arranges()) {
        setWorking(false);
        return;
    }
    m_mirror.setReadsBranches(true);
    ArrangementPass pass(m_mirror, m_settings, m_closedGroups);
    pass.work(QDeadlineTimer(QDeadlineTimer::Forever));
    m_rules.emplace(pass.rules());
    m_arranged = pass.take();
    setMatchCount(m_rules->filters() ? pass.matchCount() : -1);
    setPartial(pass.isPartial());
    setWorking(false);
}

void OutlineModel::Core::setWorking(bool working)
{
    if (working)
        m_slices.start();
    if (working == m_working)
        return;
    m_working = working;
    Q_EMIT q.workingChanged();
}

void OutlineModel::Core::setMatchCount(int count)
{
    if (count == m_matches)
        return;
    m_matches = count;
    Q_EMIT q.matchCountChanged();
}

} // namespace kyr::panel
