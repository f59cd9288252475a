#include "random_driver.h"

#include <kyr_scene_outline/selection/row_selection_model.h>

#include <QPointer>

#include <gtest/gtest.h>

using kyr::selection::RowSelectionModel;
using namespace test;
using Model = QItemSelectionModel;

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
    void expectInStep(const std::string& did, const std::string& after)
    {
        int cells = 0;
        for (const QItemSelectionRange& range : m_model.finishedSelection()) {
            ASSERT_TRUE(range.isValid()) << after;
            cells += range.width() * range.height();
        }
        if (did == "fade") {
            ASSERT_EQ(cells, m_model.selection().indexes().size()) << after;
        }
        // These do not say what they take away, or give other numbers to columns.
        if (did == "fade" || did == "reset" || did == "reset model" || did == "columns") {
            m_marks.clear();
            for (const QModelIndex& index : m_model.selection().indexes())
                m_marks.insert(cellName(index));
        }
        std::string marks;
        for (const std::string& mark : m_marks)
            marks += mark + " ";
        ASSERT_EQ(marks, sorted(m_model.selection())) << after;
        ASSERT_EQ(cells > 0, m_model.hasSelection()) << after;
    }

private:
    RowSelectionModel& m_model;
    std::set<std::string> m_marks;
};

/// Asks `check` for a fault after each of fifty steps of each driver.
class RandomSelection : public testing::TestWithParam<Moment>
{
protected:
    template <typename Check>
    static void drive(RandomDriver& driver, unsigned seed, Check check)
    {
        std::string history = "seed " + std::to_string(seed) + ":";
        for (int step = 0; step < 50 && !HasFatalFailure(); ++step) {
            const std::string did = driver.step();
            history += " " + did;
            check(did, history);
        }
    }
};

INSTANTIATE_TEST_SUITE_P(Listeners, RandomSelection,
                         testing::Values(Moment::Never, Moment::EarlyBefore, Moment::LateBefore,
                                         Moment::EarlyAfter, Moment::LateAfter, Moment::Current,
                                         Moment::Selection));

} // namespace

TEST_P(RandomSelection, behavesAsTheStockModel)
{
    for (unsigned seed = 1; seed <= 200 && !HasFatalFailure(); ++seed) {
        RandomDriver driver(seed, GetParam());
        Twins twins(driver.model());
        driver.drive({&twins.stock, &twins.ours});
        drive(driver, seed,
              [&](const std::string&, const std::string& history) { twins.expectEqual(history); });
    }
}

// The stock model loses cells here without a word, so announcements and selection are compared.
TEST_P(RandomSelection, announcesAllThatListenersDoToRowsAboutToGo)
{
    for (unsigned seed = 1; seed <= 300 && !HasFatalFailure(); seed += 3) {
        RandomDriver driver(seed, GetParam());
        driver.setWild();
        RowSelectionModel selection(&driver.model());
        Mirror mirror(selection);
        driver.drive({&selection});
        drive(driver, seed, [&](const std::string& did, const std::string& history) {
            mirror.expectInStep(did, history);
        });
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

TEST(RowSelectionModel, keepsWhatMovesInsideARangeWhileAnotherRowIsTakenOut)
{
    TreeModel model("a\nb\nc\nd\ne");
    Twins twins(model);
    for (QItemSelectionModel* selection : {&twins.stock, static_cast<Model*>(&twins.ours)})
        selection->select(QItemSelection(model.find("a"), model.find("e")), Model::Select);
    twins.select(model.find("e"), Model::Toggle);
    model.move({}, 1, 1, {}, 4);
    twins.expectEqual("move");
}

TEST(RowSelectionModel, mayBeRetiredInsideAnyNotification)
{
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
