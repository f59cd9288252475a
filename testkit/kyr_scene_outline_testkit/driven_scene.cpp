#include "driven_scene.h"

#include <algorithm>
#include <iterator>

namespace kyr::testkit {

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

Objects DrivenScene::withRows(const Objects& objects)
{
    Objects found;
    std::copy_if(objects.begin(), objects.end(), std::back_inserter(found),
                 [this](const PersistentObject& object) {
                     return m_scene->assetModel().indexOf(object.object()).isValid();
                 });
    return found;
}

Objects DrivenScene::selectedObjects(unsigned number)
{
    return objectsOf(browser(number).selectionModel()->selectedIndexes());
}

void DrivenScene::stopHovering()
{
    m_hovered.clear();
    m_scene->assetSelection().setHoveredObjects({});
}

} // namespace kyr::testkit
