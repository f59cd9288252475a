#include "property_bag.h"

#include <host/data_section/xml_section.h>
#include <host/reflection/bound_property.h>
#include <host/variant/scene_item.h>
#include <kyr_scene_outline/properties/clipboard_transport.h>
#include <kyr_scene_outline/properties/property_document.h>
#include <kyr_scene_outline/properties/property_table.h>
#include <kyr_scene_outline/properties/property_text.h>
#include <kyr_scene_outline/properties/property_walk.h>
#include <support/message_log.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ctime>

namespace {

using namespace test;
using lumo::Variant;
namespace properties = kyr::properties;

TEST(PropertyText, IsTheTextTheValueHoldsPointsToOrConvertsTo)
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

TEST(PropertyWalk, AsksTheAnnotationHoweverItIsHeld)
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

TEST(PropertyDocument, AStoredObjectIsReadOnceForAllTargets)
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

// Eight characters that take the state h of the standard library's hash of strings, which is a
// MurmurHash64A with a fixed seed, to (h ^ word) * factor.
std::string charactersFor(std::uint64_t word)
{
    constexpr std::uint64_t factor = 0xc6a4a7935bd1e995;
    std::uint64_t inverse = factor; // Newton's iteration doubles the bits that are right
    for (int i = 0; i < 5; ++i)
        inverse *= 2 - factor * inverse;
    word *= inverse;
    word = (word ^ word >> 47) * inverse;
    return {reinterpret_cast<const char*>(&word), sizeof word};
}

// Names of one length that begin alike. Where the words differ by the highest bit, the difference
// outlives the multiplication and the second word takes it back: all names have one hash.
std::vector<std::string> namesOf(std::uint64_t difference)
{
    const std::string ways[] = {charactersFor(1) + charactersFor(2),
                                charactersFor(1 ^ difference) + charactersFor(2 ^ difference)};
    std::vector<std::string> names(1 << 14);
    for (std::size_t i = 0; i < names.size(); ++i) {
        for (int bit = 13; bit >= 0; --bit)
            names[i] += ways[i >> bit & 1];
    }
    return names;
}

std::clock_t lookUpTime(const std::vector<std::string>& names)
{
    const Zar::DataSectionPtr object(new Zar::XMLSection("object"));
    for (const std::string& name : names)
        object->insertSection("property")->writeString("name", name);
    PropertyPasteReport report;
    properties::PropertyTable table;
    const std::clock_t start = std::clock();
    table.read(*object, {}, report);
    EXPECT_EQ(table.chosenCount(), names.size());
    for (std::size_t i = names.size(), place = 0; i-- > 0;)
        EXPECT_NE(table.find(names[i], place), nullptr);
    return std::clock() - start;
}

TEST(PropertyDocument, NamesChosenToShareOneHashCostNoMoreThanOthers)
{
    const std::vector<std::string> hostile = namesOf(std::uint64_t(1) << 63);
    const std::hash<std::string> hash;
    if (hash(hostile.front()) != hash(hostile.back()))
        GTEST_SKIP() << "another standard library";
    EXPECT_LT(lookUpTime(hostile), 4 * lookUpTime(namesOf(1)) + CLOCKS_PER_SEC / 50);
}

TEST(PropertyDocument, BrokenInvariantsAreReportedAndSurvived)
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
    EXPECT_FALSE(properties::putDocumentOnClipboard(nullptr));
    expectReport("binary");
    const Zar::DataSectionPtr document(new Zar::XMLSection("objects"));
    document->insertSection("object")->insertSection("property")->writeString("name", "a");
    EXPECT_TRUE(properties::pasteDocument({kyr::PersistentObject()}, document));
    expectReport("rObj");
}

} // namespace
