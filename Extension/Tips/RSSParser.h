// The tips of a feed: the items of an RSS 2.0 document that it files under the category "tips".
//
// Titles, links, dates and identifiers are the elements' texts, trimmed; a description is HTML, reduced to one line of
// plain text. An element's text is what follows the beginning of the last element inside it, so a description in markup
// belongs into a CDATA section. Elements outside of items do not matter, nor does what element an item stands in.
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
    /// The tips of `document`, newest first, in the feed's order where their dates are equal. Leaves out items without
    /// a title or with a date that cannot be read (see FeedDate.h). Of a malformed document, returns the tips that end
    /// before its first error. Any thread.
    static std::vector<TipItem> parseTips(std::string_view document);

    /// HTML as one line of plain text: without tags, then with the commonest named entities and the numeric ones
    /// decoded, each once, then with every run of white space as one space and none at the ends.
    static std::string stripHTML(std::string_view html);

    /// `text` with its decimal character references decoded (`&#65;`), and then the hexadecimal ones (`&#x41;`, only
    /// with a small x). What names no character stays as it is.
    static std::string decodeNumericEntities(std::string_view text);

    /// The character with the number that `digits` write in `radix`; nothing if it is not a character.
    static std::optional<std::string> decodeScalar(std::string_view digits, int radix);

    void didStartElement(std::string_view name) override;
    void didEndElement(std::string_view name) override;
    void foundCharacters(std::string_view text) override;
    /// What is not UTF-8 is dropped.
    void foundCDATA(std::string_view block) override;

    /// The tips completed so far, in the document's order, with unreadable dates as the distant past.
    const std::vector<TipItem>& items() const { return items_; }

  private:
    /// What is known of the current item. Texts are trimmed; the description is still HTML, since most items need none.
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
