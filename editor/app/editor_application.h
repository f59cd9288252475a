#pragma once

#include <editor/app/operation_times.h>

#include <QApplication>

namespace editor {

/// The program's application object, which lets the time of its events be measured.
class EditorApplication : public QApplication
{
    Q_OBJECT

public:
    using QApplication::QApplication;

    /// Null when the application object is another one.
    static EditorApplication* current();
    /// Null measures nothing. Must be taken back before it ends, outside of any event's delivery.
    void measureWith(OperationTimes* times) { m_times = times; }

    bool notify(QObject* receiver, QEvent* event) override;

private:
    OperationTimes* m_times = nullptr;
};

} // namespace editor
