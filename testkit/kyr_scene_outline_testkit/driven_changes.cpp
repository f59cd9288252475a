#include "driven_scene.h"

#include <QCoreApplication>

namespace kyr::testkit {

std::string DrivenScene::insert(const Step& step)
{
    const QModelIndexList rows = allRows(model());
    if (rows.size() > 60)
        return "enough rows";
    const unsigned place = step.where % unsigned(rows.size() + 1);
    const QModelIndex parent = place == 0 ? QModelIndex() : rows.at(int(place) - 1);
    const int row = int(step.what % unsigned(model().rowCount(parent) + 1));
    const Objects before = shape();
    const bool done = m_scene->insertRow(parent, row);
    expectEditor(m_editor);
    expectWrites(0);
    undoAndRedoRows(step, before, m_editor);
    return std::string(done ? "a row is inserted" : "no row is inserted") + " at " +
           std::to_string(row);
}

std::string DrivenScene::remove(const Step& step)
{
    const Range range = rangeFor(step);
    if (range.bottom < 0 || allRows(model()).size() < 6)
        return "nothing to remove";
    stopHovering();
    takeWrites();
    const Objects rows = shape();
    const Objects selected = m_editor;
    const Objects before = withRows(m_editor);
    const std::string text =
        "rows go: " + named(objectsOf(model(), range.parent, range.top, range.bottom));
    m_scene->removeRows(range.parent, range.top, range.bottom - range.top + 1);
    const Objects left = withRows(before);
    if (left.size() == before.size()) {
        expectEditor(m_editor);
        expectWrites(0);
        undoAndRedoRows(step, rows, selected);
        return text;
    }
    if (identities(m_scene->assetSelection().objects()) != identities(left))
        expect("the editor's selection", m_scene->assetSelection().objects(), left);
    m_editor = m_scene->assetSelection().objects();
    expectWrites(1);
    undoAndRedoRows(step, rows, selected);
    return text;
}

std::string DrivenScene::move(const Step& step)
{
    const Range range = rangeFor(step);
    const QModelIndexList rows = allRows(model());
    if (range.bottom < 0)
        return "nothing to move";
    const unsigned place = (step.where >> 8) % unsigned(rows.size() + 1);
    const QModelIndex to = place == 0 ? QModelIndex() : rows.at(int(place) - 1);
    const std::string text =
        named(objectsOf(model(), range.parent, range.top, range.top)) + " moves";
    const Objects before = shape();
    m_scene->moveRow(range.parent, range.top, to,
                     int(step.what % unsigned(model().rowCount(to) + 1)));
    expectEditor(m_editor);
    expectWrites(0);
    undoAndRedoRows(step, before, m_editor);
    return text;
}

std::string DrivenScene::rearrange(const Step& step)
{
    const bool resets = step.what % 3 == 0;
    stopHovering();
    if (!(resets ? m_scene->reset() : m_scene->relayout()))
        return "nothing to rearrange";
    QCoreApplication::processEvents();
    expectEditor(m_editor);
    expectFollowed();
    expectWrites(0);
    return resets ? "the model is reset" : "the layout changes";
}

std::string DrivenScene::recreate(const Step& step)
{
    stopHovering();
    const unsigned number = step.who % 2;
    const bool inListener = step.what % 2 == 0;
    if (inListener) {
        const auto connection = m_scene->assetSelection().connectSelectionChanged(
            [this, number](const vex::Connection&, const IAssetSelection::SelectionChange&) {
                m_browsers[number].reset();
            });
        m_scene->assetSelection().setSelection(objectsFor(step), false);
    }
    m_browsers[number].reset();
    takeWrites();
    makeBrowser(number);
    m_cells = {};
    expectEditor({});
    expectWrites(1);
    expectFollowed();
    return "browser " + std::to_string(number) +
           (inListener ? " goes in a notification and is made anew" : " is made anew");
}

std::string DrivenScene::copy(const Step& step)
{
    const Objects sources = targets();
    if (sources.empty())
        return "nothing to copy";
    if (!browser(step.who).copyProperties())
        m_fault = "nothing was copied";
    m_copied = valuesOf(sources);
    expectEditor(m_editor);
    expectWrites(0);
    return "browser " + std::to_string(step.who % 2) + " copies " + named(sources);
}

std::string DrivenScene::paste(const Step& step)
{
    const Objects onto = targets();
    if (m_copied.empty() || onto.empty())
        return "nothing to paste";
    const std::string text =
        "browser " + std::to_string(step.who % 2) + " pastes onto " + named(onto);
    const Objects selected = m_editor;
    const std::vector<Values> before = valuesOf(onto);
    std::vector<Values> after;
    for (std::size_t i = 0; i < onto.size(); ++i)
        after.push_back(pasted(before[i], m_copied[i % m_copied.size()]));
    if (!browser(step.who).pasteProperties())
        m_fault = "nothing was pasted";
    expectEditor(onto);
    expectFollowed(selected != onto);
    // They are deselected while their values change.
    expectWrites(2);
    expectValues(onto, after);
    if ((selected == onto && before == after) || !m_scene->undo())
        return text;
    expectEditor(selected);
    expectFollowed(selected != onto);
    expectValues(onto, before);
    m_scene->redo();
    expectEditor(onto);
    expectFollowed(selected != onto);
    expectValues(onto, after);
    expectWrites(0);
    return text + ", undo, redo";
}

void DrivenScene::undoAndRedoRows(const Step& step, const Objects& rows, const Objects& selected)
{
    const Objects after = shape();
    const Objects selectedAfter = m_editor;
    if (step.who / 2 % 2 || rows == after || !m_scene->recordsRows() || !m_scene->undo())
        return;
    expect("what undo leaves of rows and parents", shape(), rows);
    expectEditor(selected);
    expectSameCells();
    m_scene->redo();
    expect("what redo makes of rows and parents", shape(), after);
    expectEditor(selectedAfter);
    expectSameCells();
}

} // namespace kyr::testkit
