#include "scene_object.h"

#include "property_annotations.h"
#include "scene_document.h"
#include <host/reflection/class_builder.h>
#include <host/variant/scene_item.h>

#include <unordered_map>
#include <utility>

namespace editor {

namespace {

template <typename Component>
std::unique_ptr<Component> copyOf(const std::unique_ptr<Component>& component)
{
    return component ? std::make_unique<Component>(*component) : nullptr;
}

} // namespace

SceneObject::SceneObject(ObjectKind kind, std::string name) : m_name(std::move(name)), m_kind(kind)
{
    if (kind != ObjectKind::Scene)
        m_transform = std::make_unique<TransformComponent>();
    if (kind == ObjectKind::Mesh) {
        m_material = std::make_unique<MaterialComponent>();
        m_mesh = std::make_unique<MeshComponent>();
    }
    if (kind == ObjectKind::Light)
        m_light = std::make_unique<LightComponent>();
    if (kind == ObjectKind::Camera)
        m_camera = std::make_unique<CameraComponent>();
}

SceneObjectPtr SceneObject::create(ObjectKind kind, std::string name)
{
    return SceneObjectPtr(new SceneObject(kind, std::move(name)));
}

SceneObject::~SceneObject()
{
    // Destructors that nest as deep as the tree would exhaust the stack.
    std::vector<SceneObjectPtr> released = std::move(m_children);
    for (const SceneObjectPtr& child : released)
        child->m_parent = nullptr;
    while (!released.empty())
        releaseLast(released);
}

void SceneObject::releaseLast(std::vector<SceneObjectPtr>& objects)
{
    const SceneObjectPtr object = std::move(objects.back());
    objects.pop_back();
    if (object.use_count() > 1)
        return;
    for (const SceneObjectPtr& child : object->m_children)
        child->m_parent = nullptr;
    objects.insert(objects.end(), std::make_move_iterator(object->m_children.begin()),
                   std::make_move_iterator(object->m_children.end()));
    object->m_children.clear();
}

const kyr::ReflectedClass& SceneObject::reflectedClass() const
{
    static const kyr::ReflectedClass description =
        kyr::ClassBuilder<SceneObject>("SceneObject")
            .readOnlyValue<quint32>("id", [](const SceneObject& object) { return object.m_id; })
            .annotate(Label{"Id"})
            .annotate(Meta::SceneItem())
            .value("name", &SceneObject::m_name)
            .annotate(Label{"Name"})
            .annotate(Changes{ChangeAspect::Name})
            .annotate(Meta::SceneItem())
            .value("visible", &SceneObject::m_visible)
            .annotate(Label{"Visible"})
            .annotate(Changes{ChangeAspect::Visibility})
            .value("locked", &SceneObject::m_locked)
            .annotate(Label{"Locked"})
            .annotate(Changes{ChangeAspect::Lock})
            .object("transform", &SceneObject::m_transform)
            .annotate(Label{"Transform"})
            .object("material", &SceneObject::m_material)
            .annotate(Label{"Material"})
            .object("light", &SceneObject::m_light)
            .annotate(Label{"Light"})
            .object("camera", &SceneObject::m_camera)
            .annotate(Label{"Camera"})
            .object("mesh", &SceneObject::m_mesh)
            .annotate(Label{"Mesh"})
            .build();
    return description;
}

bool SceneObject::allowsChange(const kyr::BoundProperty& property)
{
    return !document() || document()->allowsChange(*this, property);
}

void SceneObject::propertyChanged(const kyr::BoundProperty& property, const lumo::Variant& before,
                                  const lumo::Variant& after, vex::Flags<kyr::SetterFlag> flags)
{
    if (document())
        document()->propertyChanged(*this, property, before, after, flags);
}

kyr::ReflectedObject SceneObject::reflected()
{
    return kyr::ReflectedObject(shared_from_this());
}

bool SceneObject::isModified() const noexcept
{
    return document() && (m_version != m_savedVersion || m_savedIn != document()->m_saveCount);
}

int SceneObject::row() const noexcept
{
    if (!m_parent)
        return 0;
    const auto& siblings = m_parent->m_children;
    int& numbered = m_parent->m_numberedChildren;
    if (m_row >= numbered || siblings[std::size_t(m_row)].get() != this) {
        const int count = int(siblings.size());
        for (; numbered < count; ++numbered)
            siblings[std::size_t(numbered)]->m_row = numbered;
    }
    return m_row;
}

bool SceneObject::updateInherited() noexcept
{
    const bool visible = m_visible && (!m_parent || m_parent->m_effectivelyVisible);
    const bool locked = m_locked || (m_parent && m_parent->m_effectivelyLocked);
    const bool changes = visible != m_effectivelyVisible || locked != m_effectivelyLocked;
    m_effectivelyVisible = visible;
    m_effectivelyLocked = locked;
    return changes;
}

bool SceneObject::isInside(const SceneObject& ancestor) const noexcept
{
    const SceneObject* above = m_parent;
    while (above && above != &ancestor)
        above = above->m_parent;
    return above != nullptr;
}

void SceneObject::append(SceneObjectPtr child)
{
    Q_ASSERT(!document() && !child->m_parent && !child->document());
    child->m_parent = this;
    m_children.push_back(std::move(child));
}

std::vector<SceneObjectPtr> SceneObject::takeChildren()
{
    Q_ASSERT(!document());
    for (const SceneObjectPtr& child : m_children)
        child->m_parent = nullptr;
    m_numberedChildren = 0;
    return std::exchange(m_children, {});
}

void SceneObject::setName(std::string name)
{
    Q_ASSERT(!document());
    m_name = std::move(name);
}

void SceneObject::setId(quint32 id)
{
    Q_ASSERT(!document());
    m_id = id;
}

SceneObjectPtr SceneObject::copyValues() const
{
    SceneObjectPtr copy = create(m_kind, m_name);
    copy->m_transform = copyOf(m_transform);
    copy->m_material = copyOf(m_material);
    copy->m_light = copyOf(m_light);
    copy->m_camera = copyOf(m_camera);
    copy->m_mesh = copyOf(m_mesh);
    copy->m_visible = m_visible;
    copy->m_locked = m_locked;
    copy->m_expanded = m_expanded;
    copy->m_selectionSets = m_selectionSets;
    return copy;
}

std::vector<SceneObjectPtr> SceneObject::cloneAll(const std::vector<SceneObjectPtr>& objects)
{
    std::unordered_map<const SceneObject*, SceneObjectPtr> copies;
    std::vector<SceneObjectPtr> result;
    std::vector<const SceneObject*> originals;
    for (const SceneObjectPtr& object : objects) {
        result.push_back(object->copyValues());
        copies.emplace(object.get(), result.back());
        originals.push_back(object.get());
    }
    for (std::size_t i = 0; i < originals.size(); ++i) {
        const SceneObjectPtr parentCopy = copies.at(originals[i]);
        for (const SceneObjectPtr& child : originals[i]->m_children) {
            const SceneObjectPtr copy = child->copyValues();
            parentCopy->append(copy);
            copies.emplace(child.get(), copy);
            originals.push_back(child.get());
        }
    }
    // A camera that looks at an object among them has a copy that looks at the object's copy.
    for (const auto& [original, copy] : copies) {
        if (!copy->m_camera)
            continue;
        const auto target = copies.find(sceneObjectOf(copy->m_camera->target.object()));
        if (target != copies.end())
            copy->m_camera->target = kyr::PersistentObject(target->second->reflected());
    }
    return result;
}

SceneObject* sceneObjectOf(const kyr::ReflectedObject& object) noexcept
{
    return dynamic_cast<SceneObject*>(object.topLevel().get());
}

} // namespace editor
