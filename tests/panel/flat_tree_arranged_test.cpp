// The flat list over a scene that shows filtered, sorted, flat or by type.

#include "fake_scene.h"

#include <panel/gestures/tree_navigator.h>
#include <panel/rows/flat_tree_model.h>
#include <panel/rows/tree_arranger.h>

#include <host/ui/text_predicate.h>

#include <QAbstractItemModelTester>
#include <QItemSelectionModel>

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>
#include <set>

namespace {

using kyr::panel::FlatTreeModel;
using kyr::panel::TreeArranger;
using kyr::panel::TreeNavigator;
using lumo::datamodels::proxy::TextPredicate;
using Item = FakeScene::Item;

/// A list over a scene with all that arranges it.
struct Outline
{
    explicit Outline(std::unique_ptr<FakeScene> newScene)
        : scene(std::move(newScene)), selection(new QItemSelectionModel(scene.get()))
    {
        QObject::connect(&arranger, &TreeArranger::modelChanged, &flat,
                         [this] { flat.setSourceModel(arranger.model()); });
        arranger.setList(&flat);
        arranger.setSourceModel(scene.get());
        arranger.setPredicate(&predicate);
        flat.setSelectionModel(selection);
    }

    void filter(const QString& text)
    {
        predicate.setText(text);
        arranger.finish();
    }
    void sort(int role, bool descending = false)
    {
        arranger.setSortRole(role);
        arranger.setSortDescending(descending);
        arranger.finish();
    }
    void arrange(const char* arrangement)
    {
        arranger.setArrangement(QLatin1String(arrangement));
        arranger.finish();
    }
    QModelIndex find(const char* name) const { return scene->find(QLatin1String(name)); }
    void expand(const char* name, bool on = true) { flat.setExpanded(find(name), on); }
    std::string rows() const
    {
        QStringList rows;
        for (int row = 0; row < flat.count(); ++row) {
            const QModelIndex index = flat.index(row);
            rows +=
                QString(flat.rowDepth(row), QLatin1Char('.')) + index.data().toString() +
                (flat.isRowSelected(row) ? QStringLiteral("*") : QString()) +
                (index.data(FlatTreeModel::MatchesRole).toBool() ? QString() : QStringLiteral("~"));
        }
        return rows.join(QLatin1Char(' ')).toStdString();
    }

