#pragma once

#include <editor/app/isolation.h>

#include <editor/document/scene_document.h>
#include <editor/viewport/viewport_controller.h>
#include <host/scene/asset_selection.h>

namespace editor {

/// Keeps a 3D view in step with the scene, and its marks and picks with the selection and the
/// hovered object that all views share.
class ViewportBinding final : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool isolated READ isIsolated NOTIFY isolatedChanged)

public:
    /// Document and selection must outlive the binding.
    ViewportBinding(SceneDocument& document, IAssetSelection& selection, QObject* parent = nullptr);

    ViewportController* controller() noexcept { return &m_controller; }

    /// The items of the scene that the document opens next, which it then need not list.
    void prepare(PreparedItems items) { m_prepared = std::move(items); }

    /// Fills the view with the object and what is below it.
    void frame(SceneObject& object);
    /// Fills the view with the selection, or with everything when nothing is selected.
    Q_INVOKABLE void frameSelection();
    Q_INVOKABLE void frameAll();

    /// Shows the selected objects alone, or everything again. Ends with the scene.
    Q_INVOKABLE void toggleIsolation();
    bool isIsolated() const noexcept { return m_isolation.isActive(); }

Q_SIGNALS:
    void isolatedChanged();
    /// A right click; what was under it is selected by now.
    void contextMenuRequested();
    /// One sentence for the status.
    void reported(const QString& text);

private:
    void followDocument();
    void followSelection();
    void followView();

    void resetItems();
    /// Children that came, or those that go; given up in favour of a reset when there are many.
    void insertRows(const SceneObject& parent, int first, int last);
    void removeRows(const SceneObject& parent, int first, int last);
    void finishStructure();
    void updateItem(ViewportItem& item);
    void updateItems(const ObjectChanges& changes);
    void showSelection();
    void showHover();

    void pick(quint32 id, Qt::KeyboardModifiers modifiers);
    void selectIds(const std::vector<quint32>& ids, Qt::KeyboardModifiers modifiers);
    IAssetSelection::Objects objectsOf(const std::vector<quint32>& ids) const;
    /// Without those that are not in the scene.
    std::vector<quint32> idsOf(const IAssetSelection::Objects& objects) const;

    SceneDocument& m_document;
    IAssetSelection& m_selection;
    ViewportController m_controller;
    Isolation m_isolation;
    IAssetSelection::Objects m_hovered;
    std::optional<PreparedItems> m_prepared;
    bool m_isNewScene = false;
    /// The items have to be built anew when the step is over.
    bool m_needsReset = false;
    int m_rowChanges = 0; // in the step
    vex::Connection m_selectionChanged;
    vex::Connection m_hoverChanged;
};

} // namespace editor
