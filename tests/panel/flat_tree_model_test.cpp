#include "fake_scene.h"

#include <panel/rows/flat_tree_model.h>

#include <QAbstractItemModelTester>
#include <QItemSelectionModel>
#include <QSignalSpy>

#include <gtest/gtest.h>

#include <random>
#include <set>

namespace {

using kyr::panel::FlatTreeModel;
using Items = std::set<const FakeScene::Item*>;

/// What the list should show: a plain walk over the source and a set of expanded items.
QStringList naiveRows(const FakeScene& model, const Items& expanded,
                      const QItemSelectionModel& selection, const QModelIndex& parent = {},
                      int depth = 0)
{
    QStringList rows;
    for (int row = 0; row < model.rowCount(parent); ++row) {
        const QModelIndex index = model.index(row, 0, parent);
        const bool open = expanded.count(model.item(index)) != 0;
        rows += QString(depth, QLatin1Char('.')) + (open ? QStringLiteral("-") : QString()) +
                model.item(index)->name +
                (selection.isSelected(index) ? QStringLiteral("*") : QString());
        if (open)
            rows += naiveRows(model, expanded, selection, index, depth + 1);
    }
    return rows;
}

QStringList shownRows(const FlatTreeModel& flat)
{
    QStringList rows;
    for (int row = 0; row < flat.count(); ++row) {
        const QModelIndex index = flat.index(row);
        rows +=
            QString(index.data(FlatTreeModel::DepthRole).toInt(), QLatin1Char('.')) +
            (index.data(FlatTreeModel::ExpandedRole).toBool() ? QStringLiteral("-") : QString()) +
            index.data().toString() +
            (index.data(FlatTreeModel::SelectedRole).toBool() ? QStringLiteral("*") : QString());
    }
    return rows;
}

std::string text(const QStringList& rows)
{
    return rows.join(QLatin1Char('\n')).toStdString();
}

/// Keeps a copy of the rows up to date by the signals alone, as a view does.
class RowMirror
{
public:
    explicit RowMirror(const FlatTreeModel& flat) : m_flat(flat), m_rows(shownRows(flat))
    {
        const auto reread = [this] { m_rows = shownRows(m_flat); };
        QObject::connect(&flat, &FlatTreeModel::modelReset, &m_context, reread);
        QObject::connect(&flat, &FlatTreeModel::layoutChanged, &m_context, reread);
        QObject::connect(&flat, &FlatTreeModel::rowsInserted, &m_context,
                         [this](const QModelIndex&, int first, int last) {
                             const QStringList now = shownRows(m_flat);
                             for (int row = first; row <= last; ++row)
                                 m_rows.insert(row, now.value(row));
                         });
        QObject::connect(&flat, &FlatTreeModel::rowsRemoved, &m_context,
                         [this](const QModelIndex&, int first, int last) {
                             m_rows.erase(m_rows.begin() + first, m_rows.begin() + last + 1);
                         });
        QObject::connect(
            &flat, &FlatTreeModel::rowsMoved, &m_context,
            [this](const QModelIndex&, int first, int last, const QModelIndex&, int to) {
                const QStringList moved = m_rows.mid(first, last - first + 1);
                m_rows.erase(m_rows.begin() + first, m_rows.begin() + last + 1);
                int row = to > last ? to - moved.size() : to;
                for (const QString& text : moved)
                    m_rows.insert(row++, text);
            });
        QObject::connect(&flat, &FlatTreeModel::dataChanged, &m_context,
                         [this](const QModelIndex& first, const QModelIndex& last) {
                             const QStringList now = shownRows(m_flat);
                             for (int row = first.row(); row <= last.row(); ++row)
                                 m_rows[row] = now.value(row);
                         });
    }

