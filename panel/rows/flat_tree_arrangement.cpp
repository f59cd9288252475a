// The flat tree over an arranged model: what it shows, and what it speaks of.

#include "flat_tree_model.h"

#include <algorithm>
#include <limits>

namespace kyr::panel {

namespace {

/// Rows that change all the time are made ready in one go after as many attempts.
constexpr int patience = 4;

} // namespace

QAbstractItemModel* FlatTreeModel::originOf(QAbstractItemModel* source)
{
    const auto* arranged = qobject_cast<ArrangedTreeModel*>(source);
    return arranged ? arranged->sourceModel() : source;
}

QModelIndex FlatTreeModel::toOrigin(const QModelIndex& shown) const
{
    if (!m_arranged)
        return shown;
    // An origin that is being destroyed can be asked for nothing.
    return m_origin ? m_arranged->mapToSource(shown) : QModelIndex();
}

QModelIndex FlatTreeModel::toShown(const QModelIndex& origin) const
{
    return m_arranged ? m_arranged->mapFromSource(origin) : origin;
}

QModelIndex FlatTreeModel::sourceIndex(int row) const
{
    return toOrigin(shownIndex(row));
}

bool FlatTreeModel::isGroup(int row) const
{
    return m_arranged && row >= 0 && row < count() && !sourceIndex(row).isValid();
}

void FlatTreeModel::setSourceModel(QAbstractItemModel* source)
{
    if (source == m_rows.source())
        return;
    const bool sameOrigin = m_source && m_origin && m_origin == originOf(source);
    if (m_source)
        m_source->disconnect(this);
    if (sameOrigin) {
        rearrange(source);
    } else {
        beginResetModel();
        const SourceRows nothing;
        setSource(source);
        m_replacement =
            std::make_unique<RowsReplacement>(nothing, ExpansionMemory(), source, m_selectionModel);
        takeReplacement();
        endResetModel();
    }
    Q_EMIT sourceModelChanged();
}

void FlatTreeModel::setSource(QAbstractItemModel* source)
{
    m_source = source;
    m_arranged = qobject_cast<ArrangedTreeModel*>(source);
    m_origin = originOf(source);
    m_pending = {};
    m_delayedMarks.clear();
    m_focusedGroup = QPersistentModelIndex();
    readRoles();
    connectSource();
}

void FlatTreeModel::takeReplacement()
{
    m_replacement->work(QDeadlineTimer(QDeadlineTimer::Forever));
    m_rows = m_replacement->takeRows();
    m_memory = m_replacement->takeMemory();
    m_replacement.reset();
    m_preparationsLost = 0;
    m_cachedRow = -1;
}

void FlatTreeModel::rearrange(QAbstractItemModel* source)
{
    prepare(source, QDeadlineTimer(QDeadlineTimer::Forever));
    Q_EMIT aboutToRearrange();
    const int before = count();
    const int after = m_replacement->count();
    const int kept = std::min(before, after);
    if (before > kept) {
        beginRemoveRows({}, kept, before - 1);
        m_countLimit = kept;
        endRemoveRows();
    }
    setSource(source);
    takeReplacement();
    m_countLimit = kept;
    if (kept > 0)
        Q_EMIT dataChanged(index(0), index(kept - 1));
    if (after > kept)
        beginInsertRows({}, kept, after - 1);
    m_countLimit = std::numeric_limits<int>::max();
    if (after > kept)
        endInsertRows();
    Q_EMIT rearranged();
}

bool FlatTreeModel::prepare(QAbstractItemModel* source, const QDeadlineTimer& deadline)
{
    if (source == m_source || !m_source || !m_origin || m_origin != originOf(source))
        return true;
    if (!m_replacement || m_replacement->model() != source) {
        m_replacement =
            std::make_unique<RowsReplacement>(m_rows, m_memory, source, m_selectionModel);
        using Model = QAbstractItemModel;
        const auto drop = [this] { dropPreparation(); };
        QObject* context = m_replacement->context();
        connect(source, &Model::rowsInserted, context, drop);
        connect(source, &Model::rowsRemoved, context, drop);
        connect(source, &Model::rowsMoved, context, drop);
        connect(source, &Model::layoutChanged, context, drop);
        connect(source, &Model::modelReset, context, drop);
        connect(source, &QObject::destroyed, context, drop);
    }
    const bool endless = m_preparationsLost > patience;
    return m_replacement->work(endless ? QDeadlineTimer(QDeadlineTimer::Forever) : deadline);
}

void FlatTreeModel::cancelPreparation()
{
    m_replacement.reset();
    m_preparationsLost = 0;
}

/// What was made ready is out of date.
void FlatTreeModel::dropPreparation()
{
    if (!m_replacement)
        return;
    m_replacement.reset();
    ++m_preparationsLost;
}

void FlatTreeModel::forgetFound()
{
    dropPreparation();
    m_memory.forgetFound();
}

} // namespace kyr::panel
