#include "Extension/Tips/RSSParser.h"

#include "Extension/Tips/FeedDate.h"
#include "Platform/Foundation/AsciiSet.h"
#include "Platform/Foundation/Utf8.h"
#include "Platform/Foundation/WhiteSpace.h"

#include <algorithm>

namespace foliovault {

using namespace platform;

namespace {

/// Returns whether `text` in lower case is `lowerCase`. Requires ASCII without "k", since the lower case of the Kelvin
/// sign is "k".
bool isLowerCased(std::string_view text, std::string_view lowerCase) {
    return std::equal(text.begin(), text.end(), lowerCase.begin(), lowerCase.end(),
                      [](char character, char lower) { return asciiLowerCased(character) == lower; });
}

} // namespace

std::vector<TipItem> RSSParser::parseTips(std::string_view document) {
    RSSParser parser;
    // The items before an error count.
    static_cast<void>(XMLParser(document, parser).parse());
    std::vector<TipItem> tips = std::move(parser.items_);
    std::erase_if(tips, [](const TipItem& tip) { return tip.pubDate == Date::distantPast(); });
    std::stable_sort(tips.begin(), tips.end(),
                     [](const TipItem& a, const TipItem& b) { return a.pubDate > b.pubDate; });
    return tips;
}

void RSSParser::didStartElement(std::string_view name) {
    characterBuffer_.clear();
    if (name == "item") {
        isInsideItem_ = true;
        current_ = {};
    }
}

void RSSParser::foundCharacters(std::string_view text) {
    if (isInsideItem_) {
        characterBuffer_ += text;
    }
}

void RSSParser::foundCDATA(std::string_view block) {
    if (isInsideItem_ && isUtf8(block)) {
        characterBuffer_ += block;
    }
}

void RSSParser::didEndElement(std::string_view name) {
    if (!isInsideItem_) {
        return;
    }
    const auto text = [this] { return trimmed(characterBuffer_); };
    if (name == "title") {
        current_.title = text();
    } else if (name == "description") {
        current_.description = text();
    } else if (name == "link") {
        current_.link = text();
    } else if (name == "pubDate") {
        current_.pubDate = text();
    } else if (name == "guid") {
        current_.guid = text();
    } else if (name == "category") {
        current_.isTip = current_.isTip || isLowerCased(text(), "tips");
    } else if (name == "item") {
        endItem();
    }
}

void RSSParser::endItem() {
    isInsideItem_ = false;
    if (!current_.isTip || current_.title.empty()) {
        return;
    }
    items_.push_back({.title = current_.title,
                      .description = stripHTML(current_.description),
                      .link = current_.link,
                      .pubDate = parseFeedDate(current_.pubDate).value_or(Date::distantPast()),
                      .guid = current_.guid.empty() ? current_.link : current_.guid});
}

} // namespace foliovault
