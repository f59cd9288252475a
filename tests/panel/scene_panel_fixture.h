#pragma once

#include "fake_browser.h"
#include "panel_window.h"
#include <support/tree_model.h>

#include <QRegularExpression>

#include <gtest/gtest.h>

using test::TreeModel;

/// The panel over a browser that records what it is asked.
class ScenePanelTest : public ::testing::Test
{
protected:
    void open(TreeModel::Items rows, const QString& selectedBefore = {})
    {
        open(std::make_unique<TreeModel>(std::move(rows)), selectedBefore);
    }
    void open(std::unique_ptr<TreeModel> newScene, const QString& selectedBefore = {})
    {
        scene = std::move(newScene);
        browser = std::make_unique<FakeBrowser>(scene.get());
        browser->selectionModel()->select(scene->find(selectedBefore), QItemSelectionModel::Select);
        window.open(browser.get());
    }
    std::string selected() const
    {
        QStringList names;
        for (const QModelIndex& index : browser->selectionModel()->selection().indexes())
            names += index.data().toString();
        return names.join(QLatin1Char(' ')).toStdString();
    }
    QStringList calls(const QString& kind)
    {
        return browser->takeCalls().filter(QRegularExpression(QLatin1Char('^') + kind));
    }

    std::unique_ptr<TreeModel> scene;
    std::unique_ptr<FakeBrowser> browser;
    PanelWindow window;
};

inline TreeModel::Items house()
{
    return TreeModel::parsed("+House\n  Wall\n  Roof\n    Tile\nTree\n");
}
