// Texts and icons can be read on what is painted behind them, in any palette.

#include "scene_panel_fixture.h"

#include <host/ui/text_predicate.h>
#include <support/contrast_check.h>

#include <QGuiApplication>
#include <QPalette>

using test::ContrastCheck;
using test::TreeModel;

namespace {

QPalette palette(const char* window, const char* base, const char* text, const char* highlight)
{
    QPalette palette{QColor(window)};
    palette.setColor(QPalette::Base, base);
    palette.setColor(QPalette::Text, text);
    palette.setColor(QPalette::Highlight, highlight);
    return palette;
}

class PanelContrastTest : public ScenePanelTest
{
protected:
    ~PanelContrastTest() override { QGuiApplication::setPalette(QPalette()); }
};

TEST_F(PanelContrastTest, holdsInRowsOfEveryState)
{
    const std::pair<const char*, QPalette> palettes[] = {
        {"dark", palette("#2b2d31", "#232529", "#d9dce1", "#3a73b8")},
        {"light", palette("#eceef0", "#f8f9fa", "#22262b", "#2f72c4")},
        {"plain", palette("#efefef", "#ffffff", "#000000", "#308cc6")},
        {"orange", palette("#404040", "#303030", "#e0e0e0", "#ff9020")},
        {"pale", palette("#f4f4f4", "#ffffff", "#555555", "#ffe08a")},
        {"black", palette("#000000", "#000000", "#ffffff", "#ffff00")},
    };
    open(TreeModel::parsed("+House\n  Wall\n  Wing\n  Roof\nWeir\nHouse 2\n"));
    lumo::datamodels::proxy::TextPredicate predicate;
    browser->setFilterPredicate(&predicate);
    // Rows that lead to others, hidden ones and both, selected or not, under the pointer or not.
    predicate.setText("w");
    const char* const types[] = {"light", "camera", "bone", "material", "unknown"};
    const char* const names[] = {"Wall", "Wing", "Roof", "Weir", "House"};
    for (std::size_t i = 0; i < std::size(names); ++i)
        model->item(model->find(names[i]))->type = QLatin1String(types[i]);
    ASSERT_TRUE(QTest::qWaitFor([this] { return window.rows() == "House Wall Wing Weir"; }));
    model->setData(model->find("Wall"), false, TreeModel::EnabledRole);
    model->setData(model->find("Weir"), false, TreeModel::EnabledRole);
    window.movePointer(window.middle("row_Weir"));
    for (const auto& [name, colors] : palettes) {
        SCOPED_TRACE(name);
        QGuiApplication::setPalette(colors);
        for (const char* selected : {"", "Weir", "House Wall Wing Weir"}) {
            SCOPED_TRACE(selected);
            browser->selectionModel()->clear();
            for (const QString& row : QString::fromUtf8(selected).split(' ', Qt::SkipEmptyParts))
                selectRow(row, QItemSelectionModel::Select);
            window.settle();
            ContrastCheck check;
            check.look(window.panel(), 1);
            EXPECT_GT(check.checked(), 15);
        }
    }
    browser->selectionModel()->clear();
    predicate.setText("nothing at all>2");
    ASSERT_TRUE(QTest::qWaitFor([this] { return window.item("empty_text")->isVisible(); }));
    ContrastCheck check;
    check.look(window.panel(), 1);
    browser->setFilterPredicate(nullptr);
}

TEST(PanelFontTest, rowsGrowWithTheSystemsFont)
{
    const QFont before = QGuiApplication::font();
    QFont font = before;
    font.setPixelSize(24);
    QGuiApplication::setFont(font);
    PanelWindow window;
    QQmlComponent component(window.engine());
    component.setData("import Kyr.SceneOutline 1.0\nPanelStyle {}", {});
    const std::unique_ptr<QObject> style(component.create());
    ASSERT_TRUE(style) << component.errorString().toStdString();
    EXPECT_EQ(style->property("pixelSize").toInt(), 24);
    EXPECT_GT(style->property("rowHeight").toInt(), 28);
    QGuiApplication::setFont(before);
}

} // namespace
