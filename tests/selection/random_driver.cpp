#include "random_driver.h"

namespace test {

using Model = QItemSelectionModel;

void Meddler::listenTo(TreeModel& model, bool early)
{
    using Scene = QAbstractItemModel;
    const auto on = [&](auto signal, Moment first, Moment last) {
        if (m_moment == (early ? first : last) && m_moment != Moment::Never)
            QObject::connect(&model, signal, &m_context, [this] {
                for (QItemSelectionModel* selection : m_models)
                    meddle(*selection);
            });
    };
    on(&Scene::rowsAboutToBeInserted, Moment::EarlyBefore, Moment::LateBefore);
    on(&Scene::rowsAboutToBeRemoved, Moment::EarlyBefore, Moment::LateBefore);
    on(&Scene::columnsAboutToBeInserted, Moment::EarlyBefore, Moment::Never);
    on(&Scene::columnsAboutToBeRemoved, Moment::Never, Moment::LateBefore);
    on(&Scene::rowsAboutToBeMoved, Moment::EarlyBefore, Moment::Never);
    on(&Scene::layoutAboutToBeChanged, Moment::EarlyBefore, Moment::Never);
    on(&Scene::rowsInserted, Moment::EarlyAfter, Moment::LateAfter);
    on(&Scene::rowsRemoved, Moment::EarlyAfter, Moment::LateAfter);
    on(&Scene::columnsRemoved, Moment::EarlyAfter, Moment::LateAfter);
    on(&Scene::rowsMoved, Moment::Never, Moment::LateAfter);
    on(&Scene::layoutChanged, Moment::Never, Moment::LateAfter);
    on(&Scene::modelReset, Moment::EarlyAfter, Moment::LateAfter);
}

void Meddler::listenTo(QItemSelectionModel& selection)
{
    m_models.push_back(&selection);
    const auto meddles = [this, &selection] { meddle(selection); };
    if (m_moment == Moment::Current)
        QObject::connect(&selection, &QItemSelectionModel::currentChanged, &m_context, meddles);
    if (m_moment == Moment::Selection)
        QObject::connect(&selection, &QItemSelectionModel::selectionChanged, &m_context, meddles);
}

RandomDriver::RandomDriver(unsigned seed, Moment moment)
    : m_random(seed)
    , m_model(QString(), 3)
    , m_flat(seed % 4 == 0)
    , m_mostRanges(seed % 40 == 0 ? 40 : 4)
    , m_meddler(moment)
{
    insert({}, 0, m_mostRanges + 2);
    for (int i = 0; i < 3 && !m_flat; ++i) {
        insert(m_model.index(i, 0), 0, 4 + pick(4));
        insert(m_model.index(0, 0, m_model.index(i, 0)), 0, 3);
    }
    m_meddler.listenTo(m_model, true);
}

void RandomDriver::drive(std::vector<QItemSelectionModel*> models)
{
    m_models = std::move(models);
    m_meddler.listenTo(m_model, false);
    for (QItemSelectionModel* selection : m_models)
        m_meddler.listenTo(*selection);
}

const char* RandomDriver::step()
{
    using Way = std::pair<const char*, void (RandomDriver::*)()>;
    static constexpr Way ways[] = {{"insert", &RandomDriver::insertRows},
                                   {"remove", &RandomDriver::removeRows},
                                   {"move", &RandomDriver::moveRows},
                                   {"reverse", &RandomDriver::reverseRows},
                                   {"set current", &RandomDriver::setCurrent},
                                   {"clear", &RandomDriver::clear},
                                   {"reset", &RandomDriver::reset},
                                   {"columns", &RandomDriver::changeColumns},
                                   {"reset model", &RandomDriver::resetModel},
                                   {"fade", &RandomDriver::fadeRows},
                                   {"select", &RandomDriver::select}};
    const auto& [name, way] = ways[std::min(pick(18), 10)];
    (this->*way)();
    m_meddler.forget();
    m_leaving = {};
    return name;
}

void RandomDriver::insert(const QModelIndex& parent, int row, int count)
{
    QStringList names;
    for (; count > 0; --count)
        names += QStringLiteral("row%1").arg(m_made++);
    m_model.insert(parent, row, TreeModel::named(names));
}

QModelIndex RandomDriver::anyParent()
{
    QModelIndex parent;
    while (!m_flat && m_model.rowCount(parent) > 0 && pick(3) != 0)
        parent = m_model.index(pick(m_model.rowCount(parent)), 0, parent);
    return parent;
}

QModelIndex RandomDriver::parentWithRows()
{
    QModelIndex parent = anyParent();
    while (parent.isValid() && m_model.rowCount(parent) == 0)
        parent = parent.parent();
    return parent;
}

bool RandomDriver::leaves(const QModelIndex& parent, int top, int bottom) const
{
    if (m_wild || !m_leaving.isValid())
        return false;
    if (parent == m_leaving.parent())
        return top <= m_leaving.bottom() && bottom >= m_leaving.top();
    return parent.isValid() && leaves(parent.parent(), parent.row(), parent.row());
}

QItemSelection RandomDriver::ranges()
{
    QItemSelection selection;
    for (int count = m_wild ? 1 : pick(m_mostRanges + 1); count > 0; --count) {
        const QModelIndex parent = parentWithRows();
        const int rows = m_model.rowCount(parent);
        if (rows == 0)
            continue;
        const int columns = m_model.columnCount(parent);
        const int top = pick(rows);
        const int bottom = top + pick(rows - top);
        const int left = pick(columns);
        if (!leaves(parent, top, bottom))
            selection.append(
                QItemSelectionRange(m_model.index(top, left, parent),
                                    m_model.index(bottom, left + pick(columns - left), parent)));
    }
    return selection;
}

Flags RandomDriver::command()
{
    static const Flags actions[] = {Model::NoUpdate, Model::Select, Model::Deselect,
                                    Model::Toggle,   Model::Select, Model::Toggle};
    Flags command = actions[pick(6)];
    for (const Flags extra : {Flags(Model::Clear), Flags(Model::Current)}) {
        if (pick(3) == 0)
            command |= extra;
    }
    if (pick(6) == 0)
        command |= pick(2) && !m_leaving.isValid() ? Model::Columns : Model::Rows;
    if (pick(20) == 0)
        command |= Model::Deselect | Model::Toggle;
    return command;
}

void RandomDriver::plan()
{
    if (m_meddler.moment() == Moment::Never || pick(3) == 0)
        return;
    const Flags flags = command();
    const auto seed = m_random();
    const auto sameRanges = [this, seed] {
        const std::mt19937 random = std::exchange(m_random, std::mt19937(seed));
        const QItemSelection selection = ranges();
        m_random = random;
        return selection;
    };
    m_meddler.plan(sameRanges, flags);
}

void RandomDriver::select()
{
    const QItemSelection selection = ranges();
    const Flags flags = command();
    plan();
    for (QItemSelectionModel* model : m_models)
        model->select(selection, flags);
}

void RandomDriver::clear()
{
    const bool current = pick(2) == 0;
    for (QItemSelectionModel* model : m_models)
        current ? model->clear() : model->clearSelection();
}

void RandomDriver::reset()
{
    for (QItemSelectionModel* model : m_models)
        model->reset();
}

void RandomDriver::setCurrent()
{
    const QModelIndex parent = parentWithRows();
    if (m_model.rowCount(parent) == 0)
        return;
    const QModelIndex index =
        m_model.index(pick(m_model.rowCount(parent)), pick(m_model.columnCount()), parent);
    const Flags flags = pick(2) ? Model::ClearAndSelect : Model::NoUpdate;
    plan();
    for (QItemSelectionModel* model : m_models)
        model->setCurrentIndex(index, flags);
}

void RandomDriver::insertRows()
{
    const QModelIndex parent = anyParent();
    const int row = pick(m_model.rowCount(parent) + 1);
    const int count = 1 + pick(3);
    // The stock model lets ranges that are selected meanwhile grow over the new rows.
    if (row > 0 && row < m_model.rowCount(parent))
        m_leaving = {m_model.index(row - 1, 0, parent), m_model.index(row, 0, parent)};
    plan();
    insert(parent, row, count);
}

void RandomDriver::removeRows()
{
    const QModelIndex parent = parentWithRows();
    const int rows = m_model.rowCount(parent);
    if (rows < 2)
        return;
    const int row = pick(rows);
    const int count = 1 + pick(std::min(3, rows - row));
    m_leaving = {m_model.index(row, 0, parent), m_model.index(row + count - 1, 0, parent)};
    plan();
    m_model.remove(parent, row, count);
}

void RandomDriver::moveRows()
{
    const QModelIndex parent = parentWithRows();
    const QModelIndex to = anyParent();
    const int rows = m_model.rowCount(parent);
    if (rows == 0)
        return;
    const int row = pick(rows);
    plan();
    m_model.move(parent, row, 1 + pick(rows - row), to, pick(m_model.rowCount(to) + 1));
}

void RandomDriver::reverseRows()
{
    const auto hint =
        pick(2) ? QAbstractItemModel::VerticalSortHint : QAbstractItemModel::NoLayoutChangeHint;
    plan();
    m_model.reverse(parentWithRows(), hint);
}

void RandomDriver::fadeRows()
{
    const QModelIndex parent = parentWithRows();
    for (int row = m_wild ? 0 : m_model.rowCount(parent); row < m_model.rowCount(parent); ++row) {
        if (pick(3) > 0)
            m_model.item(m_model.index(row, 0, parent))->flags = Qt::ItemIsEnabled;
    }
    m_model.reverse(parent, QAbstractItemModel::NoLayoutChangeHint);
}

void RandomDriver::resetModel()
{
    plan();
    m_model.resetTo("x\n  y\n  z\nv\nw");
}

void RandomDriver::changeColumns()
{
    if (!m_flat)
        return removeRows();
    const int columns = m_model.columnCount();
    const int column = pick(columns);
    if (columns > 3) {
        if (m_wild)
            plan();
        m_model.removeColumns(column, 1 + pick(columns - column - 1 > 0 ? 2 : 1));
    } else {
        plan();
        m_model.insertColumns(column, 1 + pick(2));
    }
}

} // namespace test
