// Columns beside the names: their cells, header and settings.

#include "scene_panel_fixture.h"

#include <QSettings>
#include <QSignalSpy>
#include <QSortFilterProxyModel>
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
};

/// Chosen columns in their order, as a browser offers them.
class Columns : public QSortFilterProxyModel
{
public:
    Columns()
    {
        m_columns.setItemRoleNames({{Qt::DisplayRole, "display"},
                                    {IdRole, "columnId"},
                                    {OrderRole, "columnOrder"},
                                    {ValueRole, "valueRole"},
                                    {WidthRole, "width"},
                                    {ToggleRole, "toggle"}});
        add(QStringLiteral("type"), FakeScene::TypeRole, false);
        add(QStringLiteral("children"), FakeScene::CountRole, false);
        add(QStringLiteral("shown"), FakeScene::EnabledRole, true);
        setSortRole(OrderRole);
        setDynamicSortFilter(true);
        setSourceModel(&m_columns);
        sort(0);
    }

    std::string order() const
    {
        QStringList ids;
        for (int row = 0; row < rowCount(); ++row)
            ids += index(row, 0).data(IdRole).toString();
        return ids.join(QLatin1Char(' ')).toStdString();
    }

private:
    void add(const QString& id, int valueRole, bool toggle)
    {
        auto* column = new QStandardItem(id);
        column->setData(id, IdRole);
        column->setData(m_columns.rowCount() * 5, OrderRole);
        column->setData(valueRole, ValueRole);
        column->setData(50, WidthRole);
        column->setData(toggle, ToggleRole);
        m_columns.appendRow(column);
    }

    QStandardItemModel m_columns;
};

class PanelColumnsTest : public ScenePanelTest
{
protected:
    void openColumns()
    {
        open(house());
        showColumns(&columns);
    }
    void showColumns(QAbstractItemModel* model)
    {
        browser->setSelectedColumns(model);
        window.settle();
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

TEST_F(PanelColumnsTest, CellsFollowTheScene)
{
    openColumns();
    ASSERT_TRUE(cell("row_House", "cell_type"));
    EXPECT_EQ(cell("row_House", "cell_type")->property("text").toString(), QStringLiteral("mesh"));
    EXPECT_EQ(cell("row_House", "cell_children")->property("text").toString(), QStringLiteral("2"));
    const QModelIndex house = scene->find(QStringLiteral("House"));
    EXPECT_TRUE(cell("row_House", "cell_shown")->property("checked").toBool());
    scene->setData(house, false, FakeScene::EnabledRole);
    EXPECT_FALSE(cell("row_House", "cell_shown")->property("checked").toBool());
    showColumns(nullptr);
    EXPECT_FALSE(cell("row_House", "cell_type"));
}

TEST_F(PanelColumnsTest, AToggleActsOnAllSelectedRowsInOneStep)
{
    openColumns();
    QSignalSpy begins(window.panel(), SIGNAL(editBegins(QString)));
    const auto visible = [this] {
        std::string text;
        for (const char* name : {"House", "Wall", "Roof", "Tree"})
            text += scene->item(scene->find(QLatin1String(name)))->visible ? '1' : '0';
        return text;
    };
    window.click(window.at(60, 1));
    window.click(window.at(60, 3), Qt::ControlModifier);
    window.click(middleOf(cell("row_Wall", "cell_shown")));
    EXPECT_EQ(visible(), "1010");
    EXPECT_EQ(begins.size(), 1);
    window.click(middleOf(cell("row_Roof", "cell_shown")));
    EXPECT_EQ(visible(), "1000") << "a row that is not selected goes alone";
    EXPECT_EQ(selected(), "Wall Tree");
    window.press(Qt::Key_Right, Qt::ControlModifier);
    window.press(Qt::Key_Space);
    EXPECT_EQ(visible(), "1101") << "by keyboard";
    EXPECT_EQ(selected(), "Wall Tree");
}

TEST_F(PanelColumnsTest, TheHeaderSortsResizesAndReorders)
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
    window.drag(window.middle("header_shown"), window.middle("header_type") - QPoint(15, 0));
    EXPECT_EQ(columns.order(), "shown type children");
    EXPECT_EQ(window.rows(), "Tree House Wall Roof") << "a drag does not sort";
    const int width = int(window.item("header_shown")->width());
    const QPoint border = window.middle("header_shown") - QPoint(width / 2, 0);
    window.drag(border, border - QPoint(20, 0));
    EXPECT_NEAR(window.item("header_shown")->width(), width + 20, 1);
}

TEST_F(PanelColumnsTest, WidthsAndSortingComeBack)
{
    const QTemporaryDir directory;
    QSettings::setDefaultFormat(QSettings::IniFormat);
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, directory.path());
    QCoreApplication::setOrganizationName(QStringLiteral("panel-test"));
    {
        openColumns();
        window.panel()->setProperty("settingsName", QStringLiteral("outline"));
        window.click(window.middle("header_children"));
        const QPoint border = window.middle("header_shown") - QPoint(25, 0);
        window.drag(border, border - QPoint(20, 0));
    }
    PanelWindow second;
    Columns fresh;
    browser->setSelectedColumns(&fresh);
    second.open(browser.get());
    second.panel()->setProperty("settingsName", QStringLiteral("outline"));
    second.settle();
    EXPECT_NEAR(second.item("header_shown")->width(), 70, 1);
    EXPECT_EQ(second.rows(), "Tree House Wall Roof");
    browser->setSelectedColumns(nullptr);
}

} // namespace