    QStringList rows() const { return m_rows; }

private:
    const FlatTreeModel& m_flat;
    QStringList m_rows;
    QObject m_context;
};

class RandomChanges
{
public:
    RandomChanges(unsigned seed, bool selectionFirst) : m_random(seed)
    {
        if (selectionFirst)
            m_selection = std::make_unique<QItemSelectionModel>(&m_model);
        m_flat.setSourceModel(&m_model);
        if (!selectionFirst)
            m_selection = std::make_unique<QItemSelectionModel>(&m_model);
        m_flat.setSelectionModel(m_selection.get());
        m_tester = std::make_unique<QAbstractItemModelTester>(
            &m_flat, QAbstractItemModelTester::FailureReportingMode::Fatal);
        m_mirror = std::make_unique<RowMirror>(m_flat);
    }

    void step()
    {
        switch (pick(12)) {
        case 0:
        case 1:
        case 2:
            return insert();
        case 3:
            return remove();
        case 4:
        case 5:
            return move();
        case 6:
        case 7:
        case 8:
            return toggle();
        case 9:
            return select();
        case 10:
            return toggleBranch();
        default:
            return pick(6) == 0 ? rare() : select();
        }
    }

    void check() const
    {
        const QStringList expected = naiveRows(m_model, m_expanded, *m_selection);
        ASSERT_EQ(text(shownRows(m_flat)), text(expected)) << m_last;
        ASSERT_EQ(text(m_mirror->rows()), text(expected)) << m_last;
        for (int row = 0; row < m_flat.count(); ++row) {
            const QModelIndex index = m_flat.sourceIndex(row);
            ASSERT_EQ(m_flat.rowOf(index), row) << m_last;
            ASSERT_EQ(m_flat.parentRow(row), m_flat.rowOf(index.parent())) << m_last;
        }
    }

private:
    int pick(int bound) { return int(m_random() % unsigned(bound)); }

    std::vector<FakeScene::Item*> all()
    {
        std::vector<FakeScene::Item*> items{m_model.root()};
        for (std::size_t i = 0; i < items.size(); ++i) {
            for (const auto& child : items[i]->children)
                items.push_back(child.get());
        }
        return items;
    }
    FakeScene::Item* any()
    {
        const auto items = all();
        return items[std::size_t(pick(int(items.size())))];
    }
    bool isBelow(const FakeScene::Item* item, const FakeScene::Item* ancestor)
    {
        while (item && item != ancestor)
            item = item->parent;
        return item != nullptr;
    }
    void forget(const FakeScene::Item* item)
    {
        m_expanded.erase(item);
        for (const auto& child : item->children)
            forget(child.get());
    }

    void insert()
    {
        m_last = "insert";
        FakeScene::Item* parent = any();
        std::vector<std::unique_ptr<FakeScene::Item>> items;
        const int count = 1 + pick(3);
        // Rows that arrive unseen after Collapse All start collapsed, so only seen ones wish here.
        const bool seen =
            parent == m_model.root() || m_flat.isRowExpanded(m_flat.rowOf(m_model.indexOf(parent)));
        for (int i = 0; i < count; ++i) {
            auto item = std::make_unique<FakeScene::Item>();
            item->name = QString::number(m_random() % 1000);
            item->expanded = seen && pick(3) == 0;
            if (item->expanded)
                m_expanded.insert(item.get());
            if (pick(3) == 0) {
                auto child = std::make_unique<FakeScene::Item>();
                child->name = QStringLiteral("c%1").arg(m_random() % 1000);
                child->parent = item.get();
                item->children.push_back(std::move(child));
            }
            items.push_back(std::move(item));
        }
        m_model.insert(m_model.indexOf(parent), pick(int(parent->children.size()) + 1),
                       std::move(items));
    }

    void remove()
    {
        m_last = "remove";
        FakeScene::Item* parent = any();
        const int size = int(parent->children.size());
        if (size == 0)
            return;
        const int row = pick(size);
        const int count = 1 + pick(std::min(3, size - row));
        for (int i = row; i < row + count; ++i)
            forget(parent->children[std::size_t(i)].get());
        m_model.remove(m_model.indexOf(parent), row, count);
    }

