#include "core/xml_document.h"

#include "core/files.h"
#include "core/huge_pages.h"
#include "core/numbers.h"
#include "core/text.h"
#include "core/xml_parser.h"

#include <QUtf8StringView>

namespace {

bool SameLetter(char a, char b)
{
    const char difference = static_cast<char>(a ^ b);
    if (difference == 0) return true;
    const auto letter = static_cast<unsigned char>(a | 0x20);
    return difference == 0x20 && letter >= 'a' && letter <= 'z';
}

/// Compares from the end, where the local names stand and most names differ.
bool SameName(std::string_view a, std::string_view b)
{
    std::size_t in_a = a.size();
    std::size_t in_b = b.size();
    for (;;) {
        const bool a_ends = in_a == 0 || a[in_a - 1] == ':';
        const bool b_ends = in_b == 0 || b[in_b - 1] == ':';
        if (a_ends || b_ends) return a_ends && b_ends;
        if (!SameLetter(a[--in_a], b[--in_b])) return false;
    }
}

std::string_view WithoutBlanks(std::string_view text)
{
    while (!text.empty() && IsXmlBlank(text.front())) text.remove_prefix(1);
    while (!text.empty() && IsXmlBlank(text.back())) text.remove_suffix(1);
    return text;
}

void AppendWithoutControls(std::string& out, std::string_view text)
{
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte >= 0x20 || c == '\t' || c == '\n') out += c;
    }
}

std::string AsUtf8(std::string text)
{
    return QUtf8StringView(text.data(), static_cast<qsizetype>(text.size())).isValidUtf8() ? std::move(text)
                                                                                           : Latin1ToUtf8(text);
}

} // namespace

bool CXMLdocument::ParseFile(const std::string& path)
{
    std::string bytes;
    // A file of a hundred megabytes would cost as much in page faults as in reading.
    const std::int64_t size = fileSize(path);
    if (size > kLargest) return false;
    if (size > 0) {
        bytes.reserve(static_cast<std::size_t>(size) + 1);
        WantHugePages(bytes.data(), bytes.capacity());
    }
    return read_whole_file(path, bytes, kLargest) && ParseText(std::move(bytes));
}

bool CXMLdocument::ParseText(std::string with_text)
{
    nodes.clear();
    text.clear();
    std::optional<std::string> utf8 = XML_to_utf8(std::move(with_text));
    if (!utf8 || static_cast<std::int64_t>(utf8->size()) > kLargest) return false;
    text = std::move(*utf8);
    if (CXMLparser(*this).Parse()) return true;
    nodes.clear();
    text.clear();
    return false;
}

std::string_view CXMLnode::Name() const
{
    if (index == 0) return {};
    const CXMLdocument::Node& node = document->nodes[index];
    return {document->text.data() + node.name, node.name_length};
}

bool CXMLnode::Is(std::string_view name) const
{
    return index != 0 && SameName(Name(), name);
}

CXMLnode CXMLnode::FirstChild() const
{
    return index != 0 ? CXMLnode(document, document->nodes[index].first_child) : CXMLnode();
}

CXMLnode CXMLnode::NextSibling() const
{
    return index != 0 ? CXMLnode(document, document->nodes[index].next) : CXMLnode();
}

CXMLnode CXMLnode::FindChild(std::string_view name) const
{
    const CXMLnode first = FirstChild();
    return !first || first.Is(name) ? first : first.FindNext(name);
}

CXMLnode CXMLnode::FindNext(std::string_view name) const
{
    CXMLnode node = NextSibling();
    while (node && !node.Is(name)) node = node.NextSibling();
    return node;
}

CXMLnode CXMLnode::NextInDocument() const
{
    if (index == 0 || index + 1 >= document->nodes.size()) return {};
    return {document, index + 1};
}

CXMLattributes::CXMLattributes(CXMLnode node)
{
    if (node.index == 0) return;
    const CXMLdocument::Node& of = node.document->nodes[node.index];
    rest = {node.document->text.data() + of.name + of.name_length, of.attributes_length};
}

