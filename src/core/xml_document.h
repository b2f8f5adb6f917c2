#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

class CXMLdocument;

/// One element of a document: a light handle, to be passed by value. A handle that names no element is false, and
/// everything asked of it is empty. Names are compared without regard to case and to namespace prefixes.
class CXMLnode {
public:
    CXMLnode() = default;
    explicit operator bool() const { return index != 0; }

    /// As written, with its prefix.
    std::string_view Name() const;
    bool Is(std::string_view name) const;
    CXMLnode FirstChild() const;
    CXMLnode NextSibling() const;
    /// The first child of that name, or of any of the siblings behind this element.
    CXMLnode FindChild(std::string_view name) const;
    CXMLnode FindNext(std::string_view name) const;
    /// The element that follows in the order of the document, whatever its depth; none behind the last.
    CXMLnode NextInDocument() const;

    /// The decoded value of an attribute; nothing when it is missing.
    std::optional<std::string> FindAttribute(std::string_view name) const;
    double FindAttributeDbl(std::string_view name, double fallback) const;

    /// The text of the element itself: entities decoded, CDATA sections taken as they are, comments and the text of
    /// child elements left out, blanks at both ends cut off, control characters dropped. Always UTF-8: other bytes are
    /// taken for Latin-1.
    std::string GetContents() const;
    /// The contents when they stand in the document just as they are, as number and time elements do; otherwise empty.
    std::string_view PlainContents() const;
    /// The contents as a number; nothing when they are none.
    std::optional<double> GetNumber() const;
    /// False, and `out` as it was, without such a child.
    bool FindChildGetContents(std::string_view name, std::string& out) const;
    bool FindChildGetContents(std::string_view name, double& out) const;
    bool FindChildGetContents(std::string_view name, float& out) const;

private:
    friend class CXMLattributes;
    friend class CXMLdocument;
    CXMLnode(const CXMLdocument* in, std::uint32_t at) : document(in), index(at) {}

    const CXMLdocument* document = nullptr;
    std::uint32_t index = 0;
};

/// Walks over the attributes of an element, for who wants several of them.
class CXMLattributes {
public:
    explicit CXMLattributes(CXMLnode node);
    /// Moves to the first, or next, attribute; false when there is none.
    bool Next();
    bool Is(std::string_view wanted) const;

    std::string_view name;
    std::string_view value; ///< as written, entities not decoded

private:
    std::string_view rest;
};

/// An XML file in memory: its text and a compact tree over it. Declarations of document types are skipped and never
/// followed, so that no entity but the five of XML itself and character references is ever expanded.
class CXMLdocument {
public:
    static constexpr int kDeepest = 256;
    static constexpr std::int64_t kLargest = std::int64_t{256} << 20; ///< bytes
    static constexpr std::size_t kMostElements = 16'000'000;

    CXMLdocument() = default;
    CXMLdocument(const CXMLdocument&) = delete;
    CXMLdocument& operator=(const CXMLdocument&) = delete;

    /// False when the file cannot be read, is too large, has too many elements, is not well-formed, cut off, or nested
    /// too deeply; the document is then empty.
    bool ParseFile(const std::string& path);
    /// Takes the text, in UTF-8, with or without byte order mark, or in the encoding that it declares.
    bool ParseText(std::string with_text);
    CXMLnode Root() const { return {this, nodes.size() > 1 ? 1U : 0U}; }
    std::size_t ElementCount() const { return nodes.empty() ? 0 : nodes.size() - 1; }

private:
    friend class CXMLattributes;
    friend class CXMLnode;
    friend class CXMLparser;

    /// Offsets into the text; indices into the list of nodes, which stands in the order of the document.
    struct Node {
        std::uint32_t name = 0;
        std::uint16_t name_length = 0;
        bool plain = true;                   ///< contents without markup or entities
        std::uint32_t attributes_length = 0; ///< they follow the name
        std::uint32_t contents = 0;
        std::uint32_t contents_length = 0; ///< up to the end tag, children included
        std::uint32_t first_child = 0;
        std::uint32_t next = 0;
    };

    std::string text;
    std::vector<Node> nodes; ///< the first one stands for none
};

/// The text with its entities and character references decoded, control characters dropped; what is no entity stays.
std::string XML_decode_ampersand(std::string_view text);
/// The text with `&`, `<`, `>` and `"` as entities.
std::string XML_encode_ampersand(std::string_view text);
/// A file's text by its byte order mark or the encoding that its XML declaration names, as UTF-8; where that is UTF-8,
/// the bytes are not checked. Nothing when they cannot be converted, or the encoding is unknown.
std::optional<std::string> XML_to_utf8(std::string bytes);
