#pragma once

#include <kyr_scene_outline_testkit/memory_clipboard.h>
#include <kyr_scene_outline_testkit/object_values.h>
#include <kyr_scene_outline_testkit/observed_host.h>

#include <kyr_scene_outline/scene_browser_data.h>

#include <array>
#include <set>

namespace kyr::testkit {

/// What to do, with numbers that choose among what there is when it comes to it: any part of a
/// sequence of steps is a sequence of steps.
struct Step
{
    unsigned kind;
    unsigned who;
    unsigned where;
    unsigned what;
};

/// A scene with two browsers, and the plain list that they are compared with.
class DrivenScene
{
public:
    explicit DrivenScene(const SceneFactory& makeScene);

    /// Makes a step; says what it was.
    std::string make(const Step& step);
    /// Empty while all is as it should be.
    const std::string& fault() const { return m_fault; }

private:
    /// The object of a row, and a column.
    using Cell = std::pair<const void*, int>;
    using Cells = std::set<Cell>;
    struct Range
    {
        QModelIndex parent;
        int top = 0;
        int bottom = -1;
        int left = 0;
        int right = 0;
    };

    std::string selectRows(const Step& step);
    std::string selectEverything(const Step& step);
    std::string clearRows(const Step& step);
    std::string setFromEditor(const Step& step);
    std::string setInListener(const Step& step);
    std::string undoAndRedo(const Step& step);
    std::string hover(const Step& step);
    std::string insert(const Step& step);
    std::string remove(const Step& step);
    std::string move(const Step& step);
    std::string rearrange(const Step& step);
    std::string recreate(const Step& step);
    std::string copy(const Step& step);
    std::string paste(const Step& step);
    std::string driveView(const Step& step);

    QAbstractItemModel& model() { return *m_scene->assetModel().itemModel(); }
    SceneBrowserData& browser(unsigned number) { return *m_browsers[number % 2]; }
    Range rangeFor(const Step& step);
    /// The range in some of the columns, where the browser can do with cells of all of them.
    Range cellsFor(const Step& step);
    bool hasCellsOfRows(const Range& range);
    Objects objectsFor(const Step& step);
    void select(unsigned number, const Range& range, QItemSelectionModel::SelectionFlags flags);
    std::string told(const Range& range);
    void stopHovering();
    void makeBrowser(unsigned number);
    Objects targets();
    /// The rows that there are, parents before children.
    Objects shape();
    /// Takes the step back that was just made and makes it again, and compares with both times.
    void undoAndRedoRows(const Step& step, const Objects& rows, const Objects& selected);
    void expectValues(const Objects& objects, const std::vector<Values>& values);

    Objects withRows(const Objects& objects);
    /// What the editor's objects select in a browser that follows.
    Cells followedCells();
    Cells cells(const QModelIndexList& indexes);
    std::string namedCells(const Cells& cells);
    Objects selectedObjects(unsigned number);
    /// Brings the cells up to date with rows that went and with what the editor told.
    void settle();
    void takeWrites();
    void expectWrites(int writes);
    void expectSelectedBy(unsigned number, const Cells& cells);
    void expectEditor(const Objects& objects);
    void expectFollowed(bool changed = true);
    void expectSameCells();
    void expectMarks();
    void expect(const std::string& what, const Objects& actual, const Objects& expected);

    ClipboardInMemory m_clipboard;
    std::unique_ptr<SceneUnderTest> m_scene;
    std::array<CountedSelection, 2> m_selections;
    std::array<std::unique_ptr<MarkedModel>, 2> m_models;
    vex::Connection m_followers;
    std::array<std::unique_ptr<SceneBrowserData>, 2> m_browsers;
    Objects m_editor;
    /// The selected cells of each browser: the one that selected has what it selected, one that
    /// follows the first cell of each row.
    std::array<Cells, 2> m_cells;
    /// Who heard of a change of the editor's selection that was not its own.
    std::array<bool, 2> m_follows{};
    Objects m_hovered;
    std::vector<Values> m_copied;
    std::string m_fault;
};

} // namespace kyr::testkit
