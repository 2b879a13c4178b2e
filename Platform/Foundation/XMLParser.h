// An XML parser that reports a document to a delegate, piece by piece, in the document's order.
//
// Elements have their raw names ("media:title"): prefixes mean nothing here, and attributes are checked and not
// reported. Texts arrive as UTF-8, from every encoding (see TextEncoding.h), with line ends as LF.
//
// The five entities of XML and character references are known, no others: a reference to any other in a text is an
// error, whether or not the document declares it, so none can grow or reach beyond the document. External subsets are
// not read.
//
// The first error ends the parse: what was reported before it stands, and nothing is reported after. Elements nested
// deeper than `maxDepth` and declarations of more than `maxDeclaredAttributes` attributes are errors too, since
// both would take memory or time out of proportion to the document.
//
// The delegate is called on the thread of `parse()`, inside it; its arguments live as long as the call.
#pragma once

#include <string_view>

namespace platform {

class XMLParserDelegate {
  public:
    virtual ~XMLParserDelegate() = default;
    virtual void didStartElement(std::string_view name) = 0;
    virtual void didEndElement(std::string_view name) = 0;
    /// A piece of a text, white space included; a text may come in any number of them.
    virtual void foundCharacters(std::string_view text) = 0;
    /// The whole content of one CDATA section, never reported as characters.
    virtual void foundCDATA(std::string_view block) = 0;
};

class XMLParser {
  public:
    static constexpr int maxDepth = 10'000;
    static constexpr int maxDeclaredAttributes = 100;

    /// Both must outlive this.
    XMLParser(std::string_view document, XMLParserDelegate& delegate) : document_(document), delegate_(delegate) {}

    /// Reports the document. Returns whether it was well-formed up to its end.
    bool parse();

  private:
    std::string_view document_;
    XMLParserDelegate& delegate_;
};

} // namespace platform
