#include "text_predicate.h"

#include <algorithm>

namespace lumo::datamodels::proxy {

namespace {

QString withoutSpaces(QString title)
{
    return title.remove(QLatin1Char(' '));
}

} // namespace

TextPredicate::TextPredicate(QObject* parent) : QObject(parent)
{
    // From the event loop, for the model is in the middle of its change.
    m_announcement.setSingleShot(true);
    m_announcement.setInterval(0);
    connect(&m_announcement, &QTimer::timeout, this, &TextPredicate::changed);
    connect(&m_path, &PathTerms::outdated, &m_announcement, QOverload<>::of(&QTimer::start));
}

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

void TextPredicate::setModel(QAbstractItemModel* model)
{
    if (m_model == model)
        return;
    m_model = model;
    parse();
    Q_EMIT changed();
}

void TextPredicate::setTitle(int role, const QString& title)
{
    const QString joined = withoutSpaces(title);
    if (m_titles.value(role) == joined)
        return;
    if (joined.isEmpty())
        m_titles.remove(role);
    else
        m_titles.insert(role, joined);
    parse();
    Q_EMIT changed();
}

QVector<int> TextPredicate::rolesOf(const QString& key) const
{
    QVector<int> roles = m_model ? rolesNamed(*m_model, key) : QVector<int>();
    const QString joined = withoutSpaces(key);
    for (auto title = m_titles.begin(); title != m_titles.end(); ++title) {
        if (title->compare(joined, Qt::CaseInsensitive) == 0 && !roles.contains(title.key()))
            roles.append(title.key());
    }
    return roles;
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
    m_query = FilterQuery();
    m_expression = QRegularExpression();
    m_announcement.stop();
    if (m_isExpression) {
        m_expression =
            QRegularExpression(m_text, QRegularExpression::CaseInsensitiveOption |
                                           QRegularExpression::UseUnicodePropertiesOption);
        m_expression.optimize();
    } else {
        m_query = parseFilter(m_text, [this](const QString& key) { return rolesOf(key); });
    }
    m_onlyExcludes = std::all_of(m_query.terms.begin(), m_query.terms.end(),
                                 [](const FilterTerm& term) { return term.isExcluded; });
    m_excludedAbove = 0;
    for (std::size_t i = 0; i < std::min(m_query.terms.size(), PathTerms::mostTerms); ++i) {
        if (m_query.terms[i].isExcluded && m_query.terms[i].hasWords)
            m_excludedAbove |= PathTerms::Terms(1) << i;
    }
    m_path.start(m_query.terms.empty() ? nullptr : m_model.data(), &m_query.terms);
}

bool TextPredicate::isActive() const
{
    const bool byText =
        m_isExpression ? !m_text.isEmpty() && m_expression.isValid() : !m_query.terms.empty();
    return byText || !m_conditions.isEmpty();
}

QString TextPredicate::error() const
{
    if (!m_isExpression)
        return m_query.error;
    if (m_expression.isValid())
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
    if (!m_isExpression)
        return m_query.terms.empty() || acceptsTerms(row);
    return m_text.isEmpty() || !m_expression.isValid() ||
           m_expression.match(row.data(Qt::DisplayRole).toString()).hasMatch();
}

bool TextPredicate::acceptsTerms(const QModelIndex& row) const
{
    const QString name = row.data(Qt::DisplayRole).toString();
    const auto holdsHere = [&](const FilterTest& test) {
        return test.isWord() ? test.isIn(name) : test.holds(row);
    };
    bool anyHere = m_onlyExcludes;
    PathTerms::Terms wantedAbove = 0;
    for (std::size_t i = 0; i < m_query.terms.size(); ++i) {
        const FilterTerm& term = m_query.terms[i];
        const bool here = std::any_of(term.tests.begin(), term.tests.end(), holdsHere);
        if (here && term.isExcluded)
            return false;
        if (here)
            anyHere = true;
        else if (!term.isExcluded && (!term.hasWords || i >= PathTerms::mostTerms))
            return false;
        else if (!term.isExcluded)
            wantedAbove |= PathTerms::Terms(1) << i;
    }
    if (!anyHere || (wantedAbove == 0 && m_excludedAbove == 0))
        return anyHere;
    const PathTerms::Terms above = m_path.above(row);
    return (above & wantedAbove) == wantedAbove && (above & m_excludedAbove) == 0;
}

} // namespace lumo::datamodels::proxy
