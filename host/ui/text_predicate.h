#pragma once

#include <QMap>
#include <QModelIndex>
#include <QObject>
#include <QPointer>
#include <QRegularExpression>
#include <QString>
#include <QStringList>

#include <functional>

namespace lumo::datamodels::proxy {

/// Decides which rows of a tree match what the user typed.
///
/// As words, every word has to be found in the row's name, whatever the case; "type:light" looks
/// into the role named "type" instead, and "a b" in quotes is one word. As a regular expression,
/// the name has to match it. Editors add conditions of their own, which a row has to meet as well.
/// An invalid regular expression matches every row and says why in `error`.
class TextPredicate : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString text READ text WRITE setText NOTIFY changed)
    Q_PROPERTY(
        bool regularExpression READ isRegularExpression WRITE setRegularExpression NOTIFY changed)
    Q_PROPERTY(bool active READ isActive NOTIFY changed)
    Q_PROPERTY(QString error READ error NOTIFY changed)

public:
    using Condition = std::function<bool(const QModelIndex& row)>;

    explicit TextPredicate(QObject* parent = nullptr);
    ~TextPredicate() override;

    QString text() const { return m_text; }
    void setText(const QString& text);
    bool isRegularExpression() const { return m_isExpression; }
    void setRegularExpression(bool on);

    /// Replaces the condition of that key; an empty one removes it.
    void setCondition(const QString& key, const Condition& condition);

    /// Whether any row may fail to match.
    bool isActive() const;
    QString error() const;

    /// Called for every row of a scene: costs no allocation for names that are plain texts.
    Q_INVOKABLE virtual bool accepts(const QModelIndex& row) const;

Q_SIGNALS:
    /// Rows may match now that did not before, or the other way round.
    void changed();

private:
    struct Word
    {
        QString text;
        bool inType = false;
    };

    void parse();
    bool acceptsText(const QModelIndex& row) const;
    int typeRole(const QAbstractItemModel* model) const;

    QString m_text;
    bool m_isExpression = false;
    QList<Word> m_words;
    QRegularExpression m_expression;
    QMap<QString, Condition> m_conditions;
    mutable QPointer<const QAbstractItemModel> m_typeModel;
    mutable int m_typeRole = -1;
};

} // namespace lumo::datamodels::proxy
