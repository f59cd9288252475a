// The operations of the document, put together from single changes.

#include "scene_document.h"

#include "property_annotations.h"
#include "scene_document_changes.h"
#include "sibling_names.h"
#include "step_name.h"
#include "transform_math.h"
#include "tree_order.h"
#include <host/undo/commit_changes_scope.h>

#include <QScopedValueRollback>

#include <algorithm>
#include <cmath>
#include <numeric>
#include <unordered_set>

namespace editor {

namespace {

// With more runs than this under one parent, one change of order that brings them together is
// cheaper for everybody who follows the rows.
constexpr std::size_t scatteredRuns = 8;

/// Objects with the same parent, parents in order of their first object.
std::vector<SceneObjects> byParent(const SceneObjects& objects)
{
    std::vector<SceneObjects> groups;
    std::unordered_map<const SceneObject*, std::size_t> groupOf;
    for (const SceneObjectPtr& object : objects) {
        const auto [entry, isNew] = groupOf.try_emplace(object->parent(), groups.size());
        if (isNew)
            groups.emplace_back();
        groups[entry->second].push_back(object);
    }
    return groups;
}

const SceneObject* lockedBelow(const SceneObject& branch)
{
    std::vector<const SceneObject*> waiting{&branch};
    while (!waiting.empty()) {
        const SceneObject* object = waiting.back();
        waiting.pop_back();
        if (object->isProtected())
            return object;
        for (const SceneObjectPtr& child : object->children())
            waiting.push_back(child.get());
    }
    return nullptr;
}

bool nearlyEqual(const lumo::Vector3& a, const lumo::Vector3& b)
{
    const auto near = [](float x, float y) {
        return std::abs(x - y) <= 1e-5f * std::max({1.0f, std::abs(x), std::abs(y)});
    };
    return near(a.x, b.x) && near(a.y, b.y) && near(a.z, b.z);
}

} // namespace

SceneObjects SceneDocument::topmost(const SceneObjects& objects) const
{
    std::unordered_set<const SceneObject*> chosen;
    for (const SceneObjectPtr& object : objects) {
        if (contains(object.get()) && object != m_root)
            chosen.insert(object.get());
    }
    SceneObjects top;
    for (const SceneObjectPtr& object : objects) {
        if (chosen.count(object.get()) == 0)
            continue;
        const SceneObject* above = object->parent();
        while (above && chosen.count(above) == 0)
            above = above->parent();
        if (!above)
            top.push_back(object);
    }
    std::sort(top.begin(), top.end(), [](const SceneObjectPtr& a, const SceneObjectPtr& b) {
        return precedesInTree(*a, *b);
    });
    top.erase(std::unique(top.begin(), top.end()), top.end());
    return top;
}

bool SceneDocument::rename(const SceneObjectPtr& object, const QString& name)
{
    const QString trimmed = name.trimmed();
    if (!contains(object.get()) || trimmed.isEmpty() || trimmed == object->displayName() ||
        refuses(*object))
        return false;
    const Zar::CommitChangesScope scope("Rename " + object->name(), m_controller.get());
    return object->reflected().property("name").set(lumo::Variant(trimmed.toStdString()));
}

bool SceneDocument::insert(const SceneObjects& objects, SceneObject& parent, int row)
{
    const int count = int(parent.children().size());
    const bool areFree = std::all_of(objects.begin(), objects.end(), [](const auto& object) {
        return object && !object->document() && !object->parent();
    });
    if (objects.empty() || !areFree || !contains(&parent) || row < 0 || row > count ||
        refuses(parent))
        return false;
    perform(std::make_unique<RowsChange>(*this, parent.shared_from_this(), row, objects),
            stepName("Add", objects));
    return true;
}

SceneObjects SceneDocument::removable(const SceneObjects& objects)
{
    SceneObjects doomed = unlocked(topmost(objects));
    doomed.erase(std::remove_if(doomed.begin(), doomed.end(),
                                [this](const SceneObjectPtr& object) {
                                    const SceneObject* locked = lockedBelow(*object);
                                    return locked && refuses(*locked);
                                }),
                 doomed.end());
    return doomed;
}

bool SceneDocument::remove(const SceneObjects& objects)
{
    const SceneObjects doomed = removable(objects);
    if (doomed.empty())
        return false;
    const Zar::CommitChangesScope scope(stepName("Delete", doomed), m_controller.get());
    gatherScattered(doomed);
    for (const SceneObjects& siblings : byParent(doomed)) {
        const std::vector<RowRun> runs = runsOf(siblings);
        const SceneObjectPtr parent = runs.front().parent->shared_from_this();
        for (auto run = runs.rbegin(); run != runs.rend(); ++run) {
            perform(std::make_unique<RowsChange>(*this, parent, run->first, run->count), {});
        }
    }
    return true;
}

SceneObjects SceneDocument::duplicate(const SceneObjects& objects)
{
    SceneObjects originals = topmost(objects);
    originals.erase(
        std::remove_if(originals.begin(), originals.end(),
                       [this](const SceneObjectPtr& object) { return refuses(*object->parent()); }),
        originals.end());
    SceneObjects copies;
    if (originals.empty())
        return copies;
    const Zar::CommitChangesScope scope(stepName("Duplicate", originals), m_controller.get());
    std::unordered_map<const SceneObject*, SceneObjectPtr> copyOf;
    const SceneObjects clones = SceneObject::cloneAll(originals);
    for (std::size_t i = 0; i < originals.size(); ++i)
        copyOf.emplace(originals[i].get(), clones[i]);
    for (const SceneObjects& siblings : byParent(originals)) {
        SceneObject& parent = *siblings.front()->parent();
        SiblingNames names(parent);
        SceneObjects group;
        for (const SceneObjectPtr& original : siblings) {
            group.push_back(copyOf.at(original.get()));
            group.back()->setName(names.next(original->name()));
        }
        copies.insert(copies.end(), group.begin(), group.end());
        perform(std::make_unique<RowsChange>(*this, parent.shared_from_this(),
                                             siblings.back()->row() + 1, std::move(group)),
                {});
    }
    return copies;
}

bool SceneDocument::reparent(const SceneObjects& objects, SceneObject& parent, int row)
{
    if (contains(&parent) && refuses(parent))
        return false;
    const SceneObjects moving = unlocked(topmost(objects));
    const bool isCircular =
        std::any_of(moving.begin(), moving.end(), [&parent](const SceneObjectPtr& object) {
            return object.get() == &parent || parent.isInside(*object);
        });
    const int count = int(parent.children().size());
    if (moving.empty() || isCircular || !contains(&parent) || row < -1 || row > count)
        return false;

    // The first child from `row` on that stays is what the others go before.
    const std::unordered_set<const SceneObject*> isMoving = [&moving] {
        std::unordered_set<const SceneObject*> set;
        for (const SceneObjectPtr& object : moving)
            set.insert(object.get());
        return set;
    }();
    int anchorRow = row < 0 ? count : row;
    const auto childAt = [&parent](int at) { return parent.children()[std::size_t(at)].get(); };
    while (anchorRow < count && isMoving.count(childAt(anchorRow)) != 0)
        ++anchorRow;
    const SceneObject* anchor = anchorRow < count ? childAt(anchorRow) : nullptr;

    const Zar::CommitChangesScope scope(stepName("Move", moving), m_controller.get());
    const QMatrix4x4 newBase = worldTransform(parent);
    gatherScattered(moving);
    auto next = moving.begin();
    for (std::size_t placed = 0; placed < moving.size();) {
        const SceneObjectPtr from = (*next)->parent()->shared_from_this();
        const int first = (*next)->row();
        int length = 1;
        while (next + length != moving.end() && (*(next + length))->parent() == from.get() &&
               (*(next + length))->row() == first + length)
            ++length;
        const int target = anchor ? anchor->row() : int(parent.children().size());
        const QMatrix4x4 oldBase = worldTransform(*from);
        const bool staysHere = from.get() == &parent && first <= target && target <= first + length;
        if (!staysHere) {
            perform(std::make_unique<MoveChange>(*this, from, first, length,
                                                 parent.shared_from_this(), target),
                    {});
        }
        if (oldBase != newBase) {
            for (auto object = next; object != next + length; ++object)
                placeInWorld(*object, oldBase * matrixOf(*(*object)->transform()));
        }
        next += length;
        placed += std::size_t(length);
    }
    return true;
}

void SceneDocument::placeInWorld(const SceneObjectPtr& object, const QMatrix4x4& world)
{
    bool isInvertible = false;
    const QMatrix4x4 toParent = worldTransform(*object->parent()).inverted(&isInvertible);
    if (!isInvertible)
        return;
    TransformComponent placed;
    setFromMatrix(placed, toParent * world);
    const kyr::ReflectedObject transform(object->reflected().property("transform"));
    const TransformComponent& present = *object->transform();
    if (!nearlyEqual(placed.position, present.position))
        transform.property("position").set(lumo::Variant(placed.position));
    if (!nearlyEqual(placed.rotation, present.rotation))
        transform.property("rotation").set(lumo::Variant(placed.rotation));
    if (!nearlyEqual(placed.scale, present.scale))
        transform.property("scale").set(lumo::Variant(placed.scale));
}

void SceneDocument::setSelectionSets(SelectionSets sets, const std::string& step)
{
    if (!(sets == selectionSets()))
        perform(std::make_unique<SetsChange>(*this, std::move(sets)), step);
}

int SceneDocument::setProperty(const SceneObjects& objects, std::string_view path,
                               const lumo::Variant& value)
{
    const Zar::CommitChangesScope scope("Set " + std::string(path), m_controller.get());
    const QScopedValueRollback setsLocks(m_setsLocks, true);
    int changed = 0;
    for (const SceneObjectPtr& object : objects) {
        if (!contains(object.get()))
            continue;
        const kyr::BoundProperty property = propertyAtPath(object->reflected(), path);
        if (!property.isValid())
            continue;
        const lumo::Variant before = property.get();
        if (property.set(value) && property.get() != before)
            ++changed;
    }
    return changed;
}

void SceneDocument::gatherScattered(const SceneObjects& objects)
{
    for (const SceneObjects& siblings : byParent(objects)) {
        if (runsOf(siblings).size() > scatteredRuns)
            gather(*siblings.front()->parent(), siblings);
    }
}

void SceneDocument::gather(SceneObject& parent, const SceneObjects& children)
{
    std::vector<int> order(parent.children().size());
    std::iota(order.begin(), order.end(), 0);
    std::vector<bool> isGathered(order.size());
    for (const SceneObjectPtr& child : children)
        isGathered[std::size_t(child->row())] = true;
    std::stable_partition(order.begin() + children.front()->row(), order.end(),
                          [&](int row) { return bool(isGathered[std::size_t(row)]); });
    perform(std::make_unique<OrderChange>(*this, parent.shared_from_this(), std::move(order)), {});
}

kyr::BoundProperty propertyAtPath(const kyr::ReflectedObject& object, std::string_view path)
{
    kyr::ReflectedObject holder = object;
    for (;;) {
        const std::size_t dot = path.find('.');
        kyr::BoundProperty property = holder.property(path.substr(0, dot));
        if (dot == std::string_view::npos || !property.isValid())
            return property;
        holder = kyr::ReflectedObject(property);
        path.remove_prefix(dot + 1);
    }
}

} // namespace editor