    void move()
    {
        m_last = "move";
        FakeScene::Item* from = any();
        FakeScene::Item* to = any();
        const int size = int(from->children.size());
        if (size == 0)
            return;
        const int row = pick(size);
        const int count = 1 + pick(std::min(2, size - row));
        for (int i = row; i < row + count; ++i) {
            if (isBelow(to, from->children[std::size_t(i)].get()))
                return;
        }
        m_model.move(m_model.indexOf(from), row, count, m_model.indexOf(to),
                     pick(int(to->children.size()) + 1));
    }

    void toggle()
    {
        m_last = "toggle";
        FakeScene::Item* item = any();
        if (item == m_model.root())
            return;
        const bool expand = m_expanded.count(item) == 0;
        m_flat.setExpanded(m_model.indexOf(item), expand);
        if (expand)
            m_expanded.insert(item);
        else
            m_expanded.erase(item);
    }

    void toggleBranch()
    {
        m_last = "branch";
        FakeScene::Item* item = any();
        if (item == m_model.root())
            return;
        const bool expand = pick(2) == 0;
        m_flat.setBranchExpanded(m_model.indexOf(item), expand);
        for (const FakeScene::Item* below : all()) {
            if (!isBelow(below, item))
                continue;
            if (!expand)
                m_expanded.erase(below);
            else if (!below->children.empty())
                m_expanded.insert(below);
        }
    }

    void select()
    {
        m_last = "select";
        FakeScene::Item* parent = any();
        const int size = int(parent->children.size());
        if (size == 0)
            return;
        const int row = pick(size);
        const QModelIndex index = m_model.indexOf(parent);
        const QItemSelection range(m_model.index(row, 0, index),
                                   m_model.index(row + pick(size - row), 0, index));
        const QItemSelectionModel::SelectionFlag flags[]{
            QItemSelectionModel::Select, QItemSelectionModel::Toggle, QItemSelectionModel::Deselect,
            QItemSelectionModel::ClearAndSelect};
        m_selection->select(range, flags[pick(4)]);
    }

    void rare()
    {
        switch (pick(3)) {
        case 0:
            m_last = "sort";
            m_model.sortByName();
            break;
        case 1:
            m_last = "expand all";
            m_flat.expandAll();
            for (const FakeScene::Item* item : all()) {
                if (!item->children.empty())
                    m_expanded.insert(item);
                else
                    m_expanded.erase(item);
            }
            break;
        default:
            m_last = "collapse all";
            m_flat.collapseAll();
            m_expanded.clear();
        }
    }

