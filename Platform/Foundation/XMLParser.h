// An XML parser that reports a document to a delegate, piece by piece, in the document's order.
//
// Elements have their raw names ("media:title"). Attributes are checked and not reported. Texts are UTF-8, from every
// encoding (see TextEncoding.h), with LF as line ends.
//
// Knows the five entities of XML and character references. A reference to another entity in a text is an error, even if
// the document declares it, so that none can grow or reach beyond the document. Does not read external subsets.
//
// The first error ends the parse, and nothing is reported after it. Elements deeper than `maxDepth` and declarations of
// more than `maxDeclaredAttributes` attributes are errors, since both would take memory or time out of proportion.
//
// Calls the delegate on the thread of `parse()`. Its arguments live as long as the call.
#pragma once

#include <string_view>

namespace platform {

class XMLParserDelegate {
  public:
    virtual ~XMLParserDelegate() = default;
    virtual void didStartElement(std::string_view name) = 0;
    virtual void didEndElement(std::string_view name) = 0;
    /// A piece of a text, white space included. A text has one piece or more.
    virtual void foundCharacters(std::string_view text) = 0;
    /// The whole content of one CDATA section, never reported as characters.
    virtual void foundCDATA(std::string_view block) = 0;
};

class XMLParser {
  public:
    static constexpr int maxDepth = 10'000;
    static constexpr int maxDeclaredAttributes = 100;

    /// Both must outlive the parser.
    XMLParser(std::string_view document, XMLParserDelegate& delegate) : document_(document), delegate_(delegate) {}

    /// Reports the document. Returns whether it is well-formed.
    bool parse();

  private:
    std::string_view document_;
    XMLParserDelegate& delegate_;
};

} // namespace platform
