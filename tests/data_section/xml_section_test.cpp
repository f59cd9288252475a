#include <host/data_section/xml_section.h>

#include <QXmlStreamReader>

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace {

using Zar::DataSectionPtr;
using Zar::XMLSection;

DataSectionPtr rebuilt(const Zar::DataSection& root)
{
    return XMLSection::createFromBinary(root.tag(), root.asBinary(), true);
}

// The section as "tag(text)[children]".
std::string dump(const Zar::DataSection& section)
{
    std::string text = section.tag() + "(" + section.text() + ")[";
    for (const DataSectionPtr& child : section)
        text += dump(*child);
    return text + "]";
}

void expectRoundTrip(const Zar::DataSection& root)
{
    const auto written = root.asBinary();
    ASSERT_EQ(written->bytes().find('\0'), std::string::npos);
    QXmlStreamReader reader(QByteArray(written->data(), int(written->length())));
    while (!reader.atEnd())
        reader.readNext();
    ASSERT_FALSE(reader.hasError()) << reader.errorString().toStdString() << written->bytes();
    const DataSectionPtr back = rebuilt(root);
    ASSERT_TRUE(back) << written->bytes();
    ASSERT_EQ(dump(*back), dump(root)) << written->bytes();
    ASSERT_EQ(back->asBinary()->bytes(), written->bytes());
}

std::string randomText(std::mt19937& random)
{
    static constexpr char awkward[] = "\0\t\n\r \\x<>&\"']-\x01\x7f\x80\xc3\xe2\xed\xa0\xef\xbf\xbe"
                                      "\xf0\x9f\x98\x80";
    std::string text;
    for (auto length = random() % 12; length > 0; --length) {
        const auto choice = random();
        text += choice % 3 ? awkward[choice / 3 % (sizeof awkward - 1)] : char(choice >> 8);
    }
    return text;
}

TEST(XmlSection, everyTextTagAndOrderComesBack)
{
    using namespace std::string_literals;
    for (const std::string& text :
         {""s, " "s, "\r\n"s, "\t"s, "\0"s, "a\0b"s, "]]>"s, "&amp;"s, "<!-- -->"s, "C:\\x41"s,
          "\xff"s, "\xc0\x80"s, "\xed\xa0\x80"s, "\xef\xbf\xbf"s, "\xef\xbb\xbf"s, "é 漢 😀"s,
          std::string(10 << 20, '\r'), std::string(10 << 20, 'x')}) {
        const DataSectionPtr root(new XMLSection("objects"));
        root->writeString("value", text);
        expectRoundTrip(*root);
        EXPECT_EQ(rebuilt(*root)->readString("value"), text);
    }
    std::mt19937 random(3);
    for (int i = 0; i < 4000; ++i) {
        const DataSectionPtr root(new XMLSection(randomText(random)));
        DataSectionPtr section = root;
        for (auto count = random() % 6; count > 0; --count) {
            const DataSectionPtr child =
                section->insertSection(randomText(random), int(random() % 4) - 1);
            child->setText(randomText(random));
            section->writeString(randomText(random), randomText(random));
            if (random() % 2)
                section = child;
        }
        expectRoundTrip(*root);
    }
}

TEST(XmlSection, isWrittenForPeople)
{
    const DataSectionPtr root(new XMLSection("objects"));
    const DataSectionPtr object = root->insertSection("object");
    object->writeString("type", "4Lamp");
    object->writeString("two words", "a\rb");
    EXPECT_EQ(root->asBinary()->bytes(), R"(<?xml version="1.0" encoding="UTF-8"?>
<objects>
  <object>
    <type>4Lamp</type>
    <section tag="two words" escaped="true">a\x0db</section>
  </object>
</objects>
)");
}

TEST(XmlSection, findsAndChangesChildren)
{
    const DataSectionPtr root(new XMLSection("root"));
    root->insertSection("b");
    root->insertSection("a", 0);
    root->insertSection("c", 9);
    root->insertSection("b", 2)->setText("second");
    root->writeString("b", "first");
    root->writeString("b", "first again");
    EXPECT_EQ(dump(*root), "root()[a()[]b(first again)[]b(second)[]c()[]]");
    EXPECT_EQ(root->countChildren(), 4);
    EXPECT_EQ(root->readString("b", "", 1), "second");
    EXPECT_EQ(root->readString("b", "none", 2), "none");
    EXPECT_EQ(root->readString("a", "none"), "");
    EXPECT_EQ(root->readString("a" + std::string(8, '\0'), "none"), "none");

    std::vector<DataSectionPtr> found;
    root->openSections("b", found);
    ASSERT_EQ(found.size(), 2u);
    EXPECT_EQ(found[1]->text(), "second");
    EXPECT_FALSE(root->findChild("d"));
    const Zar::DataSectionCreator creator = [](Zar::StringRef tag) {
        return DataSectionPtr(new XMLSection(tag));
    };
    EXPECT_EQ(root->findChild("d", &creator)->tag(), "d");
    root->openSections("d", found, &creator);
    EXPECT_EQ(found.back()->tag(), "d");
    EXPECT_EQ(root->countChildren(), 4);
}

TEST(XmlSection, keepsItsDocumentAlive)
{
    DataSectionPtr child = DataSectionPtr(new XMLSection("root"))->insertSection("child");
    child->setText("still here");
    EXPECT_EQ(rebuilt(*child)->text(), "still here");
}

TEST(XmlSection, readsWhatPeopleAndToolsWrite)
{
    const std::pair<const char*, const char*> rows[] = {
        {"<r/>", "r()[]"},
        {"\xef\xbb\xbf<?xml version='1.0'?><!-- c --><r a='1' b=\"2\"/>\n<!-- c -->", "r()[]"},
        {"<r>a<!-- c -->b<![CDATA[<c>]]></r>", "r(ab<c>)[]"},
        {"<r>&lt;&#65;&#x42;&amp;&quot;&apos;</r>", "r(<AB&\"')[]"},
        {"<r>\r\n  <a>x\r\ny</a>\r\n</r>", "r()[a(x\ny)[]]"},
        {"<r escaped='true'>\\x41\\q\\</r>", "r(A\\q\\)[]"},
        {"<r>\xef\xbb\xbf<a/></r>", "r(\xef\xbb\xbf)[a()[]]"},
        {"<r>&#x20;<a>x&#13;y</a>\n  &#x20;  <b>\n</b></r>", "r( \n     )[a(x\ry)[]b(\n)[]]"},
    };
    for (const auto& [document, expected] : rows) {
        const DataSectionPtr root =
            XMLSection::createFromBinary("r", new Zar::BinaryBlock(document, "test"), true);
        ASSERT_TRUE(root) << document;
        EXPECT_EQ(dump(*root), expected) << document;
        expectRoundTrip(*root);
    }
}

} // namespace
