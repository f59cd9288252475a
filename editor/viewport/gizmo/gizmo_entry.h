#pragma once

#include <editor/viewport/gizmo/gizmo_types.h>

#include <QStringList>

namespace editor {

/// Numbers typed during a drag, which count in place of the pointer's way: one for each figure of
/// the handle, where those that nothing was typed for stay as they were at the start.
class GizmoEntry
{
public:
    GizmoEntry() = default;
    GizmoEntry(Gizmo::Tool tool, const GizmoHandle& handle);

    bool isEmpty() const;
    /// A digit, the point or comma, the sign, Backspace, or Tab for the next figure; false for any
    /// other key.
    bool press(int key);
    void applyTo(GizmoChange& change) const;
    /// The figures as they are being typed.
    QString text() const;

private:
    void type(QChar character);
    double numberAt(int figure, double otherwise) const;

    Gizmo::Tool m_tool = Gizmo::Tool::None;
    GizmoHandle m_handle;
    QStringList m_texts{QString()};
    int m_current = 0;
};

} // namespace editor
