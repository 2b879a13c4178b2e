// An article of the product's blog in the feed's category "tips".
//
// An immutable value; tips are equal when all their fields are.
#pragma once

#include "Platform/Foundation/Date.h"
#include "Platform/Foundation/URL.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace foliovault {

struct TipItem {
    std::string title;
    /// The summary as plain text in one line; may be empty.
    std::string description;
    /// The article's address in the feed, unchecked.
    std::string link;
    platform::Date pubDate;
    /// The feed's own identifier of the article.
    std::string guid;

    const std::string& id() const { return guid; }

    /// Returns the application's link to the article; nothing if the address is invalid.
    std::optional<platform::URL> url() const;

    /// Three tips for placeholders and previews, made at first use.
    static const std::vector<TipItem>& sampleItems();

    friend bool operator==(const TipItem&, const TipItem&) = default;
};

} // namespace foliovault

template <>
struct std::hash<foliovault::TipItem> {
    std::size_t operator()(const foliovault::TipItem& item) const;
};
