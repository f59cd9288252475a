#include <host/ui/text_predicate.h>

#include <QStandardItemModel>

#include <gtest/gtest.h>

using lumo::datamodels::proxy::TextPredicate;

namespace {

constexpr int typeRole = Qt::UserRole + 1;

class TextPredicateTest : public testing::Test
{
protected:
    TextPredicateTest()
    {
        model.setItemRoleNames({{Qt::DisplayRole, "display"}, {typeRole, "type"}});
        for (const auto& [name, type] : {std::pair("Street Lamp 1", "light"),
                                         {"Lamp post", "mesh"},
                                         {"Main Camera", "camera"},
                                         {"a+b", "group"}}) {
            auto item = std::make_unique<QStandardItem>(name);
            item->setData(type, typeRole);
            model.appendRow(item.release());
        }
    }

    std::string accepted() const
    {
        std::string names;
        for (int row = 0; row < model.rowCount(); ++row) {
            if (predicate.accepts(model.index(row, 0)))
                names += std::to_string(row);
        }
        return names;
    }

    QStandardItemModel model;
    TextPredicate predicate;
};

} // namespace

TEST_F(TextPredicateTest, wordsMatchTogetherInAnyOrder)
{
    const std::pair<const char*, const char*> rows[] = {
        {"", "0123"},
        {"LAMP", "01"},
        {"lamp street", "0"},
        {"type:light", "0"},
        {"lamp type:mesh", "1"},
        {"type:Mesh lamp", "1"},
        {"\"p p\"", "1"},
        {"a+b", "3"},
        {"nothing", ""},
        {"   ", "0123"},
        {"type:", "0123"},
    };
    for (const auto& [text, names] : rows) {
        predicate.setText(text);
        EXPECT_EQ(names, accepted()) << text;
    }
}

TEST_F(TextPredicateTest, expressionsMatchOrSayWhyNot)
{
    predicate.setRegularExpression(true);
    for (const auto& [text, names] :
         {std::pair("^lamp", "1"), {"\\d$", "0"}, {"a+b", ""}, {"camera|post", "12"}}) {
        predicate.setText(text);
        EXPECT_EQ(names, accepted()) << text;
        EXPECT_EQ("", predicate.error()) << text;
    }
    predicate.setText("lamp(");
    EXPECT_EQ("0123", accepted());
    EXPECT_FALSE(predicate.isActive());
    EXPECT_TRUE(predicate.error().endsWith("at character 6")) << predicate.error().toStdString();
}

TEST_F(TextPredicateTest, conditionsComeOnTopAndEveryChangeIsAnnounced)
{
    int changes = 0;
    QObject::connect(&predicate, &TextPredicate::changed, [&] { ++changes; });
    EXPECT_FALSE(predicate.isActive());
    predicate.setCondition("type", [](const QModelIndex& row) { return row.row() % 2 == 1; });
    predicate.setText("lamp");
    predicate.setText("lamp");
    EXPECT_EQ("1", accepted());
    EXPECT_TRUE(predicate.isActive());
    predicate.setText("");
    EXPECT_TRUE(predicate.isActive());
    predicate.setCondition("type", nullptr);
    predicate.setCondition("type", nullptr);
    EXPECT_FALSE(predicate.isActive());
    EXPECT_EQ(4, changes);
}
