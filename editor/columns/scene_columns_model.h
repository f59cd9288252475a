#pragma once

#include <QAbstractItemModel>

#include <vector>

namespace editor {

class SceneProperty;

/// The columns that a tree of the scene can show, in groups: what a row has by itself, and each
/// reflected property of its object. Groups are no columns and cannot be selected.
class SceneColumnsModel final : public QAbstractItemModel
{
    Q_OBJECT

public:
    enum Role
    {
        ColumnIdRole = Qt::UserRole, ///< QString; see `SceneProperty::path` for properties
        ColumnOrderRole,             ///< int, place among the columns that show; can be set
        ValueRole,                   ///< int, role of the tree's model for the values
        WidthRole,                   ///< int, pixels to begin with
        ToggleRole,                  ///< bool, values are booleans that can be set
        AlignmentRole,               ///< int, a Qt::Alignment
        EditableRole,                ///< bool, values take a text
        ChoicesRole,                 ///< QStringList, all texts that values can have, if few
    };

    explicit SceneColumnsModel(QObject* parent = nullptr);

    /// Invalid for an id that no column has.
    QModelIndex indexOf(const QString& columnId) const;
    /// All columns, in the order of the groups.
    QModelIndexList columns() const;

    QHash<int, QByteArray> roleNames() const override;
    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& index) const override;
    using QObject::parent;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

private:
    struct Column
    {
        QString id;
        QString title;
        int valueRole = 0;
        int width = 0;
        bool isToggle = false;
        Qt::Alignment alignment = Qt::AlignLeft;
        bool isEditable = false;
        QStringList choices = {};
        int order = 0;
    };
    struct Group
    {
        QString title;
        std::vector<Column> columns;
    };

    void addProperty(const SceneProperty& property);
    void addColumn(const QString& group, Column column);
    bool hasTitle(const QString& title) const;
    const Column* columnAt(const QModelIndex& index) const;

    std::vector<Group> m_groups;
};

} // namespace editor
