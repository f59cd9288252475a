#pragma once

#include "property_bag.h"

#include <clipboard/fake_clipboard.h>
#include <host/scene/recorded_asset_selection.h>
#include <kyr_scene_outline/scene_browser_data.h>
#include <support/message_log.h>
#include <support/tree_model.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace test {

using Lines = std::vector<std::string>;

/// A browser over one list of bags, with a clipboard in memory and an undo stack.
class PropertyClipboardTest : public testing::Test
{
protected:
    std::shared_ptr<PropertyBag> addBag(std::shared_ptr<PropertyBag> bag)
    {
        bag->changes = changes;
        model.insertObjects({}, model.rowCount(), {bag});
        return bag;
    }
    /// With the values a = 0, b = 0, ...
    std::shared_ptr<PropertyBag> addBag(const std::string& name, const std::string& values = "a")
    {
        auto bag = std::make_shared<PropertyBag>(name);
        for (const char value : values)
            bag->add(std::string(1, value), lumo::Variant(0));
        return addBag(std::move(bag));
    }

    void select(const std::vector<std::shared_ptr<PropertyBag>>& bags)
    {
        IAssetSelection::Objects objects;
        for (const auto& bag : bags)
            objects.emplace_back(kyr::ReflectedObject(bag));
        selection.setSelection(objects, false);
        messages.take();
    }
    /// What is selected, by name.
    Lines selected() const
    {
        Lines names;
        for (const kyr::PersistentObject& object : selection.objects())
            names.push_back(object.object().reference().name());
        return names;
    }
    std::string copied()
    {
        EXPECT_TRUE(browser.copyProperties());
        return clipboard->text.value_or("");
    }

    MessageLog messages;
    std::shared_ptr<FakeClipboard> clipboard = std::make_shared<FakeClipboard>();
    FakeClipboard::Guard guard{clipboard};
    std::shared_ptr<Zar::ChangesController> changes = std::make_shared<Zar::ChangesController>();
    RecordedAssetSelection selection{changes};
    TreeModel model;
    TreeAssetModel assetModel{&model};
    SceneBrowserData browser{&assetModel, &selection, nullptr};
};

} // namespace test
