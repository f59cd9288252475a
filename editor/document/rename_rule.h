#pragma once

#include <QString>

namespace editor {

/// How many objects get their names at once.
struct RenameRule
{
    /// Replaced wherever it is in the old name; nothing is when it is empty.
    QString find;
    QString replacement;
    /// The new name: "*" stands for the old name, "#" for the object's number, with as many digits
    /// as there are of them: "Lamp_##" gives "Lamp_01".
    QString pattern = QStringLiteral("*");
    int first = 1;
    int step = 1;

    /// The name of the object at `index` of those that are renamed; empty when the rule leaves
    /// none.
    QString apply(const QString& name, int index) const;
};

} // namespace editor
