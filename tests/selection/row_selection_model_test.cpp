#include <kyr_scene_outline/selection/row_selection_model.h>
#include <support/tree_model.h>

#include <QItemSelectionModel>
#include <QPointer>

#include <gtest/gtest.h>

#include <functional>
#include <random>
#include <set>

using kyr::selection::RowSelectionModel;
using test::TreeModel;
using Flags = QItemSelectionModel::SelectionFlags;

namespace {

std::string cellName(const QModelIndex& index)
{
    return index.data().toString().toStdString() + ":" + std::to_string(index.column());
}

std::string listed(const QModelIndexList& indexes)
{
    std::string text;
    for (const QModelIndex& index : indexes)
        text += cellName(index) + " ";
    return text;
}

std::string sorted(const QItemSelection& selection)
{
    std::multiset<std::string> names;
    for (const QModelIndex& index : selection.indexes())
        names.insert(cellName(index));
    std::string text;
    for (const std::string& name : names)
        text += name + " ";
    return text;
}

/// Writes down what a selection model announces, cells in alphabetical order, and what `read` says
/// the whole selection is at that moment.
class ChangeLog
{
public:
    ChangeLog(QItemSelectionModel& model, std::function<QItemSelection()> read)
    {
        QObject::connect(&model, &QItemSelectionModel::currentChanged, &model,
                         [this](const QModelIndex& now) { m_text += ">" + cellName(now) + "\n"; });
        QObject::connect(
            &model, &QItemSelectionModel::selectionChanged, &model,
            [this, read](const QItemSelection& selected, const QItemSelection& deselected) {
                m_text += "+" + sorted(selected) + "-" + sorted(deselected) + "=" +
                          listed(read().indexes()) + "\n";
            });
    }
    std::string take() { return std::exchange(m_text, {}); }

private:
    std::string m_text;
};

/// Ours and the stock model, driven alike.
class Twins
{
public:
    Twins(TreeModel& model)
        : stock(&model)
        , ours(&model)
        , m_stockLog(stock, [this] { return stock.selection(); })
        , m_ourLog(ours, [this] { return ours.finishedSelection(); })
    {}

    void expectEqual(const std::string& after)
    {
        ASSERT_EQ(listed(stock.selection().indexes()), listed(ours.selection().indexes())) << after;
        ASSERT_EQ(m_stockLog.take(), m_ourLog.take()) << after;
        ASSERT_EQ(stock.currentIndex(), ours.currentIndex()) << after;
        ASSERT_EQ(stock.hasSelection(), ours.hasSelection()) << after;
    }

    void select(const QModelIndex& index, Flags command)
    {
        stock.select(QItemSelection(index, index), command);
        ours.select(QItemSelection(index, index), command);
    }

    QItemSelectionModel stock;
    RowSelectionModel ours;

private:
    ChangeLog m_stockLog;
    ChangeLog m_ourLog;
};

/// When a listener meddles with the selection: around a change of the item model, before or after
/// the selection models hear of it, or when a selection model says something.
enum class Moment
{
    Never,
    EarlyBefore,
    LateBefore,
    EarlyAfter,
    LateAfter,
    Current,
    Selection
};

/// Selects the same on every selection model that it listens to, once for each plan.
class Meddler
{
public:
    explicit Meddler(Moment moment) : m_moment(moment) {}

    Moment moment() const { return m_moment; }

