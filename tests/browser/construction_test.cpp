#include "browser_fixture.h"

#include <host/core/stack_tracker.h>

#include <QCoreApplication>
#include <QMetaMethod>
#include <QMetaProperty>

using test::BrowserTest;

namespace {

class NotifiesAtOnce : public test::LoggedAssetSelection
{
public:
    vex::Connection connectSelectionChanged(SelectionChangedCallback callback) override
    {
        callback(vex::Connection(), SelectionChange{objects(), objects()});
        return LoggedAssetSelection::connectSelectionChanged(std::move(callback));
    }
};

} // namespace

TEST_F(BrowserTest, constructionReplacesTheEditorsSelection)
{
    auto object = std::make_shared<test::NamedObject>("outside");
    selection.setSelection({kyr::PersistentObject(kyr::ReflectedObject(object))}, false);
    selection.takeLog();
    create("a\nb");
    EXPECT_EQ("set() ", selection.takeLog());
    EXPECT_TRUE(selection.objects().empty());
    EXPECT_EQ(model.get(), browser->model());
    EXPECT_EQ(model.get(), browser->selectionModel()->model());
}

TEST_F(BrowserTest, aSelectionThatNotifiesDuringConstructionIsReplacedAllTheSame)
{
    create("a\nb");
    NotifiesAtOnce eager;
    eager.setSelection(objects({"b"}), false);
    SceneBrowserData second(assetModel.get(), &eager, nullptr);
    EXPECT_EQ("set(b) set() ", eager.takeLog());
}

TEST_F(BrowserTest, worksWithoutEitherSide)
{
    SceneBrowserData bare(nullptr, nullptr, nullptr);
    EXPECT_EQ(nullptr, bare.model());
    EXPECT_EQ(nullptr, bare.selectionModel());
    EXPECT_EQ(nullptr, bare.assetSelection());
    EXPECT_FALSE(bare.checkExpandable());

    SceneBrowserData withoutModel(nullptr, &selection, nullptr);
    selection.takeLog();
    withoutModel.syncHover({});
    withoutModel.onDoubleClicked({});
    withoutModel.selectAll();
    EXPECT_EQ("", selection.takeLog());
    withoutModel.resetHover();
    EXPECT_EQ("hover() ", selection.takeLog());

    create("a\n  b");
    SceneBrowserData withoutSelection(assetModel.get(), nullptr, nullptr);
    withoutSelection.selectAll();
    EXPECT_EQ("b a", test::names(withoutSelection.selectionModel()->selection()));
    withoutSelection.syncHover(model->find("a"));
    withoutSelection.resetHover();
    model->resetTo("c");
    QCoreApplication::processEvents();
    EXPECT_FALSE(withoutSelection.selectionModel()->hasSelection());

    test::TreeAssetModel empty(nullptr);
    SceneBrowserData withoutItemModel(&empty, &selection, nullptr);
    withoutItemModel.selectAll();
    withoutItemModel.syncHover(model->find("a"));
    EXPECT_NE(nullptr, withoutItemModel.selectionModel());
    EXPECT_FALSE(withoutItemModel.checkExpandable());
}

TEST_F(BrowserTest, nothingReachesABrowserThatIsGone)
{
    create("a\nb");
    model->resetTo("a\nb");
    browser.reset();
    QCoreApplication::processEvents();
    selection.setSelection(objects({"a"}), false);
    selection.setHoveredObjects(objects({"b"}));
    EXPECT_EQ("", assetModel->hoverLog());
    EXPECT_TRUE(Zar::StackTracker::entries().empty());
}

TEST(SceneBrowserDataMetaObject, offersThePanelItsInterfaceInOrder)
{
    const QMetaObject& meta = SceneBrowserData::staticMetaObject;
    std::string properties;
    for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i) {
        const QMetaProperty property = meta.property(i);
        properties += std::string(property.name()) + (property.isConstant()        ? "! "
                                                      : property.hasNotifySignal() ? "~ "
                                                                                   : "? ");
        EXPECT_FALSE(property.isWritable()) << property.name();
    }
    EXPECT_EQ("model! selectionModel! headerPanel~ footerPanel~ selectableData~ filterData~ "
              "filterPredicate~ columnsModel~ checkableColumnsModel! selectedColumnsModel! "
              "assetSelection! ",
              properties);

    std::string methods;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
        methods += meta.method(i).methodSignature().toStdString() + " ";
    EXPECT_EQ("headerPanelChanged() footerPanelChanged() columnsModelChanged() "
              "selectableDataChanged() filterDataChanged() filterPredicateChanged() "
              "expandAllRequested() collapseAllRequested() onShowItem(QModelIndex) "
              "clearSelectedColumns() removeFromSelectedColumns(QModelIndexList) "
              "setColumnsFilter(QString) showColumnsDialog() syncHover(QModelIndex) resetHover() "
              "onDoubleClicked(QModelIndex) selectAll() requestMenu() ",
              methods);
    const int removal = meta.indexOfMethod("removeFromSelectedColumns(QModelIndexList)");
    EXPECT_EQ(qMetaTypeId<QModelIndexList>(), meta.method(removal).parameterType(0));
    EXPECT_EQ(QMetaType::type("IAssetSelection*"), qMetaTypeId<IAssetSelection*>());
}
