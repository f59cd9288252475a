#pragma once

#include <QEvent>
#include <QObject>
#include <QPoint>
#include <QTimer>

#include <chrono>

namespace editor {

/// What the last operation of the user took of the GUI thread: everything that it delivered from a
/// key, click or turn of the wheel until it came to rest, and the longest single event of that,
/// which is what a user feels. An operation is called by its command, else by its undo step, else
/// by its input. What an earlier input left to do counts for the next one.
///
/// Needs an `EditorApplication`, and costs nothing while it is not active.
class OperationTimes final : public QObject
{
    Q_OBJECT
    /// Empty before the first operation.
    Q_PROPERTY(QString name READ name NOTIFY changed)
    /// Milliseconds, as is `longest`.
    Q_PROPERTY(qreal total READ total NOTIFY changed)
    Q_PROPERTY(qreal longest READ longest NOTIFY changed)
    /// Events that were delivered.
    Q_PROPERTY(int pieces READ pieces NOTIFY changed)

public:
    /// Measures the delivery of one event as long as it lives.
    class Piece
    {
    public:
        Piece(OperationTimes& times, const QEvent& event);
        ~Piece();
        Piece(const Piece&) = delete;
        Piece& operator=(const Piece&) = delete;

    private:
        OperationTimes& m_times;
        // Part of another event's delivery, so not measured.
        bool m_isInner = false;
        bool m_counts = true;
        // Frames and the pointer's moves go on without any operation.
        bool m_keepsOpen = true;
        int m_outerLevel = 0;
    };

    explicit OperationTimes(QObject* parent = nullptr);
    ~OperationTimes() override;

    void setActive(bool active);

    QString name() const { return m_last.name; }
    qreal total() const;
    qreal longest() const;
    int pieces() const noexcept { return m_last.pieces; }

    /// Says what the operation is that is going on; the first one to say it is right.
    Q_INVOKABLE void describe(const QString& name);

Q_SIGNALS:
    void changed();

private:
    using Clock = std::chrono::steady_clock;

    struct Operation
    {
        QString name;
        Clock::duration total{};
        Clock::duration longest{};
        int pieces = 0;
    };

    void takeInput(const QEvent& event);
    void open(const QString& input);
    void close();
    void closeWhenQuiet();

    Operation m_current;
    Operation m_last;
    bool m_isOpen = false;
    bool m_isDescribed = false;
    // The key of an override comes again as a press, unless it is a shortcut.
    int m_overriddenKey = 0;
    QPoint m_pressed;
    // The nesting of event loops in which the piece is that is being delivered.
    int m_level = -1;
    Clock::time_point m_start;
    Clock::time_point m_lastWork;
    QTimer m_quiet;
};

} // namespace editor
