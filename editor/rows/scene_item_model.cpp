#include "scene_item_model.h"

#include "row_buttons.h"
#include <editor/document/scene_properties.h>

#include <editor/document/scene_document.h>
#include <host/undo/commit_changes_scope.h>
#include <kyr_scene_outline/item_roles.h>

namespace editor {

namespace {

QVector<int> rolesOf(ChangeAspects aspects)
{
    QVector<int> roles;
    if (aspects & ChangeAspect::Name)
        roles << Qt::DisplayRole << Qt::EditRole;
    if (aspects & (ChangeAspect::Visibility | ChangeAspect::Lock))
        roles << kyr::EnabledRole << kyr::RowButtonsModelRole;
    if (aspects & ChangeAspect::Modified)
        roles << kyr::ModifiedRole;
    if (aspects & ChangeAspect::Children)
        roles << kyr::CountRole;
    if (aspects & ~(ChangeAspects(ChangeAspect::Modified) | ChangeAspect::Children))
        roles << kyr::ObjectRole;
    return roles << SceneProperties::all().changedBy(aspects);
}

QString pathOf(const SceneObject& object)
{
    constexpr int mostNames = 32;
    QStringList names;
    const SceneObject* above = object.parent();
    for (; above && above->parent() && names.size() < mostNames; above = above->parent())
        names.prepend(above->displayName());
    if (above && above->parent())
        names.prepend(QStringLiteral("…"));
    return names.join(QLatin1String(" / "));
}

} // namespace

SceneItemModel::SceneItemModel(SceneDocument& document, QObject* parent)
    : QAbstractItemModel(parent), m_document(document)
{
    followDocument();
}

void SceneItemModel::followDocument()
{
    SceneDocument* from = &m_document;
    connect(from, &SceneDocument::aboutToReset, this, &SceneItemModel::beginResetModel);
    connect(from, &SceneDocument::reset, this, [this] {
        m_hovered.clear();
        endResetModel();
    });
    connect(from, &SceneDocument::rowsAboutToBeInserted, this,
            [this](SceneObject* parent, int first, int last) {
                beginInsertRows(indexOf(parent), first, last);
            });
    connect(from, &SceneDocument::rowsInserted, this, &SceneItemModel::endInsertRows);
    connect(from, &SceneDocument::rowsAboutToBeRemoved, this,
            [this](SceneObject* parent, int first, int last) {
                beginRemoveRows(indexOf(parent), first, last);
            });
    connect(from, &SceneDocument::rowsRemoved, this, &SceneItemModel::endRemoveRows);
    connect(from, &SceneDocument::rowsAboutToBeMoved, this,
            [this](SceneObject* source, int first, int last, SceneObject* target, int row) {
                beginMoveRows(indexOf(source), first, last, indexOf(target), row);
            });
    connect(from, &SceneDocument::rowsMoved, this,
            [this](SceneObject* source, int first, int last, SceneObject* target, int row) {
                endMoveRows();
                if (source == target)
                    return;
                const int count = last - first + 1;
                Q_EMIT dataChanged(index(row, 0, indexOf(target)),
                                   index(row + count - 1, 0, indexOf(target)), {PathRole});
                for (int i = row; i < row + count; ++i)
                    emitPathsBelow(*target->children()[std::size_t(i)]);
            });
    connect(from, &SceneDocument::childrenAboutToBeReordered, this,
            [this](SceneObject* parent) { Q_EMIT layoutAboutToBeChanged({indexOf(parent)}); });
    connect(from, &SceneDocument::childrenReordered, this,
            [this](SceneObject* parent) { finishReordering(*parent); });
    connect(from, &SceneDocument::objectsChanged, this, &SceneItemModel::emitChanges);
}

SceneObject* SceneItemModel::objectAt(const QModelIndex& index) const noexcept
{
    return static_cast<SceneObject*>(index.internalPointer());
}

QModelIndex SceneItemModel::indexOf(const SceneObject* object) const
{
    if (!m_document.contains(object))
        return {};
    return createIndex(object->row(), 0, const_cast<SceneObject*>(object));
}

void SceneItemModel::setHovered(const SceneObject& object, bool hovered)
{
    const bool changed =
        hovered ? m_hovered.insert(object.id()).second : m_hovered.erase(object.id()) != 0;
    const QModelIndex index = indexOf(&object);
    if (changed && index.isValid())
        Q_EMIT dataChanged(index, index, {kyr::HoverRole});
}

QHash<int, QByteArray> SceneItemModel::roleNames() const
{
    QHash<int, QByteArray> names = QAbstractItemModel::roleNames();
    for (auto role = kyr::itemRoleNames.begin(); role != kyr::itemRoleNames.end(); ++role)
        names.insert(role.key(), role.value());
    names.insert(PathRole, "path");
    for (const SceneProperty& property : SceneProperties::all().list()) {
        if (!property.isName())
            names.insert(property.role(), QByteArray::fromStdString(property.path()));
    }
    return names;
}

QModelIndex SceneItemModel::index(int row, int column, const QModelIndex& parent) const
{
    if (!hasIndex(row, column, parent))
        return {};
    if (!parent.isValid())
        return createIndex(row, column, m_document.root().get());
    const auto& children = objectAt(parent)->children();
    return createIndex(row, column, children[std::size_t(row)].get());
}

QModelIndex SceneItemModel::parent(const QModelIndex& index) const
{
    return index.isValid() ? indexOf(objectAt(index)->parent()) : QModelIndex();
}

int SceneItemModel::rowCount(const QModelIndex& parent) const
{
    if (!parent.isValid())
        return 1;
    return parent.column() == 0 ? int(objectAt(parent)->children().size()) : 0;
}

int SceneItemModel::columnCount(const QModelIndex&) const
{
    return 1;
}

bool SceneItemModel::hasChildren(const QModelIndex& parent) const
{
    return rowCount(parent) > 0;
}

QVariant SceneItemModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return {};
    SceneObject& object = *objectAt(index);
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
        return object.displayName();
    case kyr::TypeRole:
        return QString(kindId(object.kind()));
    case kyr::CountRole:
        return int(object.children().size());
    case kyr::ObjectRole:
        return QVariant::fromValue(object.reflected());
    case kyr::ExpandedRole:
        return object.isExpanded();
    case kyr::EnabledRole:
        return object.isEffectivelyVisible() && !object.isEffectivelyLocked();
    case kyr::RowButtonsModelRole:
        return rowButtons(object.isVisible(), object.isLocked());
    case kyr::HoverRole:
        return m_hovered.count(object.id()) != 0;
    case kyr::ModifiedRole:
        return object.isModified();
    case PathRole:
        return pathOf(object);
    default:
        const SceneProperty* property = SceneProperties::all().find(role);
        return property ? property->shownIn(object) : QVariant();
    }
}

