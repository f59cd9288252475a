#pragma once

#include <QModelIndex>
#include <QObject>
#include <QTimer>
#include <QVariantMap>

namespace sample {

/// How many rows of each type there are in some set of rows. Changes that come together are told
/// once, from the event loop.
class TypeCounts : public QObject
{
    Q_OBJECT
    Q_PROPERTY(int total READ total NOTIFY changed)
    Q_PROPERTY(QVariantMap counts READ counts NOTIFY changed)

public:
    TypeCounts();

    int total() const { return m_total; }
    /// From type to count.
    QVariantMap counts() const;

Q_SIGNALS:
    void changed();

protected:
    void add(const QModelIndex& row, int count);
    void clear();
    /// Whether changes wait with being told until they are all there.
    void setHeld(bool held);

private:
    void tellLater();

    QHash<QString, int> m_counts;
    int m_total = 0;
    bool m_held = false;
    QTimer m_notification;
};

} // namespace sample
