#include "driven_scene.h"

#include <QAbstractItemModel>
#include <QCoreApplication>

#include <iterator>

namespace kyr::testkit {
namespace {

using Flags = QItemSelectionModel::SelectionFlags;
using Model = QItemSelectionModel;

std::set<const void*> identities(const Objects& objects)
{
    std::set<const void*> set;
    for (const PersistentObject& object : objects)
        set.insert(object.identity());
    return set;
}

Objects rowObjects(const QAbstractItemModel& model, const QModelIndex& parent, int top, int bottom)
{
    Objects objects;
    for (int row = top; row <= bottom; ++row)
        objects.push_back(objectOf(model.index(row, 0, parent)));
    return objects;
}

// The editor keeps an object that it is handed more than once at its first place.
Objects withoutDuplicates(const Objects& objects)
{
    Objects kept;
    for (const PersistentObject& object : objects) {
        if (std::find(kept.begin(), kept.end(), object) == kept.end())
            kept.push_back(object);
    }
    return kept;
}

} // namespace

DrivenScene::DrivenScene(const SceneFactory& makeScene)
    : m_scene(makeScene())
    , m_selections{CountedSelection(m_scene->assetSelection()),
                   CountedSelection(m_scene->assetSelection())}
{
    m_followers = m_scene->assetSelection().connectSelectionChanged(
        [this](const vex::Connection&, const IAssetSelection::SelectionChange&) {
            for (const unsigned number : {0u, 1u}) {
                if (!m_selections[number].isWriting())
                    m_follows[number] = true;
            }
        });
    for (const unsigned number : {0u, 1u}) {
        m_models[number] = std::make_unique<MarkedModel>(m_scene->assetModel());
        makeBrowser(number);
    }
}

void DrivenScene::makeBrowser(unsigned number)
{
    m_browsers[number] =
        std::make_unique<SceneBrowserData>(m_models[number].get(), &m_selections[number], nullptr);
    if (number == 0)
        m_scene->show(*m_browsers[number]);
}

std::string DrivenScene::make(const Step& step)
{
    using Way = std::string (DrivenScene::*)(const Step&);
    static constexpr Way ways[] = {
        &DrivenScene::selectRows,    &DrivenScene::selectRows,    &DrivenScene::selectRows,
        &DrivenScene::selectRows,    &DrivenScene::setFromEditor, &DrivenScene::setFromEditor,
        &DrivenScene::setInListener, &DrivenScene::undoAndRedo,   &DrivenScene::hover,
        &DrivenScene::hover,         &DrivenScene::insert,        &DrivenScene::insert,
        &DrivenScene::remove,        &DrivenScene::move,          &DrivenScene::move,
        &DrivenScene::rearrange,     &DrivenScene::clearRows,     &DrivenScene::selectEverything,
        &DrivenScene::recreate,      &DrivenScene::copy,          &DrivenScene::paste,
        &DrivenScene::insert,        &DrivenScene::paste,         &DrivenScene::driveView,
        &DrivenScene::driveView,     &DrivenScene::driveView,     &DrivenScene::driveView,
    };
    takeWrites();
    const std::string did = (this->*ways[step.kind % std::size(ways)])(step);
    expectSameCells();
    expectMarks();
    if (m_fault.empty())
        m_fault = m_scene->viewFault();
    return did;
}

DrivenScene::Range DrivenScene::rangeFor(const Step& step)
{
    const QModelIndexList rows = allRows(model());
    if (rows.isEmpty())
        return {};
    const QModelIndex first = rows.at(int(step.where % unsigned(rows.size())));
    const int following = model().rowCount(first.parent()) - first.row();
    const int more = int(step.what >> 8) % 3;
    return {first.parent(), first.row(), first.row() + std::min(more, following - 1), 0, 0};
}

DrivenScene::Range DrivenScene::cellsFor(const Step& step)
{
    Range range = rangeFor(step);
    const auto columns = unsigned(model().columnCount(range.parent));
    if (range.bottom < 0 || (step.what >> 16 & 1) != 0 || !hasCellsOfRows(range))
        return range;
    range.left = int((step.what >> 17) % columns);
    range.right = range.left + int((step.what >> 22) % (columns - unsigned(range.left)));
    return range;
}

// The browser reads the object of each selected cell that can be selected.
bool DrivenScene::hasCellsOfRows(const Range& range)
{
    for (int row = range.top; row <= range.bottom; ++row) {
        const QModelIndex first = model().index(row, 0, range.parent);
        for (int column = 0; column < model().columnCount(range.parent); ++column) {
            const QModelIndex cell = first.sibling(row, column);
            const Qt::ItemFlags needed = Qt::ItemIsSelectable | Qt::ItemIsEnabled;
            if (objectOf(cell) != objectOf(first) || (cell.flags() & needed) != needed)
                return false;
        }
    }
    return true;
}

// Up to four, one of them perhaps in no scene, in any order, some perhaps twice.
Objects DrivenScene::objectsFor(const Step& step)
{
    const QModelIndexList rows = allRows(model());
    Objects objects;
    for (unsigned i = 0, count = step.what % 5; i < count && !rows.isEmpty(); ++i)
        objects.push_back(objectOf(rows.at(int((step.where >> (4 * i)) % unsigned(rows.size())))));
    if (step.what / 5 % 8 == 0)
        objects.emplace_back(foreignObject());
    return objects;
}

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
    std::string text = named(rowObjects(model(), range.parent, range.top, range.bottom));
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
    for (const void* row : identities(rowObjects(model(), range.parent, range.top, range.bottom))) {
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

void DrivenScene::stopHovering()
{
    m_hovered.clear();
    m_scene->assetSelection().setHoveredObjects({});
}

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
        "rows go: " + named(rowObjects(model(), range.parent, range.top, range.bottom));
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
        named(rowObjects(model(), range.parent, range.top, range.top)) + " moves";
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

std::string DrivenScene::driveView(const Step& step)
{
    const std::string text = m_scene->driveView(step.what);
    expectEditor(m_editor);
    expectWrites(0);
    return text.empty() ? selectRows(step) : text;
}

/// What is copied from or pasted onto, in the order of rows.
Objects DrivenScene::targets()
{
    QModelIndexList rows;
    for (const PersistentObject& object : m_editor) {
        const QModelIndex row = m_scene->assetModel().indexOf(object.object());
        if (row.isValid())
            rows.append(row);
    }
    std::sort(rows.begin(), rows.end());
    return objectsOf(rows);
}

Objects DrivenScene::shape()
{
    Objects rows;
    for (const QModelIndex& row : allRows(model())) {
        rows.push_back(objectOf(row));
        rows.push_back(objectOf(row.parent()));
    }
    return rows;
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

void DrivenScene::expectValues(const Objects& objects, const std::vector<Values>& values)
{
    const std::vector<Values> actual = valuesOf(objects);
    for (std::size_t i = 0; i < objects.size() && m_fault.empty(); ++i) {
        for (const auto& [path, value] : values[i]) {
            const auto found = actual[i].find(path);
            const std::string text = found == actual[i].end() ? "(gone)" : found->second.text;
            if (m_fault.empty() && text != value.text)
                m_fault = path + " of " + named({objects[i]}) + " is '" + text + "', expected '" +
                          value.text + "'";
        }
    }
}

Objects DrivenScene::withRows(const Objects& objects)
{
    Objects found;
    std::copy_if(objects.begin(), objects.end(), std::back_inserter(found),
                 [this](const PersistentObject& object) {
                     return m_scene->assetModel().indexOf(object.object()).isValid();
                 });
    return found;
}

DrivenScene::Cells DrivenScene::followedCells()
{
    Cells cells;
    for (const void* row : identities(withRows(m_editor)))
        cells.insert({row, 0});
    return cells;
}

DrivenScene::Cells DrivenScene::cells(const QModelIndexList& indexes)
{
    Cells cells;
    for (const QModelIndex& index : indexes)
        cells.insert({objectOf(index.siblingAtColumn(0)).identity(), index.column()});
    return cells;
}

std::string DrivenScene::namedCells(const Cells& cells)
{
    std::string text;
    for (const QModelIndex& row : allRows(model())) {
        const PersistentObject object = objectOf(row);
        for (int column = 0; column < model().columnCount(row.parent()); ++column) {
            if (cells.count({object.identity(), column}) > 0)
                text += (text.empty() ? "" : ", ") + object.object().reference().name() + ':' +
                        std::to_string(column);
        }
    }
    return "[" + text + "]";
}

Objects DrivenScene::selectedObjects(unsigned number)
{
    return objectsOf(browser(number).selectionModel()->selectedIndexes());
}

void DrivenScene::settle()
{
    const std::set<const void*> rows = identities(objectsOf(allRows(model())));
    for (const unsigned number : {0u, 1u}) {
        Cells& cells = m_cells[number];
        for (auto cell = cells.begin(); cell != cells.end();)
            cell = rows.count(cell->first) > 0 ? std::next(cell) : cells.erase(cell);
        if (std::exchange(m_follows[number], false))
            cells = followedCells();
    }
}

void DrivenScene::takeWrites()
{
    for (CountedSelection& selection : m_selections)
        selection.takeWrites();
}

void DrivenScene::expectWrites(int writes)
{
    int actual = 0;
    for (CountedSelection& selection : m_selections)
        actual += selection.takeWrites();
    if (actual != writes && m_fault.empty())
        m_fault = "browsers wrote the selection " + std::to_string(actual) + " times, expected " +
                  std::to_string(writes);
}

// A change of any cell is written, the object of a row once for each of its cells; the one who
// writes says the order.
void DrivenScene::expectSelectedBy(unsigned number, const Cells& cells)
{
    const Cells before = std::exchange(m_cells[number % 2], cells);
    if (cells == before) {
        expectWrites(0);
        return;
    }
    const Objects& written = m_selections[number % 2].written();
    std::multiset<const void*> actual;
    for (const PersistentObject& object : written)
        actual.insert(object.identity());
    std::multiset<const void*> expected;
    for (const Cell& cell : cells)
        expected.insert(cell.first);
    if (actual != expected && m_fault.empty())
        m_fault =
            "the editor gets " + named(written) + ", expected the objects of " + namedCells(cells);
    if (!m_follows[number % 2])
        expect("what the editor gets", written, selectedObjects(number));
    const Objects kept = withoutDuplicates(written);
    const bool changes = kept != m_editor;
    expectEditor(kept);
    expectWrites(1);
    if (changes)
        expect("the other browser's selection", selectedObjects(number + 1), kept);
    settle();
}

void DrivenScene::expectEditor(const Objects& objects)
{
    expect("the editor's selection", m_scene->assetSelection().objects(), objects);
    m_editor = objects;
}

void DrivenScene::expectFollowed(bool changed)
{
    // An editor may be silent where a step leaves what it found.
    if (!changed && m_follows == std::array<bool, 2>{})
        return;
    const Objects expected = withRows(m_editor);
    for (unsigned number : {0u, 1u}) {
        expect("the selection of browser " + std::to_string(number), selectedObjects(number),
               expected);
        m_cells[number] = followedCells();
    }
}

void DrivenScene::expectSameCells()
{
    settle();
    for (unsigned number : {0u, 1u}) {
        const QModelIndexList selected = browser(number).selectionModel()->selectedIndexes();
        if (identities(objectsOf(selected)) != identities(withRows(m_editor)))
            expect("the rows of browser " + std::to_string(number), objectsOf(selected),
                   withRows(m_editor));
        if ((cells(selected) != m_cells[number] ||
             std::size_t(selected.size()) != m_cells[number].size()) &&
            m_fault.empty())
            m_fault = "the cells of browser " + std::to_string(number) + " are " +
                      namedCells(cells(selected)) + ", expected " + namedCells(m_cells[number]);
    }
}

void DrivenScene::expectMarks()
{
    for (unsigned number : {0u, 1u}) {
        const Objects& marks = m_models[number]->marks();
        if (identities(marks) != identities(m_hovered))
            expect("the hover marks of browser " + std::to_string(number), marks, m_hovered);
    }
}

void DrivenScene::expect(const std::string& what, const Objects& actual, const Objects& expected)
{
    if (actual != expected && m_fault.empty())
        m_fault = what + " is " + named(actual) + ", expected " + named(expected);
}

} // namespace kyr::testkit
