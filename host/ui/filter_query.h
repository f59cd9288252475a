#pragma once

#include <QAbstractItemModel>
#include <QString>
#include <QStringMatcher>
#include <QVector>

#include <functional>
#include <optional>
#include <vector>

namespace lumo::datamodels::proxy {

/// A word, or a comparison of one property, made ready for very many rows.
class FilterTest
{
public:
    enum class Comparison
    {
        Has, ///< As `key:value`: texts contain the value, others equal it.
        Equal,
        NotEqual,
        Less,
        LessOrEqual,
        Greater,
        GreaterOrEqual,
    };

    explicit FilterTest(const QString& word);
    FilterTest(QVector<int> roles, Comparison comparison, const QString& value);

    bool isWord() const { return m_roles.isEmpty(); }
    /// Words only.
    bool isIn(const QString& name) const { return m_matcher.indexIn(name) >= 0; }
    /// Comparisons only: whether any of the roles holds what is asked for. A row without the
    /// property never does; a comparison that has no value yet asks for the property alone.
    bool holds(const QModelIndex& row) const;

private:
    bool holdsFor(const QVariant& value) const;
    bool holdsForOrder(int order) const;

    QVector<int> m_roles;
    Comparison m_comparison = Comparison::Has;
    QString m_value;
    QStringMatcher m_matcher;
    std::optional<double> m_number;
    std::optional<bool> m_flag;
};

/// One part of a filter; any of its tests will do.
struct FilterTerm
{
    std::vector<FilterTest> tests;
    bool isExcluded = false;
    bool hasWords = false;
};

/// What a filter text says.
///
/// White space stands between terms and quotes hold one together. `a|b` is either, `-a` is none;
/// `key:value` and the comparisons =, !=, <, >, <= and >= look at a property, and what follows
/// them in the same term with `|` at the same one: `type:light|camera`.
struct FilterQuery
{
    std::vector<FilterTerm> terms;
    /// What cannot be understood, and is left out of the terms.
    QString error;
};

/// The roles that a key stands for; none for a key that is no property's.
using FilterKeys = std::function<QVector<int>(const QString& key)>;

FilterQuery parseFilter(const QString& text, const FilterKeys& keys);

/// Roles of that name, whatever the case: "name", the name of a role as it is, or else the end of
/// a dotted one, as "intensity" of "light.intensity".
QVector<int> rolesNamed(const QAbstractItemModel& model, const QString& key);

} // namespace lumo::datamodels::proxy
