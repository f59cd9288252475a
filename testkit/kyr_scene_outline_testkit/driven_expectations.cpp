#include "driven_scene.h"

#include <iterator>
#include <utility>

namespace kyr::testkit {

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

void DrivenScene::expect(const std::string& what, const Objects& actual, const Objects& expected)
{
    if (actual != expected && m_fault.empty())
        m_fault = what + " is " + named(actual) + ", expected " + named(expected);
}

} // namespace kyr::testkit
