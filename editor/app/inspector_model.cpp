#include "inspector_model.h"

#include <editor/document/display_color.h>
#include <editor/document/scene_commands.h>

#include <QElapsedTimer>

#include <algorithm>

namespace editor {

namespace {

constexpr qint64 sliceMilliseconds = 4;
constexpr std::size_t objectsBetweenClockReads = 64;

QString kindName(PropertyKind kind)
{
    switch (kind) {
    case PropertyKind::Group:
        return QStringLiteral("group");
    case PropertyKind::Boolean:
        return QStringLiteral("boolean");
    case PropertyKind::Integer:
        return QStringLiteral("integer");
    case PropertyKind::Number:
        return QStringLiteral("number");
    case PropertyKind::Text:
        return QStringLiteral("text");
    case PropertyKind::Choice:
        return QStringLiteral("choice");
    case PropertyKind::Color:
        return QStringLiteral("color");
    case PropertyKind::Vector:
        return QStringLiteral("vector");
    }
    return {};
}

} // namespace

InspectorModel::InspectorModel(SceneDocument& document, IAssetSelection& selection, QObject* parent)
    : QAbstractListModel(parent), m_document(document), m_selection(selection)
{
    m_compareTimer.setSingleShot(true);
    m_compareTimer.setInterval(0);
    connect(&m_compareTimer, &QTimer::timeout, this, &InspectorModel::compareSlice);
    connect(&m_document, &SceneDocument::structureChanged, this, &InspectorModel::followSelection);
    connect(&m_document, &SceneDocument::objectsChanged, this, &InspectorModel::readValues);
    m_selectionChanged =
        m_selection.connectSelectionChanged([this](auto&&, auto&&) { followSelection(); });
    followSelection();
}

InspectorModel::~InspectorModel() = default;

void InspectorModel::followSelection()
{
    m_objects = selectedObjects(m_document, m_selection);
    std::reverse(m_objects.begin(), m_objects.end());
    std::vector<InspectorProperty> properties;
    if (!m_objects.empty())
        properties = inspectorProperties(m_objects.front()->reflected());

    const bool isSame = std::equal(
        properties.begin(), properties.end(), m_lines.begin(), m_lines.end(),
        [](const auto& property, const Line& line) { return isSameLine(property, line.property); });
    if (isSame) {
        readValues();
    } else {
        endChange();
        beginResetModel();
        m_lines.clear();
        for (InspectorProperty& property : properties)
            m_lines.push_back({std::move(property), {}});
        readPrimaryValues();
        endResetModel();
        compareSlice();
    }
    Q_EMIT objectsChanged();
}

void InspectorModel::readValues()
{
    readPrimaryValues();
    emitChanged(0, {ValueRole, MixedRole, ReadOnlyRole});
    compareSlice();
}

void InspectorModel::readPrimaryValues()
{
    m_compareTimer.stop();
    m_compared = 1;
    const bool locked =
        !m_objects.empty() && std::all_of(m_objects.begin(), m_objects.end(),
                                          [](const auto& o) { return o->isEffectivelyLocked(); });
    if (std::exchange(m_locked, locked) != locked)
        Q_EMIT lockedChanged();
    if (m_objects.empty())
        return;
    const kyr::ReflectedObject primary = m_objects.front()->reflected();
    for (Line& line : m_lines)
        line.value = MergedValue(propertyAtPath(primary, line.property.path).get());
}

void InspectorModel::compareSlice()
{
    QElapsedTimer clock;
    clock.start();
    std::vector<bool> changed(m_lines.size());
    while (m_compared < m_objects.size()) {
        const kyr::ReflectedObject object = m_objects[m_compared]->reflected();
        for (std::size_t row = 0; row < m_lines.size(); ++row) {
            auto& [property, value] = m_lines[row];
            if (property.kind == PropertyKind::Group || value.isFullyMixed())
                continue;
            const kyr::BoundProperty other = propertyAtPath(object, property.path);
            if (other.isValid() && value.merge(other.get()))
                changed[row] = true;
        }
        ++m_compared;
        if (m_compared % objectsBetweenClockReads == 0 && clock.elapsed() >= sliceMilliseconds) {
            m_compareTimer.start();
            break;
        }
    }
    for (std::size_t row = 0; row < changed.size(); ++row) {
        if (changed[row])
            Q_EMIT dataChanged(index(int(row)), index(int(row)), {ValueRole, MixedRole});
    }
}

int InspectorModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_lines.size());
}