bool CXMLattributes::Next()
{
    const std::size_t equals = rest.find('=');
    if (equals == std::string_view::npos) return false;
    name = WithoutBlanks(rest.substr(0, equals));
    rest.remove_prefix(equals + 1);
    while (!rest.empty() && IsXmlBlank(rest.front())) rest.remove_prefix(1);
    if (rest.empty() || (rest.front() != '"' && rest.front() != '\'')) return false;
    const std::size_t close = rest.find(rest.front(), 1);
    if (close == std::string_view::npos) return false;
    value = rest.substr(1, close - 1);
    rest.remove_prefix(close + 1);
    return true;
}

bool CXMLattributes::Is(std::string_view wanted) const
{
    return SameName(name, wanted);
}

std::optional<std::string> CXMLnode::FindAttribute(std::string_view name) const
{
    CXMLattributes attributes(*this);
    while (attributes.Next()) {
        if (attributes.Is(name)) return AsUtf8(XML_decode_ampersand(attributes.value));
    }
    return {};
}

double CXMLnode::FindAttributeDbl(std::string_view name, double fallback) const
{
    CXMLattributes attributes(*this);
    while (attributes.Next()) {
        if (attributes.Is(name)) return ParseDouble(attributes.value).value_or(fallback);
    }
    return fallback;
}

std::string_view CXMLnode::PlainContents() const
{
    if (index == 0) return {};
    const CXMLdocument::Node& node = document->nodes[index];
    if (!node.plain) return {};
    const std::string_view all(document->text.data() + node.contents, node.contents_length);
    return all.find('&') == std::string_view::npos ? WithoutBlanks(all) : std::string_view();
}

std::string CXMLnode::GetContents() const
{
    if (index == 0) return {};
    const CXMLdocument::Node& node = document->nodes[index];
    std::string_view rest(document->text.data() + node.contents, node.contents_length);
    std::string out;
    CXMLnode child = FirstChild();
    while (!rest.empty()) {
        const std::size_t markup = rest.find('<');
        out += XML_decode_ampersand(rest.substr(0, markup));
        if (markup == std::string_view::npos) break;
        rest.remove_prefix(markup);
        std::size_t behind = std::string_view::npos;
        if (rest.starts_with("<![CDATA[")) {
            const std::size_t close = rest.find("]]>");
            AppendWithoutControls(out, rest.substr(9, close - 9));
            behind = close + 3;
        } else if (rest.starts_with("<!--")) {
            behind = rest.find("-->", 4) + 3;
        } else if (rest.starts_with("<?")) {
            behind = rest.find("?>") + 2;
        } else {
            // A child element: its end tag, or its own end when it is empty, is found by the tree.
            const CXMLdocument::Node& inner = document->nodes[child.index];
            const char* contents_end = document->text.data() + inner.contents + inner.contents_length;
            const auto skipped = static_cast<std::size_t>(contents_end - rest.data());
            rest.remove_prefix(skipped);
            behind = rest.starts_with("</") ? rest.find('>') + 1 : 0;
            child = child.NextSibling();
        }
        rest.remove_prefix(behind);
    }
    return AsUtf8(std::string(WithoutBlanks(out)));
}

bool CXMLnode::FindChildGetContents(std::string_view name, std::string& out) const
{
    const CXMLnode child = FindChild(name);
    if (!child) return false;
    out = child.GetContents();
    return true;
}

std::optional<double> CXMLnode::GetNumber() const
{
    const std::string_view plain = PlainContents();
    return plain.empty() ? ParseDouble(GetContents()) : ParseDouble(plain);
}

bool CXMLnode::FindChildGetContents(std::string_view name, double& out) const
{
    const std::optional<double> number = FindChild(name).GetNumber();
    if (number) out = *number;
    return number.has_value();
}

bool CXMLnode::FindChildGetContents(std::string_view name, float& out) const
{
    double number = 0.0;
    if (!FindChildGetContents(name, number)) return false;
    out = static_cast<float>(number);
    return true;
}