    /// Called before and after the selection models are made.
    void listenTo(TreeModel& model, bool early)
    {
        using Model = QAbstractItemModel;
        const auto on = [&](auto signal, Moment first, Moment last) {
            if (m_moment == (early ? first : last) && m_moment != Moment::Never)
                QObject::connect(&model, signal, &m_context, [this] {
                    for (QItemSelectionModel* selection : m_models)
                        meddle(*selection);
                });
        };
        on(&Model::rowsAboutToBeInserted, Moment::EarlyBefore, Moment::LateBefore);
        on(&Model::rowsAboutToBeRemoved, Moment::EarlyBefore, Moment::LateBefore);
        on(&Model::columnsAboutToBeInserted, Moment::EarlyBefore, Moment::Never);
        on(&Model::rowsAboutToBeMoved, Moment::EarlyBefore, Moment::Never);
        on(&Model::layoutAboutToBeChanged, Moment::EarlyBefore, Moment::Never);
        on(&Model::rowsInserted, Moment::EarlyAfter, Moment::LateAfter);
        on(&Model::rowsRemoved, Moment::EarlyAfter, Moment::LateAfter);
        on(&Model::columnsRemoved, Moment::EarlyAfter, Moment::LateAfter);
        on(&Model::rowsMoved, Moment::Never, Moment::LateAfter);
        on(&Model::layoutChanged, Moment::Never, Moment::LateAfter);
    }
    void listenTo(QItemSelectionModel& selection)
    {
        m_models.push_back(&selection);
        const auto meddles = [this, &selection] { meddle(selection); };
        if (m_moment == Moment::Current)
            QObject::connect(&selection, &QItemSelectionModel::currentChanged, &m_context, meddles);
        if (m_moment == Moment::Selection)
            QObject::connect(&selection, &QItemSelectionModel::selectionChanged, &m_context,
                             meddles);
    }
    /// `ranges` is asked when it comes to it, for each selection model.
    void plan(std::function<QItemSelection()> ranges, Flags command)
    {
        m_ranges = std::move(ranges);
        m_command = command;
        m_waiting = {m_models.begin(), m_models.end()};
    }
    void forget() { m_waiting.clear(); }

private:
    void meddle(QItemSelectionModel& selection)
    {
        if (m_waiting.erase(&selection))
            selection.select(m_ranges(), m_command);
    }

    Moment m_moment;
    QObject m_context;
    std::vector<QItemSelectionModel*> m_models;
    std::set<QItemSelectionModel*> m_waiting;
    std::function<QItemSelection()> m_ranges;
    Flags m_command;
};

class RandomDriver
{
public:
    RandomDriver(unsigned seed, Moment moment)
        : m_random(seed)
        , m_model(QString(), 3)
        , m_flat(seed % 4 == 0)
        , m_mostRanges(seed % 40 == 0 ? 40 : 4)
        , m_meddler(moment)
    {
        append({}, m_mostRanges + 2);
        for (int i = 0; i < 3 && !m_flat; ++i) {
            append(m_model.index(i, 0), 4 + pick(4));
            append(m_model.index(0, 0, m_model.index(i, 0)), 3);
        }
        m_meddler.listenTo(m_model, true);
    }

    TreeModel& model() { return m_model; }

    void drive(std::vector<QItemSelectionModel*> models)
    {
        m_models = std::move(models);
        m_meddler.listenTo(m_model, false);
        for (QItemSelectionModel* selection : m_models)
            m_meddler.listenTo(*selection);
    }
    /// Listeners may select rows that are about to go, one range at a time.
    void setWild() { m_wild = true; }

    std::string step()
    {
        const std::string did = act();
        m_meddler.forget();
        m_leaving = {};
        return did + std::exchange(m_planned, {});
    }

private:
    using Model = QItemSelectionModel;

    std::string act()
    {
        using Way = std::string (RandomDriver::*)();
        static constexpr Way ways[] = {&RandomDriver::insertRows,   &RandomDriver::removeRows,
                                       &RandomDriver::moveRows,     &RandomDriver::reverseRows,
                                       &RandomDriver::setCurrent,   &RandomDriver::clear,
                                       &RandomDriver::changeColumns};
        const int way = pick(14);
        return way < 7 ? (this->*ways[way])() : select();
    }

    void append(const QModelIndex& parent, int count)
    {
        insert(parent, m_model.rowCount(parent), count);
    }
    void insert(const QModelIndex& parent, int row, int count)
    {
        QStringList names;
        for (; count > 0; --count)
            names += QStringLiteral("row%1").arg(m_made++);
        m_model.insert(parent, row, TreeModel::named(names));
    }

