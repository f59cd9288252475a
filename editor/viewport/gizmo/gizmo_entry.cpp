#include "gizmo_entry.h"

#include <algorithm>
#include <cmath>

namespace editor {

namespace {

constexpr int mostCharacters = 12;
// A size of zero could never be scaled back.
constexpr double leastFactor = 0.001;

} // namespace

GizmoEntry::GizmoEntry(Gizmo::Tool tool, const GizmoHandle& handle) : m_tool(tool), m_handle(handle)
{
    if (tool == Gizmo::Tool::Move)
        m_texts = QVector<QString>(int(axesOf(handle).size())).toList();
}

bool GizmoEntry::isEmpty() const
{
    return std::all_of(m_texts.begin(), m_texts.end(),
                       [](const QString& text) { return text.isEmpty(); });
}

bool GizmoEntry::press(int key)
{
    QString& text = m_texts[m_current];
    switch (key) {
    case Qt::Key_Tab:
        m_current = (m_current + 1) % m_texts.size();
        return true;
    case Qt::Key_Backspace:
        text.chop(1);
        return true;
    case Qt::Key_Minus:
        if (text.startsWith(QLatin1Char('-')))
            text.remove(0, 1);
        else
            text.prepend(QLatin1Char('-'));
        return true;
    case Qt::Key_Period:
    case Qt::Key_Comma:
        if (!text.contains(QLatin1Char('.')))
            type(QLatin1Char('.'));
        return true;
    default:
        if (key < Qt::Key_0 || key > Qt::Key_9)
            return false;
        type(QLatin1Char(char(key)));
        return true;
    }
}

void GizmoEntry::type(QChar character)
{
    if (m_texts[m_current].size() < mostCharacters)
        m_texts[m_current].append(character);
}

double GizmoEntry::numberAt(int figure, double otherwise) const
{
    bool isNumber = false;
    const double number = m_texts[figure].toDouble(&isNumber);
    return isNumber ? number : otherwise;
}

void GizmoEntry::applyTo(GizmoChange& change) const
{
    const std::vector<int> axes = axesOf(m_handle);
    switch (m_tool) {
    case Gizmo::Tool::Move:
        for (std::size_t i = 0; i < axes.size(); ++i)
            change.offset[axes[i]] = float(numberAt(int(i), 0));
        break;
    case Gizmo::Tool::Rotate:
        change.angle = float(numberAt(0, 0));
        break;
    case Gizmo::Tool::Scale: {
        const double typed = numberAt(0, 1);
        const double factor =
            std::abs(typed) < leastFactor ? std::copysign(leastFactor, typed) : typed;
        for (const int axis : axes)
            change.factors[axis] = float(factor);
        break;
    }
    case Gizmo::Tool::None:
        break;
    }
}

QString GizmoEntry::text() const
{
    QStringList figures = m_texts;
    figures[m_current] += QLatin1Char('|');
    const std::vector<int> axes = axesOf(m_handle);
    const bool isNamed = m_tool == Gizmo::Tool::Move || axes.size() == 1;
    for (int i = 0; i < figures.size(); ++i) {
        if (figures[i].isEmpty())
            figures[i] = QStringLiteral("0");
        if (m_tool == Gizmo::Tool::Scale)
            figures[i].prepend(QStringLiteral("× "));
        if (isNamed)
            figures[i].prepend(axisName(axes[std::size_t(i)]) + QLatin1String("  "));
    }
    return figures.join(QLatin1String("   ")) + unitOf(m_tool);
}

} // namespace editor
