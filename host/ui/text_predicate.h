#pragma once

#include <QObject>
#include <QString>

namespace lumo::datamodels::proxy {

/// A text that rows are matched against.
class TextPredicate : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString text READ text WRITE setText NOTIFY changed)

public:
    explicit TextPredicate(QObject* parent = nullptr) : QObject(parent) {}

    QString text() const { return m_text; }
    void setText(const QString& text)
    {
        if (m_text == text)
            return;
        m_text = text;
        Q_EMIT changed();
    }

    /// Whether a row of that name matches; every name matches an empty text.
    virtual bool matches(const QString& name) const
    {
        return name.contains(m_text, Qt::CaseInsensitive);
    }

Q_SIGNALS:
    void changed();

private:
    QString m_text;
};

} // namespace lumo::datamodels::proxy
