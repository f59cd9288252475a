#include "inspector_model.h"

#include <editor/document/display_color.h>
#include <editor/document/scene_commands.h>
#include <editor/document/scene_properties.h>
#include <editor/document/step_name.h>

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
    std::vector<Line> lines = primaryLines();
    const bool isSame =
        std::equal(lines.begin(), lines.end(), m_lines.begin(), m_lines.end(),
                   [](const Line& line, const Line& other) { return line.isSameAs(other); });
    if (isSame) {
        readValues();
    } else {
        endChange();
        beginResetModel();
        m_lines = std::move(lines);
        readPrimaryValues();
        endResetModel();
        compareSlice();
    }
    Q_EMIT objectsChanged();
}

std::vector<InspectorModel::Line> InspectorModel::primaryLines() const
{
    std::vector<Line> lines;
    if (m_objects.empty())
        return lines;
    std::string group;
    for (const SceneProperty& property : SceneProperties::all().list()) {
        if (property.isComponent() || !property.valueIn(*m_objects.front()))
            continue;
        const std::string own = property.groupPath();
        if (!own.empty() && own != group)
            lines.push_back({own, property.group(), {}});
        group = own;
        lines.push_back({property.path(), property.title(), own, &property});
    }
    return lines;
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
    for (Line& line : m_lines) {
        if (line.property)
            line.value = MergedValue(*line.property->valueIn(*m_objects.front()));
    }
}

void InspectorModel::compareSlice()
{
    QElapsedTimer clock;
    clock.start();
    std::vector<bool> changed(m_lines.size());
    while (m_compared < m_objects.size()) {
        SceneObject& object = *m_objects[m_compared];
        for (std::size_t row = 0; row < m_lines.size(); ++row) {
            Line& line = m_lines[row];
            if (!line.property || line.value.isFullyMixed())
                continue;
            const std::optional<lumo::Variant> other = line.property->valueIn(object);
            if (other && line.value.merge(*other))
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
    const Line& line = m_lines[std::size_t(index.row())];
    switch (role) {
    case LabelRole:
        return line.label;
    case PathRole:
        return QString::fromStdString(line.path);
    case KindRole:
        return kindName(line.kind());
    case ValueRole:
        return line.value.display();
    case MixedRole:
        return line.value.isFullyMixed();
    case ExpandedRole:
        return !m_foldedGroups.contains(QString::fromStdString(line.path));
    case ShownRole:
        return !m_foldedGroups.contains(QString::fromStdString(line.group));
    default:
        return line.property ? describe(*line.property, role) : QVariant();
    }
}

QVariant InspectorModel::describe(const SceneProperty& property, int role) const
{
    switch (role) {
    case ReadOnlyRole:
        return !property.isEditable() || (m_locked && property.path() != "locked");
    case UnitRole:
        return property.unit();
    case MinimumRole:
        return property.minimum();
    case MaximumRole:
        return property.maximum();
    case StepRole:
        return property.step();
    case ChoicesRole:
        return property.choices();
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
    const SceneProperty* property = propertyAt(row);
    if (!property || !property->isEditable())
        return;
    {
        const Zar::CommitChangesScope step(stepOf(*property), m_document.changesController().get());
        m_document.setProperty(SceneObjects(m_objects), property->path(), lumo::Variant(value));
    }
    emitChanged(row, {ValueRole});
}

void InspectorModel::setColor(int row, const QColor& color)
{
    setText(row, color.name());
}

void InspectorModel::setText(int row, const QString& text)
{
    const SceneProperty* property = propertyAt(row);
    const bool isTaken =
        !property || edit(row, [property, text](SceneObject& object, const lumo::Variant&) {
            return property->edited(object, text);
        });
    if (!isTaken)
        Q_EMIT refused(tr("%1 cannot be “%2”").arg(property->title(), text));
}

std::string InspectorModel::stepOf(const SceneProperty& property) const
{
    return property.isName() ? stepName("Rename", m_objects)
                             : "Set " + property.title().toStdString();
}

void InspectorModel::beginChange(int row)
{
    const SceneProperty* property = propertyAt(row);
    if (property && !m_change)
        m_change.emplace(stepOf(*property), m_document.changesController().get());
}

void InspectorModel::endChange()
{
    m_change.reset();
    m_dragStarts.clear();
}

bool InspectorModel::edit(int row, const Edit& edit)
{
    const SceneProperty* property = propertyAt(row);
    if (!property || !property->isEditable())
        return true;
    bool isTaken = true;
    {
        const Zar::CommitChangesScope step(stepOf(*property), m_document.changesController().get());
        for (const SceneObjectPtr& object : SceneObjects(m_objects)) {
            const kyr::BoundProperty target = propertyAtPath(object->reflected(), property->path());
            if (!target.isValid())
                continue;
            if (const auto value = edit(*object, target.get()))
                target.set(*value);
            else
                isTaken = false;
        }
    }
    // A value that was refused must not stay in the field it was typed into.
    if (propertyAt(row))
        Q_EMIT dataChanged(index(row), index(row), {ValueRole});
    return isTaken;
}

void InspectorModel::toggleGroup(int row)
{
    if (row < 0 || row >= rowCount() || propertyAt(row))
        return;
    const QString group = QString::fromStdString(m_lines[std::size_t(row)].path);
    if (!m_foldedGroups.remove(group))
        m_foldedGroups.insert(group);
    emitChanged(row, {ExpandedRole, ShownRole});
}

void InspectorModel::emitChanged(int row, const QVector<int>& roles)
{
    if (!m_lines.empty())
        Q_EMIT dataChanged(index(row), index(int(m_lines.size()) - 1), roles);
}

const SceneProperty* InspectorModel::propertyAt(int row) const
{
    const bool exists = row >= 0 && row < int(m_lines.size());
    return exists ? m_lines[std::size_t(row)].property : nullptr;
}

} // namespace editor
