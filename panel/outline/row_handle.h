#pragma once

#include <panel/outline/outline_model.h>

#include <QObject>
#include <QPersistentModelIndex>
#include <QPointer>

namespace kyr::panel {

/// Remembers what a row of a flat tree stands for while rows come and go.
class KYR_SCENE_OUTLINE_PANEL_EXPORT RowHandle : public QObject
{
    Q_OBJECT
    Q_PROPERTY(kyr::panel::OutlineModel* outline MEMBER m_outline NOTIFY outlineChanged)
    Q_PROPERTY(QModelIndex sourceIndex READ sourceIndex)

public:
    using QObject::QObject;

    QModelIndex sourceIndex() const { return m_index; }
    /// Takes the row, or nothing for -1; false when that is what the handle already stood for.
    Q_INVOKABLE bool assign(int row);
    /// Where that row, or its nearest visible ancestor, is now; -1 when it is gone.
    Q_INVOKABLE int row() const;
    /// Whether the row is the one that was taken, not its ancestor.
    Q_INVOKABLE bool standsFor(int row) const;

Q_SIGNALS:
    void outlineChanged();

private:
    QPointer<OutlineModel> m_outline;
    QPersistentModelIndex m_index;
    bool m_assigned = false;
};

} // namespace kyr::panel
