#include "browser_fixture.h"

#include <QAbstractItemModelTester>
#include <QAbstractProxyModel>
#include <QCoreApplication>
#include <QStandardItemModel>

using test::BrowserTest;

namespace {

constexpr int orderRole = Qt::UserRole + 1;

class ColumnsTest : public BrowserTest
{
protected:
    ColumnsTest()
    {
        create("a");
        columns.setItemRoleNames({{Qt::DisplayRole, "display"},
                                  {orderRole, "columnOrder"},
                                  {Qt::CheckStateRole, "otherName"}});
        auto* group = add(columns.invisibleRootItem(), "Transform", 0);
        add(group, "position", 3);
        add(group, "rotation", 10);
        add(columns.invisibleRootItem(), "type", 1);
        chosen.setModel(&columns);
    }

    static QStandardItem* add(QStandardItem* parent, const char* name, int order)
    {
        auto item = std::make_unique<QStandardItem>(name);
        item->setData(order, orderRole);
        parent->appendRow(item.get());
        return item.release();
    }

    QModelIndex checkable(const char* name) const
    {
        const QAbstractItemModel* list = browser->checkableColumnsModel();
        const QModelIndexList found = list->match(list->index(0, 0), Qt::DisplayRole, name, 1,
                                                  Qt::MatchExactly | Qt::MatchRecursive);
        return found.isEmpty() ? QModelIndex() : found.first();
    }
    void check(const char* name, bool on)
    {
        browser->checkableColumnsModel()->setData(checkable(name), on ? Qt::Checked : Qt::Unchecked,
                                                  Qt::CheckStateRole);
    }
    static std::string rows(const QAbstractItemModel* list, const QModelIndex& parent = {})
    {
        std::string text;
        for (int row = 0; row < list->rowCount(parent); ++row) {
            const QModelIndex index = list->index(row, 0, parent);
            text += index.data().toString().toStdString() + " " + rows(list, index);
        }
        return text;
    }
    std::string selectedColumns() const { return rows(browser->selectedColumnsModel()); }

    QStandardItemModel columns;
    QItemSelectionModel chosen;
};

} // namespace

TEST_F(ColumnsTest, commandsDoNothingBeforeThereAreColumns)
{
    EXPECT_EQ(nullptr, browser->columnsModel());
    EXPECT_EQ(nullptr, browser->checkableColumnsModel());
    EXPECT_EQ(nullptr, browser->selectedColumnsModel());
    browser->setColumnsFilter("x");
    browser->clearSelectedColumns();
    browser->removeFromSelectedColumns({columns.index(0, 0)});

    for (QAbstractItemModel* source :
         {static_cast<QAbstractItemModel*>(&columns), static_cast<QAbstractItemModel*>(nullptr)}) {
        browser->setColumnsModel(source, nullptr);
        browser->setColumnsFilter("x");
        browser->clearSelectedColumns();
        browser->removeFromSelectedColumns({QModelIndex()});
    }
}

TEST_F(ColumnsTest, checkingALeafChoosesItsColumnInColumnOrder)
{
    browser->setColumnsModel(&columns, &chosen);
    constexpr auto fatal = QAbstractItemModelTester::FailureReportingMode::Fatal;
    auto* filtered = qobject_cast<QAbstractProxyModel*>(browser->checkableColumnsModel());
    const QAbstractItemModelTester filterTester(filtered, fatal);
    const QAbstractItemModelTester checkTester(filtered->sourceModel(), fatal);
    const QAbstractItemModelTester selectedTester(browser->selectedColumnsModel(), fatal);
    check("rotation", true);
    check("type", true);
    check("position", true);
    EXPECT_EQ("type position rotation ", selectedColumns());
    EXPECT_TRUE(chosen.isSelected(columns.item(1)->index()));
    check("position", false);
    EXPECT_EQ("type rotation ", selectedColumns());

    EXPECT_FALSE(checkable("Transform").flags() & Qt::ItemIsUserCheckable);
    EXPECT_TRUE(checkable("type").flags() & Qt::ItemIsUserCheckable);
    const auto names = browser->checkableColumnsModel()->roleNames();
    EXPECT_EQ("checked", names.value(Qt::CheckStateRole));
    EXPECT_EQ("columnOrder", names.value(orderRole));
}

TEST_F(ColumnsTest, theFilterKeepsTheGroupsOfMatchingColumns)
{
    browser->setColumnsModel(&columns, &chosen);
    for (const auto& [filter, shown] : {std::pair("POS", "Transform position "),
                                        {"pos", "Transform position "},
                                        {"trans", "Transform position rotation "},
                                        {"type", "type "},
                                        {"nothing", ""},
                                        {"", "Transform position rotation type "}}) {
        browser->setColumnsFilter(filter);
        EXPECT_EQ(shown, rows(browser->checkableColumnsModel())) << filter;
    }
    browser->setColumnsFilter("place");
    columns.item(0)->setText("Placement");
    EXPECT_EQ("Placement position rotation ", rows(browser->checkableColumnsModel()));
}

