#pragma once

#include "core/xml_document.h"

/// What XML counts as white space.
constexpr bool IsXmlBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

/// Fills a document from its text in one pass.
class CXMLparser {
public:
    explicit CXMLparser(CXMLdocument& into);
    bool Parse();

private:
    bool Markup();
    bool StartTag();
    bool EndTag();
    bool SkipDeclaration();
    /// Moves behind the text; false when it does not come.
    bool SkipBehind(std::string_view what);
    /// The ">" of the tag that begins at `at`, past quoted values; null when the text ends first.
    const char* EndOfTag(const char* at) const;
    /// Between or around elements at the top there may be blanks alone.
    bool OnlyBlanksUpTo(const char* to) const;

    struct Open {
        std::uint32_t node;
        std::uint32_t last_child;
    };

    CXMLdocument& document;
    const char* const begin;
    const char* const end;
    const char* position;
    Open open[CXMLdocument::kDeepest];
    int depth = 0;
};
