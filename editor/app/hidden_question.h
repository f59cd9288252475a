#pragma once

#include <QObject>

#include <functional>

namespace editor {

/// Asks before a command acts on selected objects that the tree's filter hides.
class HiddenQuestion final : public QObject
{
    Q_OBJECT
    /// Of the selected objects, as the tree counts them.
    Q_PROPERTY(int hiddenCount MEMBER m_hiddenCount NOTIFY hiddenCountChanged)

public:
    using QObject::QObject;

    /// Runs the action at once when nothing is hidden, else after `proceed`; a later question takes
    /// its place.
    void ask(const QString& command, const std::function<void()>& action);
    Q_INVOKABLE void proceed();

Q_SIGNALS:
    void hiddenCountChanged();
    /// The command waits for `proceed`.
    void asked(const QString& command, int hidden);

private:
    int m_hiddenCount = 0;
    std::function<void()> m_waiting;
};

} // namespace editor
