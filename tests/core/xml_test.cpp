#include "core/xml_document.h"

#include <gtest/gtest.h>

namespace {

/// "gpx(wpt(name) wpt)": the tree's names.
std::string Outline(CXMLnode node)
{
    std::string text(node.Name());
    if (!node.FirstChild()) return text;
    text += '(';
    for (CXMLnode child = node.FirstChild(); child; child = child.NextSibling()) {
        text += Outline(child);
        if (child.NextSibling()) text += ' ';
    }
    return text + ')';
}

struct TreeCase {
    const char* name;
    const char* text;
    const char* outline; ///< null: refused
};
const TreeCase kTrees[] = {
    {"nested", "<?xml version='1.0'?>\n<gpx><wpt><name>a</name></wpt><wpt/></gpx>\n", "gpx(wpt(name) wpt)"},
    {"comments_and_instructions", "<!-- <x> --><a><?p <y> ?><b><!-- > --></b></a><!-- -->", "a(b)"},
    {"a_quoted_angle_bracket", "<a t='>'><b u=\"/>\"/></a>", "a(b)"},
    {"a_document_type_is_skipped", "<!DOCTYPE a [<!ENTITY x \"]>\"><!ELEMENT a ANY>]><a/>", "a"},
    {"a_blank_before_the_end", "<a ><b ></b ></a >", "a(b)"},
    {"empty", "", nullptr},
    {"no_element", "<?xml version='1.0'?>", nullptr},
    {"text_outside", "<a/>text", nullptr},
    {"two_roots", "<a/><b/>", nullptr},
    {"crossing", "<a><b></a></b>", nullptr},
    {"another_end", "<a><bc></b></a>", nullptr},
    {"a_longer_end", "<a><b></bc></a>", nullptr},
    {"cut_off_in_an_element", "<a><b>", nullptr},
    {"cut_off_in_a_tag", "<a><b", nullptr},
    {"cut_off_in_a_value", "<a b='c", nullptr},
    {"cut_off_in_a_comment", "<a><!-- ", nullptr},
    {"cut_off_in_a_section", "<a><![CDATA[", nullptr},
    {"cut_off_in_a_document_type", "<!DOCTYPE a [", nullptr},
    {"an_end_too_many", "<a/></a>", nullptr},
    {"not_xml", "GPX\x01\x02 < > &", nullptr},
    {"a_bracket_in_a_tag", "<a <b/></a>", nullptr},
};

TEST(Xml, ReadsTreesAndRefusesWhatIsNone)
{
    for (const TreeCase& tested : kTrees) {
        CXMLdocument document;
        EXPECT_EQ(document.ParseText(tested.text), tested.outline != nullptr) << tested.name;
        EXPECT_EQ(Outline(document.Root()), tested.outline != nullptr ? tested.outline : "") << tested.name;
    }
}

TEST(Xml, HasALimitOfDepth)
{
    const auto nested = [](int depth) {
        std::string text;
        for (int i = 0; i < depth; ++i) text += "<a>";
        for (int i = 0; i < depth; ++i) text += "</a>";
        return text;
    };
    CXMLdocument document;
    EXPECT_TRUE(document.ParseText(nested(CXMLdocument::kDeepest)));
    EXPECT_FALSE(document.ParseText(nested(CXMLdocument::kDeepest + 1)));
    EXPECT_FALSE(document.ParseText(nested(10000)));
}

TEST(Xml, ANeverEndingTextIsRefusedAtEveryLength)
{
    const std::string whole = "<?xml version=\"1.0\"?><gpx a='1'><![CDATA[x]]><wpt lat=\"1\"/><!-- c --></gpx>";
    CXMLdocument document;
    ASSERT_TRUE(document.ParseText(whole));
    for (std::size_t size = 0; size < whole.size(); ++size)
        EXPECT_FALSE(document.ParseText(whole.substr(0, size))) << size;
}

struct ContentsCase {
    const char* name;
    const char* text;
    const char* contents;
};
const ContentsCase kContents[] = {
    {"plain", "<a> 12.5\n</a>", "12.5"},
    {"entities", "<a>&lt;&amp;&#65;&#x42;&apos;&gt;</a>", "<&AB'>"},
    {"an_unknown_entity_stays", "<a>&nbsp; & &;</a>", "&nbsp; & &;"},
    {"a_reference_that_is_no_character", "<a>x&#xD800;&#x110000;&#99999999999;y</a>",
     "x&#xD800;&#x110000;&#99999999999;y"},
    {"controls_are_dropped", "<a>x&#7;\x01y</a>", "xy"},
    {"a_section_as_it_stands", "<a>x<![CDATA[<&amp;]]>y</a>", "x<&amp;y"},
    {"a_shared_section", "<a><![CDATA[1]]]]><![CDATA[>2]]></a>", "1]]>2"},
    {"without_comments", "<a>x<!-- <b> -->y</a>", "xy"},
    {"without_children", "<a>x<b>no<c/></b>y<b/>z</a>", "xyz"},
    {"beyond_latin", "<a>&#x20AC;&#x1F6A2;</a>", "\xE2\x82\xAC\xF0\x9F\x9A\xA2"},
};

TEST(Xml, DecodesContents)
{
    for (const ContentsCase& tested : kContents) {
        CXMLdocument document;
        ASSERT_TRUE(document.ParseText(tested.text)) << tested.name;
        EXPECT_EQ(document.Root().GetContents(), tested.contents) << tested.name;
        const std::string_view plain = document.Root().PlainContents();
        EXPECT_TRUE(plain.empty() || plain == tested.contents) << tested.name;
    }
}

TEST(Xml, FindsByNameWhateverCaseAndPrefix)
{
    CXMLdocument document;
    ASSERT_TRUE(document.ParseText(
        "<g:GPX xmlns:g='n' Lat = \"1e1\" g:lon='-2&#46;5' bad='x'><g:Line><width>3</width></g:Line><line/></g:GPX>"));
    const CXMLnode root = document.Root();
    EXPECT_TRUE(root.Is("gpx"));
    EXPECT_FALSE(root.Is("gp"));
    EXPECT_EQ(root.FindAttributeDbl("lat", 0.0), 10.0);
    EXPECT_EQ(root.FindAttribute("lon"), "-2.5");
    EXPECT_EQ(root.FindAttributeDbl("bad", 7.0), 7.0);
    EXPECT_EQ(root.FindAttributeDbl("none", 8.0), 8.0);
    double width = 0.0;
    EXPECT_TRUE(root.FindChild("xstyle:line").FindChildGetContents("x:WIDTH", width));
    EXPECT_EQ(width, 3.0);
    EXPECT_TRUE(root.FindChild("line").FindNext("line"));
    EXPECT_FALSE(root.FindChild("none").FindChild("line").NextSibling());
}

struct EncodingCase {
    const char* name;
    std::string bytes;
    const char* contents; ///< null: refused
};

std::string Wide(const std::string& text, bool big)
{
    std::string out;
    for (const char c : text) {
        if (big) out += '\0';
        out += c;
        if (!big) out += '\0';
    }
    return out;
}

TEST(Xml, ReadsOtherEncodings)
{
    const EncodingCase cases[] = {
        {"mark_of_utf8", "\xEF\xBB\xBF<a>\xC3\xA9</a>", "\xC3\xA9"},
        {"latin1", "<?xml version='1.0' encoding='ISO-8859-1'?><a>\xE9</a>", "\xC3\xA9"},
        {"windows", "<?xml version='1.0' encoding=\"windows-1252\"?><a>\x80</a>", "\xE2\x82\xAC"},
        {"utf16_little", "\xFF\xFE" + Wide("<a>x</a>", false), "x"},
        {"utf16_big", "\xFE\xFF" + Wide("<a>x</a>", true), "x"},
        {"utf16_without_mark", Wide("<?xml version='1.0'?><a>x</a>", false), "x"},
        {"half_a_character", std::string("\xFF\xFE") + Wide("<a>x</a>", false) + "<", nullptr},
        {"an_invented_encoding", "<?xml version='1.0' encoding='x-none'?><a/>", nullptr},
    };
    for (const EncodingCase& tested : cases) {
        CXMLdocument document;
        EXPECT_EQ(document.ParseText(tested.bytes), tested.contents != nullptr) << tested.name;
        EXPECT_EQ(document.Root().GetContents(), tested.contents != nullptr ? tested.contents : "") << tested.name;
    }
}

} // namespace
