#include "action_table.h"

#include <QTimer>

#include <algorithm>
#include <utility>

namespace editor {

namespace {

// The host's form of a place is "menu/section".
QString part(const EditorAction& action, int index)
{
    return QString::fromStdString(action.info().groupPath).section(QLatin1Char('/'), index, index);
}

lumo::ActionInfo describe(const char* identifier, const QString& text, const char* shortcuts,
                          const ActionTable::Place& place, vex::Flags<lumo::ActionInfo::Flag> flags)
{
    return {identifier,
            text.toStdString(),
            {},
            shortcuts,
            std::string(place.menu) + '/' + place.section,
            {},
            flags};
}

} // namespace

ActionTable::~ActionTable() = default;

void ActionTable::addMenu(const char* name, const QString& title)
{
    m_menus.push_back({QString::fromLatin1(name), title});
}

EditorAction& ActionTable::add(lumo::ActionInfo info, EditorAction::Behaviour behaviour)
{
    auto* action = new EditorAction(std::make_shared<const lumo::ActionInfo>(std::move(info)),
                                    behaviour, this);
    m_actions.push_back(action);
    connect(action, &EditorAction::triggered, this, [this, action] { Q_EMIT triggered(action); });
    return *action;
}

EditorAction& ActionTable::add(const char* identifier, const QString& text, const char* shortcuts,
                               const Place& place, EditorAction::Behaviour behaviour)
{
    return add(describe(identifier, text, shortcuts, place, {}), std::move(behaviour));
}

EditorAction& ActionTable::addCheckable(const char* identifier, const QString& text,
                                        const char* shortcuts, const Place& place,
                                        EditorAction::Behaviour behaviour)
{
    return add(describe(identifier, text, shortcuts, place, lumo::ActionInfo::Flag::Checkable),
               std::move(behaviour));
}

EditorAction* ActionTable::find(const QString& identifier) const
{
    const auto found = std::find_if(m_actions.begin(), m_actions.end(), [&](EditorAction* action) {
        return action->identifier() == identifier;
    });
    return found != m_actions.end() ? *found : nullptr;
}

QVariantList ActionTable::actions() const
{
    QVariantList actions;
    for (const Menu& menu : m_menus) {
        for (const QVariant& entry : entriesOf(menu.name)) {
            if (entry.value<QObject*>())
                actions.append(entry);
        }
    }
    return actions;
}

QVariantList ActionTable::menus() const
{
    QVariantList menus;
    for (const Menu& menu : m_menus) {
        menus.append(QVariantMap{{QStringLiteral("name"), menu.name},
                                 {QStringLiteral("title"), menu.title},
                                 {QStringLiteral("entries"), entriesOf(menu.name)}});
    }
    return menus;
}

QVariantList ActionTable::entriesOf(const QString& menu) const
{
    std::vector<EditorAction*> entries;
    QStringList sections;
    for (EditorAction* action : m_actions) {
        if (part(*action, 0) != menu)
            continue;
        entries.push_back(action);
        if (!sections.contains(part(*action, 1)))
            sections.append(part(*action, 1));
    }
    QVariantList list;
    for (const QString& section : sections) {
        if (!list.isEmpty())
            list.append(QVariant::fromValue<QObject*>(nullptr));
        for (EditorAction* action : entries) {
            if (part(*action, 1) == section)
                list.append(QVariant::fromValue<QObject*>(action));
        }
    }
    return list;
}

void ActionTable::refreshLater()
{
    if (!std::exchange(m_refreshes, true))
        QTimer::singleShot(0, this, &ActionTable::refresh);
}

void ActionTable::refresh()
{
    m_refreshes = false;
    for (EditorAction* action : m_actions)
        action->refresh();
}

} // namespace editor
