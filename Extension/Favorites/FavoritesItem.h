// One favourite as the widget shows it: a database, a record (a document or a group) or a smart group.
//
// A value; favourites are equal when their `id`s are.
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

struct FavoritesItem {
    /// "db:", "item:" or "si:", the group and a slash if it is in a group, and the path or identifier.
    std::string id;
    std::string name;
    /// When it was added; the distant past if unknown.
    platform::Date date = platform::Date::distantPast();
    /// A symbol's name, a string literal.
    std::string_view icon;
    /// The colour label, from 1 to 7; 0 stands for no label.
    std::int64_t label = 0;
    /// The location of a record, in words.
    std::optional<std::string> location = {};
    /// Its favourites group.
    std::optional<std::string> groupName = {};
    /// The address that a click opens, without this widget's tag. A text that is not a URL opens nothing.
    std::optional<std::string> urlString = {};
    std::optional<platform::EncodedData> iconData = {};
    bool isDatabase = false;
    /// A database's file, with "~" for the user's home.
    std::optional<std::string> displayDatabasePath = {};

    const std::string& displayTitle() const { return name; }
    std::string_view displayIcon() const { return icon; }
    const std::optional<platform::EncodedData>& displayIconData() const { return iconData; }
    std::optional<platform::URL> displayURL() const;
    platform::Date displayDate() const { return date; }
    /// Returns the location; else a record's group or a database's path.
    std::optional<std::string> displaySubtitle() const;
    /// Returns the colour of the label.
    std::optional<platform::Color> dotColor() const;

    /// Five favourites for placeholders and previews, made at first use.
    static const std::vector<FavoritesItem>& sampleItems();

    friend bool operator==(const FavoritesItem& a, const FavoritesItem& b) { return a.id == b.id; }
};

} // namespace foliovault
