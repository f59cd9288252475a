#pragma once

#include <host/reflection/reflected_object.h>
#include <host/scene/asset_model.h>

#include <QAbstractItemModel>

#include <memory>
#include <string>
#include <vector>

namespace test {

/// An object that has a name and nothing else.
class NamedObject : public kyr::IReflected
{
public:
    explicit NamedObject(std::string name) : m_name(std::move(name)) {}
    const kyr::ReflectedClass& reflectedClass() const override;
    std::string reflectedName() const override { return m_name; }

private:
    std::string m_name;
};

/// A scene as a tree of named rows with any number of columns, whose every change is announced
/// exactly. It is written as indented text: "a\n  b\n  c\nd" is two top-level rows, the first with
/// two children; a leading "+" wishes the row expanded.
class TreeModel : public QAbstractItemModel
{
    Q_OBJECT

public:
    struct Item;
    using Items = std::vector<std::unique_ptr<Item>>;
    struct Item
    {
        Item() : Item(std::make_shared<NamedObject>("")) {}
        explicit Item(std::shared_ptr<kyr::IReflected> itsObject);

        QString name;
        std::shared_ptr<kyr::IReflected> object;
        QVariant objectValue; ///< What the object role gives.
        QString type = QStringLiteral("mesh");
        bool expanded = false;
        bool visible = true;
        bool hovered = false;
        Qt::ItemFlags flags = Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemIsEditable |
                              Qt::ItemIsDragEnabled | Qt::ItemIsDropEnabled;
        Item* parent = nullptr;
        int row = 0;
        Items children;
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

    explicit TreeModel(const QString& text = {}, int columns = 1);
    explicit TreeModel(Items items, int columns = 1);

    /// `parents` top rows with `children` rows each.
    static Items wide(int parents, int children);
    static Items parsed(const QString& text);
    static Items named(const QStringList& names);

    Item* root() { return &m_root; }
    Item* item(const QModelIndex& index) const;
    QModelIndex indexOf(const Item* item) const;
    QModelIndex indexOf(const kyr::IReflected* object) const;
    /// The row of that name, column 0.
    QModelIndex find(const QString& name) const;
    kyr::ReflectedObject object(const QString& name) const;

    void insert(const QModelIndex& parent, int row, Items items);
    void insertObjects(const QModelIndex& parent, int row,
                       const std::vector<std::shared_ptr<kyr::IReflected>>& objects);
    void remove(const QModelIndex& parent, int row, int count);
    /// False, and nothing done, when the rows cannot go there.
    bool move(const QModelIndex& from, int row, int count, const QModelIndex& to, int target);
    /// Reverses the order of the children, as a sort would.
    void reverse(const QModelIndex& parent, LayoutChangeHint hint);
    void resetTo(const QString& text);
    /// Emits `rowsInserted` without having announced it.
    void emitUnannouncedInsertion(const QModelIndex& parent, int first, int last);

    /// For trees without a second level.
    bool insertColumns(int column, int count, const QModelIndex& parent = {}) override;
    bool removeColumns(int column, int count, const QModelIndex& parent = {}) override;

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    /// Takes any name but the empty one, and any type in one word.
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
    template <typename Wanted>
    QModelIndex findIf(Wanted wanted) const;
    Item* itemOrRoot(const QModelIndex& index) const;

    mutable Item m_root;
    int m_columns;
};

/// An asset model over a `TreeModel`, which it does not own.
class TreeAssetModel : public IAssetModel
{
public:
    explicit TreeAssetModel(TreeModel* model) : m_model(model) {}
    QAbstractItemModel* itemModel() const override { return m_model; }
    QModelIndex indexOf(const kyr::ReflectedObject& object) const override
    {
        return m_model->indexOf(object.get());
    }
    void setObjectHovered(const kyr::ReflectedObject& object, bool hovered) override;
    void activateItem(const QModelIndex& index) override { m_activated.append(index); }

    /// "+a -b" for a marked and then b unmarked.
    const std::string& hoverLog() const { return m_hoverLog; }
    const QModelIndexList& activated() const { return m_activated; }

private:
    TreeModel* m_model;
    std::string m_hoverLog;
    QModelIndexList m_activated;
};

} // namespace test
