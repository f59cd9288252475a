#include "property_bag.h"

#include <host/data_section/xml_section.h>
#include <host/reflection/bound_property.h>
#include <host/variant/scene_item.h>
#include <kyr_scene_outline/properties/clipboard_transport.h>
#include <kyr_scene_outline/properties/property_document.h>
#include <kyr_scene_outline/properties/property_text.h>
#include <kyr_scene_outline/properties/property_walk.h>
#include <support/message_log.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace test;
using lumo::Variant;
namespace properties = kyr::properties;

TEST(PropertyText, isTheTextTheValueHoldsPointsToOrConvertsTo)
{
    std::string text = "out";
    const std::string* none = nullptr;
    EXPECT_TRUE(properties::valueAsText(Variant("own"), text));
    EXPECT_EQ(text, "own");
    EXPECT_TRUE(properties::valueAsText(Variant(&text), text));
    EXPECT_EQ(text, "own");
    EXPECT_TRUE(properties::valueAsText(Variant(1.5f), text));
    EXPECT_EQ(text, "1.5");
    for (const Variant& value : {Variant(none), Variant(std::vector<int>()), Variant()}) {
        EXPECT_FALSE(properties::valueAsText(value, text));
        EXPECT_EQ(text, "1.5");
        EXPECT_FALSE(properties::valueEqualsText(value, ""));
    }
    EXPECT_TRUE(properties::valueEqualsText(Variant(1.5f), "1.5"));
    EXPECT_FALSE(properties::valueEqualsText(Variant(1.5f), "1.50"));
    EXPECT_FALSE(properties::valueEqualsText(Variant(std::string("a\0b", 3)), "a"));
}

TEST(PropertyWalk, asksTheAnnotationHoweverItIsHeld)
{
    const Meta::SceneItem keepsOut;
    const Meta::SceneItem asksName(
        [](const kyr::BoundProperty& property) { return property.name() == "out"; });
    const auto bag = std::make_shared<PropertyBag>();
    const auto annotated = [&bag](const char* name, Variant annotation) {
        bag->add(name, Variant(1))
            .annotations.add(Meta::sceneItemAnnotationName(), std::move(annotation));
    };
    annotated("out", Variant(asksName));
    annotated("in", Variant(asksName));
    annotated("by pointer", Variant(&keepsOut));
    annotated("by null", Variant::defaultOf(lumo::metaTypeOf<const Meta::SceneItem*>()));
    std::string visited;
    const auto visit = [&visited](const kyr::BoundProperty&, const std::string& path) {
        visited += path + ";";
    };
    properties::walkProperties(kyr::ReflectedObject(bag), "top", visit);
    EXPECT_EQ(visited, "top.in;top.by null;");
}

/// A section that can neither grow nor be written; "object" for who searches.
class BarrenSection : public Zar::DataSection
{
public:
    std::string tag() const override { return "object"; }
    std::string text() const override { return {}; }
    bool setText(Zar::StringRef) override { return false; }
    Zar::DataSectionPtr insertSection(Zar::StringRef, int) override { return nullptr; }
    int countChildren() const override { return 0; }
    Zar::DataSectionPtr firstChild() const override { return child; }
    Zar::DataSectionPtr nextSibling() const override { return nullptr; }
    Zar::DataSectionPtr findChild(Zar::StringRef, const Zar::DataSectionCreator*) const override
    {
        return nullptr;
    }
    bool writeString(Zar::StringRef, Zar::StringRef) override { return false; }
    std::string readString(Zar::StringRef, Zar::StringRef, int) const override
    {
        ++reads;
        return {};
    }
    Zar::SmartPointer<Zar::BinaryBlock> asBinary() const override { return nullptr; }

    Zar::DataSectionPtr child;
    mutable int reads = 0;
};

TEST(PropertyDocument, aStoredObjectIsReadOnceForAllTargets)
{
    const Zar::SmartPointer<BarrenSection> root(new BarrenSection);
    const Zar::SmartPointer<BarrenSection> object(new BarrenSection);
    root->child = object;
    const auto bag = std::make_shared<PropertyBag>();
    const IAssetSelection::Objects targets(9, kyr::PersistentObject(kyr::ReflectedObject(bag)));
    MessageLog messages;
    EXPECT_FALSE(properties::pasteDocument(targets, object)) << "it holds no object itself";
    EXPECT_TRUE(properties::pasteDocument(targets, root));
    EXPECT_EQ(messages.take().size(), 1u + targets.size());
    EXPECT_EQ(object->reads, 1);
}

TEST(PropertyDocument, brokenInvariantsAreReportedAndSurvived)
{
    MessageLog messages;
    const auto expectReport = [&messages](const std::string& condition) {
        EXPECT_THAT(messages.take(), testing::ElementsAre(testing::AllOf(
                                         testing::StartsWith("! ASSERTION FAILED: " + condition),
                                         testing::HasSubstr("scene_browser_data("))));
    };
    const auto bag = std::make_shared<PropertyBag>();
    bag->add("a", Variant(1));
    const kyr::ReflectedObject object(bag);
    properties::writeObjectProperties(object, nullptr, "");
    expectReport("section");
    properties::writeObjectProperties(object, new BarrenSection, "");
    expectReport("childSection");
    const Zar::DataSectionPtr document(new Zar::XMLSection("objects"));
    document->insertSection("object")->insertSection("property")->writeString("name", "a");
    EXPECT_TRUE(properties::pasteDocument({kyr::PersistentObject()}, document));
    expectReport("rObj");
}

} // namespace
