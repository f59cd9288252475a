#include "row_buttons.h"

#include <QCoreApplication>

namespace editor {

namespace {

const QString visibleId = QStringLiteral("visible");
const QString lockedId = QStringLiteral("locked");

QString tr(const char* text)
{
    return QCoreApplication::translate("editor::SceneItemModel", text);
}

QVariantMap button(const QString& id, const char* name, const char* icon, bool checked,
                   const char* toolTip)
{
    return {{QStringLiteral("id"), id},
            {QStringLiteral("name"), tr(name)},
            {QStringLiteral("icon"), QString::fromLatin1(icon)},
            {QStringLiteral("checked"), checked},
            {QStringLiteral("toolTip"), tr(toolTip)}};
}

QVariantList makeRowButtons(bool visible, bool locked)
{
    return {button(visibleId, "Visible", visible ? "visible" : "hidden", visible,
                   visible ? "Hide" : "Show"),
            button(lockedId, "Locked", locked ? "locked" : "unlocked", locked,
                   locked ? "Unlock" : "Lock")};
}

} // namespace

QVariantList rowButtons(bool visible, bool locked)
{
    // Asked for on every row that scrolls into view; there are only these four.
    static const QVariantList lists[] = {makeRowButtons(false, false), makeRowButtons(false, true),
                                         makeRowButtons(true, false), makeRowButtons(true, true)};
    return lists[(visible ? 2 : 0) + (locked ? 1 : 0)];
}

bool isRowButton(const QString& id)
{
    return id == visibleId || id == lockedId;
}

std::string rowButtonsStepName(const QVariantMap& states, const std::string& objectName)
{
    const auto visible = states.find(visibleId);
    if (visible != states.end())
        return (visible->toBool() ? "Show " : "Hide ") + objectName;
    return (states.value(lockedId).toBool() ? "Lock " : "Unlock ") + objectName;
}

} // namespace editor
