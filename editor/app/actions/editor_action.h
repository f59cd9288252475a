#pragma once

#include <host/ui/action.h>

#include <QKeySequence>
#include <QObject>
#include <QStringList>

#include <functional>

namespace editor {

/// One command of the editor, as menus, shortcuts and help see it: what its `lumo::ActionInfo`
/// says, and its state as of the last `refresh`.
class EditorAction final : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString identifier READ identifier CONSTANT)
    /// With a mnemonic behind "&".
    Q_PROPERTY(QString text READ text NOTIFY changed)
    Q_PROPERTY(QString plainText READ plainText NOTIFY changed)
    Q_PROPERTY(QString toolTip READ toolTip CONSTANT)
    /// The first one is what menus show.
    Q_PROPERTY(QStringList shortcuts READ shortcuts CONSTANT)
    Q_PROPERTY(QString shortcutText READ shortcutText CONSTANT)
    Q_PROPERTY(bool enabled READ isEnabled NOTIFY changed)
    Q_PROPERTY(bool checkable READ isCheckable CONSTANT)
    Q_PROPERTY(bool checked READ isChecked NOTIFY changed)

public:
    /// What the command does and when it can; only `run` has to be there.
    struct Behaviour
    {
        std::function<void()> run;
        std::function<bool()> enabled;
        std::function<bool()> checked;
        /// A text that says more than the description, such as what would be undone.
        std::function<QString()> text;
    };

    EditorAction(std::shared_ptr<const lumo::ActionInfo> info, Behaviour behaviour,
                 QObject* parent = nullptr);

    const lumo::ActionInfo& info() const noexcept { return m_action.info(); }
    lumo::Action& action() noexcept { return m_action; }

    QString identifier() const { return QString::fromStdString(info().identifier); }
    QString text() const { return m_text; }
    QString plainText() const;
    QString toolTip() const { return QString::fromStdString(info().toolTip); }
    QStringList shortcuts() const;
    QString shortcutText() const;
    QKeySequence shortcut() const;
    bool isEnabled() const noexcept { return m_enabled; }
    bool isCheckable() const { return info().flags.has(lumo::ActionInfo::Flag::Checkable); }
    bool isChecked() const noexcept { return m_checked; }

    /// Asks the behaviour again, and tells when the answers are other ones.
    void refresh();
    /// Does nothing while the command is not possible.
    Q_INVOKABLE void trigger() { m_action.trigger(); }

Q_SIGNALS:
    void changed();
    /// Before the command runs.
    void triggered();

private:
    lumo::Action m_action;
    std::function<QString()> m_currentText;
    QString m_text;
    bool m_enabled = true;
    bool m_checked = false;
};

} // namespace editor
