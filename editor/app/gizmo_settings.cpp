#include "gizmo_settings.h"

#include <editor/viewport/viewport_controller.h>

#include <QSettings>

#include <cmath>

namespace editor {

namespace {

const auto localKey = QStringLiteral("gizmo/local");
const auto centreKey = QStringLiteral("gizmo/centre");
const auto snappingKey = QStringLiteral("gizmo/snapping");
const auto distanceKey = QStringLiteral("gizmo/distance");
const auto angleKey = QStringLiteral("gizmo/angle");
const auto factorKey = QStringLiteral("gizmo/factor");

float step(const QSettings& settings, const QString& key, float usual)
{
    const float value = settings.value(key, usual).toFloat();
    return std::isfinite(value) && value > 0 ? value : usual;
}

void restore(GizmoController& gizmo)
{
    const QSettings settings;
    if (settings.value(localKey).toBool())
        gizmo.setSpace(Gizmo::Space::Local);
    if (settings.value(centreKey).toBool())
        gizmo.setPivot(Gizmo::Pivot::Centre);
    gizmo.setSnapping(settings.value(snappingKey).toBool());
    const GizmoSteps usual;
    gizmo.setSteps({step(settings, distanceKey, usual.distance),
                    step(settings, angleKey, usual.angle),
                    step(settings, factorKey, usual.factor)});
}

void remember(const GizmoController& gizmo)
{
    QSettings settings;
    settings.setValue(localKey, gizmo.space() == Gizmo::Space::Local);
    settings.setValue(centreKey, gizmo.pivot() == Gizmo::Pivot::Centre);
    settings.setValue(snappingKey, gizmo.isSnapping());
    settings.setValue(distanceKey, gizmo.steps().distance);
    settings.setValue(angleKey, gizmo.steps().angle);
    settings.setValue(factorKey, gizmo.steps().factor);
}

} // namespace

void keepGizmoSettings(GizmoController& gizmo)
{
    restore(gizmo);
    QObject::connect(&gizmo, &GizmoController::settingsChanged, &gizmo,
                     [&gizmo] { remember(gizmo); });
}

} // namespace editor
