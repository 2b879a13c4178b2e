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

std::string nameOf(const std::optional<PropertyListValue>& value) {
    auto name = value ? value->string() : std::nullopt;
    return name ? *std::move(name) : localized("Untitled");
}

/// Returns `path` with "~" for `home`. Compares text, so a home /home/a also shortens /home/ab/x, as the application
/// does.
std::string abbreviated(const std::string& path, const std::string& home) {
    return path.starts_with(home) ? "~" + path.substr(home.size()) : path;
}

} // namespace

const FavoritesStore& FavoritesStore::shared() {
    static const FavoritesStore store(Library::shared());
    return store;
}

void FavoritesStore::visitItems(const PropertyListValue& record, const Visit& visit) const {
    const auto visitChild = [&](const PropertyListValue& entry, const std::optional<std::string>& groupName) {
        if (auto item = parseChild(entry, groupName)) {
            visit(*std::move(item));
        }
        return true;
    };
    const auto children = record["Children"];
    if (!children || !children->isArrayOfDictionaries()) {
        visitChild(record, std::nullopt);
        return;
    }
    const std::optional groupName = nameOf(record["Name"]);
    children->forEachElement([&](const PropertyListValue& child) { return visitChild(child, groupName); });
}

std::vector<std::string> FavoritesStore::groupNames() const {
    std::vector<std::string> names;
    forEachRecord([&names](const PropertyListValue& entry) {
        const auto name = entry["Name"];
        if (auto text = name && entry["Children"] ? name->string() : std::nullopt) {
            names.push_back(*std::move(text));
        }
    });
    return names;
}

std::optional<FavoritesItem> FavoritesStore::parseChild(const PropertyListValue& entry,
                                                        const std::optional<std::string>& groupName) const {
    const RecordFields<keys> fields(entry);
    const std::string prefix = groupName ? *groupName + "/" : "";
    FavoritesItem item{.name = nameOf(fields["Name"]),
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