TEST_F(ColumnsTest, removingAndClearingGoThroughTheSelection)
{
    browser->setColumnsModel(&columns, &chosen);
    for (const char* name : {"type", "position", "rotation"})
        check(name, true);
    int announced = 0;
    QObject::connect(&chosen, &QItemSelectionModel::selectionChanged, [&] { ++announced; });
    const QAbstractItemModel* selected = browser->selectedColumnsModel();
    browser->removeFromSelectedColumns({});
    EXPECT_EQ(0, announced);
    browser->removeFromSelectedColumns({selected->index(0, 0), selected->index(2, 0)});
    EXPECT_EQ(1, announced);
    EXPECT_EQ("position ", selectedColumns());
    browser->clearSelectedColumns();
    EXPECT_EQ("", selectedColumns());
    EXPECT_EQ(Qt::Unchecked, checkable("position").data(Qt::CheckStateRole).toInt());
}

TEST_F(ColumnsTest, anotherColumnsModelBringsNewProxies)
{
    browser->setColumnsModel(&columns, &chosen);
    const QAbstractItemModel* before = browser->selectedColumnsModel();
    QStandardItemModel others;
    others.appendRow(std::make_unique<QStandardItem>("b").release());
    others.appendRow(std::make_unique<QStandardItem>("a").release());
    QItemSelectionModel otherChosen(&others);
    otherChosen.select(QItemSelection(others.index(0, 0), others.index(1, 0)),
                       QItemSelectionModel::Select);
    int announced = 0;
    QObject::connect(browser.get(), &SceneBrowserData::columnsModelChanged, [&] { ++announced; });
    browser->setColumnsModel(&others, &otherChosen);
    EXPECT_EQ(1, announced);
    EXPECT_NE(before, browser->selectedColumnsModel());
    EXPECT_EQ("a b ", selectedColumns());
    browser->setColumnsModel(nullptr, nullptr);
}

TEST_F(ColumnsTest, columnsMayBeReplacedAndTheBrowserDestroyedInAnyNotificationOfTheirs)
{
    using Model = QAbstractItemModel;
    const auto connectAll = [this](QObject* context, const std::function<void()>& then) {
        QObject::connect(&chosen, &QItemSelectionModel::selectionChanged, context, then);
        for (const Model* list :
             {browser->selectedColumnsModel(), browser->checkableColumnsModel()}) {
            QObject::connect(list, &Model::rowsAboutToBeInserted, context, then);
            QObject::connect(list, &Model::rowsInserted, context, then);
            QObject::connect(list, &Model::rowsAboutToBeRemoved, context, then);
            QObject::connect(list, &Model::rowsRemoved, context, then);
            QObject::connect(list, &Model::dataChanged, context, then);
        }
    };
    const std::function<void()> causes[] = {
        [this] { check("type", true); },
        [this] { browser->setColumnsFilter("nothing"); },
        [this] {
            browser->removeFromSelectedColumns({browser->selectedColumnsModel()->index(0, 0)});
        },
        [this] { browser->clearSelectedColumns(); },
    };
    for (const auto& cause : causes) {
        for (int notification = 1, seen = 1; seen >= notification; ++notification) {
            for (const bool destroys : {false, true}) {
                browser = std::make_unique<SceneBrowserData>(assetModel.get(), nullptr, nullptr);
                chosen.clear();
                browser->setColumnsModel(&columns, &chosen);
                check("rotation", true);
                seen = 0;
                QObject context;
                connectAll(&context, [&] {
                    if (++seen == notification && destroys)
                        browser.reset();
                    else if (seen == notification)
                        browser->setColumnsModel(&columns, &chosen);
                });
                cause();
            }
        }
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

TEST_F(ColumnsTest, theBrowserOutlivesColumnsAndTheirSelection)
{
    auto* mortal = new QStandardItemModel(1, 1);
    browser->setColumnsModel(mortal, new QItemSelectionModel(mortal, mortal));
    delete browser->property("columnsModel").value<QAbstractItemModel*>();
    EXPECT_EQ(nullptr, browser->columnsModel());
    {
        QItemSelectionModel brief(&columns);
        browser->setColumnsModel(&columns, &brief);
        check("type", true);
    }
    EXPECT_EQ(&columns, browser->columnsModel());
    EXPECT_EQ("", selectedColumns());
    check("type", true);
    browser->clearSelectedColumns();
    browser->removeFromSelectedColumns({browser->selectedColumnsModel()->index(0, 0)});
}

TEST_F(BrowserTest, columnDialogRequestsReachTheirSubscribersWhoMayDestroyTheBrowser)
{
    create("a");
    std::string log;
    browser->showColumnsDialog();
    {
        const auto dropped = browser->connectShowColumnsDialog([&] { log += "x"; });
    }
    const auto first = browser->connectShowColumnsDialog([&] { log += "1"; });
    const auto last = browser->connectShowColumnsDialog([&] { browser.reset(); });
    SceneBrowserData* gone = browser.get();
    gone->showColumnsDialog();
    EXPECT_EQ("1", log);
    EXPECT_EQ(nullptr, browser);
}
