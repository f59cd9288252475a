#include <kyr_scene_outline/selection/row_selection_model.h>
#include <support/tree_model.h>

#include <QItemSelectionModel>

#include <gtest/gtest.h>

#include <functional>
#include <random>
#include <set>
#include <sstream>

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

    QItemSelectionModel stock;
    RowSelectionModel ours;

private:
    ChangeLog m_stockLog;
    ChangeLog m_ourLog;
};

class RandomDriver
{
public:
    explicit RandomDriver(unsigned seed) : m_random(seed), m_model(std::string(), 3)
    {
        m_model.append({}, 6);
        for (int i = 0; i < 3; ++i) {
            m_model.append(m_model.index(i, 0), 4 + pick(4));
            m_model.append(m_model.index(0, 0, m_model.index(i, 0)), 3);
        }
    }

    TreeModel& model() { return m_model; }

    std::string step(Twins& twins)
    {
        switch (pick(12)) {
        case 0:
            return insertRows();
        case 1:
            return removeRows();
        case 2:
            return moveRows();
        case 3:
            return reverseRows();
        case 4:
            return setCurrent(twins);
        default:
            return select(twins);
        }
    }

private:
    int pick(int below) { return static_cast<int>(m_random() % static_cast<unsigned>(below)); }

    QModelIndex anyParent()
    {
        QModelIndex parent;
        while (m_model.rowCount(parent) > 0 && pick(3) != 0)
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

    QItemSelection ranges()
    {
        QItemSelection selection;
        for (int count = pick(5); count > 0; --count) {
            const QModelIndex parent = parentWithRows();
            const int rows = m_model.rowCount(parent);
            if (rows == 0)
                continue;
            const int top = pick(rows);
            const int left = pick(3);
            selection.append(QItemSelectionRange(
                m_model.index(top, left, parent),
                m_model.index(top + pick(rows - top), left + pick(3 - left), parent)));
        }
        return selection;
    }

    std::string select(Twins& twins)
    {
        using Model = QItemSelectionModel;
        static const Flags actions[] = {Model::NoUpdate, Model::Select, Model::Deselect,
                                        Model::Toggle,   Model::Select, Model::Toggle};
        Flags command = actions[pick(6)];
        for (const Flags extra : {Flags(Model::Clear), Flags(Model::Current)}) {
            if (pick(3) == 0)
                command |= extra;
        }
        if (pick(6) == 0)
            command |= pick(2) ? Model::Rows : Model::Columns;
        if (pick(20) == 0)
            command |= Model::Deselect | Model::Toggle;
        const QItemSelection selection = ranges();
        twins.stock.select(selection, command);
        twins.ours.select(selection, command);
        std::ostringstream text;
        text << "select " << int(command) << " " << listed(selection.indexes());
        return text.str();
    }

    std::string setCurrent(Twins& twins)
    {
        const QModelIndex parent = parentWithRows();
        if (m_model.rowCount(parent) == 0)
            return "nothing";
        const QModelIndex index = m_model.index(pick(m_model.rowCount(parent)), pick(3), parent);
        const Flags command =
            pick(2) ? QItemSelectionModel::ClearAndSelect : QItemSelectionModel::NoUpdate;
        twins.stock.setCurrentIndex(index, command);
        twins.ours.setCurrentIndex(index, command);
        return "current " + cellName(index);
    }

    std::string insertRows()
    {
        const QModelIndex parent = anyParent();
        const int row = pick(m_model.rowCount(parent) + 1);
        std::vector<std::string> names;
        for (int count = 1 + pick(3); count > 0; --count)
            names.push_back("new" + std::to_string(m_made++));
        m_model.insert(parent, row, names);
        return "insert " + names.front();
    }

    std::string removeRows()
    {
        const QModelIndex parent = parentWithRows();
        const int rows = m_model.rowCount(parent);
        if (rows < 2)
            return "nothing";
        const int row = pick(rows);
        m_model.remove(parent, row, 1 + pick(std::min(3, rows - row)));
        return "remove";
    }

    std::string moveRows()
    {
        const QModelIndex parent = parentWithRows();
        const QModelIndex to = anyParent();
        const int rows = m_model.rowCount(parent);
        if (rows == 0)
            return "nothing";
        const int row = pick(rows);
        const bool moved =
            m_model.move(parent, row, 1 + pick(rows - row), to, pick(m_model.rowCount(to) + 1));
        return moved ? "move" : "no move";
    }

    std::string reverseRows()
    {
        const auto hint =
            pick(2) ? QAbstractItemModel::VerticalSortHint : QAbstractItemModel::NoLayoutChangeHint;
        m_model.reverse(parentWithRows(), hint);
        return "reverse " + std::to_string(hint);
    }

    std::mt19937 m_random;
    TreeModel m_model;
    int m_made = 0;
};

} // namespace

