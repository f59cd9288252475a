#include <host/ui/text_predicate.h>
#include <panel/arranged_tree_model.h>

#include <QAbstractItemModelTester>
#include <QCoreApplication>
#include <QStandardItemModel>

#include <gtest/gtest.h>

#include <random>

using kyr::panel::ArrangedTreeModel;
using lumo::datamodels::proxy::TextPredicate;
using Arrangement = ArrangedTreeModel::Arrangement;

namespace {

constexpr int typeRole = Qt::UserRole + 1;
constexpr int weightRole = Qt::UserRole + 2;

std::string nameOf(const QModelIndex& index)
{
    return index.data().toString().toStdString();
}

/// Every row with its children in brackets; a dot marks rows that only lead to matches.
std::string shown(const QAbstractItemModel& model, const QModelIndex& parent = {})
{
    std::string text;
    for (int row = 0; row < model.rowCount(parent); ++row) {
        const QModelIndex index = model.index(row, 0, parent);
        text += nameOf(index) + (index.data(ArrangedTreeModel::MatchesRole).toBool() ? "" : ".");
        const std::string below = shown(model, index);
        text += below.empty() ? " " : "(" + below + ") ";
    }
    return text;
}

class ArrangedTreeTest : public testing::Test
{
protected:
    ArrangedTreeTest()
    {
        source.setItemRoleNames(
            {{Qt::DisplayRole, "display"}, {typeRole, "type"}, {weightRole, "weight"}});
        QStandardItem* street = add(nullptr, "street", "group", 5);
        add(street, "lamp 10", "light", 3);
        add(street, "lamp 9", "light", 1);
        QStandardItem* house = add(street, "house", "group", 2);
        add(house, "door lamp", "light", 2);
        add(nullptr, "Camera", "camera", 5);
        arranged.setSourceModel(&source);
        arranged.setPredicate(&predicate);
    }

    QStandardItem* add(QStandardItem* parent, const QString& name, const char* type, int weight)
    {
        auto item = std::make_unique<QStandardItem>(name);
        item->setData(type, typeRole);
        item->setData(weight, weightRole);
        QStandardItem* added = item.get();
        (parent ? parent : source.invisibleRootItem())->appendRow(item.release());
        return added;
    }
    QModelIndex sourceRow(const char* name) const
    {
        return source
            .match(source.index(0, 0), Qt::DisplayRole, name, 1,
                   Qt::MatchExactly | Qt::MatchRecursive)
            .value(0);
    }

    QStandardItemModel source;
    TextPredicate predicate;
    ArrangedTreeModel arranged;
    QAbstractItemModelTester tester{&arranged,
                                    QAbstractItemModelTester::FailureReportingMode::Fatal};
};

constexpr const char* everything = "street(lamp 10 lamp 9 house(door lamp ) ) Camera ";

} // namespace

TEST_F(ArrangedTreeTest, matchesKeepTheirAncestors)
{
    EXPECT_EQ(everything, shown(arranged));
    const std::pair<const char*, const char*> rows[] = {
        {"lamp", "street.(lamp 10 lamp 9 house.(door lamp ) ) "},
        {"door", "street.(house.(door lamp ) ) "},
        {"street", "street "},
        {"type:camera", "Camera "},
        {"nothing", ""},
        {"", everything},
    };
    for (const auto& [text, expected] : rows) {
        predicate.setText(text);
        arranged.finish();
        EXPECT_EQ(expected, shown(arranged)) << text;
    }
}

TEST_F(ArrangedTreeTest, indexesMapBothWaysAndHiddenOnesToNothing)
{
    predicate.setText("door");
    arranged.finish();
    const QModelIndex door = arranged.mapFromSource(sourceRow("door lamp"));
    EXPECT_EQ("door lamp", nameOf(door));
    EXPECT_EQ(sourceRow("door lamp"), arranged.mapToSource(door));
    EXPECT_FALSE(arranged.mapFromSource(sourceRow("Camera")).isValid());
    EXPECT_EQ(1, arranged.matchCount());
}

TEST_F(ArrangedTreeTest, flattensAndGroups)
{
    arranged.setArrangement(Arrangement::Flat);
    EXPECT_EQ("street lamp 10 lamp 9 house door lamp Camera ", shown(arranged));
    arranged.setArrangement(Arrangement::ByType);
    EXPECT_EQ("Camera(Camera ) Group(street house ) Light(lamp 10 lamp 9 door lamp ) ",
              shown(arranged));
    const QModelIndex group = arranged.index(2, 0);
    EXPECT_FALSE(arranged.mapToSource(group).isValid());
    EXPECT_EQ("light", group.data(typeRole));
    EXPECT_EQ(Qt::ItemFlags(Qt::ItemIsEnabled), group.flags());
    predicate.setText("door");
    arranged.finish();
    EXPECT_EQ("Light(door lamp ) ", shown(arranged));
}

TEST_F(ArrangedTreeTest, sortingIsStableAndFollowsTheData)
{
    arranged.setSorting({Qt::DisplayRole, Qt::AscendingOrder});
    EXPECT_EQ("Camera street(house(door lamp ) lamp 9 lamp 10 ) ", shown(arranged));
    arranged.setSorting({weightRole, Qt::DescendingOrder});
    EXPECT_EQ("street(lamp 10 house(door lamp ) lamp 9 ) Camera ", shown(arranged));
    source.setData(sourceRow("lamp 9"), 10, weightRole);
    EXPECT_EQ("street(lamp 9 lamp 10 house(door lamp ) ) Camera ", shown(arranged));
    arranged.setSorting({});
    EXPECT_EQ(everything, shown(arranged));
}

TEST_F(ArrangedTreeTest, changedRowsMoveInAndOutOfTheFilter)
{
    predicate.setText("lamp");
    arranged.finish();
    int resets = 0;
    QObject::connect(&arranged, &QAbstractItemModel::modelReset, [&] { ++resets; });
    source.setData(sourceRow("lamp 9"), 7, weightRole);
    EXPECT_EQ(0, resets);
    source.setData(sourceRow("Camera"), "Camera lamp", Qt::DisplayRole);
    EXPECT_EQ("street.(lamp 10 lamp 9 house.(door lamp ) ) Camera lamp ", shown(arranged));
    source.removeRow(0);
    EXPECT_EQ("Camera lamp ", shown(arranged));
    predicate.setCondition("none", [](const QModelIndex&) { return false; });
    EXPECT_EQ("", shown(arranged));
}

TEST(ArrangedTreeModel, longWorkComesInSlicesAndTheOldRowsShowMeanwhile)
{
    QStandardItemModel source(20000, 1);
    TextPredicate predicate;
    ArrangedTreeModel arranged;
    arranged.setSourceModel(&source);
    arranged.setPredicate(&predicate);
    predicate.setCondition("slow", [](const QModelIndex& row) {
        for (volatile int turn = 0; turn < 2000; turn = turn + 1) {
        }
        return row.row() % 2 == 0;
    });
    ASSERT_TRUE(arranged.isWorking());
    EXPECT_EQ(20000, arranged.rowCount());
    while (arranged.isWorking())
        QCoreApplication::processEvents();
    EXPECT_EQ(10000, arranged.rowCount());
}
