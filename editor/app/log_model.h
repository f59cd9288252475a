#pragma once

#include <host/core/debug_message.h>

#include <QAbstractListModel>
#include <QDateTime>

#include <deque>
#include <memory>
#include <mutex>
#include <string>

namespace editor {

/// The host's debug messages, the latest `capacity` of them. Messages come from any thread; the
/// model takes them over on its own, many at a time.
class LogModel final : public QAbstractListModel
{
    Q_OBJECT
    Q_PROPERTY(int problemCount READ problemCount NOTIFY problemCountChanged)

public:
    enum Role
    {
        TextRole = Qt::DisplayRole,
        TimeRole = Qt::UserRole,
        SeverityRole,
    };
    enum Severity
    {
        Note,
        Warning,
        Error,
    };
    Q_ENUM(Severity)

    static constexpr int capacity = 5000;

    /// Receives all messages from now on until it is destroyed.
    explicit LogModel(QObject* parent = nullptr);
    ~LogModel() override;

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    /// Warnings and errors since the last `clear`.
    int problemCount() const noexcept { return m_problemCount; }

    Q_INVOKABLE void clear();

Q_SIGNALS:
    void problemCountChanged();

private:
    struct Line
    {
        QTime time;
        Severity severity;
        QString text;
    };
    /// A message as it came. Of a flood of them only the last are worth more work than this.
    struct Arrival
    {
        qint64 time; // milliseconds since the epoch
        Severity severity;
        std::string text;
    };
    /// Shared with the sink, which other threads may still be in when the model goes.
    struct Inbox
    {
        std::mutex mutex;
        std::deque<Arrival> arrivals;
        int problems = 0;
        LogModel* model = nullptr;
    };

    static void receive(Inbox& inbox, const Zar::DebugMessage& message);
    void takeOver();
    void append(std::deque<Arrival> arrivals);

    std::shared_ptr<Inbox> m_inbox = std::make_shared<Inbox>();
    std::deque<Line> m_lines;
    int m_problemCount = 0;
    Zar::DebugMessageSinkGuard m_sink;
};

} // namespace editor