bool SceneItemModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (!index.isValid())
        return false;
    SceneObject& object = *objectAt(index);
    switch (role) {
    case Qt::EditRole:
        return m_document.rename(object.shared_from_this(), value.toString());
    case kyr::ExpandedRole:
        object.setExpanded(value.toBool());
        Q_EMIT dataChanged(index, index, {kyr::ExpandedRole});
        return true;
    case kyr::RowButtonsModelRole:
        return setRowButtons(object, value.toMap());
    default:
        return setProperty(object, role, value);
    }
}

bool SceneItemModel::setProperty(SceneObject& object, int role, const QVariant& value)
{
    const SceneProperty* property = SceneProperties::all().find(role);
    const auto edited = property ? property->edited(object, value) : std::nullopt;
    if (!edited)
        return false;
    m_document.setProperty({object.shared_from_this()}, property->propertyPath(), *edited);
    return true;
}

bool SceneItemModel::setRowButtons(SceneObject& object, const QVariantMap& states)
{
    for (auto state = states.begin(); state != states.end(); ++state) {
        if (!isRowButton(state.key()))
            return false;
    }
    const Zar::CommitChangesScope scope(rowButtonsStepName(states, object.name()),
                                        m_document.changesController().get());
    for (auto state = states.begin(); state != states.end(); ++state) {
        m_document.setProperty({object.shared_from_this()}, state.key().toStdString(),
                               lumo::Variant(state.value().toBool()));
    }
    return !states.isEmpty();
}

QVariant SceneItemModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (section == 0 && orientation == Qt::Horizontal && role == Qt::DisplayRole)
        return tr("Name");
    return {};
}

Qt::ItemFlags SceneItemModel::flags(const QModelIndex& index) const
{
    if (!index.isValid())
        return Qt::NoItemFlags;
    const Qt::ItemFlags flags =
        Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsEditable | Qt::ItemIsDropEnabled;
    return objectAt(index)->parent() ? flags | Qt::ItemIsDragEnabled : flags;
}

void SceneItemModel::finishReordering(SceneObject& parent)
{
    const QModelIndexList before = persistentIndexList();
    QModelIndexList after;
    after.reserve(before.size());
    for (const QModelIndex& index : before) {
        const SceneObject* object = objectAt(index);
        after << (object->parent() == &parent ? indexOf(object) : index);
    }
    changePersistentIndexList(before, after);
    Q_EMIT layoutChanged({indexOf(&parent)});
}

void SceneItemModel::emitPathsBelow(SceneObject& top)
{
    std::vector<const SceneObject*> waiting{&top};
    while (!waiting.empty()) {
        const SceneObject* parent = waiting.back();
        waiting.pop_back();
        const auto& children = parent->children();
        if (children.empty())
            continue;
        Q_EMIT dataChanged(indexOf(children.front().get()), indexOf(children.back().get()),
                           {PathRole});
        for (const SceneObjectPtr& child : children) {
            if (!child->children().empty())
                waiting.push_back(child.get());
        }
    }
}

void SceneItemModel::emitChanges(const ObjectChanges& changes)
{
    for (std::size_t i = 0; i < changes.size();) {
        const ObjectChange& first = changes[i];
        const int firstRow = first.object->row();
        int lastRow = firstRow;
        // Siblings in row order that changed in the same way make one range.
        for (++i; i < changes.size() && changes[i].aspects == first.aspects &&
                  changes[i].object->parent() == first.object->parent() &&
                  changes[i].object->row() == lastRow + 1;
             ++i)
            ++lastRow;
        const QModelIndex last = createIndex(lastRow, 0, changes[i - 1].object);
        Q_EMIT dataChanged(indexOf(first.object), last, rolesOf(first.aspects));
    }
    for (const ObjectChange& change : changes) {
        // The scene itself is in no path.
        if ((change.aspects & ChangeAspect::Name) && change.object->parent())
            emitPathsBelow(*change.object);
    }
}

} // namespace editor
