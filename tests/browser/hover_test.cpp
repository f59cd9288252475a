#include "browser_fixture.h"

using test::BrowserTest;
using test::names;

namespace {

struct ConvertibleToObject
{
    kyr::ReflectedObject object;
};

} // namespace

Q_DECLARE_METATYPE(ConvertibleToObject)

TEST_F(BrowserTest, theHoveredRowIsReportedOnEveryCall)
{
    create("a\nb");
    selection.takeLog();
    browser->syncHover(model->find("b"));
    browser->syncHover(model->find("b"));
    browser->syncHover({});
    browser->resetHover();
    browser->resetHover();
    EXPECT_EQ("hover(b) hover(b) hover() hover() ", selection.takeLog());
    EXPECT_EQ("+b -b", assetModel->hoverLog());
}

TEST_F(BrowserTest, rowsWithoutAnObjectReportAnInvalidOneAndConvertibleValuesConvert)
{
    create("a\nb\nc");
    QMetaType::registerConverter<ConvertibleToObject, kyr::ReflectedObject>(
        [](const ConvertibleToObject& value) { return value.object; });
    model->item(model->find("a"))->objectValue = {};
    model->item(model->find("b"))->objectValue =
        QVariant::fromValue(ConvertibleToObject{model->object("c")});
    selection.takeLog();
    browser->syncHover(model->find("a"));
    ASSERT_EQ(1u, selection.lastHovered.size());
    EXPECT_FALSE(selection.lastHovered[0].object().isValid());
    browser->syncHover(model->find("b"));
    EXPECT_EQ("hover() hover(c) ", selection.takeLog());
}

TEST_F(BrowserTest, hoveringWaitsForRowUpdatesToFinish)
{
    create("a\nb\nc");
    selection.takeLog();
    const auto hover = [this] { browser->syncHover(model->find("a")); };
    using Model = QAbstractItemModel;
    QObject::connect(model.get(), &Model::rowsAboutToBeInserted, browser.get(), hover);
    QObject::connect(model.get(), &Model::rowsAboutToBeRemoved, browser.get(), hover);
    model->insert({}, 3, test::TreeModel::named({"d"}));
    model->remove({}, 3, 1);
    EXPECT_EQ("", selection.takeLog());
    hover();
    EXPECT_EQ("hover(a) ", selection.takeLog());
}

TEST_F(BrowserTest, hoverMarksComeBeforeUnmarks)
{
    create("a\nb\nc");
    selection.setHoveredObjects(objects({"c"}));
    selection.setHoveredObjects(objects({"a", "b"}));
    EXPECT_EQ("+c +a +b -c", assetModel->hoverLog());

    SceneBrowserData withoutModel(nullptr, &selection, nullptr);
    selection.setHoveredObjects({});
    EXPECT_EQ("+c +a +b -c -a -b", assetModel->hoverLog());
}

TEST_F(BrowserTest, aDoubleClickActivatesThatVeryRow)
{
    create("a\n  b");
    browser->onDoubleClicked(model->find("b"));
    browser->onDoubleClicked({});
    EXPECT_EQ(QModelIndexList{model->find("b")}, assetModel->activated());
}
