#pragma once

namespace editor {

class GizmoController;

/// Gives the gizmo the axes, the pivot and the steps that it had in the last run, and remembers
/// each that it takes from now on.
void keepGizmoSettings(GizmoController& gizmo);

} // namespace editor
