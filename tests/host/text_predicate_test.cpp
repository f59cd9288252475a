#include <host/ui/text_predicate.h>
#include <support/tree_model.h>

#include <QIdentityProxyModel>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QTest>

#include <gtest/gtest.h>

#include <cmath>

using lumo::datamodels::proxy::TextPredicate;

namespace {

constexpr int typeRole = Qt::UserRole + 1;
constexpr int intensityRole = Qt::UserRole + 2;
constexpr int modifiedRole = Qt::UserRole + 3;

/// 0 "Street Lamp 1" with 1 "Bulb" and 2 "Post -1", then 3 "Main Camera", 4 "a+b", 5 "rig:hips".
class TextPredicateTest : public testing::Test
{
protected:
    TextPredicateTest()
    {
        model.setItemRoleNames({{Qt::DisplayRole, "display"},
                                {typeRole, "type"},
                                {intensityRole, "light.intensity"},
                                {modifiedRole, "modified"}});
        QStandardItem* lamp = add(model.invisibleRootItem(), "Street Lamp 1", "light", 0.5);
        add(lamp, "Bulb", "light", 3);
        add(lamp, "Post -1", "mesh", {});
        add(model.invisibleRootItem(), "Main Camera", "camera", {});
        add(model.invisibleRootItem(), "a+b", "group", {})->setData(true, modifiedRole);
        add(model.invisibleRootItem(), "rig:hips", "group", {});
        predicate.setModel(&model);
        predicate.setTitle(intensityRole, "Light Power");
    }
    QStandardItem* add(QStandardItem* parent, const char* name, const char* type,
                       const QVariant& intensity)
    {
        auto* item = new QStandardItem(QString::fromUtf8(name));
        item->setData(QString::fromUtf8(type), typeRole);
        item->setData(intensity, intensityRole);
        item->setData(false, modifiedRole);
        parent->appendRow(item);
        items.push_back(item);
        return item;
    }
    std::string accepted() const
    {
        std::string rows;
        for (std::size_t i = 0; i < items.size(); ++i) {
            if (predicate.accepts(items[i]->index()))
                rows += std::to_string(i);
        }
        return rows;
    }
    std::string accepted(const char* text)
    {
        predicate.setText(QString::fromUtf8(text));
        return accepted();
    }

    QStandardItemModel model;
    std::vector<QStandardItem*> items;
    TextPredicate predicate;
};

} // namespace

TEST_F(TextPredicateTest, everyTermHasToHoldAndOneOfThemForTheRowItself)
{
    const std::pair<const char*, const char*> rows[] = {
        {"", "012345"},
        {"   ", "012345"},
        {"LAMP", "0"},
        {"lamp street", "0"},
        {"lamp bulb", "1"},
        {"lamp type:light", "01"},
        {"street lamp type:mesh", "2"},
        {"type:light", "01"},
        {"type:", "012345"},
        {"\"p 1\"", "0"},
        {"a+b", "4"},
        {"rig:hips", "5"},
        {"nothing", ""},
        // One of several, and none of them.
        {"camera|a+b", "34"},
        {"bulb|type:camera", "13"},
        {"type:light|camera", "013"},
        {"-lamp", "345"},
        {"-type:light|camera", "245"},
        {"type:light -bulb", "0"},
        {"\"-1\"", "2"},
        // Properties.
        {"modified:", "4"},
        {"modified:no type:group", "5"},
        {"intensity>0.5", "1"},
        {"intensity>=0.5", "01"},
        {"light.intensity<1", "0"},
        {"intensity=3", "1"},
        {"INTENSITY!=3", "0"},
        {"intensity>", "01"},
        {"lightpower>1", "1"},
        {"\"light power\"<1|3", "0"},
        {"intensity>much", ""},
        {"name=\"main camera\"", "3"},
    };
    for (const auto& [text, expected] : rows) {
        EXPECT_EQ(expected, accepted(text)) << text;
        EXPECT_EQ("", predicate.error()) << text;
    }
    items[1]->setData(double(INFINITY), intensityRole);
    EXPECT_EQ("1", accepted("intensity>100"));
    EXPECT_EQ("0", accepted("lamp intensty>2")) << "the rest holds";
    EXPECT_EQ(predicate.error(), QStringLiteral("No property is called “intensty”"));
    predicate.setTitle(intensityRole, {});
    EXPECT_EQ("0", accepted("lamp \"light power\">2"));
    EXPECT_EQ(predicate.error(), QStringLiteral("No property is called “light power”"));
}

