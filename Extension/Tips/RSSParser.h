// The tips of a feed: the items of an RSS 2.0 document in the category "tips".
//
// Titles, links, dates and identifiers are the elements' texts, trimmed. A description is HTML, converted to one line
// of plain text. An element's text begins after the start of the last element inside it, so markup must be in a CDATA
// section. Elements outside of items are skipped. An item may be in any element.
#pragma once

#include "Extension/Tips/TipItem.h"
#include "Platform/Foundation/XMLParser.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace foliovault {

class RSSParser final : public platform::XMLParserDelegate {
  public:
    /// Returns the tips of `document`, newest first, in the feed's order if their dates are equal. Leaves out items
    /// without a title or a valid date (see FeedDate.h). Returns the tips before the first error of a malformed
    /// document. Any thread.
    static std::vector<TipItem> parseTips(std::string_view document);

    /// Converts HTML to one line of plain text: removes tags, then decodes six named entities and the numeric ones,
    /// each once, then replaces every run of white space by one space and removes it at the ends.
    static std::string stripHTML(std::string_view html);

    /// Decodes decimal character references (`&#65;`), then hexadecimal ones (`&#x41;`, only with a small x). Leaves
    /// invalid ones unchanged.
    static std::string decodeNumericEntities(std::string_view text);

    /// Returns the character with the number `digits` in `radix`; nothing if it is not a character.
    static std::optional<std::string> decodeScalar(std::string_view digits, int radix);

    void didStartElement(std::string_view name) override;
    void didEndElement(std::string_view name) override;
    void foundCharacters(std::string_view text) override;
    /// Drops a section that is not UTF-8.
    void foundCDATA(std::string_view block) override;

    /// Returns the complete tips so far, in the document's order, with the distant past for invalid dates.
    const std::vector<TipItem>& items() const { return items_; }

  private:
    /// The current item. Texts are trimmed. The description is still HTML, since most items are not tips.
    struct Item {
        std::string title;
        std::string description;
        std::string link;
        std::string pubDate;
        std::string guid;
        bool isTip = false;
    };

    void endItem();

    std::vector<TipItem> items_;
    Item current_;
    bool isInsideItem_ = false;
    /// The text since the last element began.
    std::string characterBuffer_;
};

} // namespace foliovault