    std::unique_ptr<FakeScene> scene;
    TextPredicate predicate;
    QItemSelectionModel* selection; ///< The scene owns it.
    FlatTreeModel flat;
    TreeArranger arranger;
};

std::unique_ptr<FakeScene> street()
{
    auto scene = FakeScene::fromText(QStringLiteral("House\n  Wall\n    Window 1\n    Window 2\n"
                                                    "  Roof\n    Tile\nTree\n  Window 10\nLamp\n"));
    scene->item(scene->find(QStringLiteral("Lamp")))->type = QStringLiteral("light");
    return scene;
}

TEST(FlatTreeArrangedTest, WhatWasOpenBeforeAFilterComesBackAfterIt)
{
    Outline outline(street());
    outline.expand("House");
    outline.expand("Roof");
    const std::string before = outline.rows();
    EXPECT_EQ(before, "House .Wall .Roof ..Tile Tree Lamp");
    outline.filter(QStringLiteral("window"));
    EXPECT_EQ(outline.rows(), "House~ .Wall~ ..Window 1 ..Window 2 Tree~ .Window 10");
    outline.expand("Wall", false);
    outline.scene->remove({}, 2, 1);
    EXPECT_EQ(outline.rows(), "House~ .Wall~ Tree~ .Window 10") << "kept when the scene changes";
    outline.filter(QStringLiteral("window 1"));
    EXPECT_EQ(outline.rows(), "House~ .Wall~ ..Window 1 Tree~ .Window 10") << "found anew";
    outline.filter({});
    EXPECT_EQ(outline.rows(), "House .Wall .Roof ..Tile Tree");
    EXPECT_EQ(outline.flat.sourceModel(), outline.scene.get());
}

TEST(FlatTreeArrangedTest, SortingAndGroupingKeepWhatIsOpen)
{
    Outline outline(street());
    outline.expand("House");
    outline.sort(Qt::DisplayRole, true);
    EXPECT_EQ(outline.rows(), "Tree Lamp House .Wall .Roof");
    outline.expand("Wall");
    outline.arrange("type");
    EXPECT_EQ(outline.rows(), "Light .Lamp Mesh .Window 10 .Window 2 .Window 1 .Wall .Tree .Tile "
                              ".Roof .House");
    outline.flat.setRowExpanded(2, false);
    outline.scene->remove({}, 1, 1);
    EXPECT_EQ(outline.rows(), "Light .Lamp Mesh");
    outline.arrange("flat");
    EXPECT_EQ(outline.flat.count(), 7);
    outline.arrange("");
    outline.sort(-1);
    EXPECT_EQ(outline.rows(), "House .Wall ..Window 1 ..Window 2 .Roof Lamp");
}

TEST(FlatTreeArrangedTest, HiddenRowsStaySelectedAndAreCounted)
{
    Outline outline(street());
    for (const char* name : {"Window 1", "Tile", "Tree"})
        outline.selection->select(outline.find(name), QItemSelectionModel::Select);
    outline.filter(QStringLiteral("window"));
    EXPECT_EQ(outline.rows(), "House~ .Wall~ ..Window 1* ..Window 2 Tree*~ .Window 10");
    EXPECT_EQ(outline.flat.selectionCount(), 3);
    EXPECT_EQ(outline.flat.hiddenSelectionCount(), 1);
    EXPECT_EQ(outline.flat.rowOf(outline.find("Tile")), -1);
    EXPECT_EQ(outline.flat.reveal(outline.find("Tile")), -1);
    EXPECT_EQ(outline.flat.nearestRow(outline.find("Tile")), 0);
    outline.filter({});
    EXPECT_EQ(outline.flat.hiddenSelectionCount(), 0);
    EXPECT_EQ(outline.flat.selectionCount(), 3);
}

TEST(FlatTreeArrangedTest, GroupsTakeTheFocusAndLeaveTheSelection)
{
    Outline outline(street());
    TreeNavigator navigator;
    navigator.setFlatModel(&outline.flat);
    outline.arrange("type");
    navigator.press(1, Qt::NoModifier);
    navigator.key(Qt::Key_Down, Qt::NoModifier, {});
    EXPECT_EQ(navigator.currentRow(), 2);
    EXPECT_TRUE(outline.flat.isGroup(2));
    EXPECT_TRUE(outline.flat.isRowSelected(1));
    navigator.key(Qt::Key_Left, Qt::NoModifier, {});
    EXPECT_EQ(outline.flat.count(), 3);
    navigator.key(Qt::Key_Up, Qt::NoModifier, {});
    EXPECT_EQ(navigator.currentRow(), 1);
    navigator.key(Qt::Key_End, Qt::ShiftModifier, {});
    EXPECT_EQ(outline.selection->selectedIndexes().size(), 1) << "a group is no object";
}

TEST(FlatTreeArrangedTest, OldRowsShowAndChangeWhileTheNextAreWorkedOut)
{
    Outline outline(FakeScene::wide(3000, 2));
    outline.predicate.setCondition("slow", [](const QModelIndex& row) {
        for (volatile int turn = 0; turn < 4000; turn = turn + 1) {
        }
        return row.row() % 2 == 0;
    });
    ASSERT_TRUE(outline.arranger.isWorking());
    const auto workABit = [&] {
        outline.arranger.workSlice();
        return outline.arranger.isWorking();
    };
    ASSERT_TRUE(workABit());
    EXPECT_EQ(outline.flat.count(), 3000) << "the rows of before";
    const QModelIndex first = outline.scene->index(0, 0);
    outline.flat.setExpanded(first, true);
    outline.selection->select(outline.scene->index(0, 0, first), QItemSelectionModel::Select);
    ASSERT_TRUE(workABit());
    outline.scene->remove({}, 2998, 1);
    while (workABit()) {
    }
    EXPECT_EQ(outline.flat.count(), 2999 + 2999) << "each with one of its children";
    EXPECT_TRUE(outline.flat.isRowSelected(1));
    EXPECT_FALSE(outline.flat.isRowSelected(2));
    outline.filter({});
    outline.predicate.setCondition("slow", nullptr);
    outline.arranger.finish();
    EXPECT_EQ(outline.flat.count(), 2999 + 2) << "what was opened meanwhile is open";
}

TEST(FlatTreeArrangedTest, SurvivesASceneThatGoes)
{
    Outline outline(street());
    outline.filter(QStringLiteral("window"));
    outline.scene.reset();
    EXPECT_EQ(outline.flat.count(), 0);
    EXPECT_EQ(outline.arranger.model(), nullptr);
}

/// Random changes of scene, selection, filter and order against a plain walk that knows what is
/// open in the scene.
class RandomArrangement
{
public:
    explicit RandomArrangement(unsigned seed)
        : m_random(seed)
        , m_outline(FakeScene::fromText(QStringLiteral("1\n  2\n3\n")))
        , m_tester(&m_outline.flat, QAbstractItemModelTester::FailureReportingMode::Fatal)
    {}

    void step()
    {
        switch (pick(11)) {
        case 0:
        case 1:
            return insert();
        case 2:
            return remove();
        case 3:
            return m_outline.filter(pick(2) == 0 ? QString() : QString::number(pick(10)));
        case 4:
            return m_outline.sort(pick(2) == 0 ? -1 : int(Qt::DisplayRole));
        case 5:
            return toggle();
        case 6:
            return move();
        case 7:
            return rename();
        default:
            return select();
        }
    }

