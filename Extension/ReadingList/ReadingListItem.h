// One entry of the reading list: a web page or a document that the user means to read, or has read.
//
// A value; items are equal when their addresses are.
#pragma once

#include "Platform/Foundation/Date.h"
#include "Platform/Foundation/EncodedData.h"
#include "Platform/Foundation/URL.h"
#include "Platform/Views/Style.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace foliovault {

struct ReadingListItem {
    /// The address as the application stores it, whether it is a URL or not.
    std::string id;
    std::string title;
    bool isUnread = true;
    /// When it was added; the distant past if unknown.
    platform::Date date = platform::Date::distantPast();
    /// A document type's code.
    std::int64_t type = 0;
    std::optional<platform::EncodedData> iconData = {};

    /// Returns a web address's host without "www."; nothing for other addresses.
    std::optional<std::string> sourceHost() const;

    const std::string& displayTitle() const { return title; }
    /// Returns the type and the host: "PDF · example.org".
    std::optional<std::string> displaySubtitle() const;
    std::string_view displayIcon() const;
    const std::optional<platform::EncodedData>& displayIconData() const { return iconData; }
    /// Returns the link that opens the address, tagged for this widget; nothing if the address is not a URL.
    std::optional<platform::URL> displayURL() const;
    /// Returns blue for an unread item.
    std::optional<platform::Color> dotColor() const;

    /// Five items, three of them unread, for placeholders and previews, made at first use.
    static const std::vector<ReadingListItem>& sampleItems();

    friend bool operator==(const ReadingListItem& a, const ReadingListItem& b) { return a.id == b.id; }
};

} // namespace foliovault
