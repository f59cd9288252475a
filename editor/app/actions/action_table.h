#pragma once

#include <editor/app/actions/editor_action.h>

#include <QVariantList>

#include <vector>

namespace editor {

/// All commands of the editor, each described once. Menu bar, context menu, shortcuts and help are
/// made from it.
class ActionTable final : public QObject
{
    Q_OBJECT
    /// Every `EditorAction`, in menu order.
    Q_PROPERTY(QVariantList actions READ actions CONSTANT)
    /// Maps of "name", "title" and "entries", these being actions with null where a line separates
    /// them.
    Q_PROPERTY(QVariantList menus READ menus CONSTANT)

public:
    /// Position of a command: a menu and a section in it.
    struct Place
    {
        const char* menu;
        const char* section;
    };

    using QObject::QObject;
    ~ActionTable() override;

    /// Menus show in the order in which they are added. `title` may hold a mnemonic.
    void addMenu(const char* name, const QString& title);
    /// Adds a command to a menu; those of one section stand together between two lines.
    /// `shortcuts` are portable key sequences with "; " between them.
    EditorAction& add(const char* identifier, const QString& text, const char* shortcuts,
                      const Place& place, EditorAction::Behaviour behaviour);
    EditorAction& addCheckable(const char* identifier, const QString& text, const char* shortcuts,
                               const Place& place, EditorAction::Behaviour behaviour);

    /// Null when there is none of that identifier.
    Q_INVOKABLE editor::EditorAction* find(const QString& identifier) const;
    QVariantList actions() const;
    QVariantList menus() const;

    /// Asks every command for its state; once for many calls in one turn of the event loop.
    void refreshLater();
    void refresh();

Q_SIGNALS:
    /// Before the command runs.
    void triggered(const editor::EditorAction* action);

private:
    struct Menu
    {
        QString name;
        QString title;
    };

    EditorAction& add(lumo::ActionInfo info, EditorAction::Behaviour behaviour);
    QVariantList entriesOf(const QString& menu) const;

    std::vector<Menu> m_menus;
    std::vector<EditorAction*> m_actions;
    bool m_refreshes = false;
};

} // namespace editor
