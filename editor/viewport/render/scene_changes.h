#pragma once

#include "instance_buffer.h"

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

/// All that a renderer has to catch up with. What is not set has not changed.
struct SceneChanges
{
    std::optional<InstanceList> items;
    std::vector<InstanceBuffer::Patch> patches; ///< of the items, after `items`
    std::optional<InstanceList> highlights;     ///< with the mask's channels for a colour
    std::optional<SceneView> view;
    std::optional<SceneColors> colors;
};

} // namespace editor