    int pick(int below) { return static_cast<int>(m_random() % static_cast<unsigned>(below)); }

    QModelIndex anyParent()
    {
        QModelIndex parent;
        while (!m_flat && m_model.rowCount(parent) > 0 && pick(3) != 0)
            parent = m_model.index(pick(m_model.rowCount(parent)), 0, parent);
        return parent;
    }

    QModelIndex parentWithRows()
    {
        QModelIndex parent = anyParent();
        while (parent.isValid() && m_model.rowCount(parent) == 0)
            parent = parent.parent();
        return parent;
    }

    bool leaves(const QModelIndex& parent, int top, int bottom) const
    {
        if (m_wild || !m_leaving.isValid())
            return false;
        if (parent == m_leaving.parent())
            return top <= m_leaving.bottom() && bottom >= m_leaving.top();
        return parent.isValid() && leaves(parent.parent(), parent.row(), parent.row());
    }

    QItemSelection ranges()
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
                selection.append(QItemSelectionRange(
                    m_model.index(top, left, parent),
                    m_model.index(bottom, left + pick(columns - left), parent)));
        }
        return selection;
    }

    Flags command()
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

    // Whether the plan comes to pass depends on what happens.
    std::string plan()
    {
        if (m_meddler.moment() == Moment::Never || pick(3) == 0)
            return {};
        const Flags flags = command();
        const auto seed = m_random();
        m_planned.clear();
        const auto select = [this, seed] {
            const std::mt19937 random = std::exchange(m_random, std::mt19937(seed));
            const QItemSelection selection = ranges();
            m_random = random;
            m_planned = listed(selection.indexes());
            return selection;
        };
        m_meddler.plan(select, flags);
        return " then " + std::to_string(int(flags));
    }

    static std::string described(const QItemSelection& selection, Flags flags)
    {
        return std::to_string(int(flags)) + " " + listed(selection.indexes());
    }

    std::string select()
    {
        const QItemSelection selection = ranges();
        const Flags flags = command();
        const std::string planned = plan();
        for (QItemSelectionModel* model : m_models)
            model->select(selection, flags);
        return "select " + described(selection, flags) + planned;
    }

    std::string clear()
    {
        const int way = pick(5);
        for (QItemSelectionModel* model : m_models) {
            if (way == 0)
                model->clear();
            else if (way == 1)
                model->reset();
            else
                model->clearSelection();
        }
        return "clear " + std::to_string(way);
    }

    std::string setCurrent()
    {
        const QModelIndex parent = parentWithRows();
        if (m_model.rowCount(parent) == 0)
            return "nothing";
        const QModelIndex index =
            m_model.index(pick(m_model.rowCount(parent)), pick(m_model.columnCount()), parent);
        const Flags flags = pick(2) ? Model::ClearAndSelect : Model::NoUpdate;
        const std::string planned = plan();
        for (QItemSelectionModel* model : m_models)
            model->setCurrentIndex(index, flags);
        return "current " + cellName(index) + planned;
    }

    std::string insertRows()
    {
        const QModelIndex parent = anyParent();
        const int row = pick(m_model.rowCount(parent) + 1);
        const int count = 1 + pick(3);
        // The stock model lets ranges that are selected meanwhile grow over the new rows.
        if (row > 0 && row < m_model.rowCount(parent))
            m_leaving = {m_model.index(row - 1, 0, parent), m_model.index(row, 0, parent)};
        const std::string planned = plan();
        insert(parent, row, count);
        return "insert " + std::to_string(count) + " at " + std::to_string(row) + planned;
    }

    std::string removeRows()
    {
        const QModelIndex parent = parentWithRows();
        const int rows = m_model.rowCount(parent);
        if (rows < 2)
            return "nothing";
        const int row = pick(rows);
        const int count = 1 + pick(std::min(3, rows - row));
        m_leaving = {m_model.index(row, 0, parent), m_model.index(row + count - 1, 0, parent)};
        const std::string text = "remove " + cellName(m_model.index(row, 0, parent)) + " and " +
                                 std::to_string(count - 1) + plan();
        m_model.remove(parent, row, count);
        return text;
    }

    std::string moveRows()
    {
        const QModelIndex parent = parentWithRows();
        const QModelIndex to = anyParent();
        const int rows = m_model.rowCount(parent);
        if (rows == 0)
            return "nothing";
        const int row = pick(rows);
        const std::string planned = plan();
        const bool moved =
            m_model.move(parent, row, 1 + pick(rows - row), to, pick(m_model.rowCount(to) + 1));
        return (moved ? "move" : "no move") + planned;
    }

    std::string reverseRows()
    {
        const auto hint =
            pick(2) ? QAbstractItemModel::VerticalSortHint : QAbstractItemModel::NoLayoutChangeHint;
        const std::string planned = plan();
        m_model.reverse(parentWithRows(), hint);
        return "reverse " + std::to_string(hint) + planned;
    }

    std::string changeColumns()
    {
        if (!m_flat)
            return removeRows();
        const int columns = m_model.columnCount();
        const int column = pick(columns);
        const bool removes = columns > 3;
        const std::string planned = removes ? std::string() : plan();
        if (removes)
            m_model.removeColumns(column, 1 + pick(columns - column - 1 > 0 ? 2 : 1));
        else
            m_model.insertColumns(column, 1 + pick(2));
        return (removes ? "remove" : "insert") + (" column " + std::to_string(column)) + planned;
    }

    std::mt19937 m_random;
    TreeModel m_model;
    const bool m_flat;
    const int m_mostRanges;
    bool m_wild = false;
    Meddler m_meddler;
    std::vector<QItemSelectionModel*> m_models;
    QItemSelectionRange m_leaving;
    std::string m_planned;
    int m_made = 0;
};

