#pragma once

#include <QObject>

namespace editor {

/// What commands ask of the window, which alone knows its panes; and which of them it shows. That
/// is remembered from one run to the next.
class WindowCommands final : public QObject
{
    Q_OBJECT
    /// The tree scrolls to what is selected elsewhere.
    Q_PROPERTY(bool alwaysReveal READ alwaysReveal NOTIFY stateChanged)
    Q_PROPERTY(bool logShown READ isLogShown NOTIFY stateChanged)
    Q_PROPERTY(bool operationTimesShown READ areOperationTimesShown NOTIFY stateChanged)

public:
    explicit WindowCommands(QObject* parent = nullptr);

    bool alwaysReveal() const noexcept { return m_alwaysReveal; }
    bool isLogShown() const noexcept { return m_logShown; }
    void toggleAlwaysReveal();
    Q_INVOKABLE void toggleLog();
    bool areOperationTimesShown() const noexcept { return m_operationTimesShown; }
    void toggleOperationTimes();
    /// Shows the times for this scene, or as the user left them otherwise.
    void setSceneMeasured(bool measured);

Q_SIGNALS:
    void stateChanged();
    void findRequested();
    void renameRequested();
    void batchRenameRequested();
    void selectionSetsRequested();
    void revealRequested();
    void helpRequested();
    void revertRequested();
    void menuBarRequested();

private:
    void remember();

    bool m_alwaysReveal;
    bool m_logShown;
    bool m_operationTimesShown;
};

} // namespace editor
