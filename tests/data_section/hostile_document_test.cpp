#include <host/data_section/xml_section.h>
#include <support/mutation.h>

#include <gtest/gtest.h>

#include <functional>

namespace {

using Zar::DataSectionPtr;
using Zar::XMLSection;

DataSectionPtr read(const std::string& bytes)
{
    return XMLSection::createFromBinary("objects", new Zar::BinaryBlock(bytes, "test"), true);
}

std::string repeated(const std::string& text, std::size_t count)
{
    return QByteArray::fromStdString(text).repeated(int(count)).toStdString();
}

std::string wrapped(const std::string& inside)
{
    return "<objects>" + inside + "</objects>";
}

std::string realDocument()
{
    const DataSectionPtr root(new XMLSection("objects"));
    for (int i = 0; i < 4; ++i) {
        const DataSectionPtr property = root->insertSection("object")->insertSection("property");
        property->writeString("name", "light & shadow");
        property->writeString("value", std::string("\0\r<b>", 5));
    }
    return std::string(root->asBinary()->bytes());
}

constexpr std::size_t mega = 1u << 20;

TEST(HostileDocument, isRefusedOrReadInFull)
{
    const std::tuple<const char*, std::function<std::string()>, bool> rows[] = {
        {"nothing", [] { return ""; }, false},
        {"plain_text", [] { return "remember the milk"; }, false},
        {"other_root", [] { return "<html/>"; }, false},
        {"two_roots", [] { return "<objects/><objects/>"; }, false},
        {"text_before", [] { return "x<objects/>"; }, false},
        {"text_behind", [] { return "<objects/>x"; }, false},
        {"wrong_end", [] { return "<objects></object>"; }, false},
        {"ends_twice", [] { return "<objects></objects></objects>"; }, false},
        {"nul_inside", [] { return wrapped(std::string(1, '\0')); }, false},
        {"invalid_utf8", [] { return wrapped("\xff"); }, false},
        {"overlong_nul", [] { return wrapped("\xc0\x80"); }, false},
        {"control_character", [] { return wrapped("\x01"); }, false},
        {"nul_reference", [] { return wrapped("&#0;"); }, false},
        {"control_reference", [] { return wrapped("&#x1f;"); }, false},
        {"unknown_entity", [] { return wrapped("&lol;"); }, false},
        {"endless_reference", [] { return wrapped("&" + std::string(mega, 'a')); }, false},
        {"doctype", [] { return "<!DOCTYPE objects><objects/>"; }, false},
        {"entity_bomb",
         [] {
             return "<!DOCTYPE objects [<!ENTITY a \"ha\"><!ENTITY b \"&a;&a;\">]>" +
                    wrapped("&b;");
         },
         false},
        {"external_entity",
         [] { return "<!DOCTYPE objects SYSTEM \"file:///etc/passwd\">" + wrapped(""); }, false},
        {"unfinished_comment", [] { return "<objects><!-- " + std::string(mega, '-'); }, false},
        {"unfinished_cdata", [] { return "<objects><![CDATA["; }, false},
        {"unfinished_quote", [] { return "<objects a=\"" + std::string(mega, '>'); }, false},
        {"million_levels", [] { return repeated("<objects>", mega); }, false},
        {"million_closed_levels",
         [] { return repeated("<objects>", mega) + repeated("</objects>", mega); }, false},
        {"more_nodes_than_memory", [] { return wrapped(repeated("<a/>", 40 * mega)); }, false},
        {"more_attributes_than_memory",
         [] { return "<objects" + repeated(" a=''", 48 * mega) + "/>"; }, false},
        {"million_children", [] { return wrapped(repeated("<a/>", mega)); }, true},
        {"million_comments", [] { return wrapped(repeated("<!---->", mega)); }, true},
        {"million_text_pieces", [] { return wrapped(repeated("a<!---->", mega)); }, true},
        {"hundred_megabytes", [] { return wrapped(std::string(100 * mega, 'x')); }, true},
        {"hundred_megabytes_of_junk", [] { return std::string(100 * mega, '\x9c'); }, false},
        {"hundred_megabytes_of_markup", [] { return std::string(100 * mega, '<'); }, false},
        {"two_hundred_levels", [] { return wrapped(repeated("<a>", 200) + repeated("</a>", 200)); },
         true},
    };
    for (const auto& [name, bytes, accepted] : rows) {
        SCOPED_TRACE(name);
        const DataSectionPtr root = read(bytes());
        EXPECT_EQ(bool(root), accepted);
        EXPECT_TRUE(!root || read(std::string(root->asBinary()->bytes())));
    }
}

TEST(HostileDocument, truncatedDocumentsAreRefused)
{
    const std::string document = realDocument();
    for (std::size_t length = 0; length + 1 < document.size(); ++length)
        ASSERT_FALSE(read(document.substr(0, length))) << length;
    EXPECT_TRUE(read(document));
}

TEST(HostileDocument, mutatedDocumentsAreRefusedOrConsistent)
{
    const std::string document = realDocument();
    std::mt19937 random(11);
    int accepted = 0;
    for (int i = 0; i < 100000; ++i) {
        QByteArray changed = QByteArray::fromStdString(document);
        test::mutate(changed, random);
        const std::string bytes = changed.toStdString();
        const DataSectionPtr root = read(bytes);
        if (!root)
            continue;
        ++accepted;
        const std::string again(root->asBinary()->bytes());
        const DataSectionPtr back = read(again);
        ASSERT_TRUE(back) << bytes;
        ASSERT_EQ(back->asBinary()->bytes(), again) << bytes;
    }
    EXPECT_GT(accepted, 0);
}

} // namespace