/// What a view marks that only follows what is announced.
class Mirror
{
public:
    explicit Mirror(RowSelectionModel& model) : m_model(model)
    {
        QObject::connect(&model, &QItemSelectionModel::selectionChanged, &model,
                         [this](const QItemSelection& selected, const QItemSelection& deselected) {
                             for (const QModelIndex& index : deselected.indexes())
                                 m_marks.erase(cellName(index));
                             for (const QModelIndex& index : selected.indexes())
                                 m_marks.insert(cellName(index));
                         });
    }
    void expectInStep(const std::string& after)
    {
        for (const QItemSelectionRange& range : m_model.finishedSelection())
            ASSERT_TRUE(range.isValid()) << after;
        std::string marks;
        for (const std::string& mark : m_marks)
            marks += mark + " ";
        ASSERT_EQ(marks, sorted(m_model.selection())) << after;
        ASSERT_EQ(m_marks.empty(), !m_model.hasSelection()) << after;
    }
    void clear() { m_marks.clear(); }

private:
    RowSelectionModel& m_model;
    std::set<std::string> m_marks;
};

class RandomSelection : public testing::TestWithParam<Moment>
{};

INSTANTIATE_TEST_SUITE_P(Listeners, RandomSelection,
                         testing::Values(Moment::Never, Moment::EarlyBefore, Moment::LateBefore,
                                         Moment::EarlyAfter, Moment::LateAfter, Moment::Current,
                                         Moment::Selection));

} // namespace

TEST_P(RandomSelection, behavesAsTheStockModel)
{
    for (unsigned seed = 1; seed <= 200; ++seed) {
        RandomDriver driver(seed, GetParam());
        Twins twins(driver.model());
        driver.drive({&twins.stock, &twins.ours});
        std::string history;
        for (int step = 0; step < 50; ++step) {
            history += driver.step() + "\n";
            twins.expectEqual("seed " + std::to_string(seed) + "\n" + history);
            if (testing::Test::HasFatalFailure())
                return;
        }
    }
}

