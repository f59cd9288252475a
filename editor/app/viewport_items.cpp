#include "viewport_items.h"

#include <editor/document/display_color.h>
#include <editor/document/transform_math.h>

namespace editor {

namespace {

ViewportItem::Kind viewportKind(ObjectKind kind)
{
    switch (kind) {
    case ObjectKind::Mesh:
        return ViewportItem::Kind::Mesh;
    case ObjectKind::Light:
        return ViewportItem::Kind::Light;
    case ObjectKind::Camera:
        return ViewportItem::Kind::Camera;
    case ObjectKind::Scene:
    case ObjectKind::Group:
        break;
    }
    return ViewportItem::Kind::Group;
}

QColor viewportColor(const SceneObject& object)
{
    if (object.material())
        return displayColor(object.material()->baseColor);
    if (object.light())
        return displayColor(object.light()->color);
    return Qt::lightGray;
}

} // namespace

ViewportItem viewportItem(const SceneObject& object, const QMatrix4x4& world)
{
    ViewportItem item;
    item.id = object.id();
    item.kind = viewportKind(object.kind());
    if (object.mesh() && object.mesh()->asset)
        item.geometry = object.mesh()->asset->geometry;
    item.transform = world;
    item.color = viewportColor(object);
    item.visible = object.isEffectivelyVisible();
    item.pickable = !object.isEffectivelyLocked();
    return item;
}

std::vector<ViewportItem> viewportItems(const SceneObject& branch, std::size_t most)
{
    struct Placed
    {
        const SceneObject* object;
        QMatrix4x4 world;
        std::size_t parent;
    };
    std::vector<ViewportItem> items;
    std::vector<std::size_t> parents;
    std::vector<Placed> waiting{{&branch, worldTransform(branch), 0}};
    while (!waiting.empty()) {
        const Placed placed = waiting.back();
        waiting.pop_back();
        const std::size_t index = items.size();
        if (index == most)
            return {};
        items.push_back(viewportItem(*placed.object, placed.world));
        parents.push_back(placed.parent);
        const auto& children = placed.object->children();
        for (auto child = children.rbegin(); child != children.rend(); ++child) {
            const TransformComponent* local = (*child)->transform();
            waiting.push_back(
                {child->get(), local ? placed.world * matrixOf(*local) : placed.world, index});
        }
    }
    for (std::size_t index = items.size() - 1; index > 0; --index)
        items[parents[index]].descendants += items[index].descendants + 1;
    return items;
}

} // namespace editor
