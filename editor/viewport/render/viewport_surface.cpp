#include "viewport_surface.h"

#include "marker_shapes.h"
#include "scene_renderer.h"

namespace editor {

namespace {

constexpr float gridReachPerDistance = 25.0f;
constexpr float gridLinesPerDistance = 20.0f;

// What to set of the mask from which outlines are made.
const QColor selectedChannels(255, 0, 0, 0);
const QColor primaryChannels(255, 255, 0, 0);
const QColor hoveredChannels(0, 0, 255, 0);

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

ViewportSurface::ViewportSurface(QQuickItem* parent)
    : QQuickFramebufferObject(parent), m_lightSign(makeLightSign()), m_cameraSign(makeCameraSign())
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
        connect(m_controller, &ViewportController::selectionChanged, this,
                [this] { schedule(Highlights); });
        connect(m_controller, &ViewportController::hoverChanged, this,
                [this] { schedule(Highlights); });
        connect(m_controller, &ViewportController::cameraChanged, this, [this] { schedule(View); });
        connect(m_controller, &QObject::destroyed, this, [this] { schedule(Everything); });
    }
    schedule(Everything);
    Q_EMIT controllerChanged();
}

QQuickFramebufferObject::Renderer* ViewportSurface::createRenderer() const
{
    return new SceneRenderer;
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
    else
        changes.patches = std::move(m_patches);
    m_patches.clear();
    if (changed & (Items | Highlights))
        changes.highlights = listHighlights();
    if ((changed & View) && m_controller)
        changes.view = viewOf(m_controller->camera());
    if (changed & Colors)
        changes.colors = m_colors;
    return changes;
}

void ViewportSurface::patchItem(quint32 index)
{
    schedule(Highlights | View); // what moves may move the far plane
    if (m_changes & Items)
        return;
    const ViewportItem& item = m_controller->items().items()[index];
    const bool keepsSlot = m_slots[index] != noSlot && m_drawnMeshes[index] == meshOf(item).get();
    // A hidden view takes no changes away; better to start anew than to heap them up.
    const bool isSparse = m_patches.size() < m_slots.size() / 4 + 16;
    if (keepsSlot && item.visible && isSparse)
        m_patches.push_back({m_slots[index], Instance(item.transform, item.color), item.bounds()});
    else
        schedule(Items);
}

const MeshGeometryPtr& ViewportSurface::meshOf(const ViewportItem& item) const
{
    if (!item.isMarker())
        return item.geometry;
    return item.kind == ViewportItem::Kind::Light ? m_lightSign : m_cameraSign;
}

InstanceList::Entry ViewportSurface::entryOf(const ViewportItem& item, const QColor& color) const
{
    const auto shape = item.isMarker() ? InstanceList::Shape::Marker : InstanceList::Shape::Mesh;
    return {meshOf(item), shape, Instance(item.transform, color), item.bounds()};
}

InstanceList ViewportSurface::listItems()
{
    if (!m_controller)
        return {};
    const ItemSet& items = m_controller->items();
    std::vector<InstanceList::Entry> entries;
    std::vector<quint32> drawn;
    entries.reserve(items.items().size());
    drawn.reserve(items.items().size());
    m_drawnMeshes.assign(items.items().size(), nullptr);
    for (quint32 index : items.spatialOrder()) {
        const ViewportItem& item = items.items()[index];
        if (!isDrawn(item))
            continue;
        entries.push_back(entryOf(item, item.color));
        drawn.push_back(index);
        m_drawnMeshes[index] = meshOf(item).get();
    }

    InstanceList list(entries);
    m_slots.assign(items.items().size(), noSlot);
    for (quint32 i = 0; i < drawn.size(); ++i)
        m_slots[drawn[i]] = list.slotOf(i);
    return list;
}

InstanceList ViewportSurface::listHighlights() const
{
    if (!m_controller)
        return {};
    const auto& selected = m_controller->selectedIds();
    std::vector<InstanceList::Entry> entries;
    entries.reserve(selected.size() + m_controller->hoveredIds().size());
    const auto mark = [&](quint32 id, const QColor& channels) {
        const ViewportItem* item = m_controller->items().find(id);
        if (item && isDrawn(*item))
            entries.push_back(entryOf(*item, channels));
    };
    for (std::size_t i = 0; i < selected.size(); ++i)
        mark(selected[i], m_controller->isPrimary(i) ? primaryChannels : selectedChannels);
    for (quint32 id : m_controller->hoveredIds())
        mark(id, hoveredChannels);
    return InstanceList(entries);
}

} // namespace editor
