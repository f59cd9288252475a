#pragma once

#include <editor/document/components.h>
#include <editor/document/object_kind.h>
#include <editor/document/selection_set.h>
#include <host/reflection/reflected_object.h>

#include <QMetaType>
#include <QString>

#include <memory>
#include <string>
#include <vector>

namespace editor {

class SceneDocument;
class SceneObject;
struct PreparedScene;

/// What the objects of a scene share, so that all of them join or leave a document at once.
struct SceneMembership
{
    SceneDocument* document = nullptr;
};

using SceneObjectPtr = std::shared_ptr<SceneObject>;

/// One object of a scene: a node of the tree with reflected properties. Owned by its parent.
///
/// An object is built free of any document, on any thread, and shaped with `append` and the
/// members of its components. Once it belongs to a document, its place is changed by the document
/// and its values through its properties, which is what records them for undo.
class SceneObject final : public kyr::IReflected, public std::enable_shared_from_this<SceneObject>
{
public:
    static SceneObjectPtr create(ObjectKind kind, std::string name);
    /// A free copy of the object alone, under no identifier. Its references lead where those of
    /// the original do.
    SceneObjectPtr copyValues() const;
    /// Free copies of objects, none below another one, and of all below them, under new
    /// identifiers. What refers to an object that is copied too refers to the copy.
    static std::vector<SceneObjectPtr> cloneAll(const std::vector<SceneObjectPtr>& objects);
    ~SceneObject() override;

    const kyr::ReflectedClass& reflectedClass() const override;
    std::string reflectedName() const override { return m_name; }
    bool allowsChange(const kyr::BoundProperty& property) override;
    void propertyChanged(const kyr::BoundProperty& property, const lumo::Variant& before,
                         const lumo::Variant& after, vex::Flags<kyr::SetterFlag> flags) override;
    /// The handle of this object.
    kyr::ReflectedObject reflected();

    ObjectKind kind() const noexcept { return m_kind; }
    /// Unique in the document and never used again there; 0 before it joins one.
    quint32 id() const noexcept { return m_id; }
    const std::string& name() const noexcept { return m_name; }
    QString displayName() const { return QString::fromStdString(m_name); }
    bool isVisible() const noexcept { return m_visible; }
    bool isLocked() const noexcept { return m_locked; }
    /// Visible with everything above it; O(1) within a document.
    bool isEffectivelyVisible() const noexcept { return m_effectivelyVisible; }
    /// Locked, or below something that is; O(1) within a document.
    bool isEffectivelyLocked() const noexcept { return m_effectivelyLocked; }
    /// Nothing but its lock may change: it was locked, or below something that was, when the step
    /// that is open began. What a step itself locks or unlocks counts from the next one on.
    bool isProtected() const noexcept { return m_protected; }
    /// Differs from what the file holds.
    bool isModified() const noexcept;
    /// Whether a view starts with the object's branch open.
    bool isExpanded() const noexcept { return m_expanded; }

    SceneObject* parent() const noexcept { return m_parent; }
    const std::vector<SceneObjectPtr>& children() const noexcept { return m_children; }
    /// Position among its siblings. O(1) as long as the siblings stay where they are.
    int row() const noexcept;
    /// Null for objects that are not part of a document, removed ones included.
    SceneDocument* document() const noexcept
    {
        return m_membership ? m_membership->document : nullptr;
    }
    bool isInside(const SceneObject& ancestor) const noexcept;

    /// Null where the kind has no such component.
    TransformComponent* transform() const noexcept { return m_transform.get(); }
    MaterialComponent* material() const noexcept { return m_material.get(); }
    LightComponent* light() const noexcept { return m_light.get(); }
    CameraComponent* camera() const noexcept { return m_camera.get(); }
    MeshComponent* mesh() const noexcept { return m_mesh.get(); }

    // For objects that are free of a document.

    void append(SceneObjectPtr child);
    /// Leaves it without children.
    std::vector<SceneObjectPtr> takeChildren();
    void setName(std::string name);
    /// Asks for an identifier, which a document grants unless it is taken.
    void setId(quint32 id);

    /// Of a scene; see `SceneDocument::selectionSets`.
    const SelectionSets& selectionSets() const noexcept { return m_selectionSets; }
    void setSelectionSets(SelectionSets sets) { m_selectionSets = std::move(sets); }

    /// How a view left the branch; no change of the scene.
    void setExpanded(bool expanded) noexcept { m_expanded = expanded; }

    /// Lets go of the last one; its children take its place when nobody else has it. So a tree of
    /// any depth is destroyed object by object, without nesting.
    static void releaseLast(std::vector<SceneObjectPtr>& objects);

private:
    friend class SceneDocument;
    friend struct PreparedScene;

    static constexpr quint32 neverSaved = ~0u;
    static constexpr quint32 firstSave = 1;

    SceneObject(ObjectKind kind, std::string name);

    /// Works out what the object has from its parent; whether that changed.
    bool updateInherited() noexcept;

    std::string m_name;
    std::vector<SceneObjectPtr> m_children;
    SelectionSets m_selectionSets;
    SceneObject* m_parent = nullptr;
    std::shared_ptr<const SceneMembership> m_membership;
    std::unique_ptr<TransformComponent> m_transform;
    std::unique_ptr<MaterialComponent> m_material;
    std::unique_ptr<LightComponent> m_light;
    std::unique_ptr<CameraComponent> m_camera;
    std::unique_ptr<MeshComponent> m_mesh;
    quint32 m_id = 0;
    mutable int m_row = 0;
    // Children below this row know their rows.
    mutable int m_numberedChildren = 0;
    // State of the values, and the one that the file holds.
    quint32 m_version = 0;
    quint32 m_savedVersion = 0;
    // Which save of the document wrote the object last; removed objects miss saves.
    quint32 m_savedIn = neverSaved;
    // What of the object awaits notification, as `ChangeAspect` bits.
    unsigned char m_pendingAspects = 0;
    ObjectKind m_kind;
    bool m_visible = true;
    bool m_locked = false;
    bool m_effectivelyVisible = true;
    bool m_effectivelyLocked = false;
    bool m_protected = false;
    bool m_expanded = false;
};

/// The scene object behind a handle of it or of one of its components; null for anything else.
SceneObject* sceneObjectOf(const kyr::ReflectedObject& object) noexcept;

} // namespace editor

Q_DECLARE_METATYPE(editor::SceneObjectPtr)
Q_DECLARE_METATYPE(editor::SceneObject*)
