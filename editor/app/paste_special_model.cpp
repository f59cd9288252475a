#include "paste_special_model.h"

#include <editor/document/scene_properties.h>

#include <algorithm>

namespace editor {

namespace {

std::size_t takers(const PropertyPasteCounts& counts)
{
    return counts.changed + counts.equal;
}

QString problemOf(const PropertyPasteCounts& counts)
{
    QStringList reasons;
    if (counts.unmatched > 0)
        reasons << PasteSpecialModel::tr("not in %1").arg(counts.unmatched);
    if (counts.typeMismatches > 0)
        reasons << PasteSpecialModel::tr("another type in %1").arg(counts.typeMismatches);
    return reasons.join(QLatin1String(", "));
}

} // namespace

void PasteSpecialModel::show(const PropertyPasteReport& report, const PasteChoice& choice)
{
    beginResetModel();
    m_lines.clear();
    m_lastGroup = QString();
    m_targets = int(report.targets);
    // In the order of the inspector; what the editor does not know comes last, by its path.
    auto left = report.properties;
    for (const SceneProperty& role : SceneProperties::all().list()) {
        const auto found = left.find(role.path());
        if (found == left.end())
            continue;
        if (!role.isReadOnly()) {
            append(role.group().isEmpty() ? tr("Object") : role.group(),
                   {role.title(), found->first, found->second, choice.takes(found->first)});
        }
        left.erase(found);
    }
    for (const auto& [path, counts] : left)
        append(tr("Others"), {QString::fromStdString(path), path, counts, choice.takes(path)});
    endResetModel();
    Q_EMIT shown();
    Q_EMIT choiceChanged();
}

void PasteSpecialModel::append(const QString& group, Line line)
{
    if (group != std::exchange(m_lastGroup, group))
        m_lines.push_back({group, {}, {}, false});
    m_lines.push_back(std::move(line));
}

void PasteSpecialModel::storeTo(PasteChoice& choice) const
{
    for (const Line& line : m_lines) {
        if (!line.isGroup())
            choice.set(line.path, line.isChosen);
    }
}

int PasteSpecialModel::chosenCount() const noexcept
{
    return int(std::count_if(m_lines.begin(), m_lines.end(),
                             [](const Line& line) { return line.isChosen; }));
}

std::size_t PasteSpecialModel::groupEnd(std::size_t row) const
{
    ++row;
    while (row < m_lines.size() && !m_lines[row].isGroup())
        ++row;
    return row;
}

Qt::CheckState PasteSpecialModel::checkState(std::size_t row) const
{
    if (!m_lines[row].isGroup())
        return m_lines[row].isChosen ? Qt::Checked : Qt::Unchecked;
    const std::size_t end = groupEnd(row);
    std::size_t chosen = 0;
    for (std::size_t i = row + 1; i < end; ++i)
        chosen += m_lines[i].isChosen ? 1 : 0;
    if (chosen == 0)
        return Qt::Unchecked;
    return chosen == end - row - 1 ? Qt::Checked : Qt::PartiallyChecked;
}

void PasteSpecialModel::toggle(int row)
{
    if (row < 0 || row >= rowCount())
        return;
    const auto first = std::size_t(row);
    const bool chosen = checkState(first) != Qt::Checked;
    const std::size_t end = m_lines[first].isGroup() ? groupEnd(first) : first + 1;
    for (std::size_t i = first; i < end; ++i)
        m_lines[i].isChosen = chosen && !m_lines[i].isGroup();
    emitChoice();
}

void PasteSpecialModel::chooseAll(bool chosen)
{
    for (Line& line : m_lines)
        line.isChosen = chosen && !line.isGroup();
    emitChoice();
}

void PasteSpecialModel::emitChoice()
{
    if (!m_lines.empty())
        Q_EMIT dataChanged(index(0), index(rowCount() - 1), {CheckedRole});
    Q_EMIT choiceChanged();
}

int PasteSpecialModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_lines.size());
}

QVariant PasteSpecialModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const auto row = std::size_t(index.row());
    const Line& line = m_lines[row];
    switch (role) {
    case LabelRole:
        return line.label;
    case GroupRole:
        return line.isGroup();
    case CheckedRole:
        return checkState(row);
    case TakersRole:
        return int(takers(line.counts));
    case DifferingRole:
        return int(line.counts.changed);
    case ProblemRole:
        return problemOf(line.counts);
    default:
        return {};
    }
}

QHash<int, QByteArray> PasteSpecialModel::roleNames() const
{
    return {{LabelRole, "label"},   {GroupRole, "group"},         {CheckedRole, "checked"},
            {TakersRole, "takers"}, {DifferingRole, "differing"}, {ProblemRole, "problem"}};
}

} // namespace editor
