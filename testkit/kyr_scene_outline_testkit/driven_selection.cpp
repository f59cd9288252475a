#include "driven_scene.h"

#include <utility>

namespace kyr::testkit {
namespace {

using Flags = QItemSelectionModel::SelectionFlags;
using Model = QItemSelectionModel;

} // namespace

std::string DrivenScene::selectRows(const Step& step)
{
    static constexpr Model::SelectionFlag actions[] = {Model::Select, Model::Toggle,
                                                       Model::Deselect, Model::ClearAndSelect};
    const Range range = cellsFor(step);
    if (range.bottom < 0)
        return "nothing to select";
    const bool rows = step.what / 4 % 4 == 0;
    Flags flags = actions[step.what % 4];
    flags.setFlag(Model::Rows, rows && hasCellsOfRows(range));
    select(step.who, range, flags);
    std::string text = "browser " + std::to_string(step.who % 2) + " selects with flags " +
                       std::to_string(int(flags)) + " " + told(range);
    if (flags & Model::Clear && step.what / 16 % 4 == 0) {
        Step next = step;
        next.where = step.where >> 8;
        const Range other = cellsFor(next);
        Flags instead = Model::Clear | Model::SelectCurrent;
        instead.setFlag(Model::Rows, rows && hasCellsOfRows(other));
        text += ", then instead with flags " + std::to_string(int(instead)) + " " + told(other);
        select(step.who, other, instead);
    }
    return text;
}

std::string DrivenScene::told(const Range& range)
{
    std::string text = named(objectsOf(model(), range.parent, range.top, range.bottom));
    if (range.right > 0)
        text += " in columns " + std::to_string(range.left) + "-" + std::to_string(range.right);
    return text;
}

void DrivenScene::select(unsigned number, const Range& range, Flags flags)
{
    const bool rows = flags & Model::Rows;
    const int left = rows ? 0 : range.left;
    const int right = rows ? model().columnCount(range.parent) - 1 : range.right;
    Cells expected = flags & Model::Clear ? Cells() : m_cells[number % 2];
    for (const void* row : identities(objectsOf(model(), range.parent, range.top, range.bottom))) {
        for (int column = left; column <= right; ++column) {
            const bool wasIn = expected.erase({row, column}) > 0;
            if (flags & Model::Select || (flags & Model::Toggle && !wasIn))
                expected.insert({row, column});
        }
    }
    browser(number).selectionModel()->select(
        QItemSelection(model().index(range.top, range.left, range.parent),
                       model().index(range.bottom, range.right, range.parent)),
        flags);
    expectSelectedBy(number, expected);
}

std::string DrivenScene::selectEverything(const Step& step)
{
    Cells all;
    for (const QModelIndex& row : allRows(model()))
        all.insert({objectOf(row).identity(), 0});
    browser(step.who).selectAll();
    expectSelectedBy(step.who, all);
    return "browser " + std::to_string(step.who % 2) + " selects all";
}

std::string DrivenScene::clearRows(const Step& step)
{
    if (step.what % 2)
        browser(step.who).selectionModel()->clear();
    else
        browser(step.who).selectionModel()->clearSelection();
    expectSelectedBy(step.who, {});
    return "browser " + std::to_string(step.who % 2) + " clears its selection";
}

std::string DrivenScene::setFromEditor(const Step& step)
{
    const Objects objects = objectsFor(step);
    const bool adds = step.what / 64 % 4 == 0;
    Objects expected = adds ? m_editor : Objects();
    expected.insert(expected.end(), objects.begin(), objects.end());
    expected = withoutDuplicates(expected);
    const bool changes = expected != m_editor;
    m_scene->assetSelection().setSelection(objects, adds);
    expectEditor(expected);
    expectWrites(0);
    if (changes)
        expectFollowed();
    return (adds ? "the editor adds " : "the editor selects ") + named(objects);
}

std::string DrivenScene::setInListener(const Step& step)
{
    Step later = step;
    later.where = step.where >> 12;
    later.what = 2;
    const Objects nested = withoutDuplicates(withRows(objectsFor(later)));
    bool told = false;
    const auto connection = m_scene->assetSelection().connectSelectionChanged(
        [&](const vex::Connection&, const IAssetSelection::SelectionChange&) {
            if (!std::exchange(told, true))
                m_scene->assetSelection().setSelection(nested, false);
        });
    const Objects first = objectsFor(step);
    m_scene->assetSelection().setSelection(first, false);
    if (told) {
        expectEditor(nested);
        expectFollowed();
    }
    expectWrites(0);
    return "the editor selects " + named(first) + ", a listener " + named(nested);
}

std::string DrivenScene::undoAndRedo(const Step& step)
{
    const Objects before = m_editor;
    std::string text = step.who / 2 % 2 ? selectRows(step) : setFromEditor(step);
    const Objects after = m_editor;
    takeWrites();
    if (before == after || !m_scene->undo())
        return text;
    // Two selections of one browser are two steps.
    if (text.find("then instead") == std::string::npos) {
        expectEditor(before);
        expectFollowed();
    }
    m_scene->redo();
    expectEditor(after);
    expectFollowed();
    expectWrites(0);
    return text + ", undo, redo";
}

std::string DrivenScene::hover(const Step& step)
{
    if (step.what % 4 == 0) {
        browser(step.who).resetHover();
        m_hovered.clear();
        return "nothing is hovered";
    }
    if (step.what % 4 == 1) {
        m_hovered = objectsOf(allRows(model()));
        m_hovered.resize(std::min<std::size_t>(m_hovered.size(), 2));
        m_scene->assetSelection().setHoveredObjects(m_hovered);
        return "the editor hovers " + named(m_hovered);
    }
    const Range range = rangeFor(step);
    if (range.bottom < 0)
        return "nothing to hover";
    const QModelIndex row = model().index(range.top, 0, range.parent);
    m_hovered = {objectOf(row)};
    browser(step.who).syncHover(row);
    return "browser " + std::to_string(step.who % 2) + " hovers " + named(m_hovered);
}

std::string DrivenScene::driveView(const Step& step)
{
    const std::string text = m_scene->driveView(step.what);
    expectEditor(m_editor);
    expectWrites(0);
    return text.empty() ? selectRows(step) : text;
}

} // namespace kyr::testkit
