#pragma once

#include <host/scene/recorded_asset_selection.h>
#include <kyr_scene_outline/scene_browser_data.h>
#include <support/message_log.h>
#include <support/tree_model.h>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>

namespace test {

inline std::string names(const IAssetSelection::Objects& objects)
{
    std::string text;
    for (const kyr::PersistentObject& object : objects)
        text += (text.empty() ? "" : " ") + object.object().reference().name();
    return text;
}

inline std::string names(const QItemSelection& selection)
{
    std::string text;
    for (const QModelIndex& index : selection.indexes())
        text += (text.empty() ? "" : " ") + index.data().toString().toStdString();
    return text;
}

/// Called in every call of the browser to the editor.
inline std::function<void()> onHostCall;

inline void hostIsCalled()
{
    if (onHostCall)
        onHostCall();
}

class HookedTreeModel : public TreeModel
{
public:
    using TreeModel::TreeModel;
    QVariant data(const QModelIndex& index, int role) const override
    {
        hostIsCalled();
        return TreeModel::data(index, role);
    }
    int rowCount(const QModelIndex& parent = {}) const override
    {
        hostIsCalled();
        return TreeModel::rowCount(parent);
    }
};

class HookedAssetModel : public TreeAssetModel
{
public:
    using TreeAssetModel::TreeAssetModel;
    QAbstractItemModel* itemModel() const override
    {
        hostIsCalled();
        return TreeAssetModel::itemModel();
    }
    QModelIndex indexOf(const kyr::ReflectedObject& object) const override
    {
        hostIsCalled();
        return TreeAssetModel::indexOf(object);
    }
    void setObjectHovered(const kyr::ReflectedObject& object, bool hovered) override
    {
        hostIsCalled();
        TreeAssetModel::setObjectHovered(object, hovered);
    }
};

/// Writes down every call that changes the selection.
class LoggedAssetSelection : public RecordedAssetSelection
{
public:
    using RecordedAssetSelection::RecordedAssetSelection;

    const Objects& objects() const override
    {
        hostIsCalled();
        return RecordedAssetSelection::objects();
    }
    std::weak_ptr<Zar::ChangesController> changesController() const override
    {
        hostIsCalled();
        return RecordedAssetSelection::changesController();
    }
    void setSelection(Objects objects, bool keepPresent) override
    {
        m_log += "set(" + names(objects) + ") ";
        if (onSet)
            onSet();
        hostIsCalled();
        RecordedAssetSelection::setSelection(std::move(objects), keepPresent);
    }
    void setHoveredObjects(Objects objects) override
    {
        m_log += "hover(" + names(objects) + ") ";
        lastHovered = objects;
        hostIsCalled();
        RecordedAssetSelection::setHoveredObjects(std::move(objects));
    }
    bool isSelected(const kyr::ReflectedObject& object) const override
    {
        hostIsCalled();
        return RecordedAssetSelection::isSelected(object);
    }
    std::string takeLog() { return std::exchange(m_log, {}); }

    std::function<void()> onSet;
    Objects lastHovered;

private:
    std::string m_log;
};

class BrowserTest : public testing::Test
{
protected:
    void create(const QString& tree, int columns = 1)
    {
        create(std::make_unique<HookedTreeModel>(tree, columns));
    }
    void create(std::unique_ptr<TreeModel> scene)
    {
        browser.reset();
        model = std::move(scene);
        assetModel = std::make_unique<HookedAssetModel>(model.get());
        browser = std::make_unique<SceneBrowserData>(assetModel.get(), &selection, nullptr);
    }

    IAssetSelection::Objects objects(const QStringList& rows) const
    {
        IAssetSelection::Objects list;
        for (const QString& row : rows)
            list.emplace_back(model->object(row));
        return list;
    }
    std::string selectedRows() const { return names(browser->selectionModel()->selection()); }
    void selectRow(const QString& row,
                   QItemSelectionModel::SelectionFlags flags = QItemSelectionModel::ClearAndSelect)
    {
        browser->selectionModel()->select(model->find(row), flags);
    }

    MessageLog messages;
    std::shared_ptr<Zar::ChangesController> changes = std::make_shared<Zar::ChangesController>();
    LoggedAssetSelection selection{changes};
    std::unique_ptr<TreeModel> model;
    std::unique_ptr<HookedAssetModel> assetModel;
    std::unique_ptr<SceneBrowserData> browser;
};

} // namespace test
