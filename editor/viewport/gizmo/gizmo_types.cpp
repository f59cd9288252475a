#include "gizmo_types.h"

#include <QStringList>

namespace editor {

namespace {

constexpr char axisNames[] = "XYZ";

QString figure(float value, int decimals)
{
    // A value that rounds to nothing has no sign.
    const QString digits = QString::number(std::abs(double(value)), 'f', decimals);
    const bool isZero = digits.toDouble() == 0;
    return (isZero ? QString() : value < 0 ? QStringLiteral("−") : QStringLiteral("+")) + digits;
}

bool concerns(const GizmoHandle& handle, int axis)
{
    switch (handle.part) {
    case GizmoHandle::Part::Axis:
        return axis == handle.axis;
    case GizmoHandle::Part::Plane:
        return axis != handle.axis;
    default:
        return true;
    }
}

} // namespace

QString GizmoChange::text() const
{
    const bool onAxis = handle.part == GizmoHandle::Part::Axis;
    const QString name =
        onAxis ? QChar::fromLatin1(axisNames[handle.axis]) + QLatin1String("  ") : QString();
    if (tool == Gizmo::Tool::Rotate)
        return name + figure(angle, 1) + QStringLiteral("°");
    if (tool == Gizmo::Tool::Scale)
        return name + QStringLiteral("× ") +
               QString::number(double(factors[onAxis ? handle.axis : 0]), 'f', 2);
    QStringList parts;
    for (int axis = 0; axis < 3; ++axis) {
        if (concerns(handle, axis))
            parts << QChar::fromLatin1(axisNames[axis]) + QLatin1String("  ") +
                         figure(offset[axis], 2);
    }
    return parts.join(QLatin1String("   ")) + QStringLiteral(" m");
}

} // namespace editor
