#pragma once

#include <host/reflection/reflected_object.h>
#include <host/scene/asset_model.h>

#include <QAbstractItemModel>

#include <memory>
#include <string>
#include <unordered_map>
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

/// A tree of named rows with any number of columns, written as indented text:
/// "a\n  b\n  c\nd" is two top-level rows, the first with two children.
class TreeModel : public QAbstractItemModel
{
    Q_OBJECT

public:
    explicit TreeModel(const std::string& text = {}, int columns = 1);
    ~TreeModel() override;

    void insert(const QModelIndex& parent, int row, const std::vector<std::string>& names);
    void insertObjects(const QModelIndex& parent, int row,
                       const std::vector<std::shared_ptr<kyr::IReflected>>& objects);
    void append(const QModelIndex& parent, int count);
    void remove(const QModelIndex& parent, int row, int count);
    /// False, and nothing done, when the rows cannot go there.
    bool move(const QModelIndex& parent, int row, int count, const QModelIndex& to, int toRow);
    /// Reverses the order of the children, as a sort would.
    void reverse(const QModelIndex& parent, LayoutChangeHint hint);
    void resetTo(const std::string& text);
    /// Emits `rowsInserted` without having announced it.
    void emitUnannouncedInsertion(const QModelIndex& parent, int first, int last);
    void emitUnannouncedRemoval(const QModelIndex& parent, int first, int last);

    /// The row of that name, column 0.
    QModelIndex find(const std::string& name) const;
    QModelIndex indexOf(const kyr::IReflected* object) const;
    kyr::ReflectedObject object(const std::string& name) const;
    /// What the object role gives for rows without an object of their own.
    void setObjectValue(const std::string& name, const QVariant& value);
    void setRowFlags(const std::string& name, Qt::ItemFlags flags);
    /// For trees without a second level.
    bool insertColumns(int column, int count, const QModelIndex& parent = {}) override;
    bool removeColumns(int column, int count, const QModelIndex& parent = {}) override;

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

private:
    struct Node;
    Node* nodeAt(const QModelIndex& index) const;
    QModelIndex indexOf(const Node* node) const;
    std::unique_ptr<Node> makeNode(std::shared_ptr<kyr::IReflected> object, Node* parent);
    void parse(const std::string& text);
    static void renumber(Node& parent, int from);

    std::unique_ptr<Node> m_root;
    std::unordered_map<const kyr::IReflected*, Node*> m_nodes;
    int m_columns;
    int m_made = 0;
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
