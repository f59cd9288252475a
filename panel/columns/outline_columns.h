#pragma once

#include <panel/kyr_scene_outline_panel_export.h>

#include <QAbstractItemModel>
#include <QHash>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QStringList>
#include <QTimer>
#include <QVariant>

namespace kyr::panel {

/// The columns beside the names of a tree, read from an item model that lists them, with what the
/// user made of them: widths, and by which the tree is sorted. Their order is the model's own.
///
/// The model's roles, by name: "display" the title, "columnId" a text to know the column by,
/// "valueRole" the number of the tree's role with the cells' values, "columnOrder" its place,
/// written when the user moves it, and if there are any "width" in pixels, "toggle" whether the
/// values are bools to click on, "alignment" a Qt::Alignment, "editable" whether values take a text
/// and "choices" the only texts that they take. The model is not owned.
class KYR_SCENE_OUTLINE_PANEL_EXPORT OutlineColumns : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QAbstractItemModel* model READ model WRITE setModel NOTIFY modelChanged)
    /// Where widths and sorting are kept in the application's settings; empty: nowhere.
    Q_PROPERTY(
        QString settingsName READ settingsName WRITE setSettingsName NOTIFY settingsNameChanged)
    /// A map for each column: columnId, title, valueRole, toggle, alignment, editable, choices.
    Q_PROPERTY(QVariantList columns READ columns NOTIFY columnsChanged)
    Q_PROPERTY(QList<int> valueRoles READ valueRoles NOTIFY columnsChanged)
    Q_PROPERTY(QVariantList widths READ widths NOTIFY widthsChanged)
    /// The column that sorts, `nameId` for the names, empty for the scene's order.
    Q_PROPERTY(QString sortId READ sortId NOTIFY sortingChanged)
    Q_PROPERTY(int sortRole READ sortRole NOTIFY sortingChanged)
    Q_PROPERTY(bool sortDescending READ isSortDescending NOTIFY sortingChanged)
    Q_PROPERTY(QString nameId READ nameId CONSTANT)

public:
    static constexpr int smallestWidth = 24;

    explicit OutlineColumns(QObject* parent = nullptr);
    ~OutlineColumns() override;

    QAbstractItemModel* model() const { return m_model; }
    void setModel(QAbstractItemModel* model);
    QString settingsName() const { return m_settingsName; }
    void setSettingsName(const QString& name);
    QVariantList columns() const;
    QList<int> valueRoles() const;
    QVariantList widths() const;
    QString sortId() const { return m_sortId; }
    /// -1 when nothing sorts, or the column that does is not shown.
    int sortRole() const;
    bool isSortDescending() const { return m_sortDescending; }
    static QString nameId() { return QStringLiteral("#name"); }

    Q_INVOKABLE void setWidth(int column, int width);
    /// Puts a column before the one that is at `to` now; `to` may be the number of columns.
    Q_INVOKABLE void move(int column, int to);
    /// Ascending, then descending, then the scene's order.
    Q_INVOKABLE void sortBy(const QString& columnId);

Q_SIGNALS:
    void modelChanged();
    void settingsNameChanged();
    void columnsChanged();
    void widthsChanged();
    void sortingChanged();

private:
    struct Column
    {
        QString id;
        QString title;
        int valueRole = -1;
        int width = 0;
        bool toggle = false;
        int alignment = Qt::AlignLeft;
        bool editable = false;
        QStringList choices;
        friend bool operator==(const Column& a, const Column& b)
        {
            return a.id == b.id && a.title == b.title && a.valueRole == b.valueRole &&
                   a.width == b.width && a.toggle == b.toggle && a.alignment == b.alignment &&
                   a.editable == b.editable && a.choices == b.choices;
        }
    };

    int role(const char* name) const;
    void read();
    void writeOrder(const QStringList& ids);
    void load();
    void save() const;
    void saveNow();
    int widthOf(const Column& column) const;

    QPointer<QAbstractItemModel> m_model;
    QString m_settingsName;
    QList<Column> m_columns;
    QHash<QString, int> m_widths; ///< Those that the user chose.
    QString m_sortId;
    bool m_sortDescending = false;
    QTimer m_rereading;
    QTimer m_saving;
};

} // namespace kyr::panel