    void check()
    {
        QStringList expected;
        append({}, 0, expected);
        ASSERT_EQ(m_outline.rows(), expected.join(QLatin1Char(' ')).toStdString());
        int hidden = 0;
        for (const QModelIndex& index : m_outline.selection->selectedIndexes())
            hidden += leadsToMatch(*m_outline.scene->item(index)) ? 0 : 1;
        ASSERT_EQ(m_outline.flat.hiddenSelectionCount(), hidden);
        for (int row = 0; row < m_outline.flat.count(); ++row)
            ASSERT_EQ(m_outline.flat.rowOf(m_outline.flat.sourceIndex(row)), row);
    }

private:
    int pick(int bound) { return int(m_random() % unsigned(bound)); }
    bool filters() const { return m_outline.predicate.isActive(); }
    bool matches(const Item& item) const { return item.name.contains(m_outline.predicate.text()); }
    bool leadsToMatch(const Item& item) const
    {
        return matches(item) || std::any_of(item.children.begin(), item.children.end(),
                                            [this](const auto& c) { return leadsToMatch(*c); });
    }

    void append(const QModelIndex& parent, int depth, QStringList& rows) const
    {
        const FakeScene& scene = *m_outline.scene;
        std::vector<const Item*> children;
        for (int row = 0; row < scene.rowCount(parent); ++row)
            children.push_back(scene.item(scene.index(row, 0, parent)));
        if (m_outline.arranger.sortRole() >= 0)
            std::stable_sort(children.begin(), children.end(), [](const Item* a, const Item* b) {
                return a->name.toInt() < b->name.toInt();
            });
        for (const Item* item : children) {
            if (!leadsToMatch(*item))
                continue;
            const QModelIndex index = scene.indexOf(item);
            rows += QString(depth, QLatin1Char('.')) + item->name +
                    (m_outline.selection->isSelected(index) ? QStringLiteral("*") : QString()) +
                    (matches(*item) ? QString() : QStringLiteral("~"));
            if (filters() || m_open.count(item) != 0)
                append(index, depth + 1, rows);
        }
    }

    Item* any()
    {
        std::vector<Item*> items{m_outline.scene->root()};
        for (std::size_t i = 0; i < items.size(); ++i) {
            for (const auto& child : items[i]->children)
                items.push_back(child.get());
        }
        return items[std::size_t(pick(int(items.size())))];
    }

    void insert()
    {
        Item* parent = any();
        std::vector<std::unique_ptr<Item>> items;
        for (int i = 0; i <= pick(3); ++i) {
            items.push_back(std::make_unique<Item>());
            items.back()->name = QString::number(m_random() % 1000);
        }
        m_outline.scene->insert(m_outline.scene->indexOf(parent),
                                pick(int(parent->children.size()) + 1), std::move(items));
    }
    void remove()
    {
        Item* parent = any();
        if (parent->children.empty())
            return;
        const int row = pick(int(parent->children.size()));
        forget(parent->children[std::size_t(row)].get());
        m_outline.scene->remove(m_outline.scene->indexOf(parent), row, 1);
    }
    void move()
    {
        Item* from = any();
        Item* to = any();
        const int size = int(from->children.size());
        if (size == 0)
            return;
        const int row = pick(size);
        const int count = 1 + pick(size - row);
        m_outline.scene->move(m_outline.scene->indexOf(from), row, count,
                              m_outline.scene->indexOf(to), pick(int(to->children.size()) + 1));
    }
    void rename()
    {
        Item* item = any();
        if (item != m_outline.scene->root())
            m_outline.scene->setData(m_outline.scene->indexOf(item),
                                     QString::number(m_random() % 1000), Qt::EditRole);
    }
    void forget(const Item* item)
    {
        m_open.erase(item);
        for (const auto& child : item->children)
            forget(child.get());
    }
    // While a filter opens what it finds, the user's own doing would not be kept.
    void toggle()
    {
        const Item* item = any();
        if (filters() || item == m_outline.scene->root())
            return;
        const bool open = m_open.erase(item) == 0;
        if (open)
            m_open.insert(item);
        m_outline.flat.setExpanded(m_outline.scene->indexOf(item), open);
    }
    void select()
    {
        Item* parent = any();
        const int size = int(parent->children.size());
        if (size == 0)
            return;
        const int row = pick(size);
        const QModelIndex index = m_outline.scene->indexOf(parent);
        m_outline.selection->select(
            QItemSelection(m_outline.scene->index(row, 0, index),
                           m_outline.scene->index(row + pick(size - row), 0, index)),
            pick(2) == 0 ? QItemSelectionModel::Toggle : QItemSelectionModel::ClearAndSelect);
    }

    std::mt19937 m_random;
    Outline m_outline;
    QAbstractItemModelTester m_tester;
    std::set<const Item*> m_open;
};

class FlatTreeRandomArrangementTest : public ::testing::TestWithParam<unsigned>
{};

TEST_P(FlatTreeRandomArrangementTest, ShowsWhatAPlainWalkFinds)
{
    RandomArrangement arrangement(GetParam());
    for (int step = 0; step < 200; ++step) {
        arrangement.step();
        ASSERT_NO_FATAL_FAILURE(arrangement.check()) << "step " << step;
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, FlatTreeRandomArrangementTest, ::testing::Range(1u, 9u));

} // namespace
