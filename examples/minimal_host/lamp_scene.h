#pragma once

#include <host/scene/asset_model.h>
#include <kyr_scene_outline/item_roles.h>

#include <QDebug>
#include <QStandardItemModel>

/// What a row stands for: something with a name, and here with no properties.
class Lamp : public kyr::IReflected
{
public:
    explicit Lamp(QString name) : m_name(std::move(name)) {}
    const kyr::ReflectedClass& reflectedClass() const override
    {
        static const kyr::ReflectedClass plain{"Lamp", {}};
        return plain;
    }
    std::string reflectedName() const override { return m_name.toStdString(); }

    QStandardItem* row = nullptr;

private:
    QString m_name;
};

/// A row that has an object, which may outlive it.
class LampItem : public QStandardItem
{
public:
    explicit LampItem(const QString& name)
        : QStandardItem(name), m_lamp(std::make_shared<Lamp>(name))
    {
        m_lamp->row = this;
        setData(QVariant::fromValue(kyr::ReflectedObject(m_lamp)), kyr::ObjectRole);
    }
    ~LampItem() override { m_lamp->row = nullptr; }

private:
    std::shared_ptr<Lamp> m_lamp;
};

/// An ordinary item model whose rows have objects, and the asset model over it.
class LampScene : public IAssetModel
{
public:
    LampScene()
    {
        for (const char* name : {"Street", "Workshop"}) {
            QStandardItem& group = add(*m_model.invisibleRootItem(), 0, name);
            for (int lamp = 1; lamp <= 3; ++lamp)
                add(group, lamp - 1, QStringLiteral("Lamp %1").arg(lamp));
        }
    }

    QStandardItem& add(QStandardItem& parent, int row, const QString& name)
    {
        auto* item = new LampItem(name);
        parent.insertRow(row, item);
        return *item;
    }
    QStandardItemModel& model() { return m_model; }

    QAbstractItemModel* itemModel() const override { return &m_model; }
    QModelIndex indexOf(const kyr::ReflectedObject& object) const override
    {
        const auto* lamp = dynamic_cast<const Lamp*>(object.get());
        return lamp && lamp->row ? lamp->row->index() : QModelIndex();
    }
    void setObjectHovered(const kyr::ReflectedObject&, bool) override {}
    void activateItem(const QModelIndex& index) override
    {
        qInfo() << "activated" << index.data().toString();
    }

private:
    mutable QStandardItemModel m_model;
};
