#include "viewport_surface.h"

#include "scene_renderer.h"

namespace editor {

namespace {

constexpr float gridReachPerDistance = 25.0f;
constexpr float gridLinesPerDistance = 20.0f;
constexpr float outOfView = 1e15f;

SceneView viewOf(const OrbitCamera& camera)
{
    SceneView view;
    view.viewProjection = camera.projection() * camera.view();
    view.eye = camera.eye();
    view.volume = camera.volumeOf(QRectF(QPointF(), camera.viewport()));
    view.size = camera.viewport();

    const float exponent = std::log10(camera.distance() / gridLinesPerDistance);
    view.gridCentre = QVector3D(camera.target().x(), 0.0f, camera.target().z());
    view.gridReach = (camera.distance() + std::abs(view.eye.y())) * gridReachPerDistance;
    view.gridStep = std::pow(10.0f, std::floor(exponent));
    view.gridBlend = exponent - std::floor(exponent);
    return view;
}

} // namespace

ViewportSurface::ViewportSurface(QQuickItem* parent) : QQuickFramebufferObject(parent)
{
    setMirrorVertically(true);
}

void ViewportSurface::setController(ViewportController* controller)
{
    if (controller == m_controller)
        return;
    if (m_controller)
        m_controller->disconnect(this);
    m_controller = controller;
    if (m_controller) {
        connect(m_controller, &ViewportController::itemsReset, this, [this] { schedule(Items); });
        connect(m_controller, &ViewportController::itemChanged, this, &ViewportSurface::patchItem);
        connect(m_controller, &ViewportController::itemsInserted, this, &ViewportSurface::addItems);
        connect(m_controller, &ViewportController::itemsRemoved, this,
                &ViewportSurface::removeItems);
        connect(m_controller, &ViewportController::selectionChanged, this,
                [this] { schedule(Selection); });
        connect(m_controller, &ViewportController::hoverChanged, this, [this] { schedule(Hover); });
        connect(m_controller, &ViewportController::cameraChanged, this, [this] { schedule(View); });
        connect(m_controller, &QObject::destroyed, this, [this] { schedule(Everything); });
    }
    schedule(Everything);
    Q_EMIT controllerChanged();
}

QQuickFramebufferObject::Renderer* ViewportSurface::createRenderer() const
{
    return new SceneRenderer(m_counts);
}

void ViewportSurface::schedule(int changes)
{
    m_changes |= changes;
    update();
}

void ViewportSurface::setColor(QColor& color, const QColor& value)
{
    if (color == value)
        return;
    color = value;
    schedule(Colors);
    Q_EMIT colorsChanged();
}

SceneChanges ViewportSurface::takeChanges()
{
    const int changed = std::exchange(m_changes, 0);
    SceneChanges changes;
    if (changed & Items)
        changes.items = listItems();
    else {
        changes.patches = std::move(m_patches);
        changes.additions = std::move(m_additions);
    }
    m_patches.clear();
    m_additions.clear();
    if (changed & (Items | Selection))
        changes.selection = listSelection();
    if (changed & (Items | Hover))
        changes.hover = listHover();
    if ((changed & View) && m_controller)
        changes.view = viewOf(m_controller->camera());
    if (changed & Colors)
        changes.colors = m_colors;
    return changes;
}

void ViewportSurface::patchItem(quint32 index)
{
    // What moves may move the far plane, and take an outline along.
    schedule(View | Hover | (m_controller->selectedIds().empty() ? 0 : Selection));
    if (m_changes & Items)
        return;
    const ViewportItem& item = m_controller->items().items()[index];
    const bool keepsSlot =
        m_slots[index] != noSlot && m_drawnMeshes[index] == drawnMesh(item).get();
    if (keepsSlot && item.visible)
        patch(m_slots[index], drawnEntry(m_controller->items(), index).instance, item.bounds());
    else
        schedule(Items);
}

void ViewportSurface::patch(quint32 slot, const Instance& instance, const Box& bounds)
{
    // A hidden view takes no changes away; better to start anew than to heap them up.
    const bool isSparse = m_patches.size() < m_slots.size() / 4 + 16;
    const quint32 firstAdded = m_slotCount - quint32(m_additions.size());
    if (slot >= firstAdded) {
        m_additions[slot - firstAdded].instance = instance;
        m_additions[slot - firstAdded].bounds = bounds;
    } else if (isSparse) {
        m_patches.push_back({slot, instance, bounds});
    } else {
        schedule(Items);
    }
}

void ViewportSurface::addItems(const std::vector<quint32>& indices)
{
    schedule(View | Hover);
    const std::size_t count = m_controller->items().items().size();
    m_slots.resize(count, noSlot);
    m_drawnMeshes.resize(count, nullptr);
    for (const quint32 index : indices) {
        const ViewportItem& item = m_controller->items().items()[index];
        if ((m_changes & Items) || !isDrawn(item))
            continue;
        if (m_slotCount == m_listedCount + InstanceBuffer::spare) {
            schedule(Items);
            continue;
        }
        m_slots[index] = m_slotCount++;
        m_drawnMeshes[index] = drawnMesh(item).get();
        m_additions.push_back(drawnEntry(m_controller->items(), index));
        ++m_counts->listed;
    }
}

void ViewportSurface::removeItems(const std::vector<quint32>& indices)
{
    schedule(View | Hover);
    if (m_changes & Items)
        return;
    // Without a size, and so far away that a sign of fixed size is out of view.
    QMatrix4x4 nothing;
    nothing.fill(0);
    nothing.setColumn(3, {outOfView, outOfView, outOfView, 1});
    for (const quint32 index : indices) {
        const quint32 slot = std::exchange(m_slots[index], noSlot);
        m_drawnMeshes[index] = nullptr;
        if (slot != noSlot)
            patch(slot, Instance(nothing, Qt::black, 0), Box());
    }
}

InstanceList ViewportSurface::listItems()
{
    if (!m_controller)
        return {};
    std::optional<DrawList> drawn = m_controller->takeDrawList();
    if (!drawn) {
        drawn.emplace(m_controller->items());
        m_counts->listed += int(drawn->instances.instances().size());
    }
    m_slots = std::move(drawn->slots);
    m_drawnMeshes = std::move(drawn->meshes);
    m_slotCount = m_listedCount = quint32(drawn->instances.instances().size());
    return std::move(drawn->instances);
}

SelectionMarks ViewportSurface::listSelection() const
{
    if (!m_controller || m_controller->selectedIds().empty())
        return {};
    const ItemSet& items = m_controller->items();
    std::vector<quint32> indices;
    for (const ItemRange& branch : items.branchesOf(m_controller->selectedIds())) {
        items.visitRange(branch, [&](quint32 index) {
            if (isDrawn(items.items()[index]))
                indices.push_back(index);
        });
    }
    m_counts->listed += int(indices.size());
    return {instancesOf(items, indices), items.branchOf(m_controller->selectedIds().back())};
}

HoverMarks ViewportSurface::listHover() const
{
    HoverMarks marks;
    if (!m_controller)
        return marks;
    const ItemSet& items = m_controller->items();
    for (const ItemRange& branch : items.branchesOf(m_controller->hoveredIds())) {
        if (items.countIn(branch) > smallBranch) {
            marks.branches.push_back(branch);
            continue;
        }
        items.visitRange(branch, [&](quint32 index) {
            if (m_slots[index] == noSlot)
                return;
            marks.slots.push_back(m_slots[index]);
            marks.slotBounds.include(items.items()[index].bounds());
            ++m_counts->listed;
        });
    }
    return marks;
}

} // namespace editor
