#pragma once

#include <editor/viewport/render/instance_buffer.h>

#include <QColor>
#include <QMatrix4x4>
#include <QSizeF>
#include <QVector3D>

#include <optional>

namespace editor {

/// What the camera sees, as the shaders need it.
struct SceneView
{
    QMatrix4x4 viewProjection;
    QVector3D eye;
    ConvexVolume volume;
    QSizeF size; ///< in pixels as Qt Quick counts them
    QVector3D gridCentre;
    float gridReach = 1.0f;
    float gridStep = 1.0f;
    float gridBlend = 0.0f;
};

struct SceneColors
{
    QColor selection;
    QColor primary;
    QColor hover;
    QColor grid;
};

/// What is selected: an outline in one colour, and in another one for the primary branch.
struct SelectionMarks
{
    InstanceList items;
    ItemRange primary;
};

/// What is hovered, named among the drawn items so that a mark costs the same for any branch.
struct HoverMarks
{
    std::vector<quint32> slots; ///< of the items of small branches
    std::vector<ItemRange> branches;
    Box slotBounds;

    bool isEmpty() const { return slots.empty() && branches.empty(); }
};

/// All that a renderer has to catch up with. What is not set has not changed.
struct SceneChanges
{
    std::optional<InstanceList> items;
    std::vector<InstanceBuffer::Patch> patches; ///< of the items, after `items`
    std::vector<InstanceList::Entry> additions; ///< behind the items, in the order of their slots
    std::optional<SelectionMarks> selection;
    std::optional<HoverMarks> hover; ///< after `items`
    std::optional<SceneView> view;
    std::optional<SceneColors> colors;

    /// Whether the picture below the outlines is another one.
    bool touchScene() const
    {
        return items || !patches.empty() || !additions.empty() || view || colors;
    }
};

} // namespace editor
