// Columns beside the names: their cells, header and settings.

#include "scene_panel_fixture.h"

#include <QSettings>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QTemporaryDir>

namespace {

enum ColumnRole
{
    IdRole = Qt::UserRole,
    OrderRole,
    ValueRole,
    WidthRole,
    ToggleRole,
    EditableRole,
};

/// Columns that are all chosen.
class Columns : public QStandardItemModel
{
public:
    Columns()
    {
        setItemRoleNames({{Qt::DisplayRole, "display"},
                          {IdRole, "columnId"},
                          {OrderRole, "columnOrder"},
                          {ValueRole, "valueRole"},
                          {WidthRole, "width"},
                          {ToggleRole, "toggle"},
                          {EditableRole, "editable"}});
        add("type", TreeModel::TypeRole, false);
        add("children", TreeModel::CountRole, false);
        add("shown", TreeModel::EnabledRole, true);
        chosen.select(QItemSelection(index(0, 0), index(rowCount() - 1, 0)),
                      QItemSelectionModel::Select);
    }

    QItemSelectionModel chosen{this};

private:
    void add(const QString& id, int valueRole, bool toggle)
    {
        auto* column = new QStandardItem(id);
        column->setData(id, IdRole);
        column->setData(rowCount() * 5, OrderRole);
        column->setData(valueRole, ValueRole);
        column->setData(50, WidthRole);
        column->setData(toggle, ToggleRole);
        column->setData(id == QLatin1String("type"), EditableRole);
        appendRow(column);
    }
};

class PanelColumnsTest : public ScenePanelTest
{
protected:
    ~PanelColumnsTest() override { delete window.panel(); }
    void openColumns()
    {
        open(house());
        showColumns(&columns);
    }
    void showColumns(Columns* shown)
    {
        browser->setColumnsModel(shown, shown ? &shown->chosen : nullptr);
        window.settle();
    }
    std::string order() const
    {
        const QAbstractItemModel* shown = browser->selectedColumnsModel();
        QStringList ids;
        for (int row = 0; row < shown->rowCount(); ++row)
            ids += shown->index(row, 0).data(IdRole).toString();
        return ids.join(' ').toStdString();
    }
    QQuickItem* cell(const char* row, const char* column) const
    {
        return PanelWindow::itemBelow(window.item(row), column);
    }
    QPoint middleOf(const QQuickItem* item) const
    {
        return item->mapToScene({item->width() / 2, item->height() / 2}).toPoint();
    }