TEST_F(TextPredicateTest, expressionsMatchOrSayWhyNot)
{
    predicate.setRegularExpression(true);
    for (const auto& [text, rows] :
         {std::pair("^main", "3"), {"\\d$", "02"}, {"a+b", ""}, {"camera|post", "23"}}) {
        EXPECT_EQ(rows, accepted(text)) << text;
        EXPECT_EQ("", predicate.error()) << text;
    }
    EXPECT_EQ("012345", accepted("lamp("));
    EXPECT_FALSE(predicate.isActive());
    EXPECT_TRUE(predicate.error().endsWith("at character 6")) << predicate.error().toStdString();
}

TEST_F(TextPredicateTest, conditionsComeOnTopAndEveryChangeIsAnnounced)
{
    QSignalSpy changes(&predicate, &TextPredicate::changed);
    EXPECT_FALSE(predicate.isActive());
    predicate.setCondition("odd", [](const QModelIndex& row) { return row.row() % 2 == 1; });
    EXPECT_EQ("2", accepted("post"));
    predicate.setText("post");
    EXPECT_EQ("", accepted("lamp bulb"));
    predicate.setText("");
    EXPECT_TRUE(predicate.isActive());
    predicate.setCondition("odd", nullptr);
    predicate.setCondition("odd", nullptr);
    EXPECT_FALSE(predicate.isActive());
    EXPECT_EQ(5, changes.size());
}

TEST_F(TextPredicateTest, namesAboveAreFollowed)
{
    EXPECT_EQ("1", accepted("lamp bulb"));
    QSignalSpy changes(&predicate, &TextPredicate::changed);
    items[3]->setText("Lamp camera");
    items[1]->setData(true, modifiedRole);
    QCoreApplication::processEvents();
    EXPECT_EQ(changes.size(), 0) << "nothing was asked about them";
    items[0]->setText("Street light");
    EXPECT_EQ("", accepted());
    EXPECT_TRUE(QTest::qWaitFor([&] { return changes.size() == 1; }));
    // Rows that come shift others to places that were known.
    items[0]->setText("Lamp");
    EXPECT_EQ("1", accepted());
    model.insertRow(0, new QStandardItem("Box"));
    EXPECT_EQ("1", accepted());
    model.item(0)->appendRow(items[0]->takeRow(0));
    EXPECT_EQ("", accepted());
    test::TreeModel moving("Lamp\n  Post\n    Bulb\nBox");
    predicate.setModel(&moving);
    EXPECT_TRUE(predicate.accepts(moving.find("Bulb")));
    moving.move(moving.find("Lamp"), 0, 1, moving.find("Box"), 0);
    EXPECT_FALSE(predicate.accepts(moving.find("Bulb")));
}

TEST_F(TextPredicateTest, rowsOfADeepChainAreReadOnce)
{
    constexpr int depth = 2000;
    QStandardItem* last = items[0];
    for (int i = 0; i < depth; ++i)
        last = add(last, "link", "group", {});
    struct Counting : QIdentityProxyModel
    {
        QVariant data(const QModelIndex& row, int role) const override
        {
            ++reads;
            return QIdentityProxyModel::data(row, role);
        }
        mutable int reads = 0;
    } counting;
    counting.setSourceModel(&model);
    predicate.setModel(&counting);
    predicate.setText("street type:group");
    int found = 0;
    for (QModelIndex row = counting.index(0, 0); row.isValid();
         row = counting.index(counting.rowCount(row) - 1, 0, row))
        found += predicate.accepts(row);
    EXPECT_EQ(found, depth);
    EXPECT_LT(counting.reads, 4 * depth);
}
