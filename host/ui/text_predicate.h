#pragma once

#include <host/ui/filter_query.h>
#include <host/ui/path_terms.h>

#include <QMap>
#include <QModelIndex>
#include <QObject>
#include <QPointer>
#include <QRegularExpression>
#include <QString>
#include <QTimer>

#include <functional>

namespace lumo::datamodels::proxy {

/// Decides which rows of a tree match what the user typed.
///
/// As a text it is made of terms, as of `FilterQuery`, which all have to hold. A word is looked for
/// in the row's name and in the names above it, whatever the case, but at least one term has to
/// hold for the row itself: "lamp type:light" finds the lights below a lamp, "lamp" the lamp alone.
/// An excluded word takes away what is below a row of that name as well. As a regular expression,
/// the name has to match it. Editors add conditions of their own, which a row has to meet too.
///
/// What cannot be understood is left out and told in `error`. Asking costs the terms times the
/// length of the name; the names above a row are looked at once for all rows below.
class TextPredicate : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString text READ text WRITE setText NOTIFY changed)
    Q_PROPERTY(
        bool regularExpression READ isRegularExpression WRITE setRegularExpression NOTIFY changed)
    Q_PROPERTY(bool active READ isActive NOTIFY changed)
    Q_PROPERTY(QString error READ error NOTIFY changed)
    /// Whose rows are asked about and whose roles are the keys in a text. Not owned.
    Q_PROPERTY(QAbstractItemModel* model READ model WRITE setModel NOTIFY changed)

public:
    using Condition = std::function<bool(const QModelIndex& row)>;

    explicit TextPredicate(QObject* parent = nullptr);
    ~TextPredicate() override;

    QString text() const { return m_text; }
    void setText(const QString& text);
    bool isRegularExpression() const { return m_isExpression; }
    void setRegularExpression(bool on);
    QAbstractItemModel* model() const { return m_model; }
    void setModel(QAbstractItemModel* model);

    /// What users call a property, as above its column: in a text, the title without its spaces or
    /// in quotes is a key of that role as well. An empty title removes it.
    void setTitle(int role, const QString& title);

    /// Replaces the condition of that key; an empty one removes it.
    void setCondition(const QString& key, const Condition& condition);

    /// Whether any row may fail to match.
    bool isActive() const;
    QString error() const;

    /// Called for every row of a scene, once a pass: the text is made ready when it is set. A row
    /// of another model than `model` finds no property.
    Q_INVOKABLE virtual bool accepts(const QModelIndex& row) const;

Q_SIGNALS:
    /// Rows may match now that did not before, or the other way round.
    void changed();

private:
    void parse();
    QVector<int> rolesOf(const QString& key) const;
    bool acceptsText(const QModelIndex& row) const;
    bool acceptsTerms(const QModelIndex& row) const;

    QString m_text;
    bool m_isExpression = false;
    FilterQuery m_query;
    bool m_onlyExcludes = false;
    PathTerms::Terms m_excludedAbove = 0; ///< Excluded terms with words.
    QRegularExpression m_expression;
    QMap<QString, Condition> m_conditions;
    QMap<int, QString> m_titles; ///< Without spaces.
    QPointer<QAbstractItemModel> m_model;
    mutable PathTerms m_path;
    QTimer m_announcement;
};

} // namespace lumo::datamodels::proxy
