#pragma once

#include <panel/arranged_tree_model.h>

#include <QObject>
#include <QPointer>

namespace kyr::panel {

/// Gives a panel its scene as the user wants to see it: the source itself while nothing is
/// filtered, sorted or regrouped, so that its changes arrive row by row; an `ArrangedTreeModel`
/// otherwise, once its first outcome is there. Owns neither source nor predicate.
class KYR_SCENE_OUTLINE_PANEL_EXPORT TreeArranger : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QAbstractItemModel* sourceModel READ sourceModel WRITE setSourceModel NOTIFY
                   settingsChanged)
    /// See `ArrangedTreeModel::setPredicate`; null shows every row.
    Q_PROPERTY(QObject* predicate READ predicate WRITE setPredicate NOTIFY settingsChanged)
    /// "flat", "type", or "hierarchy" for all else.
    Q_PROPERTY(QString arrangement READ arrangement WRITE setArrangement NOTIFY settingsChanged)
    /// -1 keeps the scene's order.
    Q_PROPERTY(int sortRole READ sortRole WRITE setSortRole NOTIFY settingsChanged)
    Q_PROPERTY(
        bool sortDescending READ isSortDescending WRITE setSortDescending NOTIFY settingsChanged)
    Q_PROPERTY(QAbstractItemModel* model READ model NOTIFY modelChanged)
    Q_PROPERTY(bool working READ isWorking NOTIFY workingChanged)

public:
    explicit TreeArranger(QObject* parent = nullptr);
    ~TreeArranger() override;

    QAbstractItemModel* sourceModel() const { return m_source; }
    void setSourceModel(QAbstractItemModel* source);
    QObject* predicate() const { return m_predicate; }
    void setPredicate(QObject* predicate);
    QString arrangement() const { return m_arrangement; }
    void setArrangement(const QString& arrangement);
    int sortRole() const { return m_sorting.role; }
    void setSortRole(int role);
    bool isSortDescending() const { return m_sorting.order == Qt::DescendingOrder; }
    void setSortDescending(bool descending);

    QAbstractItemModel* model() const { return m_model; }
    bool isWorking() const { return m_arranged.isWorking(); }
    /// Works off at once what waits for the event loop.
    Q_INVOKABLE void finish() { m_arranged.finish(); }

Q_SIGNALS:
    void settingsChanged();
    void modelChanged();
    void workingChanged();

private:
    Q_INVOKABLE void update();
    bool wantsArranging() const;
    void show(QAbstractItemModel* model);

    ArrangedTreeModel m_arranged;
    QPointer<QAbstractItemModel> m_source;
    QPointer<QObject> m_predicate;
    QString m_arrangement;
    ArrangedTreeModel::Sorting m_sorting;
    QPointer<QAbstractItemModel> m_model;
    bool m_updating = false;
};

} // namespace kyr::panel
