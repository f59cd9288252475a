// What the window asks of scene and selection while very much is selected: calls, and no clock.

#include "editor_test.h"

#include <support/allocations/allocation_count.h>

#include <QSignalSpy>

namespace test {

namespace {

using editor::SceneItemModel;

class CountedRows final : public SceneItemModel
{
public:
    using SceneItemModel::SceneItemModel;

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override
    {
        return ++calls, SceneItemModel::index(row, column, parent);
    }
    QModelIndex parent(const QModelIndex& index) const override
    {
        return ++calls, SceneItemModel::parent(index);
    }
    QVariant data(const QModelIndex& index, int role) const override
    {
        return ++calls, SceneItemModel::data(index, role);
    }

    int persistentIndexes() const { return persistentIndexList().size(); }

    mutable int calls = 0;
};

/// The editor's scene and selection. Counts calls, and objects that are handed over in them.
class CountedScene final : public IAssetModel, public IAssetSelection
{
public:
    explicit CountedScene(editor::EditorSession& session)
        : m_selection(session.selection()), m_rows(*session.document())
    {}

    int persistentIndexes() const { return m_rows.persistentIndexes(); }
    int takeCalls() { return std::exchange(m_rows.calls, 0); }

    QAbstractItemModel* itemModel() const override { return const_cast<CountedRows*>(&m_rows); }
    QModelIndex indexOf(const kyr::ReflectedObject& object) const override
    {
        return ++m_rows.calls, m_rows.indexOf(editor::sceneObjectOf(object));
    }
    void setObjectHovered(const kyr::ReflectedObject& object, bool hovered) override
    {
        ++m_rows.calls;
        m_rows.setHovered(*editor::sceneObjectOf(object), hovered);
    }
    void activateItem(const QModelIndex&) override {}

    const Objects& objects() const override { return ++m_rows.calls, m_selection.objects(); }
    void setSelection(Objects objects, bool keepPresent) override
    {
        m_rows.calls += int(objects.size());
        m_selection.setSelection(std::move(objects), keepPresent);
    }
    void clearSelection() override { m_selection.clearSelection(); }
    bool isSelected(const kyr::ReflectedObject& object) const override
    {
        return ++m_rows.calls, m_selection.isSelected(object);
    }
    void setHoveredObjects(Objects objects) override
    {
        m_rows.calls += int(objects.size());
        m_selection.setHoveredObjects(std::move(objects));
    }
    std::weak_ptr<Zar::ChangesController> changesController() const override
    {
        return m_selection.changesController();
    }
    vex::Connection connectSelectionChanged(SelectionChangedCallback callback) override
    {
        return m_selection.connectSelectionChanged(std::move(callback));
    }
    vex::Connection connectHoverChanged(HoverChangedCallback callback) override
    {
        return m_selection.connectHoverChanged(std::move(callback));
    }

private:
    IAssetSelection& m_selection;
    CountedRows m_rows;
};

} // namespace

class EditorScaleTest : public EditorTest
{
protected:
    struct Gesture
    {
        const char* name;
        bool selects;
        /// Calls of the scene, and allocations of the whole program.
        int calls;
        int allocations;
    };

    void drawFrame()
    {
        QSignalSpy drawn(window, &QQuickWindow::frameSwapped);
        window->update();
        ASSERT_TRUE(drawn.wait());
    }
    std::vector<Gesture> gesturesWithAllSelected(int size);
};

std::vector<EditorScaleTest::Gesture> EditorScaleTest::gesturesWithAllSelected(int size)
{
    QSignalSpy loaded(session.loader(), &editor::LoadController::loaded);
    session.loader()->generate({size, editor::SceneShape::Bushy});
    EXPECT_TRUE(loaded.wait());
    CountedScene scene(session);
    SceneBrowserData browser(&scene, &scene, nullptr);
    QQuickItem* panel = item("browser_panel");
    panel->setProperty("browser", QVariant::fromValue<QObject*>(&browser));
    session.actions()->find("select_all")->trigger();
    browser.expandAll();
    EXPECT_TRUE(QTest::qWaitFor([&] { return rows().size() == size + 1; }));
    drawFrame();
    // It is told in slices what is expanded.
    EXPECT_TRUE(QTest::qWaitFor([&] { return scene.takeCalls() == 0; }));

    std::vector<Gesture> gestures;
    const auto selects = [&](const char* name, int selected, auto&& gesture) {
        const bool isChange = session.selection().objects().size() != std::size_t(selected);
        scene.takeCalls();
        const std::size_t before = allocationCount();
        gesture();
        drawFrame();
        gestures.push_back({name, isChange, scene.takeCalls(), int(allocationCount() - before)});
        EXPECT_EQ(session.selection().objects().size(), std::size_t(selected)) << name;
    };
    const QPoint row = item("outline_tree")->mapToScene({100, 40}).toPoint();
    const QPoint view = centre(item("viewport"));
    selects("hover rows", size + 1, [&] {
        for (int i = 0; i < 5; ++i)
            moveTo(row + QPoint(0, 30 * i));
    });
    selects("hover the view", size + 1, [&] {
        for (int i = 0; i < 5; ++i)
            moveTo(view + QPoint(15 * i, 10 * i));
        EXPECT_TRUE(QTest::qWaitFor([&] { return !session.viewport()->hoveredIds().empty(); }));
    });
    selects("scroll", size + 1, [&] {
        for (int i = 0; i < 5; ++i) {
            QWheelEvent wheel(row, window->mapToGlobal(row), {}, {0, -120}, Qt::NoButton, {},
                              Qt::NoScrollPhase, false);
            QCoreApplication::sendEvent(window, &wheel);
            drawFrame();
        }
    });
    selects("toggle a row", size, [&] { click(row, Qt::ControlModifier); });
    selects("toggle it back", size + 1, [&] { click(row, Qt::ControlModifier); });
    selects("select one row", 1, [&] { click(row); });
    // The item model asks each of them whenever rows go, up to the root.
    EXPECT_LT(scene.persistentIndexes(), 20) << "kept of what was selected";
    panel->setProperty("browser", QVariant::fromValue<QObject*>(session.browser()));
    return gestures;
}

TEST_F(EditorScaleTest, nothingIsLinearInTheSelectionPerRowOrFrame)
{
    EXPECT_FALSE(shows("operation_overlay"));
    const std::vector<Gesture> few = gesturesWithAllSelected(500);
    const std::vector<Gesture> many = gesturesWithAllSelected(5000);
    for (std::size_t i = 0; i < few.size(); ++i) {
        // A changed selection is handed over once, as a whole.
        const double most = few[i].selects ? 15 : 1.5;
        EXPECT_LE(many[i].calls, 100 + most * few[i].calls) << few[i].name;
        EXPECT_LE(many[i].allocations, 100 + most * few[i].allocations) << few[i].name;
        EXPECT_GT(few[i].calls, 0) << few[i].name;
    }
    EXPECT_TRUE(QTest::qWaitFor([&] { return text("operation_name") == "Set asset selection"; }));
    EXPECT_GT(session.operations()->longest(), 0);
    EXPECT_LE(session.operations()->longest(), session.operations()->total());
    session.files()->newScene();
    EXPECT_FALSE(shows("operation_overlay"));
}

} // namespace test
