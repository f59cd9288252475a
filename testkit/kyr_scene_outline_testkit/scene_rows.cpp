#include "scene_rows.h"

#include <QAbstractItemModel>

#include <kyr_scene_outline/item_roles.h>

#include <algorithm>

namespace kyr::testkit {
namespace {

class ForeignObject : public IReflected
{
public:
    const ReflectedClass& reflectedClass() const override
    {
        static const ReflectedClass plain{"ForeignObject", {}};
        return plain;
    }
};

} // namespace

QModelIndexList allRows(const QAbstractItemModel& model)
{
    QModelIndexList rows;
    QModelIndexList parents{QModelIndex()};
    while (!parents.isEmpty()) {
        const QModelIndex parent = parents.takeLast();
        if (parent.isValid())
            rows.append(parent);
        for (int row = model.rowCount(parent) - 1; row >= 0; --row) {
            // One that a model counts and has no index for would be the root again, without end.
            if (const QModelIndex child = model.index(row, 0, parent); child.isValid())
                parents.append(child);
        }
    }
    return rows;
}

PersistentObject objectOf(const QModelIndex& row)
{
    return PersistentObject(row.data(ObjectRole).value<ReflectedObject>());
}

Objects objectsOf(const QModelIndexList& rows)
{
    Objects objects;
    for (const QModelIndex& row : rows)
        objects.push_back(objectOf(row));
    return objects;
}

Objects objectsOf(const QAbstractItemModel& model, const QModelIndex& parent, int top, int bottom)
{
    Objects objects;
    for (int row = top; row <= bottom; ++row)
        objects.push_back(objectOf(model.index(row, 0, parent)));
    return objects;
}

Objects withoutDuplicates(const Objects& objects)
{
    Objects kept;
    for (const PersistentObject& object : objects) {
        if (std::find(kept.begin(), kept.end(), object) == kept.end())
            kept.push_back(object);
    }
    return kept;
}

std::set<const void*> identities(const Objects& objects)
{
    std::set<const void*> set;
    for (const PersistentObject& object : objects)
        set.insert(object.identity());
    return set;
}

std::string named(const Objects& objects)
{
    std::string text;
    for (const PersistentObject& object : objects) {
        const ReflectedObject found = object.object();
        text += (text.empty() ? "" : ", ") +
                (found.isValid() ? found.reference().name() : std::string("(gone)"));
    }
    return "[" + text + "]";
}

ReflectedObject foreignObject()
{
    static const auto foreign = std::make_shared<ForeignObject>();
    return ReflectedObject(foreign);
}

} // namespace kyr::testkit
