#pragma once

#include <QAbstractItemModel>

#include <memory>
#include <vector>

/// A tree of named rows with the roles of a scene, whose every change is announced exactly.
class FakeScene : public QAbstractItemModel
{
    Q_OBJECT

public:
    struct Item
    {
        QString name;
        QString type = QStringLiteral("mesh");
        bool expanded = false;
        bool visible = true;
        bool hovered = false;
        Item* parent = nullptr;
        int row = 0;
        std::vector<std::unique_ptr<Item>> children;
    };
    enum Role
    {
        TypeRole = 356,
        CountRole,
        ObjectRole,
        ExpandedRole,
        EnabledRole,
        ButtonsRole,
        HoverRole,
        ModifiedRole
    };

    using QAbstractItemModel::QAbstractItemModel;

    /// One name a line, two spaces a level; a leading "+" wishes the row expanded.
    static std::unique_ptr<FakeScene> fromText(const QString& text);
    /// `parents` top rows with `children` rows each.
    static std::unique_ptr<FakeScene> wide(int parents, int children);

    Item* root() { return &m_root; }
    Item* item(const QModelIndex& index) const;
    QModelIndex indexOf(const Item* item) const;
    QModelIndex find(const QString& name) const;

    void insert(const QModelIndex& parent, int row, std::vector<std::unique_ptr<Item>> items);
    void remove(const QModelIndex& parent, int row, int count);
    /// Nothing when the rows would go below themselves.
    void move(const QModelIndex& from, int row, int count, const QModelIndex& to, int target);
    void sortByName();
    /// Gives the rows away, announcing nothing.
    std::vector<std::unique_ptr<Item>> takeRows() { return std::move(m_root.children); }
    void reset(std::unique_ptr<FakeScene> other);

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& index) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    /// Takes any name but the empty one.
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    /// Rows can be dropped onto others and between them, which moves them.
    QMimeData* mimeData(const QModelIndexList& indexes) const override;
    bool canDropMimeData(const QMimeData* data, Qt::DropAction action, int row, int column,
                         const QModelIndex& parent) const override;
    bool dropMimeData(const QMimeData* data, Qt::DropAction action, int row, int column,
                      const QModelIndex& parent) override;
    QHash<int, QByteArray> roleNames() const override;

private:
    Item* itemOrRoot(const QModelIndex& index) const;
    static void renumber(Item* parent, int from);

    mutable Item m_root;
};