    FakeScene m_model;
    std::unique_ptr<QItemSelectionModel> m_selection;
    FlatTreeModel m_flat;
    std::unique_ptr<QAbstractItemModelTester> m_tester;
    std::unique_ptr<RowMirror> m_mirror;
    Items m_expanded;
    std::mt19937 m_random;
    const char* m_last = "start";
};

class FlatTreeModelRandomTest : public ::testing::TestWithParam<unsigned>
{};

TEST_P(FlatTreeModelRandomTest, FollowsItsSourceLikeANaiveWalk)
{
    RandomChanges changes(GetParam(), GetParam() % 2 == 0);
    for (int step = 0; step < 400; ++step) {
        changes.step();
        ASSERT_NO_FATAL_FAILURE(changes.check()) << "step " << step;
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, FlatTreeModelRandomTest, ::testing::Range(1u, 13u));

std::string rowsOf(const FlatTreeModel& flat)
{
    return shownRows(flat).join(QLatin1Char(' ')).toStdString();
}

TEST(FlatTreeModelTest, RowsStartAsTheSourceWishesUntilTheUserSaysOtherwise)
{
    const QString text = QStringLiteral("+a\n  +b\n    c\n  d\n    +e\n      f\n");
    const auto scene = FakeScene::fromText(text);
    FlatTreeModel flat;
    flat.setSourceModel(scene.get());
    EXPECT_EQ(rowsOf(flat), "-a .-b ..c .d");
    flat.setExpanded(scene->find(QStringLiteral("d")), true);
    EXPECT_EQ(rowsOf(flat), "-a .-b ..c .-d ..-e ...f");
    flat.collapseAll();
    flat.setExpanded(scene->find(QStringLiteral("a")), true);
    EXPECT_EQ(rowsOf(flat), "-a .b .d");
    scene->reset(FakeScene::fromText(text));
    EXPECT_EQ(rowsOf(flat), "-a .-b ..c .d");
}

TEST(FlatTreeModelTest, RowsThatComeAfterCollapseAllOpenAsTheyWish)
{
    const auto model = FakeScene::fromText(QStringLiteral("House\n  +Wall\n    Window\n"));
    FlatTreeModel flat;
    flat.setSourceModel(model.get());
    flat.collapseAll();
    auto roof = FakeScene::fromText(QStringLiteral("+Roof\n  Tile\n"))->takeRows();
    model->insert(model->find(QStringLiteral("House")), 1, std::move(roof));
    flat.setExpanded(model->find(QStringLiteral("House")), true);
    EXPECT_FALSE(flat.isRowExpanded(flat.rowOf(model->find(QStringLiteral("Wall")))));
    EXPECT_TRUE(flat.isRowExpanded(flat.rowOf(model->find(QStringLiteral("Roof")))));
}

TEST(FlatTreeModelTest, ALargeBranchOpensInOneResetAndKeepsItsMarks)
{
    const auto scene = FakeScene::fromText(QStringLiteral("all\nother\n"));
    const QModelIndex all = scene->find(QStringLiteral("all"));
    auto groups = FakeScene::wide(100, 2)->takeRows();
    scene->insert(all, 0, std::move(groups));
    auto* selection = new QItemSelectionModel(scene.get());
    FlatTreeModel flat;
    flat.setSourceModel(scene.get());
    flat.setSelectionModel(selection);
    for (int group = 0; group < 100; ++group)
        selection->select(scene->index(1, 0, scene->index(group, 0, all)),
                          QItemSelectionModel::Select);
    QSignalSpy resets(&flat, &FlatTreeModel::modelReset);
    QSignalSpy insertions(&flat, &FlatTreeModel::rowsInserted);
    flat.setBranchExpanded(all, true);
    EXPECT_EQ(resets.size(), 1);
    EXPECT_EQ(insertions.size(), 0);
    ASSERT_EQ(flat.count(), 302);
    for (int group = 0; group < 100; ++group) {
        EXPECT_TRUE(flat.isRowExpanded(1 + 3 * group));
        EXPECT_FALSE(flat.isRowSelected(2 + 3 * group));
        EXPECT_TRUE(flat.isRowSelected(3 + 3 * group));
    }
    EXPECT_EQ(flat.sourceIndex(301).data().toString(), QStringLiteral("other"));
    selection->clear();
    EXPECT_FALSE(flat.isRowSelected(3));
}

/// Has one child below every row, once it was asked for.
class LazyScene : public FakeScene
{
public:
    bool canFetchMore(const QModelIndex& parent) const override
    {
        return parent.isValid() && item(parent)->children.empty();
    }
    bool hasChildren(const QModelIndex&) const override { return true; }
    void fetchMore(const QModelIndex& parent) override
    {
        std::vector<std::unique_ptr<Item>> rows(1);
        rows[0] = std::make_unique<Item>();
        rows[0]->name = item(parent)->name + QLatin1Char('+');
        insert(parent, 0, std::move(rows));
    }
};

TEST(FlatTreeModelTest, OpeningARowFetchesWhatIsBelowIt)
{
    LazyScene scene;
    std::vector<std::unique_ptr<FakeScene::Item>> rows(1);
    rows[0] = std::make_unique<FakeScene::Item>();
    rows[0]->name = QStringLiteral("a");
    scene.insert({}, 0, std::move(rows));
    FlatTreeModel flat;
    flat.setSourceModel(&scene);
    flat.setExpanded(flat.sourceIndex(0), true);
    EXPECT_EQ(rowsOf(flat), "-a .a+");
    flat.setBranchExpanded(flat.sourceIndex(1), true);
    EXPECT_EQ(rowsOf(flat), "-a .-a+ ..a++") << "fetches once, an endless source must not hang";
}

} // namespace
