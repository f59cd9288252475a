#pragma once

#include <panel/outline/outline_model.h>

#include <QObject>
#include <QPointer>

namespace kyr::panel {

/// Changes that the user makes to rows of a flat tree. A toggle or a cell of a selected row acts on
/// all selected rows, hidden ones too; no change touches the selection.
class KYR_SCENE_OUTLINE_PANEL_EXPORT RowEditor : public QObject
{
    Q_OBJECT
    Q_PROPERTY(kyr::panel::OutlineModel* outline MEMBER m_outline NOTIFY outlineChanged)

public:
    using QObject::QObject;

    /// Row buttons of that id, as `{id: checked}` for the role "rowButtonsModel".
    Q_INVOKABLE void setButton(int row, const QString& id, bool checked, const QString& text);
    /// False when the row itself refuses the value; nothing is changed then.
    Q_INVOKABLE bool setCell(int row, int role, const QVariant& value, const QString& text);
    Q_INVOKABLE bool canRename(int row) const;
    /// False when the model refuses the name; nothing is changed then.
    Q_INVOKABLE bool rename(const QModelIndex& sourceIndex, const QString& name);

Q_SIGNALS:
    void outlineChanged();
    /// Around the changes of one click, with what they are about: one step to undo.
    void editBegins(const QString& text);
    void editEnds();

private:
    bool setAll(int row, int role, const QVariant& value, const QString& text);

    QPointer<OutlineModel> m_outline;
};

} // namespace kyr::panel
