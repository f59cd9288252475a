#pragma once

#include <QUndoStack>

namespace editor {

/// What the menu says about the undo stack, in properties.
class UndoStatus final : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool canUndo READ canUndo NOTIFY changed)
    Q_PROPERTY(bool canRedo READ canRedo NOTIFY changed)
    Q_PROPERTY(QString undoName READ undoName NOTIFY changed)
    Q_PROPERTY(QString redoName READ redoName NOTIFY changed)

public:
    /// The stack must outlive it.
    explicit UndoStatus(QUndoStack& stack, QObject* parent = nullptr)
        : QObject(parent), m_stack(stack)
    {
        connect(&stack, &QUndoStack::indexChanged, this, &UndoStatus::changed);
    }

    bool canUndo() const { return m_stack.canUndo(); }
    bool canRedo() const { return m_stack.canRedo(); }
    /// Of the step that would be undone; empty when there is none.
    QString undoName() const { return m_stack.undoText(); }
    QString redoName() const { return m_stack.redoText(); }

    Q_INVOKABLE void undo() { m_stack.undo(); }
    Q_INVOKABLE void redo() { m_stack.redo(); }

Q_SIGNALS:
    void changed();

private:
    QUndoStack& m_stack;
};

} // namespace editor
