// One entry of the reading list: a web page or a document that the user means to read, or has read.
//
// An immutable value; items are equal when their addresses are.
#pragma once

#include "Platform/Foundation/Date.h"
#include "Platform/Foundation/EncodedData.h"
#include "Platform/Foundation/URL.h"
#include "Platform/Views/Style.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace foliovault {

struct ReadingListItem {
    /// The address as the application stores it, whether it is a URL or not.
    std::string id;
    std::string title;
    bool isUnread;
    /// When it was added; the distant past where that is not known.
    platform::Date date;
    /// A document type's code.
    std::int64_t type;
    std::optional<platform::EncodedData> iconData;
    /// What a click opens, tagged for this widget; nothing where the address is no URL.
    std::optional<platform::URL> url;

    ReadingListItem(std::string urlString, std::string title, bool isUnread, platform::Date date, std::int64_t type,
                    std::optional<platform::EncodedData> iconData);

    /// The type's symbol, and what it is called in the user's language.
    std::string_view typeIcon() const;
    std::string typeLabel() const;
    /// A web address's host without "www."; nothing for other addresses.
    std::optional<std::string> sourceHost() const;
    /// What it is, and where on the web: "PDF · example.org".
    std::string subtitle() const;

    const std::string& displayTitle() const { return title; }
    std::optional<std::string> displaySubtitle() const { return subtitle(); }
    std::string_view displayIcon() const { return typeIcon(); }
    const std::optional<platform::EncodedData>& displayIconData() const { return iconData; }
    const std::optional<platform::URL>& displayURL() const { return url; }
    /// Blue while unread.
    std::optional<platform::Color> dotColor() const;

    /// Five items, three of them unread, for placeholders and previews, made at first use.
    static const std::vector<ReadingListItem>& sampleItems();

    friend bool operator==(const ReadingListItem& a, const ReadingListItem& b) { return a.id == b.id; }
};

} // namespace foliovault

template <>
struct std::hash<foliovault::ReadingListItem> {
    std::size_t operator()(const foliovault::ReadingListItem& item) const { return std::hash<std::string>{}(item.id); }
};
