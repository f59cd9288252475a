#pragma once

#include <panel/arrangement/arranged_tree_model.h>
#include <panel/rows/flat_tree_model.h>

#include <QObject>
#include <QPointer>
#include <QTimer>

#include <memory>

namespace kyr::panel {

/// Gives a panel its scene as the user wants to see it: the source itself while nothing is
/// filtered, sorted or regrouped, an `ArrangedTreeModel` otherwise.
///
/// Another outcome is worked out in slices of a few milliseconds from the event loop, with `list`
/// made ready for it, so that no keystroke holds the window up; `working` tells while the rows of
/// the last one still show. Owns neither source nor predicate nor list.
class KYR_SCENE_OUTLINE_PANEL_EXPORT TreeArranger : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QAbstractItemModel* sourceModel READ sourceModel WRITE setSourceModel NOTIFY
                   settingsChanged)
    /// See `ArrangedTreeModel::Settings`, with a signal `changed()`; null shows every row.
    Q_PROPERTY(QObject* predicate READ predicate WRITE setPredicate NOTIFY settingsChanged)
    /// "flat", "type", or "hierarchy" for all else.
    Q_PROPERTY(QString arrangement READ arrangement WRITE setArrangement NOTIFY settingsChanged)
    /// -1 keeps the scene's order.
    Q_PROPERTY(int sortRole READ sortRole WRITE setSortRole NOTIFY settingsChanged)
    Q_PROPERTY(
        bool sortDescending READ isSortDescending WRITE setSortDescending NOTIFY settingsChanged)
    /// What shows `model`; may be null.
    Q_PROPERTY(kyr::panel::FlatTreeModel* list READ list WRITE setList NOTIFY settingsChanged)
    Q_PROPERTY(QAbstractItemModel* model READ model NOTIFY modelChanged)
    Q_PROPERTY(bool working READ isWorking NOTIFY workingChanged)

public:
    explicit TreeArranger(QObject* parent = nullptr);
    ~TreeArranger() override;

    QAbstractItemModel* sourceModel() const { return m_source; }
    void setSourceModel(QAbstractItemModel* source);
    QObject* predicate() const { return m_settings.predicate; }
    void setPredicate(QObject* predicate);
    QString arrangement() const { return m_arrangement; }
    void setArrangement(const QString& arrangement);
    int sortRole() const { return m_settings.sorting.role; }
    void setSortRole(int role);
    bool isSortDescending() const { return m_settings.sorting.order == Qt::DescendingOrder; }
    void setSortDescending(bool descending);
    FlatTreeModel* list() const { return m_list; }
    void setList(FlatTreeModel* list);

    QAbstractItemModel* model() const { return m_model; }
    bool isWorking() const { return m_working; }
    /// Works off at once what waits for the event loop.
    Q_INVOKABLE void finish();
    /// Does one slice of it.
    void workSlice();

Q_SIGNALS:
    void settingsChanged();
    void modelChanged();
    void workingChanged();

private:
    Q_INVOKABLE void filter();
    void update();
    void startAnew();
    bool wantsArranging() const;
    void work(const QDeadlineTimer& deadline);
    void setWorking(bool working);
    void show(QAbstractItemModel* model);
    void showNext();

    QPointer<QAbstractItemModel> m_source;
    ArrangedTreeModel::Settings m_settings;
    QString m_arrangement;
    QPointer<FlatTreeModel> m_list;
    std::unique_ptr<ArrangedTreeModel> m_next; ///< Null if the source itself comes next.
    std::unique_ptr<ArrangedTreeModel> m_shown;
    std::unique_ptr<ArrangedTreeModel> m_left; ///< Takes its time to free, so not while it counts.
    QPointer<QAbstractItemModel> m_model;
    bool m_working = false;
    bool m_sourceChanges = false;
    QTimer m_slices;
};

} // namespace kyr::panel