// The stock model loses cells here without a word, so announcements and selection are compared.
TEST_P(RandomSelection, announcesAllThatListenersDoToRowsAboutToGo)
{
    for (unsigned seed = 1; seed <= 100; ++seed) {
        RandomDriver driver(seed * 4 + 1, GetParam());
        driver.setWild();
        RowSelectionModel selection(&driver.model());
        Mirror mirror(selection);
        driver.drive({&selection});
        std::string history = "seed " + std::to_string(seed) + "\n";
        for (int step = 0; step < 50; ++step) {
            history += driver.step() + "\n";
            if (history.find("clear 1", history.size() - 8) != std::string::npos)
                mirror.clear();
            mirror.expectInStep(history);
            if (testing::Test::HasFatalFailure())
                return;
        }
    }
}

TEST(RowSelectionModel, survivesResetsAndForeignModels)
{
    TreeModel model("a\n  b\nc");
    // Hears of a reset before the selection models do.
    QObject early;
    std::function<void()> onReset;
    QObject::connect(&model, &TreeModel::modelReset, &early, [&onReset] { onReset(); });
    Twins twins(model);
    twins.select(model.find("b"), QItemSelectionModel::Select);
    twins.expectEqual("select");
    onReset = [&twins] { twins.select({}, QItemSelectionModel::Clear); };
    model.resetTo("x\ny");
    twins.expectEqual("reset");
    TreeModel other("p\nq");
    twins.stock.setModel(&other);
    twins.ours.setModel(&other);
    twins.select(other.find("q"), QItemSelectionModel::Toggle);
    twins.expectEqual("other model");
    other.insert({}, 0, TreeModel::named({"o"}));
    twins.expectEqual("insertion in the other model");

    RowSelectionModel orphan(nullptr);
    orphan.select(QItemSelection(), QItemSelectionModel::Select);
    EXPECT_FALSE(orphan.hasSelection());
}

TEST(RowSelectionModel, forgetsCellsThatALayoutChangeFindsUnselectable)
{
    TreeModel model("a\nb\nc");
    RowSelectionModel selection(&model);
    selection.select(model.find("a"), QItemSelectionModel::ClearAndSelect);
    model.item(model.find("a"))->flags = Qt::ItemIsEnabled;
    model.reverse({}, QAbstractItemModel::NoLayoutChangeHint);
    EXPECT_TRUE(selection.finishedSelection().isEmpty());
    int announced = 0;
    QObject::connect(&selection, &QItemSelectionModel::selectionChanged, [&] { ++announced; });
    selection.clear();
    EXPECT_EQ(0, announced);
}

TEST(RowSelectionModel, mayBeRetiredInsideAnyNotification)
{
    using Model = QItemSelectionModel;
    const std::function<void(Model&, TreeModel&)> causes[] = {
        [](Model& selection, TreeModel& model) {
            selection.setCurrentIndex(model.index(1, 1), Model::ClearAndSelect);
        },
        [](Model& selection, TreeModel&) { selection.clear(); },
        [](Model& selection, TreeModel&) { selection.clearSelection(); },
        [](Model&, TreeModel& model) { model.remove({}, 0, 1); },
        [](Model&, TreeModel& model) { model.removeColumns(0, 1); },
    };
    int retired = 0;
    const auto retireIn = [&](auto signal) {
        for (const auto& cause : causes) {
            TreeModel model("a\nb\nc", 2);
            const QPointer<RowSelectionModel> selection(new RowSelectionModel(&model));
            selection->setCurrentIndex(model.find("a"), Model::Select);
            QObject::connect(selection.data(), signal, selection.data(),
                             [&selection] { RowSelectionModel::retire(selection); });
            cause(*selection, model);
            retired += selection ? 0 : 1;
            delete selection;
        }
    };
    retireIn(&Model::selectionChanged);
    retireIn(&Model::currentChanged);
    retireIn(&Model::currentRowChanged);
    retireIn(&Model::currentColumnChanged);
    EXPECT_EQ(15, retired);
}