    Columns columns;
};

TEST_F(PanelColumnsTest, cellsFollowTheScene)
{
    openColumns();
    ASSERT_TRUE(cell("row_House", "cell_type"));
    EXPECT_EQ(cell("row_House", "cell_type")->property("text").toString(), "mesh");
    EXPECT_EQ(cell("row_House", "cell_children")->property("text").toString(), "2");
    const QModelIndex house = model->find("House");
    EXPECT_TRUE(cell("row_House", "cell_shown")->property("checked").toBool());
    model->setData(house, false, TreeModel::EnabledRole);
    EXPECT_FALSE(cell("row_House", "cell_shown")->property("checked").toBool());
    showColumns(nullptr);
    EXPECT_FALSE(cell("row_House", "cell_type"));
}

TEST_F(PanelColumnsTest, aCellIsEditedInAllSelectedRowsInOneStep)
{
    openColumns();
    QSignalSpy begins(window.panel(), SIGNAL(editBegins(QString)));
    const auto types = [this] {
        QStringList all;
        for (const char* name : {"House", "Wall", "Roof", "Tree"})
            all += model->item(model->find(name))->type;
        return all.join(' ').toStdString();
    };
    const QQuickItem* field = window.item("cell_field");
    window.click(window.at(60, 1));
    window.click(window.at(60, 3), Qt::ControlModifier);
    window.click(middleOf(cell("row_Wall", "cell_type")));
    EXPECT_EQ(selectedRows(), "Wall Tree") << "a click in a cell keeps the rows that it is about";
    window.doubleClick(middleOf(cell("row_Wall", "cell_type")));
    EXPECT_EQ(field->property("text").toString(), "mesh");
    window.type("big lamp");
    window.press(Qt::Key_Return);
    EXPECT_TRUE(field->isVisible() && field->property("invalid").toBool());
    EXPECT_EQ(types(), "mesh mesh mesh mesh");
    begins.clear();
    for (int i = 0; i < 5; ++i)
        window.press(Qt::Key_Backspace);
    window.press(Qt::Key_Return);
    EXPECT_FALSE(field->isVisible());
    EXPECT_EQ(types(), "mesh big mesh big");
    EXPECT_EQ(begins.size(), 1);
    EXPECT_EQ(selectedRows(), "Wall Tree");
    // By keyboard, from the name to the next cell that takes a text.
    window.press(Qt::Key_Home);
    for (const Qt::Key key : {Qt::Key_F2, Qt::Key_Tab})
        window.press(key);
    window.type("hut");
    window.press(Qt::Key_Return);
    EXPECT_EQ(types(), "hut big mesh big");
    window.press(Qt::Key_Right, Qt::ControlModifier);
    window.press(Qt::Key_F2);
    window.type("no");
    window.press(Qt::Key_Escape);
    EXPECT_EQ(types(), "hut big mesh big");
}

TEST_F(PanelColumnsTest, whatIsTypedGoesWhereItWasTypedThoughRowsAndColumnsMove)
{
    openColumns();
    window.click(window.middle("header_name"));
    window.click(window.at(60, 0));
    window.press(Qt::Key_F2);
    window.type("Zoo");
    window.press(Qt::Key_Tab);
    EXPECT_EQ(window.rows(), "Tree Zoo Roof Wall");
    window.type("park");
    columns.item(0)->setData(100, OrderRole);
    window.settle();
    ASSERT_EQ(order(), "children shown type");
    window.press(Qt::Key_Return);
    EXPECT_EQ(model->item(model->find("Zoo"))->type, "park");
    window.click(window.at(60, 0));
    window.press(Qt::Key_F2);
    window.type("Zzz");
    window.click(window.at(60, 1));
    EXPECT_EQ(window.rows(), "Zoo Roof Wall Zzz");
    EXPECT_EQ(selectedRows(), "Zoo") << "what was clicked on";
}

TEST_F(PanelColumnsTest, columnsThatNeedMoreRoomScrollSideways)
{
    openColumns();
    const QQuickItem* bar = window.item("column_scroll_bar");
    EXPECT_FALSE(bar->isVisible());
    auto* outlineColumns = window.item("outline_tree")->property("columns").value<QObject*>();
    QMetaObject::invokeMethod(outlineColumns, "setWidth", Q_ARG(int, 0), Q_ARG(int, 300));
    window.settle();
    EXPECT_TRUE(bar->isVisible());
    EXPECT_EQ(window.item("header_type")->width(), 300);
    EXPECT_GE(window.item("header_name")->width(), 100);
    const auto right = [this] { return middleOf(cell("row_Wall", "cell_shown")).x() + 25; };
    EXPECT_GT(right(), PanelWindow::width);
    window.click(window.at(60, 1));
    for (int i = 0; i < 2; ++i)
        window.press(Qt::Key_Right, Qt::ControlModifier);
    EXPECT_LE(right(), PanelWindow::width) << "the keyboard brings its cell into view";
    EXPECT_EQ(middleOf(cell("row_Wall", "cell_shown")).x(), window.middle("header_shown").x());
    window.click(middleOf(cell("row_Wall", "cell_shown")));
    EXPECT_FALSE(model->item(model->find("Wall"))->visible);
}

TEST_F(PanelColumnsTest, theHeaderSortsResizesAndReorders)
{
    openColumns();
    window.click(window.middle("header_name"));
    EXPECT_EQ(window.rows(), "House Roof Wall Tree");
    window.click(window.middle("header_name"));
    EXPECT_EQ(window.rows(), "Tree House Wall Roof");
    window.click(window.middle("header_name"));
    EXPECT_EQ(window.rows(), "House Wall Roof Tree");
    window.click(window.middle("header_children"));
    EXPECT_EQ(window.rows(), "Tree House Wall Roof");
    window.click(window.middle("header_children"));
    window.click(window.middle("header_name"));
    EXPECT_EQ(window.rows(), "House Roof Wall Tree") << "another column begins upwards";
    window.drag(window.middle("header_shown"), window.middle("header_type") - QPoint(15, 0));
    EXPECT_EQ(order(), "shown type children");
    window.drag(window.middle("header_shown"), window.middle("header_type") + QPoint(15, 0));
    EXPECT_EQ(order(), "type shown children");
    window.drag(window.middle("header_shown"), window.middle("header_type") - QPoint(15, 0));
    EXPECT_EQ(window.rows(), "House Roof Wall Tree") << "a drag does not sort";
    const int width = int(window.item("header_shown")->width());
    const QPoint border = window.middle("header_shown") - QPoint(width / 2, 0);
    window.drag(border, border - QPoint(20, 0));
    EXPECT_NEAR(window.item("header_shown")->width(), width + 20, 1);
}

TEST_F(PanelColumnsTest, widthsAndSortingComeBack)
{
    const QTemporaryDir directory;
    QSettings::setDefaultFormat(QSettings::IniFormat);
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, directory.path());
    QCoreApplication::setOrganizationName("panel-test");
    {
        openColumns();
        window.panel()->setProperty("settingsName", "outline");
        window.click(window.middle("header_children"));
        const QPoint border = window.middle("header_shown") - QPoint(25, 0);
        window.drag(border, border - QPoint(20, 0));
        EXPECT_TRUE(
            QTest::qWaitFor([] { return !QSettings().value("outline/widths").toMap().isEmpty(); }));
    }
    PanelWindow second;
    Columns fresh;
    browser->setColumnsModel(&fresh, &fresh.chosen);
    second.open(browser.get());
    second.panel()->setProperty("settingsName", "outline");
    second.settle();
    EXPECT_NEAR(second.item("header_shown")->width(), 70, 1);
    EXPECT_EQ(second.rows(), "Tree House Wall Roof");
    browser->setColumnsModel(nullptr, nullptr);
}

} // namespace