QVariant InspectorModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const auto& [property, value] = m_lines[std::size_t(index.row())];
    switch (role) {
    case LabelRole:
        return property.label;
    case PathRole:
        return QString::fromStdString(property.path);
    case KindRole:
        return kindName(property.kind);
    case ValueRole:
        return value.display();
    case MixedRole:
        return value.isFullyMixed();
    case ReadOnlyRole:
        return property.isReadOnly || (m_locked && property.path != "locked");
    case UnitRole:
        return property.unit;
    case MinimumRole:
        return property.minimum;
    case MaximumRole:
        return property.maximum;
    case StepRole:
        return property.step;
    case ChoicesRole:
        return property.choices;
    case ExpandedRole:
        return !m_foldedGroups.contains(QString::fromStdString(property.path));
    case ShownRole:
        return !m_foldedGroups.contains(QString::fromStdString(property.group));
    default:
        return {};
    }
}

QHash<int, QByteArray> InspectorModel::roleNames() const
{
    return {{LabelRole, "label"}, {PathRole, "path"},       {KindRole, "kind"},
            {ValueRole, "value"}, {MixedRole, "mixed"},     {ReadOnlyRole, "readOnly"},
            {UnitRole, "unit"},   {MinimumRole, "minimum"}, {MaximumRole, "maximum"},
            {StepRole, "step"},   {ChoicesRole, "choices"}, {ExpandedRole, "expanded"},
            {ShownRole, "shown"}};
}

void InspectorModel::setBoolean(int row, bool value)
{
    const InspectorProperty* property = propertyAt(row);
    if (!property || property->isReadOnly)
        return;
    const std::string path = property->path;
    {
        const Zar::CommitChangesScope step("Set " + property->label.toStdString(),
                                           m_document.changesController().get());
        m_document.setProperty(SceneObjects(m_objects), path, lumo::Variant(value));
    }
    emitChanged(row, {ValueRole});
}

void InspectorModel::setColor(int row, const QColor& color)
{
    const lumo::Color linear = linearColor(color);
    edit(row, [linear](const SceneObject&, const lumo::Variant&) { return lumo::Variant(linear); });
}

void InspectorModel::setText(int row, const QString& text)
{
    const std::string value = text.toStdString();
    edit(row, [value](const SceneObject&, const lumo::Variant&) { return lumo::Variant(value); });
}

void InspectorModel::beginChange(int row)
{
    const InspectorProperty* property = propertyAt(row);
    if (property && !m_change) {
        m_change.emplace("Set " + property->label.toStdString(),
                         m_document.changesController().get());
    }
}

void InspectorModel::endChange()
{
    m_change.reset();
    m_dragStarts.clear();
}

void InspectorModel::edit(int row, const Edit& edit)
{
    const InspectorProperty* property = propertyAt(row);
    if (!property || property->isReadOnly)
        return;
    const std::string path = property->path;
    {
        const Zar::CommitChangesScope step("Set " + property->label.toStdString(),
                                           m_document.changesController().get());
        for (const SceneObjectPtr& object : SceneObjects(m_objects)) {
            const kyr::BoundProperty target = propertyAtPath(object->reflected(), path);
            if (target.isValid())
                target.set(edit(*object, target.get()));
        }
    }
    // A value that was refused must not stay in the field it was typed into.
    if (propertyAt(row))
        Q_EMIT dataChanged(index(row), index(row), {ValueRole});
}

void InspectorModel::toggleGroup(int row)
{
    const InspectorProperty* property = propertyAt(row);
    if (!property || property->kind != PropertyKind::Group)
        return;
    const QString group = QString::fromStdString(property->path);
    if (!m_foldedGroups.remove(group))
        m_foldedGroups.insert(group);
    emitChanged(row, {ExpandedRole, ShownRole});
}

void InspectorModel::emitChanged(int row, const QVector<int>& roles)
{
    if (!m_lines.empty())
        Q_EMIT dataChanged(index(row), index(int(m_lines.size()) - 1), roles);
}

const InspectorProperty* InspectorModel::propertyAt(int row) const
{
    const bool exists = row >= 0 && row < int(m_lines.size());
    return exists ? &m_lines[std::size_t(row)].property : nullptr;
}

} // namespace editor
