#include "widget_popup_menu.h"

#include <QCursor>
#include <QIcon>
#include <QMenu>

namespace lumo {
namespace {

Action* living(const std::weak_ptr<Action*>& handle)
{
    const std::shared_ptr<Action*> found = handle.lock();
    return found ? *found : nullptr;
}

} // namespace

class WidgetPopupMenuProvider::Menu : public IPopupMenu
{
public:
    explicit Menu(std::optional<QPoint>& place) : m_place(place) {}

    QMenu& widget() { return m_widget; }

    void addAction(Action* action, const std::string& text) override
    {
        const ActionInfo& info = action->info();
        QAction* entry =
            m_widget.addAction(QString::fromStdString(text.empty() ? info.text : text));
        entry->setObjectName(QString::fromStdString(info.identifier));
        entry->setToolTip(QString::fromStdString(info.toolTip));
        entry->setIcon(QIcon::fromTheme(QString::fromStdString(info.iconName)));
        entry->setShortcut(QKeySequence(QString::fromStdString(info.shortcut)));
        entry->setEnabled(action->isEnabled());
        entry->setCheckable(info.flags.has(ActionInfo::Flag::Checkable));
        entry->setChecked(action->state() != 0);
        QObject::connect(entry, &QAction::triggered, entry, [handle = action->handle()](bool on) {
            Action* shown = living(handle);
            if (shown && shown->info().flags.has(ActionInfo::Flag::Checkable)) {
                shown->setChecked(on);
                shown = living(handle);
            }
            if (shown)
                shown->trigger();
        });
    }
    void addSeparator() override { m_widget.addSeparator(); }
    bool isEmpty() const override { return m_widget.isEmpty(); }
    void popup() override
    {
        const QPoint place = m_place.value_or(QCursor::pos());
        m_place.reset();
        m_widget.popup(place);
    }

private:
    std::optional<QPoint>& m_place;
    QMenu m_widget;
};

WidgetPopupMenuProvider::WidgetPopupMenuProvider(Populate populate)
    : m_populate(std::move(populate))
{}

WidgetPopupMenuProvider::~WidgetPopupMenuProvider() = default;

IPopupMenu* WidgetPopupMenuProvider::popupMenu()
{
    m_menu = std::make_unique<Menu>(m_place);
    if (m_populate)
        m_populate(m_menu->widget());
    return m_menu.get();
}

} // namespace lumo
