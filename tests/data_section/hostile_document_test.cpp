#include <host/data_section/xml_section.h>

#include <gtest/gtest.h>

#include <functional>
#include <random>
#include <string>

namespace {

using Zar::DataSectionPtr;
using Zar::XMLSection;

DataSectionPtr read(const std::string& bytes)
{
    return XMLSection::createFromBinary("objects", new Zar::BinaryBlock(bytes, "test"), true);
}

std::string repeated(const std::string& text, std::size_t count)
{
    std::string all;
    all.reserve(text.size() * count);
    for (std::size_t i = 0; i < count; ++i)
        all += text;
    return all;
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

struct Hostile
{
    const char* name;
    std::function<std::string()> bytes;
    bool accepted = false;
};

void PrintTo(const Hostile& row, std::ostream* stream)
{
    *stream << row.name;
}

class HostileDocument : public testing::TestWithParam<Hostile>
{};

TEST_P(HostileDocument, IsRefusedOrReadInFull)
{
    const DataSectionPtr root = read(GetParam().bytes());
    EXPECT_EQ(static_cast<bool>(root), GetParam().accepted);
    if (root) {
        EXPECT_TRUE(read(std::string(root->asBinary()->bytes())));
    }
}

constexpr std::size_t mega = 1u << 20;

INSTANTIATE_TEST_SUITE_P(
    Rows, HostileDocument,
    testing::Values(
        Hostile{"nothing", [] { return ""; }},
        Hostile{"plain_text", [] { return "remember the milk"; }},
        Hostile{"other_root", [] { return "<html/>"; }},
        Hostile{"two_roots", [] { return "<objects/><objects/>"; }},
        Hostile{"text_before", [] { return "x<objects/>"; }},
        Hostile{"text_behind", [] { return "<objects/>x"; }},
        Hostile{"wrong_end", [] { return "<objects></object>"; }},
        Hostile{"ends_twice", [] { return "<objects></objects></objects>"; }},
        Hostile{"nul_inside", [] { return wrapped(std::string(1, '\0')); }},
        Hostile{"invalid_utf8", [] { return wrapped("\xff"); }},
        Hostile{"overlong_nul", [] { return wrapped("\xc0\x80"); }},
        Hostile{"control_character", [] { return wrapped("\x01"); }},
        Hostile{"nul_reference", [] { return wrapped("&#0;"); }},
        Hostile{"unknown_entity", [] { return wrapped("&lol;"); }},
        Hostile{"endless_reference", [] { return wrapped("&" + std::string(mega, 'a')); }},
        Hostile{"doctype", [] { return "<!DOCTYPE objects><objects/>"; }},
        Hostile{"entity_bomb",
                [] {
                    return "<!DOCTYPE objects [<!ENTITY a \"ha\"><!ENTITY b \"&a;&a;\">]>" +
                           wrapped("&b;");
                }},
        Hostile{"external_entity",
                [] { return "<!DOCTYPE objects SYSTEM \"file:///etc/passwd\">" + wrapped(""); }},
        Hostile{"unfinished_comment", [] { return "<objects><!-- " + std::string(mega, '-'); }},
        Hostile{"unfinished_cdata", [] { return "<objects><![CDATA["; }},
        Hostile{"unfinished_quote", [] { return "<objects a=\"" + std::string(mega, '>'); }},
        Hostile{"million_levels", [] { return repeated("<objects>", mega); }},
        Hostile{"million_closed_levels",
                [] { return repeated("<objects>", mega) + repeated("</objects>", mega); }},
        Hostile{"more_nodes_than_memory", [] { return wrapped(repeated("<a/>", 40 * mega)); }},
        Hostile{"more_attributes_than_memory",
                [] { return "<objects" + repeated(" a=''", 48 * mega) + "/>"; }},
        Hostile{"million_children", [] { return wrapped(repeated("<a/>", mega)); }, true},
        Hostile{"million_comments", [] { return wrapped(repeated("<!---->", mega)); }, true},
        Hostile{"million_text_pieces", [] { return wrapped(repeated("a<!---->", mega)); }, true},
        Hostile{"hundred_megabytes", [] { return wrapped(std::string(100 * mega, 'x')); }, true},
        Hostile{"hundred_megabytes_of_junk", [] { return std::string(100 * mega, '\x9c'); }},
        Hostile{"hundred_megabytes_of_markup", [] { return std::string(100 * mega, '<'); }},
        Hostile{"two_hundred_levels",
                [] { return wrapped(repeated("<a>", 200) + repeated("</a>", 200)); }, true}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(HostileDocument, TruncatedDocumentsAreRefused)
{
    const std::string document = realDocument();
    for (std::size_t length = 0; length + 1 < document.size(); ++length)
        ASSERT_FALSE(read(document.substr(0, length))) << length;
    EXPECT_TRUE(read(document));
}

TEST(HostileDocument, MutatedDocumentsAreRefusedOrConsistent)
{
    const std::string document = realDocument();
    std::mt19937 random(11);
    int accepted = 0;
    for (int i = 0; i < 20000; ++i) {
        std::string bytes = document;
        for (auto count = 1 + random() % 3; count > 0; --count) {
            const std::size_t at = random() % bytes.size();
            switch (random() % 4) {
            case 0:
                bytes[at] = static_cast<char>(random());
                break;
            case 1:
                bytes.erase(at, random() % 8);
                break;
            case 2:
                bytes.insert(at, bytes.substr(random() % bytes.size(), random() % 16));
                break;
            default:
                bytes[at] = "<>&;\"'/\\"[random() % 8];
            }
        }
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
