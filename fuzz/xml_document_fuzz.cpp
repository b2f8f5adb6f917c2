// Any bytes as an XML file. What was read is a tree whose elements lie inside their parents, and it can be written down
// and read back as the same.

#include "built_seeds.h"
#include "core/xml_document.h"

namespace {

void Check(bool holds)
{
    if (!holds) __builtin_trap();
}

void WriteDown(CXMLnode node, std::string& out)
{
    out.append("<").append(node.Name());
    for (CXMLattributes attributes(node); attributes.Next();) {
        // Between broken quotes anything can pass for a name.
        if (attributes.name.find_first_of("\"'<> \t\r\n") != std::string_view::npos) continue;
        const std::string value = XML_encode_ampersand(XML_decode_ampersand(attributes.value));
        out.append(" ").append(attributes.name).append("=\"").append(value).append("\"");
    }
    out.append(" >").append(XML_encode_ampersand(node.GetContents()));
    for (CXMLnode child = node.FirstChild(); child; child = child.NextSibling()) WriteDown(child, out);
    out.append("</").append(node.Name()).append(">");
}

/// The number of elements below and with the node, none of them deeper than `levels`.
std::size_t Count(CXMLnode node, int levels)
{
    Check(levels > 0 && !node.Name().empty() && node.Is(node.Name()));
    std::size_t count = 1;
    CXMLnode behind = node.NextInDocument();
    for (CXMLnode child = node.FirstChild(); child; child = child.NextSibling()) {
        Check(count > 1 || child.Name().data() == behind.Name().data());
        count += Count(child, levels - 1);
    }
    return count;
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    AddBuiltSeeds(argc, argv,
                  {"<?xml version=\"1.0\" encoding=\"UTF-8\"?><!DOCTYPE a [<!ENTITY e \"x\">]><a b=\"1\" c='&quot;'>t"
                   "<n:d/><![CDATA[<&]]]]><![CDATA[>]]>&#65;&#x42;&e;<!-- - --><?p q?><d>2</d > </a>\n",
                   "\xEF\xBB\xBF<a/>", std::string("<\0a\0/\0>\0", 8),
                   "<?xml version='1.0' encoding='ISO-8859-1'?><\xE4>\xF6</\xE4>"},
                  512);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static CXMLdocument document;
    if (!document.ParseText(std::string(reinterpret_cast<const char*>(data), size))) {
        Check(!document.Root() && document.ElementCount() == 0);
        return 0;
    }
    Check(Count(document.Root(), CXMLdocument::kDeepest) == document.ElementCount());
    std::string first;
    WriteDown(document.Root(), first);
    static CXMLdocument again;
    Check(again.ParseText(first));
    std::string second;
    WriteDown(again.Root(), second);
    Check(first == second && again.ElementCount() == document.ElementCount());
    return 0;
}
