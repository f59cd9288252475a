#pragma once

#include "panel_window.h"

#include <browser/browser_fixture.h>

using test::TreeModel;

/// The panel over a browser whose calls to the editor are written down.
class ScenePanelTest : public test::BrowserTest
{
protected:
    void open(TreeModel::Items rows, const QString& selectedBefore = {})
    {
        open(std::make_unique<TreeModel>(std::move(rows)), selectedBefore);
    }
    void open(std::unique_ptr<TreeModel> scene, const QString& selectedBefore = {})
    {
        create(std::move(scene));
        selectRow(selectedBefore, QItemSelectionModel::Select);
        selection.takeLog();
        window.open(browser.get());
    }

    PanelWindow window;
};

inline TreeModel::Items house()
{
    return TreeModel::parsed("+House\n  Wall\n  Roof\n    Tile\nTree\n");
}
