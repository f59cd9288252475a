#pragma once

#include <host/ui/filter_query.h>

#include <QHash>
#include <QObject>
#include <QPersistentModelIndex>
#include <QPointer>

namespace lumo::datamodels::proxy {

/// Which terms of a filter have a word in the names above a row. Each row with children is read
/// once until the tree changes, so that rows asked for from top to bottom cost O(1), however deep.
class PathTerms : public QObject
{
    Q_OBJECT

public:
    /// One bit for a term; terms behind the last one have none.
    using Terms = quint64;
    static constexpr std::size_t mostTerms = 64;

    using QObject::QObject;

    /// The model, which may be null, and the terms must live while rows are asked for.
    void start(const QAbstractItemModel* model, const std::vector<FilterTerm>* terms);
    Terms above(const QModelIndex& row);

Q_SIGNALS:
    /// A name or a place changed that rows below it were asked about.
    void outdated();

private:
    void follow(const QAbstractItemModel& model);
    void forget() { m_known.clear(); }
    Terms termsIn(const QString& name) const;

    QPointer<const QAbstractItemModel> m_model;
    const std::vector<FilterTerm>* m_terms = nullptr;
    QHash<QModelIndex, Terms> m_known;
};

} // namespace lumo::datamodels::proxy
