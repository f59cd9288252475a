#include <host/ui/text_predicate.h>
#include <panel/arrangement/arranged_tree_model.h>

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
    void arrange(const char* text, Arrangement arrangement = Arrangement::Hierarchy,
                 ArrangedTreeModel::Sorting sorting = {})
    {
        predicate.setText(text);
        tester.reset();
        arranged = std::make_unique<ArrangedTreeModel>(
            &source, ArrangedTreeModel::Settings{&predicate, arrangement, sorting});
        EXPECT_TRUE(arranged->work());
        tester = std::make_unique<QAbstractItemModelTester>(
            arranged.get(), QAbstractItemModelTester::FailureReportingMode::Fatal);
    }

    QStandardItemModel source;
    TextPredicate predicate;
    std::unique_ptr<ArrangedTreeModel> arranged;
    std::unique_ptr<QAbstractItemModelTester> tester;
};

} // namespace

TEST_F(ArrangedTreeTest, matchesKeepTheirAncestors)
{
    const std::pair<const char*, const char*> rows[] = {
        {"lamp", "street.(lamp 10 lamp 9 house.(door lamp ) ) "},
        {"door", "street.(house.(door lamp ) ) "},
        {"street", "street "},
        {"type:camera", "Camera "},
        {"nothing", ""},
        {"", "street(lamp 10 lamp 9 house(door lamp ) ) Camera "},
    };
    for (const auto& [text, expected] : rows) {
        arrange(text);
        EXPECT_EQ(expected, shown(*arranged)) << text;
    }
}

TEST_F(ArrangedTreeTest, indexesMapBothWaysAndHiddenOnesToNothing)
{
    arrange("door");
    const QModelIndex door = arranged->mapFromSource(sourceRow("door lamp"));
    EXPECT_EQ("door lamp", nameOf(door));
    EXPECT_EQ(sourceRow("door lamp"), arranged->mapToSource(door));
    EXPECT_FALSE(arranged->mapFromSource(sourceRow("Camera")).isValid());
}

TEST_F(ArrangedTreeTest, flattensAndGroups)
{
    arrange("", Arrangement::Flat);
    EXPECT_EQ("street lamp 10 lamp 9 house door lamp Camera ", shown(*arranged));
    arrange("", Arrangement::ByType);
    EXPECT_EQ("Camera(Camera ) Group(street house ) Light(lamp 10 lamp 9 door lamp ) ",
              shown(*arranged));
    const QModelIndex group = arranged->index(2, 0);
    EXPECT_FALSE(arranged->mapToSource(group).isValid());
    EXPECT_EQ("light", group.data(typeRole));
    EXPECT_EQ(Qt::ItemFlags(Qt::ItemIsEnabled), group.flags());
    arrange("door", Arrangement::ByType);
    EXPECT_EQ("Light(door lamp ) ", shown(*arranged));
}

TEST_F(ArrangedTreeTest, sortingIsStableAndFollowsTheData)
{
    arrange("", Arrangement::Hierarchy, {Qt::DisplayRole, Qt::AscendingOrder});
    EXPECT_EQ("Camera street(house(door lamp ) lamp 9 lamp 10 ) ", shown(*arranged));
    arrange("", Arrangement::Hierarchy, {weightRole, Qt::DescendingOrder});
    EXPECT_EQ("street(lamp 10 house(door lamp ) lamp 9 ) Camera ", shown(*arranged));
    source.setData(sourceRow("lamp 9"), 10, weightRole);
    EXPECT_EQ("street(lamp 9 lamp 10 house(door lamp ) ) Camera ", shown(*arranged));
}

TEST_F(ArrangedTreeTest, changedRowsMoveInAndOutOfTheFilter)
{
    arrange("lamp");
    int resets = 0;
    QObject::connect(arranged.get(), &QAbstractItemModel::modelReset, [&] { ++resets; });
    source.setData(sourceRow("Camera"), "Camera lamp", Qt::DisplayRole);
    EXPECT_EQ("street.(lamp 10 lamp 9 house.(door lamp ) ) Camera lamp ", shown(*arranged));
    source.setData(sourceRow("door lamp"), "door", Qt::DisplayRole);
    EXPECT_EQ("street.(lamp 10 lamp 9 ) Camera lamp ", shown(*arranged));
    source.removeRow(0);
    EXPECT_EQ("Camera lamp ", shown(*arranged));
    EXPECT_EQ(0, resets);
}

TEST_F(ArrangedTreeTest, manyScatteredChangesComeAsOneReset)
{
    arrange("", Arrangement::Flat, {Qt::DisplayRole, Qt::AscendingOrder});
    int signalled = 0;
    QObject::connect(arranged.get(), &QAbstractItemModel::modelReset, [&] { ++signalled; });
    QObject::connect(arranged.get(), &QAbstractItemModel::rowsInserted, [&] { ++signalled; });
    QList<QStandardItem*> rows;
    for (int row = 0; row < 300; ++row)
        rows.append(new QStandardItem(QString::number(row * 10)));
    source.invisibleRootItem()->insertRows(1, rows);
    EXPECT_EQ(1, signalled) << "neighbours";
    rows.clear();
    for (int row = 0; row < 300; ++row)
        rows.append(new QStandardItem(QString::number(row * 10 + 5)));
    source.invisibleRootItem()->insertRows(1, rows);
    EXPECT_EQ(2, signalled) << "each between two others";
    EXPECT_EQ("10", nameOf(arranged->index(2, 0)));
    EXPECT_EQ(606, arranged->rowCount());
}

TEST_F(ArrangedTreeTest, changesWhileItIsReadCount)
{
    for (int row = 0; row < 100; ++row)
        add(nullptr, "row", "mesh", row);
    predicate.setText("lamp");
    arranged = std::make_unique<ArrangedTreeModel>(
        &source, ArrangedTreeModel::Settings{&predicate, Arrangement::Hierarchy, {}});
    EXPECT_FALSE(arranged->work(QDeadlineTimer(0)));
    EXPECT_EQ(0, arranged->rowCount());
    source.setData(sourceRow("house"), "lampshade", Qt::DisplayRole);
    source.setData(sourceRow("door lamp"), "door", Qt::DisplayRole);
    add(nullptr, "last lamp", "light", 1);
    EXPECT_FALSE(arranged->work(QDeadlineTimer(0)));
    source.setData(sourceRow("lamp 9"), "nine", Qt::DisplayRole);
    EXPECT_TRUE(arranged->work());
    EXPECT_EQ("street.(lamp 10 lampshade ) last lamp ", shown(*arranged));
}
