#include "gizmo_types.h"

#include <QStringList>

namespace editor {

namespace {

QString figure(float value, int decimals)
{
    // A value that rounds to nothing has no sign.
    const QString digits = QString::number(std::abs(double(value)), 'f', decimals);
    const bool isZero = digits.toDouble() == 0;
    return (isZero ? QString() : value < 0 ? QStringLiteral("−") : QStringLiteral("+")) + digits;
}

} // namespace

std::vector<int> axesOf(const GizmoHandle& handle)
{
    std::vector<int> axes;
    for (int axis = 0; axis < 3; ++axis) {
        const bool isOwn = axis == handle.axis;
        if (handle.part == GizmoHandle::Part::View ||
            isOwn == (handle.part == GizmoHandle::Part::Axis))
            axes.push_back(axis);
    }
    return axes;
}

QString axisName(int axis)
{
    return QStringLiteral("XYZ").mid(axis, 1);
}

QString unitOf(Gizmo::Tool tool)
{
    switch (tool) {
    case Gizmo::Tool::Move:
        return QStringLiteral(" m");
    case Gizmo::Tool::Rotate:
        return QStringLiteral("°");
    default:
        return {};
    }
}

QString GizmoChange::text() const
{
    const bool onAxis = handle.part == GizmoHandle::Part::Axis;
    const QString name = onAxis ? axisName(handle.axis) + QLatin1String("  ") : QString();
    if (tool == Gizmo::Tool::Rotate)
        return name + figure(angle, 1) + unitOf(tool);
    if (tool == Gizmo::Tool::Scale)
        return name + QStringLiteral("× ") +
               QString::number(double(factors[onAxis ? handle.axis : 0]), 'f', 2);
    QStringList parts;
    for (const int axis : axesOf(handle))
        parts << axisName(axis) + QLatin1String("  ") + figure(offset[axis], 2);
    return parts.join(QLatin1String("   ")) + unitOf(tool);
}

} // namespace editor
