#include "core/xml_parser.h"

#include "core/huge_pages.h"

#include <cstring>

namespace {

bool IsNameStart(char c)
{
    const auto byte = static_cast<unsigned char>(c);
    return (byte | 0x20U) - 'a' < 26U || c == '_' || c == ':' || byte >= 0x80U;
}

bool EndsName(char c)
{
    return IsXmlBlank(c) || c == '/' || c == '>';
}

const char* Find(const char* from, const char* to, char what)
{
    return static_cast<const char*>(std::memchr(from, what, static_cast<std::size_t>(to - from)));
}

} // namespace

CXMLparser::CXMLparser(CXMLdocument& into)
    : document(into), begin(into.text.data()), end(begin + into.text.size()), position(begin)
{}

bool CXMLparser::Parse()
{
    // Room that is never written to costs nothing; moving a long list again and again does.
    constexpr std::size_t kBytesOfElement = 32; // at least, in files of many elements
    document.nodes.reserve(document.text.size() / kBytesOfElement + 2);
    WantHugePages(document.nodes.data(), document.nodes.capacity() * sizeof(CXMLdocument::Node));
    document.nodes.emplace_back();
    while (const char* markup = Find(position, end, '<')) {
        if (depth == 0 && !OnlyBlanksUpTo(markup)) return false;
        position = markup + 1;
        if (position == end || !Markup()) return false;
    }
    return depth == 0 && document.nodes.size() > 1 && OnlyBlanksUpTo(end);
}

bool CXMLparser::Markup()
{
    if (*position == '/') return EndTag();
    if (*position != '!' && *position != '?') return StartTag();
    if (depth > 0) document.nodes[open[depth - 1].node].plain = false;
    if (*position == '?') return SkipBehind("?>");
    const std::string_view rest(position, static_cast<std::size_t>(end - position));
    if (rest.starts_with("!--")) {
        position += 3;
        return SkipBehind("-->");
    }
    if (rest.starts_with("![CDATA[")) return depth > 0 && SkipBehind("]]>");
    return depth == 0 && SkipDeclaration();
}

bool CXMLparser::StartTag()
{
    if (!IsNameStart(*position) || depth == CXMLdocument::kDeepest) return false;
    if (document.nodes.size() > CXMLdocument::kMostElements) return false;
    if (depth == 0 && document.nodes.size() > 1) return false; // a second root
    const char* name_end = position;
    while (name_end < end && !EndsName(*name_end)) ++name_end;
    const char* close = EndOfTag(name_end);
    if (close == nullptr || name_end - position > UINT16_MAX) return false;
    const bool empty = close[-1] == '/';

    const auto index = static_cast<std::uint32_t>(document.nodes.size());
    if (depth > 0) {
        Open& parent = open[depth - 1];
        document.nodes[parent.node].plain = false;
        std::uint32_t& link =
            parent.last_child == 0 ? document.nodes[parent.node].first_child : document.nodes[parent.last_child].next;
        link = index;
        parent.last_child = index;
    }
    CXMLdocument::Node& node = document.nodes.emplace_back();
    node.name = static_cast<std::uint32_t>(position - begin);
    node.name_length = static_cast<std::uint16_t>(name_end - position);
    node.attributes_length = static_cast<std::uint32_t>(close - name_end) - (empty ? 1U : 0U);
    node.contents = static_cast<std::uint32_t>(close + 1 - begin);
    if (!empty) open[depth++] = {index, 0};
    position = close + 1;
    return true;
}

bool CXMLparser::EndTag()
{
    if (depth == 0) return false;
    CXMLdocument::Node& node = document.nodes[open[depth - 1].node];
    const char* name = position + 1;
    const char* name_end = name + node.name_length;
    if (name_end >= end || std::memcmp(name, begin + node.name, node.name_length) != 0) return false;
    while (name_end < end && IsXmlBlank(*name_end)) ++name_end;
    if (name_end == end || *name_end != '>') return false;
    node.contents_length = static_cast<std::uint32_t>(position - 1 - begin) - node.contents;
    --depth;
    position = name_end + 1;
    return true;
}

const char* CXMLparser::EndOfTag(const char* at) const
{
    while (at < end && *at != '>') {
        if (*at == '"' || *at == '\'') {
            at = Find(at + 1, end, *at);
            if (at == nullptr) return nullptr;
        } else if (*at == '<') {
            return nullptr;
        }
        ++at;
    }
    return at < end ? at : nullptr;
}

bool CXMLparser::SkipDeclaration()
{
    int brackets = 0;
    while (position < end) {
        const char c = *position;
        if (c == '"' || c == '\'') {
            position = Find(position + 1, end, c);
            if (position == nullptr) return false;
        } else if (c == '[') {
            ++brackets;
        } else if (c == ']') {
            --brackets;
        } else if (c == '>' && brackets <= 0) {
            ++position;
            return true;
        }
        ++position;
    }
    return false;
}

bool CXMLparser::SkipBehind(std::string_view what)
{
    const std::string_view rest(position, static_cast<std::size_t>(end - position));
    const std::size_t found = rest.find(what);
    if (found == std::string_view::npos) return false;
    position += found + what.size();
    return true;
}

bool CXMLparser::OnlyBlanksUpTo(const char* to) const
{
    for (const char* at = position; at < to; ++at) {
        if (!IsXmlBlank(*at)) return false;
    }
    return true;
}
