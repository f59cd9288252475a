#pragma once

#include <host/scene/asset_model.h>
#include <kyr_scene_outline/item_roles.h>

#include <QDebug>
#include <QPersistentModelIndex>
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

    QPersistentModelIndex row;

private:
    QString m_name;
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
        const auto lamp = std::make_shared<Lamp>(name);
        auto* item = new QStandardItem(name);
        item->setData(QVariant::fromValue(kyr::ReflectedObject(lamp)), kyr::ObjectRole);
        parent.insertRow(row, item);
        lamp->row = item->index();
        return *item;
    }
    QStandardItemModel& model() { return m_model; }

    QAbstractItemModel* itemModel() const override { return &m_model; }
    QModelIndex indexOf(const kyr::ReflectedObject& object) const override
    {
        const auto* lamp = dynamic_cast<const Lamp*>(object.get());
        return lamp ? QModelIndex(lamp->row) : QModelIndex();
    }
    void setObjectHovered(const kyr::ReflectedObject&, bool) override {}
    void activateItem(const QModelIndex& index) override
    {
        qInfo() << "activated" << index.data().toString();
    }

private:
    mutable QStandardItemModel m_model;
};
