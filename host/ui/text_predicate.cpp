#include "text_predicate.h"

#include <QAbstractItemModel>

#include <algorithm>

namespace lumo::datamodels::proxy {
namespace {

const QString typePrefix = QStringLiteral("type:");

// Splits at white space outside double quotes; the quotes themselves are left out.
QStringList wordsOf(const QString& text)
{
    QStringList words;
    QString word;
    bool quoted = false;
    for (const QChar character : text) {
        if (character == QLatin1Char('"')) {
            quoted = !quoted;
        } else if (character.isSpace() && !quoted) {
            words.append(word);
            word.clear();
        } else {
            word.append(character);
        }
    }
    words.append(word);
    words.removeAll(QString());
    return words;
}

} // namespace

TextPredicate::TextPredicate(QObject* parent) : QObject(parent) {}

TextPredicate::~TextPredicate() = default;

void TextPredicate::setText(const QString& text)
{
    if (m_text == text)
        return;
    m_text = text;
    parse();
    Q_EMIT changed();
}

void TextPredicate::setRegularExpression(bool on)
{
    if (m_isExpression == on)
        return;
    m_isExpression = on;
    parse();
    Q_EMIT changed();
}

void TextPredicate::setCondition(const QString& key, const Condition& condition)
{
    if (condition)
        m_conditions.insert(key, condition);
    else if (m_conditions.remove(key) == 0)
        return;
    Q_EMIT changed();
}

void TextPredicate::parse()
{
    m_words.clear();
    m_expression = QRegularExpression();
    if (m_isExpression) {
        m_expression =
            QRegularExpression(m_text, QRegularExpression::CaseInsensitiveOption |
                                           QRegularExpression::UseUnicodePropertiesOption);
        m_expression.optimize();
        return;
    }
    for (const QString& word : wordsOf(m_text)) {
        const bool inType = word.startsWith(typePrefix, Qt::CaseInsensitive);
        m_words.append({inType ? word.mid(typePrefix.size()) : word, inType});
    }
}

bool TextPredicate::isActive() const
{
    const bool byText =
        m_isExpression ? !m_text.isEmpty() && m_expression.isValid() : !m_words.isEmpty();
    return byText || !m_conditions.isEmpty();
}

QString TextPredicate::error() const
{
    if (!m_isExpression || m_expression.isValid())
        return {};
    return tr("%1 at character %2")
        .arg(m_expression.errorString())
        .arg(m_expression.patternErrorOffset() + 1);
}

bool TextPredicate::accepts(const QModelIndex& row) const
{
    return acceptsText(row) &&
           std::all_of(m_conditions.begin(), m_conditions.end(),
                       [&row](const Condition& condition) { return condition(row); });
}

bool TextPredicate::acceptsText(const QModelIndex& row) const
{
    if (m_text.isEmpty())
        return true;
    const QString name = row.data(Qt::DisplayRole).toString();
    if (m_isExpression)
        return !m_expression.isValid() || m_expression.match(name).hasMatch();
    return std::all_of(m_words.begin(), m_words.end(), [&](const Word& word) {
        if (!word.inType)
            return name.contains(word.text, Qt::CaseInsensitive);
        const int role = typeRole(row.model());
        return role >= 0 && row.data(role).toString().startsWith(word.text, Qt::CaseInsensitive);
    });
}

int TextPredicate::typeRole(const QAbstractItemModel* model) const
{
    if (m_typeModel != model) {
        m_typeModel = model;
        m_typeRole = model ? model->roleNames().key("type", -1) : -1;
    }
    return m_typeRole;
}

} // namespace lumo::datamodels::proxy
