// One favourite as the widget shows it: a database, a record (a document or a group) or a smart group.
//
// An immutable value; favourites are equal when their `id`s are.
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

enum class IsDatabase : bool { no, yes };

struct FavoritesItem {
    /// "db:", "item:" or "si:", the group and a slash where there is a group, and the path or identifier.
    std::string id;
    std::string name;
    /// When it was added; the distant past where that is not known.
    platform::Date date;
    /// A symbol's name; what it refers to is never freed.
    std::string_view icon;
    /// The colour label: 0 for none, 1 to 7.
    std::int64_t label;
    /// Where a record lies, in words.
    std::optional<std::string> location;
    /// The favourites group that it was listed under.
    std::optional<std::string> groupName;
    /// What a click opens, tagged for this widget.
    std::optional<platform::URL> url;
    std::optional<platform::EncodedData> iconData;
    IsDatabase isDatabase;
    /// A database's file.
    std::optional<std::string> databasePath;

    /// Fields in the order above, with the link as text; a text that is no URL gives no link.
    FavoritesItem(std::string id, std::string name, platform::Date date, std::string_view icon, std::int64_t label,
                  std::optional<std::string> location, std::optional<std::string> groupName,
                  const std::optional<std::string>& urlString, std::optional<platform::EncodedData> iconData,
                  IsDatabase isDatabase, std::optional<std::string> databasePath);

    /// The database's path with "~" for the user's home.
    std::optional<std::string> displayDatabasePath() const;

    const std::string& displayTitle() const { return name; }
    std::string_view displayIcon() const { return icon; }
    const std::optional<platform::EncodedData>& displayIconData() const { return iconData; }
    const std::optional<platform::URL>& displayURL() const { return url; }
    platform::Date displayDate() const { return date; }
    /// The location; else a record's group or a database's path.
    std::optional<std::string> displaySubtitle() const;
    /// The colour of the label.
    std::optional<platform::Color> dotColor() const;

    /// Five favourites for placeholders and previews, made at first use.
    static const std::vector<FavoritesItem>& sampleItems();

    friend bool operator==(const FavoritesItem& a, const FavoritesItem& b) { return a.id == b.id; }
};

} // namespace foliovault

template <>
struct std::hash<foliovault::FavoritesItem> {
    std::size_t operator()(const foliovault::FavoritesItem& item) const { return std::hash<std::string>{}(item.id); }
};
