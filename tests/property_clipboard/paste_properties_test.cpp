#include "property_clipboard_fixture.h"

#include <host/core/stack_tracker.h>
#include <host/variant/scene_item.h>

namespace {

constexpr char watchedName[] = "watched";
int watchedHashes = 0;

} // namespace

// In place of the standard library's own, which its hash tables call: counts whether a name gets
// into one, where names that were chosen for it would all meet in one place.
std::size_t std::_Hash_bytes(const void* bytes, std::size_t size, std::size_t seed)
{
    const std::string text(static_cast<const char*>(bytes), size);
    watchedHashes += text.find(watchedName) != std::string::npos ? 1 : 0;
    for (const char byte : text)
        seed = (seed ^ static_cast<unsigned char>(byte)) * 1099511628211u;
    return seed;
}

namespace {

using namespace test;
using lumo::Variant;
using testing::ElementsAre;

class PasteProperties : public PropertyClipboardTest
{
protected:
    /// A stored property, of type int unless told otherwise.
    static std::string property(const std::string& name, const std::string& value,
                                const std::string& type = "i")
    {
        return "<property><name>" + name + "</name><value>" + value + "</value><type>" + type +
               "</type></property>";
    }
    /// A stored object with a property a.
    static std::string object(const std::string& value)
    {
        return "<object><type>T</type>" + property("a", value) + "</object>";
    }
    void offer(const std::string& inside)
    {
        clipboard->text = "<objects>" + inside + "</objects>" + '\0' + "behind the end";
    }
    /// The messages but the last, which tells the time.
    Lines pasteMessages()
    {
        Lines lines = messages.take();
        EXPECT_FALSE(lines.empty());
        EXPECT_THAT(lines.back(), testing::MatchesRegex("2 Paste finished in [0-9]+ ms"));
        lines.pop_back();
        return lines;
    }
};

TEST_F(PasteProperties, dealsStoredObjectsInTurn)
{
    const std::pair<Lines, Lines> rows[] = {
        {{"7"}, {"a=7\n", "a=7\n", "a=7\n"}},
        {{"1", "2"}, {"a=1\n", "a=2\n", "a=1\n"}},
        {{"1", "2", "3", "4"}, {"a=1\n", "a=2\n", "a=3\n"}},
    };
    const std::vector<std::shared_ptr<PropertyBag>> bags{addBag("x"), addBag("y"), addBag("z")};
    for (const auto& [stored, expected] : rows) {
        std::string inside = "<note/>";
        for (const std::string& value : stored)
            inside += object(value);
        offer(inside);
        select({bags[2], bags[0], bags[1]});
        EXPECT_TRUE(browser.pasteProperties());
        EXPECT_THAT((Lines{bags[0]->text(), bags[1]->text(), bags[2]->text()}),
                    testing::ElementsAreArray(expected));
        EXPECT_THAT(selected(), ElementsAre("x", "y", "z"));
    }
}

TEST_F(PasteProperties, setsWhatMatchesAndDiffers)
{
    const auto nested = std::make_shared<PropertyBag>();
    nested->add("b", Variant(0));
    const auto bag = std::make_shared<PropertyBag>("bag");
    bag->add("a", Variant(0));
    bag->add("same", Variant(5));
    bag->add("fixed", Variant(0)).isConst = true;
    bag->add("read", Variant(0)).isReadOnly = true;
    bag->add("hidden", Variant(0)).visibility = {};
    bag->add("mine", Variant(0)).annotations.add(Meta::SceneItem());
    bag->add("typed", Variant(0.0f));
    bag->add("refusing", Variant(0));
    bag->add("void", Variant()).type = &typeid(int);
    bag->nest("n", nested);
    select({addBag(bag)});
    offer("<object><type>T</type><property><value>9</value></property>" + property("a", "1") +
          property("a", "2") + property("same", "5") + property("fixed", "1") +
          property("read", "1") + property("hidden", "1") + property("mine", "1") +
          property("typed", "1") + property("refusing", "many") + property("n.b", "3") +
          property("b", "4") + "</object>");
    const auto preview = browser.startPastePreview();
    preview->advance(std::chrono::hours(1));
    EXPECT_EQ(preview->report().changedProperties, 2u);
    EXPECT_EQ(preview->report().refused, 1u);
    EXPECT_EQ(bag->sets, 0);
    EXPECT_TRUE(browser.pasteProperties());
    EXPECT_EQ(bag->text(), "a=1\nsame=5\nfixed=0\nread=0\nhidden=0\nmine=0\ntyped=0\nrefusing=0\n"
                           "b=3\n");
    EXPECT_EQ(bag->sets, 2);
    EXPECT_THAT(
        pasteMessages(),
        ElementsAre("2 Paste '1' to property 'a'",
                    "4 Cannot set property 'refusing' of 'bag': 'many' is no value of its type",
                    "2 Paste 'many' to property 'refusing'", "2 Paste '3' to property 'b'"));
    const PropertyPasteReport& report = browser.lastPasteReport();
    EXPECT_EQ(report.targets, 1u);
    EXPECT_EQ(report.changedObjects, 1u);
    EXPECT_EQ(report.changedProperties, 2u);
    EXPECT_EQ(report.refused, 1u);
    EXPECT_EQ(report.properties.at("refusing").refused, 1u);
    EXPECT_EQ(report.typeMismatches, 1u);
    // fixed, read, hidden, mine and b
    EXPECT_EQ(report.unmatched, 5u);
}

TEST_F(PasteProperties, namesAreHashedNowhere)
{
    const auto bag = addBag("bag");
    std::string inside;
    for (const char* number : {"1", "2", "3"}) {
        const std::string name = std::string(watchedName) + number;
        bag->add(name, Variant(0));
        inside.insert(0, property(name, "7"));
    }
    select({bag});
    offer("<object>" + inside + "</object>");
    EXPECT_TRUE(browser.pasteProperties());
    EXPECT_EQ(bag->text(), "a=0\nwatched1=7\nwatched2=7\nwatched3=7\n");
    EXPECT_EQ(watchedHashes, 0);
    EXPECT_NE(std::hash<std::string>()(watchedName), 0u);
    EXPECT_EQ(watchedHashes, 1);
}

TEST_F(PasteProperties, storedObjectsWithoutPropertiesAreReported)
{
    const auto a = addBag("a"), b = addBag("b");
    select({a, b});
    offer("<object><type>Empty</type></object>" + object("1"));
    EXPECT_TRUE(browser.pasteProperties());
    EXPECT_EQ(a->text() + b->text(), "a=0\na=1\n");
    EXPECT_THAT(pasteMessages(),
                ElementsAre("4 Paste properties: there are no any properties in Empty",
                            "2 Paste '1' to property 'a'"));
}

TEST_F(PasteProperties, unusableClipboardsChangeNothing)
{
    const auto bag = addBag("bag");
    const auto stranger = std::make_shared<PropertyBag>("stranger");
    struct Row
    {
        std::optional<std::string> text;
        const char* failing;
    };
    for (const Row& row :
         {Row{{}, ""}, Row{"", ""}, Row{std::string(1, '\0'), ""}, Row{"no document", ""},
          Row{"<objects/>", ""}, Row{"<other><a/></other>", ""},
          Row{"<objects><object/></objects>", "open"},
          Row{"<objects><object/></objects>", "get"}}) {
        clipboard->text = row.text;
        clipboard->failing = row.failing;
        select({stranger, bag});
        EXPECT_FALSE(browser.pasteProperties());
        const auto job = browser.startPaste();
        EXPECT_FALSE(job && (job->advance(std::chrono::hours(1)) || job->hasSucceeded()));
        const std::string reason = "5 Paste properties: clipboard is empty";
        EXPECT_THAT(messages.take(), ElementsAre(reason, reason));
        EXPECT_THAT(selected(), ElementsAre("stranger", "bag"));
        EXPECT_FALSE(changes->isScopeOpen());
    }
    clipboard->failing.clear();
    offer("<object-like/>");
    EXPECT_FALSE(browser.pasteProperties());
    EXPECT_THAT(messages.take(),
                ElementsAre("5 Paste properties: Cannot find any objects in clipboard"));
    EXPECT_THAT(selected(), ElementsAre("bag"));
    EXPECT_EQ(browser.lastPasteReport().targets, 0u);
}

TEST_F(PasteProperties, isOneStepThatUndoRestores)
{
    const auto a = addBag("a", "ab"), b = addBag("b", "ab");
    const auto stranger = std::make_shared<PropertyBag>("stranger");
    select({stranger, b, a});
    offer("<object>" + property("a", "1") + property("b", "2") + "</object>");
    const int before = changes->stack().count();
    EXPECT_TRUE(browser.pasteProperties());
    ASSERT_EQ(changes->stack().count(), before + 1);
    EXPECT_EQ(changes->stack().undoText(),
              "Paste property values from clipboard to selected items");
    EXPECT_THAT(selected(), ElementsAre("a", "b"));
    changes->stack().undo();
    EXPECT_EQ(a->text() + b->text(), "a=0\nb=0\na=0\nb=0\n");
    EXPECT_THAT(selected(), ElementsAre("stranger", "b", "a"));
    changes->stack().redo();
    EXPECT_EQ(a->text() + b->text(), "a=1\nb=2\na=1\nb=2\n");
    EXPECT_THAT(selected(), ElementsAre("a", "b"));
    EXPECT_TRUE(browser.pasteProperties());
    EXPECT_EQ(changes->stack().count(), before + 1);
}

TEST_F(PasteProperties, typesWithoutATextFormAreNamedOnceAPaste)
{
    const std::vector<std::shared_ptr<PropertyBag>> bags{addBag("x", ""), addBag("y", "")};
    for (const auto& bag : bags) {
        for (const char* name : {"p", "q"})
            bag->add(name, Variant(std::vector<int>{1}));
    }
    select(bags);
    const std::string type = typeid(std::vector<int>).name();
    offer("<object>" + property("p", "", type) + property("q", "", type) + "</object>");
    for (int paste = 0; paste < 2; ++paste) {
        EXPECT_TRUE(browser.pasteProperties());
        EXPECT_THAT(pasteMessages(),
                    ElementsAre("4 Cannot set property 'p' of 'x': values of type '" + type +
                                    "' have no text form",
                                "2 Paste '' to property 'p'", "2 Paste '' to property 'q'",
                                "2 Paste '' to property 'p'", "2 Paste '' to property 'q'"));
    }
    EXPECT_EQ(browser.lastPasteReport().refused, 4u);
}

TEST_F(PasteProperties, anExceptionClosesTheStep)
{
    const auto bag = std::make_shared<PropertyBag>();
    bag->add("a", Variant(0));
    bag->add("b", Variant(0)).annotations.add(Meta::sceneItemAnnotationName(), Variant(7));
    select({addBag(bag)});
    offer(object("1"));
    EXPECT_THROW(browser.pasteProperties(), lumo::VariantCastError);
    EXPECT_FALSE(changes->isScopeOpen());
    EXPECT_TRUE(Zar::StackTracker::entries().empty());
    EXPECT_EQ(bag->text(), "a=0\nb=0\n");
    EXPECT_THAT(selected(), ElementsAre("bag"));
}

TEST_F(PasteProperties, aTwinOfARandomSceneBecomesEqual)
{
    std::mt19937 random(17);
    for (unsigned scene = 0; scene < 40; ++scene) {
        std::vector<std::shared_ptr<PropertyBag>> originals, twins;
        for (unsigned i = 0; i < 6; ++i) {
            originals.push_back(addBag(randomBag(scene * 6 + i, random)));
            twins.push_back(addBag(randomBag(scene * 6 + i, random)));
        }
        select(originals);
        const std::string document = copied();
        select(twins);
        EXPECT_TRUE(browser.pasteProperties());
        ASSERT_TRUE(copied() == document);
    }
}

} // namespace
