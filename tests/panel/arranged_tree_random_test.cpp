// An arranged tree that followed random changes of its source against one that is made anew.

#include "fake_scene.h"

#include <host/ui/text_predicate.h>
#include <panel/arrangement/arranged_tree_model.h>

#include <QAbstractItemModelTester>

#include <gtest/gtest.h>

#include <random>

namespace {

using kyr::panel::ArrangedTreeModel;
using lumo::datamodels::proxy::TextPredicate;
using Arrangement = ArrangedTreeModel::Arrangement;
using Item = FakeScene::Item;

QString shown(const QAbstractItemModel& model, const QModelIndex& parent = {})
{
    QStringList rows;
    for (int row = 0; row < model.rowCount(parent); ++row) {
        const QModelIndex index = model.index(row, 0, parent);
        const QModelIndex source = ArrangedTreeModel::originOf(index);
        rows += index.data().toString() + QString::number(quintptr(source.internalPointer()), 16) +
                (index.data(ArrangedTreeModel::MatchesRole).toBool() ? "" : "~") + '(' +
                shown(model, index) + ')';
    }
    return rows.join(' ');
}

/// A scene that changes at random under an arranged tree.
class RandomChanges
{
public:
    RandomChanges(unsigned seed, const ArrangedTreeModel::Settings& settings)
        : m_random(seed)
        , m_scene(FakeScene::fromText(QStringLiteral("1\n  2\n    3\n4\n")))
        , m_settings(settings)
        , m_arranged(m_scene.get(), settings)
        , m_tester(&m_arranged, QAbstractItemModelTester::FailureReportingMode::Fatal)
    {
        m_arranged.work();
        QObject::connect(&m_arranged, &QAbstractItemModel::modelReset, [this] { ++m_resets; });
    }

    void step()
    {
        switch (pick(5)) {
        case 0:
            return insert();
        case 1:
            return remove();
        case 2:
            return move();
        case 3:
            return retype();
        default:
            return rename();
        }
    }
    void check() const
    {
        ArrangedTreeModel anew(m_scene.get(), m_settings);
        anew.work();
        ASSERT_EQ(shown(m_arranged).toStdString(), shown(anew).toStdString());
        ASSERT_EQ(m_resets, 0);
    }

private:
    int pick(int bound) { return int(m_random() % unsigned(bound)); }
    QString anyName() { return QString::number(pick(30)); }
    QString anyType()
    {
        return QStringList{QStringLiteral("mesh"), QStringLiteral("light"), {}}[pick(3)];
    }
    Item* any()
    {
        std::vector<Item*> items{m_scene->root()};
        for (std::size_t i = 0; i < items.size(); ++i) {
            for (const auto& child : items[i]->children)
                items.push_back(child.get());
        }
        return items[std::size_t(pick(int(items.size())))];
    }
    std::unique_ptr<Item> branch(int depth)
    {
        auto item = std::make_unique<Item>();
        item->name = anyName();
        item->type = anyType();
        for (int child = pick(4); depth > 0 && child > 0; --child) {
            item->children.push_back(branch(depth - 1));
            item->children.back()->parent = item.get();
            item->children.back()->row = int(item->children.size()) - 1;
        }
        return item;
    }

    void insert()
    {
        Item* parent = any();
        std::vector<std::unique_ptr<Item>> items;
        for (int i = 0; i <= pick(3); ++i)
            items.push_back(branch(2));
        m_scene->insert(m_scene->indexOf(parent), pick(int(parent->children.size()) + 1),
                        std::move(items));
    }
    void remove()
    {
        Item* parent = any();
        if (const int size = int(parent->children.size()); size > 0 && parent != m_scene->root()) {
            const int row = pick(size);
            m_scene->remove(m_scene->indexOf(parent), row, 1 + pick(size - row));
        }
    }
    void move()
    {
        Item* from = any();
        Item* to = any();
        const int size = int(from->children.size());
        if (size == 0)
            return;
        const int row = pick(size);
        const int count = 1 + pick(std::min(3, size - row));
        m_scene->move(m_scene->indexOf(from), row, count, m_scene->indexOf(to),
                      pick(int(to->children.size()) + 1));
    }
    void rename()
    {
        if (Item* item = any(); item != m_scene->root())
            m_scene->setData(m_scene->indexOf(item), anyName(), Qt::EditRole);
    }
    void retype()
    {
        Item* item = any();
        if (item == m_scene->root())
            return;
        item->type = anyType();
        const QModelIndex index = m_scene->indexOf(item);
        Q_EMIT m_scene->dataChanged(index, index, {FakeScene::TypeRole});
    }

    std::mt19937 m_random;
    std::unique_ptr<FakeScene> m_scene;
    const ArrangedTreeModel::Settings m_settings;
    ArrangedTreeModel m_arranged;
    QAbstractItemModelTester m_tester;
    int m_resets = 0;
};

struct Setting
{
    const char* text;
    Arrangement arrangement;
    int sortRole;
};

class ArrangedTreeRandomTest : public ::testing::TestWithParam<Setting>
{};

TEST_P(ArrangedTreeRandomTest, followsItsSourceRowByRow)
{
    TextPredicate predicate;
    predicate.setText(QLatin1String(GetParam().text));
    for (unsigned seed = 1; seed <= 4; ++seed) {
        RandomChanges changes(
            seed, {&predicate, GetParam().arrangement, {GetParam().sortRole, Qt::AscendingOrder}});
        for (int step = 0; step < 100; ++step) {
            changes.step();
            ASSERT_NO_FATAL_FAILURE(changes.check()) << "seed " << seed << " step " << step;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Settings, ArrangedTreeRandomTest,
                         ::testing::Values(Setting{"1", Arrangement::Hierarchy, -1},
                                           Setting{"1", Arrangement::Hierarchy, Qt::DisplayRole},
                                           Setting{"", Arrangement::Hierarchy, Qt::DisplayRole},
                                           Setting{"", Arrangement::Flat, -1},
                                           Setting{"2", Arrangement::Flat, Qt::DisplayRole},
                                           Setting{"", Arrangement::ByType, -1},
                                           Setting{"1", Arrangement::ByType, Qt::DisplayRole}));

} // namespace
