#include "Extension/Favorites/FavoritesStore.h"

#include "Extension/Shared/DeepLink.h"
#include "Extension/Shared/DocumentType.h"
#include "Extension/Shared/RecordFields.h"
#include "Platform/Foundation/Localization.h"

#include <array>
#include <utility>

namespace foliovault {

using namespace platform;

namespace {

constexpr std::array<std::string_view, 9> keys{"Path",  "UUID", "SIUUID", "Name",    "Date",
                                               "Label", "Icon", "Type",   "Location"};

/// Returns `path` with "~" for `home`. The prefix counts as text, so a home /home/a also shortens /home/ab/x: that is
/// how the application shows paths.
std::string abbreviated(const std::string& path, const std::string& home) {
    return path.starts_with(home) ? "~" + path.substr(home.size()) : path;
}

} // namespace

const FavoritesStore& FavoritesStore::shared() {
    static const FavoritesStore store(Library::shared());
    return store;
}

std::vector<FavoritesItem> FavoritesStore::readFromPlist() const {
    std::vector<FavoritesItem> items;
    const std::string untitled = localized("Untitled");
    const auto append = [&](const PropertyListValue& entry, const std::optional<std::string>& groupName) {
        if (auto item = parseChild(entry, groupName, untitled)) {
            items.push_back(*std::move(item));
        }
        return true;
    };
    forEachRecord([&](const PropertyListValue& entry) {
        const auto children = entry["Children"];
        if (!children || !children->isArrayOfDictionaries()) {
            append(entry, std::nullopt);
            return;
        }
        const auto name = entry["Name"];
        const std::optional groupName = (name ? name->string() : std::nullopt).value_or(untitled);
        children->forEachElement([&](const PropertyListValue& child) { return append(child, groupName); });
    });
    return items;
}

std::vector<std::string> FavoritesStore::groupNames() const {
    return convertEach([](const PropertyListValue& entry) {
        const auto name = entry["Name"];
        return name && entry["Children"] ? name->string() : std::nullopt;
    });
}

std::optional<FavoritesItem> FavoritesStore::parseChild(const PropertyListValue& entry,
                                                        const std::optional<std::string>& groupName,
                                                        const std::string& untitled) const {
    const RecordFields fields(entry, keys);
    const std::string prefix = groupName ? *groupName + "/" : "";
    FavoritesItem item{.name = fields.string("Name").value_or(untitled),
                       .date = parseDate(fields["Date"]),
                       .label = fields.integer("Label").value_or(0),
                       .groupName = groupName,
                       .iconData = fields.data("Icon")};
    if (const auto path = fields.string("Path")) {
        const auto url = commandURL("open-path", "path", *path);
        item.id = "db:" + prefix + *path;
        item.icon = "cylinder.split.1x2";
        item.urlString = url ? std::optional(url->absoluteString()) : std::nullopt;
        item.isDatabase = true;
        item.displayDatabasePath = abbreviated(*path, realHome());
    } else if (const auto identifier = fields.string("UUID")) {
        item.id = "item:" + prefix + *identifier;
        item.icon = DocumentType::sfSymbol(fields.integer("Type").value_or(0));
        item.location = fields.string("Location");
        item.urlString = "x-foliovault-item://" + *identifier;
    } else if (const auto smartGroup = fields.string("SIUUID")) {
        item.id = "si:" + prefix + *smartGroup;
        item.icon = "gearshape.2";
        item.urlString = "x-foliovault-smartgroup://" + *smartGroup;
    } else {
        return std::nullopt;
    }
    return item;
}

Date FavoritesStore::parseDate(const std::optional<PropertyListValue>& value) {
    if (const auto date = value ? value->date() : std::nullopt) {
        return *date;
    }
    const auto seconds = value ? value->number() : std::nullopt;
    return seconds ? Date{*seconds} : Date::distantPast();
}

} // namespace foliovault
