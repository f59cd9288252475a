#include "editor_action.h"

#include <utility>

namespace editor {

namespace {

lumo::Action::StateCallback stateOf(const std::function<bool()>& checked)
{
    if (!checked)
        return nullptr;
    return [checked] { return checked() ? 2 : 0; };
}

} // namespace

EditorAction::EditorAction(std::shared_ptr<const lumo::ActionInfo> info, Behaviour behaviour,
                           QObject* parent)
    : QObject(parent)
    , m_action(
          std::move(info),
          [this, run = std::move(behaviour.run)] {
              Q_EMIT triggered();
              run();
          },
          stateOf(behaviour.checked), behaviour.enabled, nullptr)
    , m_currentText(std::move(behaviour.text))
{
    refresh();
}

void EditorAction::refresh()
{
    const QString text = m_currentText ? m_currentText() : QString::fromStdString(info().text);
    const bool enabled = m_action.isEnabled();
    const bool checked = m_action.state() != 0;
    const bool isSame = text == m_text && enabled == m_enabled && checked == m_checked;
    m_text = text;
    m_enabled = enabled;
    m_checked = checked;
    if (!isSame)
        Q_EMIT changed();
}

QString EditorAction::plainText() const
{
    QString plain;
    for (int i = 0; i < m_text.size(); ++i) {
        if (m_text[i] == QLatin1Char('&') && i + 1 < m_text.size())
            ++i;
        plain.append(m_text[i]);
    }
    return plain;
}

QStringList EditorAction::shortcuts() const
{
    QStringList texts;
    for (const QKeySequence& keys : QKeySequence::listFromString(
             QString::fromStdString(info().shortcut), QKeySequence::PortableText)) {
        if (!keys.isEmpty())
            texts.append(keys.toString(QKeySequence::PortableText));
    }
    return texts;
}

QKeySequence EditorAction::shortcut() const
{
    return QKeySequence(shortcuts().value(0), QKeySequence::PortableText);
}

QString EditorAction::shortcutText() const
{
    return shortcut().toString(QKeySequence::NativeText);
}

} // namespace editor
