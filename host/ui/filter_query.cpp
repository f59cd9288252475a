#include "filter_query.h"

#include "number_value.h"

#include <QCoreApplication>

#include <algorithm>
#include <cmath>

namespace lumo::datamodels::proxy {

namespace {

using Comparison = FilterTest::Comparison;

struct Operator
{
    QLatin1String sign;
    Comparison comparison;
};

// Longer signs first, for they begin like shorter ones.
const Operator operators[] = {
    {QLatin1String("!="), Comparison::NotEqual},
    {QLatin1String("<="), Comparison::LessOrEqual},
    {QLatin1String(">="), Comparison::GreaterOrEqual},
    {QLatin1String("<"), Comparison::Less},
    {QLatin1String(">"), Comparison::Greater},
    {QLatin1String("="), Comparison::Equal},
    {QLatin1String(":"), Comparison::Has},
};

/// A text with a mark at each character that was in quotes, which are left out.
struct Token
{
    QString text;
    QVector<bool> quoted;

    void append(QChar character, bool isQuoted)
    {
        text.append(character);
        quoted.append(isQuoted);
    }
    bool has(int at, QLatin1String plain) const
    {
        return text.midRef(at).startsWith(plain) && !quoted[at];
    }
    Token mid(int from, int length = -1) const
    {
        return {text.mid(from, length), quoted.mid(from, length)};
    }
};

std::vector<Token> tokensOf(const QString& text)
{
    std::vector<Token> tokens(1);
    bool quoted = false;
    for (const QChar character : text) {
        if (character == QLatin1Char('"'))
            quoted = !quoted;
        else if (!quoted && character.isSpace())
            tokens.emplace_back();
        else
            tokens.back().append(character, quoted);
    }
    return tokens;
}

std::vector<Token> alternativesOf(const Token& token)
{
    std::vector<Token> alternatives(1);
    for (int i = 0; i < token.text.size(); ++i) {
        if (token.has(i, QLatin1String("|")))
            alternatives.emplace_back();
        else
            alternatives.back().append(token.text[i], token.quoted[i]);
    }
    return alternatives;
}

bool isKeyCharacter(QChar character)
{
    return character.isLetterOrNumber() || character == QLatin1Char('_') ||
           character == QLatin1Char('.');
}

std::optional<bool> flagOf(const QString& text)
{
    const QString word = text.toLower();
    if (word == QLatin1String("yes") || word == QLatin1String("true") ||
        word == QLatin1String("on") || word == QLatin1String("1"))
        return true;
    if (word == QLatin1String("no") || word == QLatin1String("false") ||
        word == QLatin1String("off") || word == QLatin1String("0"))
        return false;
    return std::nullopt;
}

/// Numbers that differ in noise alone are the same.
int orderOf(double left, double right)
{
    constexpr double noise = 1e-6;
    const bool areFinite = std::isfinite(left) && std::isfinite(right);
    if (left == right ||
        (areFinite && std::abs(left - right) <= noise * std::max(std::abs(left), std::abs(right))))
        return 0;
    return left < right ? -1 : 1;
}

class Parser
{
public:
    explicit Parser(const FilterKeys& keys) : m_keys(keys) {}

    void take(const Token& token)
    {
        const bool isExcluded = token.text.size() > 1 && token.has(0, QLatin1String("-"));
        FilterTerm term;
        term.isExcluded = isExcluded;
        m_roles.clear();
        for (const Token& alternative : alternativesOf(isExcluded ? token.mid(1) : token))
            addTest(term, alternative);
        if (!term.tests.empty())
            query.terms.push_back(std::move(term));
    }

