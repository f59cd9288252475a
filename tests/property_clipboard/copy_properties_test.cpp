#include "property_clipboard_fixture.h"

#include <host/core/stack_tracker.h>
#include <host/reflection/bound_property.h>
#include <host/variant/scene_item.h>

namespace {

using namespace test;
using lumo::Variant;
using testing::ElementsAre;

struct NoText
{};

using CopyProperties = PropertyClipboardTest;

TEST_F(CopyProperties, writesTheDocument)
{
    const auto deepest = std::make_shared<PropertyBag>();
    deepest->add("third", Variant(true));
    const auto middle = std::make_shared<PropertyBag>();
    middle->nest("second", deepest).visibility = {};
    const auto lamp = std::make_shared<PropertyBag>("Lamp");
    lamp->add("title", Variant("a \"lamp\" & more"));
    lamp->nest("first", middle).annotations.add(Meta::SceneItem([](const auto&) { return false; }));
    lamp->add("opaque", Variant(NoText{}));
    lamp->add("hidden", Variant(1)).visibility = {};
    lamp->add("advanced", Variant(2)).visibility = kyr::meta_property::VisibilityFlag::Advanced;
    lamp->add("scripted", Variant(3)).visibility = kyr::meta_property::VisibilityFlag::Scripts;
    lamp->add("fixed", Variant(4)).isConst = true;
    lamp->add("read", Variant(5)).isReadOnly = true;
    lamp->add("mine", Variant(6)).annotations.add(Meta::SceneItem());
    lamp->nest("ours", deepest).annotations.add(Meta::SceneItem());
    lamp->nest("nobody", nullptr);
    lamp->add("read", Variant(0.5f));
    const auto unclear = std::make_shared<PropertyBag>();
    unclear->add("state", Variant());
    lamp->nest("inside", unclear);
    select({addBag(lamp)});

    const auto property = [](const std::string& name, const std::string& value, const char* type) {
        return "    <property>\n      <name>" + name + "</name>\n      " +
               (value.empty() ? "<value />" : "<value>" + value + "</value>") + "\n      <type>" +
               type + "</type>\n    </property>\n";
    };
    EXPECT_EQ(copied(), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<objects>\n  <object>\n"
                        "    <type>N4test11PropertyBagE</type>\n" +
                            property("title", "a \"lamp\" &amp; more",
                                     "NSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEE") +
                            property("first.second.third", "true", "b") +
                            property("opaque", "", "N12_GLOBAL__N_16NoTextE") +
                            property("scripted", "3", "i") + property("fixed", "4", "i") +
                            property("read", "5", "i") + property("read", "0.5", "f") +
                            "  </object>\n</objects>\n" + '\0');
    EXPECT_THAT(messages.take(),
                ElementsAre("4 Copy properties: cannot copy value from property 'inside.state' "
                            "with undefined state",
                            "2 Copy properties of 'Lamp' item"));
    EXPECT_TRUE(Zar::StackTracker::entries().empty());
}

TEST_F(CopyProperties, ordersObjectsByRowBeforeParent)
{
    const auto a = addBag("a"), b = addBag("b"), c = addBag("c");
    const auto c0 = std::make_shared<PropertyBag>("c0"), c1 = std::make_shared<PropertyBag>("c1");
    model.insertObjects(model.index(2, 0), 0, {c0, c1});
    const auto stranger = std::make_shared<PropertyBag>("stranger");
    select({c1, c, stranger, b, c0});
    EXPECT_TRUE(browser.copyProperties());
    EXPECT_THAT(messages.take(), ElementsAre("2 Copy properties of 'c0' item",
                                             testing::AnyOf("2 Copy properties of 'c1' item",
                                                            "2 Copy properties of 'b' item"),
                                             testing::AnyOf("2 Copy properties of 'c1' item",
                                                            "2 Copy properties of 'b' item"),
                                             "2 Copy properties of 'c' item"));
    select({stranger});
    EXPECT_THAT(copied(), testing::HasSubstr("<objects />"));
    EXPECT_TRUE(messages.take().empty());
}

TEST_F(CopyProperties, saysWhyItCannotAsPasteDoes)
{
    clipboard->text = "before";
    const auto bag = addBag("bag");
    SceneBrowserData withoutSelection(&assetModel, nullptr, nullptr);
    SceneBrowserData withoutModel(nullptr, &selection, nullptr);
    select({});
    const std::pair<SceneBrowserData*, std::string> rows[] = {
        {&withoutSelection, "selection is not set for this Scene Browser instance"},
        {&withoutModel, "model is not set for this Scene Browser instance"},
        {&browser, "selection is empty"},
    };
    for (const auto& [incomplete, reason] : rows) {
        EXPECT_FALSE(incomplete->copyProperties() || incomplete->pasteProperties());
        EXPECT_FALSE(incomplete->startCopy() || incomplete->startPaste());
        const std::string copy = "5 Copy properties: item " + reason;
        const std::string paste = "5 Paste properties: item " + reason;
        EXPECT_THAT(messages.take(), ElementsAre(copy, paste, copy, paste));
    }
    EXPECT_EQ(clipboard->takeLog(), "");
    select({bag});
    for (const char* step : {"open", "allocate", "empty"}) {
        clipboard->failing = step;
        EXPECT_FALSE(browser.copyProperties());
        EXPECT_THAT(messages.take(),
                    ElementsAre("2 Copy properties of 'bag' item",
                                "5 Copy properties: Cannot paste copied data to clipboard"));
        EXPECT_EQ(clipboard->text, "before");
    }
}

TEST_F(CopyProperties, anAnnotationOfAnotherTypeEndsTheWalk)
{
    const auto bag = std::make_shared<PropertyBag>();
    bag->add("a", Variant(1)).annotations.add(Meta::sceneItemAnnotationName(), Variant(7));
    select({addBag(bag)});
    EXPECT_THROW(browser.copyProperties(), lumo::VariantCastError);
    EXPECT_TRUE(Zar::StackTracker::entries().empty());
    EXPECT_FALSE(clipboard->text);
}

} // namespace