TEST(RowSelectionModel, behavesAsTheStockModelUnderRandomCommands)
{
    for (unsigned seed = 1; seed <= 300; ++seed) {
        RandomDriver driver(seed);
        Twins twins(driver.model());
        std::string history;
        for (int step = 0; step < 60; ++step) {
            const std::string did = driver.step(twins);
            history += did + "\n";
            twins.expectEqual("seed " + std::to_string(seed) + "\n" + history);
            if (testing::Test::HasFatalFailure())
                return;
        }
    }
}

TEST(RowSelectionModel, behavesAsTheStockModelWithManyRanges)
{
    TreeModel model(std::string(), 2);
    model.append({}, 60);
    Twins twins(model);
    const auto everyOther = [&model](int first, int step, int column) {
        QItemSelection selection;
        for (int row = first; row < 60; row += step)
            selection.append(QItemSelectionRange(model.index(row, column)));
        return selection;
    };
    const QItemSelection all(model.index(0, 0), model.index(59, 1));
    using Model = QItemSelectionModel;
    const std::pair<QItemSelection, Flags> commands[] = {
        {everyOther(0, 2, 0), Model::ClearAndSelect},
        {everyOther(1, 2, 0), Model::ClearAndSelect},
        {all, Model::Toggle},
        {everyOther(0, 3, 1), Model::Deselect},
        {all, Model::Toggle | Model::Current},
        {everyOther(0, 5, 0), Model::Toggle},
        {everyOther(0, 1, 0), Model::Select},
        {all, Model::ClearAndSelect},
        {everyOther(3, 7, 1), Model::Deselect},
        {all, Model::Clear},
    };
    for (const auto& [selection, command] : commands) {
        twins.stock.select(selection, command);
        twins.ours.select(selection, command);
        twins.expectEqual("command " + std::to_string(int(command)));
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
    for (QItemSelectionModel* selection : {static_cast<QItemSelectionModel*>(&twins.stock),
                                           static_cast<QItemSelectionModel*>(&twins.ours)})
        selection->select(model.find("b"), QItemSelectionModel::Select);
    twins.expectEqual("select");
    onReset = [&twins] {
        twins.stock.select(QItemSelection(), QItemSelectionModel::Clear);
        twins.ours.select(QItemSelection(), QItemSelectionModel::Clear);
    };
    model.resetTo("x\ny");
    twins.expectEqual("reset");
    TreeModel other("p\nq");
    twins.stock.setModel(&other);
    twins.ours.setModel(&other);
    for (QItemSelectionModel* selection : {static_cast<QItemSelectionModel*>(&twins.stock),
                                           static_cast<QItemSelectionModel*>(&twins.ours)})
        selection->select(other.find("q"), QItemSelectionModel::Toggle);
    twins.expectEqual("other model");
    other.insert({}, 0, {"o"});
    twins.expectEqual("insertion in the other model");

    RowSelectionModel orphan(nullptr);
    orphan.select(QItemSelection(), QItemSelectionModel::Select);
    EXPECT_FALSE(orphan.hasSelection());
}

TEST(RowSelectionModel, listenersMaySelectAgain)
{
    TreeModel model("a\nb");
    RowSelectionModel selection(&model);
    int announced = 0;
    QObject::connect(&selection, &QItemSelectionModel::selectionChanged, &selection, [&] {
        if (++announced == 1)
            selection.select(model.find("b"), QItemSelectionModel::Select);
    });
    selection.select(model.find("a"), QItemSelectionModel::ClearAndSelect);
    EXPECT_EQ("a:0 b:0 ", listed(selection.selection().indexes()));
    EXPECT_EQ(2, announced);
}