    FilterQuery query;

private:
    void addTest(FilterTerm& term, const Token& alternative)
    {
        if (alternative.text.isEmpty())
            return;
        if (addComparison(term, alternative))
            return;
        if (!m_roles.isEmpty()) {
            term.tests.emplace_back(m_roles, m_comparison, alternative.text);
            return;
        }
        term.tests.emplace_back(alternative.text);
        term.hasWords = true;
    }
    /// False if it is a word after all.
    bool addComparison(FilterTerm& term, const Token& alternative)
    {
        int end = 0;
        while (end < alternative.text.size() &&
               (alternative.quoted[end] || isKeyCharacter(alternative.text[end])))
            ++end;
        if (end == 0 || end == alternative.text.size())
            return false;
        const auto* const found =
            std::find_if(std::begin(operators), std::end(operators),
                         [&](const Operator& o) { return alternative.has(end, o.sign); });
        if (found == std::end(operators))
            return false;
        const QString key = alternative.text.left(end);
        const QVector<int> roles = m_keys(key);
        // Names with a colon in them are common.
        if (roles.isEmpty() && found->comparison == Comparison::Has)
            return false;
        if (roles.isEmpty()) {
            query.error =
                QCoreApplication::translate("TextPredicate", "No property is called “%1”").arg(key);
            return true;
        }
        m_roles = roles;
        m_comparison = found->comparison;
        term.tests.emplace_back(roles, m_comparison,
                                alternative.text.mid(end + found->sign.size()));
        return true;
    }

    const FilterKeys& m_keys;
    QVector<int> m_roles;
    Comparison m_comparison = Comparison::Has;
};

} // namespace

FilterTest::FilterTest(const QString& word) : m_matcher(word, Qt::CaseInsensitive) {}

FilterTest::FilterTest(QVector<int> roles, Comparison comparison, const QString& value)
    : m_roles(std::move(roles))
    , m_comparison(comparison)
    , m_value(value)
    , m_matcher(value, Qt::CaseInsensitive)
    , m_flag(flagOf(value))
{
    bool isNumeric = false;
    const double number = value.toDouble(&isNumeric);
    if (isNumeric)
        m_number = number;
}

bool FilterTest::holds(const QModelIndex& row) const
{
    return std::any_of(m_roles.begin(), m_roles.end(),
                       [&](int role) { return holdsFor(row.data(role)); });
}

bool FilterTest::holdsFor(const QVariant& value) const
{
    if (!value.isValid())
        return false;
    const bool isFlag = value.userType() == QMetaType::Bool;
    if (m_value.isEmpty()) {
        return m_comparison != Comparison::Has ||
               (isFlag ? value.toBool() : !value.toString().isEmpty());
    }
    if (isFlag)
        return m_flag && holdsForOrder(int(value.toBool()) - int(*m_flag));
    if (isNumber(value) && std::isnan(value.toDouble()))
        return m_comparison == Comparison::NotEqual;
    if (isNumber(value))
        return m_number && holdsForOrder(orderOf(value.toDouble(), *m_number));
    const QString text = value.toString();
    if (m_comparison == Comparison::Has)
        return m_matcher.indexIn(text) >= 0;
    return holdsForOrder(text.compare(m_value, Qt::CaseInsensitive));
}

bool FilterTest::holdsForOrder(int order) const
{
    switch (m_comparison) {
    case Comparison::Has:
    case Comparison::Equal:
        return order == 0;
    case Comparison::NotEqual:
        return order != 0;
    case Comparison::Less:
        return order < 0;
    case Comparison::LessOrEqual:
        return order <= 0;
    case Comparison::Greater:
        return order > 0;
    case Comparison::GreaterOrEqual:
        return order >= 0;
    }
    return false;
}

FilterQuery parseFilter(const QString& text, const FilterKeys& keys)
{
    Parser parser(keys);
    for (const Token& token : tokensOf(text))
        parser.take(token);
    return std::move(parser.query);
}

QVector<int> rolesNamed(const QAbstractItemModel& model, const QString& key)
{
    if (key.compare(QLatin1String("name"), Qt::CaseInsensitive) == 0)
        return {Qt::DisplayRole};
    const QHash<int, QByteArray> names = model.roleNames();
    const QString ending = QLatin1Char('.') + key;
    QVector<int> exact;
    QVector<int> ends;
    for (auto role = names.begin(); role != names.end(); ++role) {
        const QString name = QString::fromUtf8(*role);
        if (name.compare(key, Qt::CaseInsensitive) == 0)
            exact.append(role.key());
        else if (name.endsWith(ending, Qt::CaseInsensitive))
            ends.append(role.key());
    }
    return exact.isEmpty() ? ends : exact;
}

} // namespace lumo::datamodels::proxy
