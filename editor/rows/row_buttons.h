#pragma once

#include <QVariantList>
#include <QVariantMap>

#include <string>

namespace editor {

/// The buttons of a row as the panel takes them: maps of "id", "name" (of the
/// state that "checked" tells), "icon", "checked" and "toolTip" (of what a click does).
QVariantList rowButtons(bool visible, bool locked);

bool isRowButton(const QString& id);

/// What pressing the buttons of `states` is called in the undo list.
std::string rowButtonsStepName(const QVariantMap& states, const std::string& objectName);

} // namespace editor
