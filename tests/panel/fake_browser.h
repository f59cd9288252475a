#pragma once

#include <QItemSelectionModel>
#include <QObject>
#include <QQmlComponent>
#include <QStringList>

#include <utility>

/// What an editor hangs above or below the tree.
class FakePanel : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QQmlComponent* component MEMBER component CONSTANT)
    Q_PROPERTY(QObject* context MEMBER context CONSTANT)

public:
    QQmlComponent* component = nullptr;
    QObject* context = nullptr;
};

/// A mode list or a filter of an editor.
class FakeChoice : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString title MEMBER title CONSTANT)
    Q_PROPERTY(QStringList labels MEMBER labels CONSTANT)
    Q_PROPERTY(int currentIndex MEMBER currentIndex NOTIFY changed)
    Q_PROPERTY(QString arrangement READ arrangement NOTIFY changed)

public:
    QString title;
    QStringList labels;
    int currentIndex = 0;
    QString arrangement() const { return labels[currentIndex].toLower(); }

Q_SIGNALS:
    void changed();
};

/// What the panel uses of a scene browser, with a list of the calls that it made.
class FakeBrowser : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QAbstractItemModel* model READ model CONSTANT)
    Q_PROPERTY(QItemSelectionModel* selectionModel READ selectionModel CONSTANT)
    Q_PROPERTY(QObject* headerPanel MEMBER m_headerPanel NOTIFY headerPanelChanged)
    Q_PROPERTY(QObject* footerPanel MEMBER m_footerPanel NOTIFY footerPanelChanged)
    Q_PROPERTY(QObject* filterPredicate MEMBER m_filterPredicate NOTIFY filterPredicateChanged)
    Q_PROPERTY(QObject* selectableData MEMBER m_selectableData NOTIFY choicesChanged)
    Q_PROPERTY(QVariantList filterData MEMBER m_filterData NOTIFY choicesChanged)
    Q_PROPERTY(QAbstractItemModel* selectedColumnsModel MEMBER m_selectedColumns CONSTANT)

public:
    explicit FakeBrowser(QAbstractItemModel* model) : m_model(model), m_selection(model) {}

    QAbstractItemModel* model() const { return m_model; }
    QItemSelectionModel* selectionModel() { return &m_selection; }
    void setSelectedColumns(QAbstractItemModel* columns)
    {
        m_selectedColumns = columns;
        Q_EMIT columnsModelChanged();
    }
    QStringList takeCalls() { return std::exchange(m_calls, {}); }

    Q_INVOKABLE void syncHover(const QModelIndex& index) { called("hover", index); }
    Q_INVOKABLE void resetHover() { m_calls += QStringLiteral("unhover"); }
    Q_INVOKABLE void onDoubleClicked(const QModelIndex& index) { called("activate", index); }
    Q_INVOKABLE void requestMenu() { m_calls += QStringLiteral("menu"); }
    Q_INVOKABLE void selectAll() { m_calls += QStringLiteral("select all"); }

Q_SIGNALS:
    void headerPanelChanged();
    void footerPanelChanged();
    void filterPredicateChanged();
    void choicesChanged();
    void columnsModelChanged();
    void expandAllRequested();
    void collapseAllRequested();
    void onShowItem(const QModelIndex& index);

private:
    void called(const char* what, const QModelIndex& index)
    {
        m_calls += QLatin1String(what) + QLatin1Char(' ') + index.data().toString();
    }

    QAbstractItemModel* m_model;
    QItemSelectionModel m_selection;
    QObject* m_headerPanel = nullptr;
    QObject* m_footerPanel = nullptr;
    QObject* m_filterPredicate = nullptr;
    QObject* m_selectableData = nullptr;
    QVariantList m_filterData;
    QAbstractItemModel* m_selectedColumns = nullptr;
    QStringList m_calls;
};
