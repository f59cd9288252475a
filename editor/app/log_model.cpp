#include "log_model.h"

#include <utility>

namespace editor {

namespace {

constexpr int errorPriority = 5;
constexpr int warningPriority = 4;

LogModel::Severity severityOf(const Zar::DebugMessage& message)
{
    if (message.critical || message.messagePriority >= errorPriority)
        return LogModel::Error;
    return message.messagePriority >= warningPriority ? LogModel::Warning : LogModel::Note;
}

} // namespace

LogModel::LogModel(QObject* parent)
    : QAbstractListModel(parent)
    , m_sink([inbox = m_inbox](const Zar::DebugMessage& message) { receive(*inbox, message); })
{
    m_inbox->model = this;
}

LogModel::~LogModel()
{
    const std::lock_guard lock(m_inbox->mutex);
    m_inbox->model = nullptr;
}

void LogModel::receive(Inbox& inbox, const Zar::DebugMessage& message)
{
    Arrival arrival{QDateTime::currentMSecsSinceEpoch(), severityOf(message), message.text};
    const std::lock_guard lock(inbox.mutex);
    inbox.problems += arrival.severity == Note ? 0 : 1;
    inbox.arrivals.push_back(std::move(arrival));
    if (inbox.arrivals.size() > std::size_t(capacity))
        inbox.arrivals.pop_front();
    else if (inbox.model && inbox.arrivals.size() == 1)
        QMetaObject::invokeMethod(inbox.model, &LogModel::takeOver, Qt::QueuedConnection);
}

void LogModel::takeOver()
{
    std::deque<Arrival> arrivals;
    int problems = 0;
    {
        const std::lock_guard lock(m_inbox->mutex);
        arrivals.swap(m_inbox->arrivals);
        problems = std::exchange(m_inbox->problems, 0);
    }
    append(std::move(arrivals));
    if (problems > 0) {
        m_problemCount += problems;
        Q_EMIT problemCountChanged();
    }
}

void LogModel::append(std::deque<Arrival> arrivals)
{
    if (arrivals.empty())
        return;
    const int surplus = int(m_lines.size() + arrivals.size()) - capacity;
    if (surplus > 0) {
        beginRemoveRows({}, 0, surplus - 1);
        m_lines.erase(m_lines.begin(), m_lines.begin() + surplus);
        endRemoveRows();
    }
    const int first = int(m_lines.size());
    beginInsertRows({}, first, first + int(arrivals.size()) - 1);
    for (const Arrival& arrival : arrivals) {
        m_lines.push_back({QDateTime::fromMSecsSinceEpoch(arrival.time).time(), arrival.severity,
                           QString::fromStdString(arrival.text).simplified()});
    }
    endInsertRows();
}

int LogModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_lines.size());
}

QVariant LogModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const Line& line = m_lines[std::size_t(index.row())];
    switch (role) {
    case TextRole:
        return line.text;
    case TimeRole:
        return line.time.toString(QStringLiteral("hh:mm:ss"));
    case SeverityRole:
        return line.severity;
    default:
        return {};
    }
}

QHash<int, QByteArray> LogModel::roleNames() const
{
    return {{TextRole, "text"}, {TimeRole, "time"}, {SeverityRole, "severity"}};
}

void LogModel::clear()
{
    beginResetModel();
    m_lines.clear();
    m_problemCount = 0;
    endResetModel();
    Q_EMIT problemCountChanged();
}

} // namespace editor
