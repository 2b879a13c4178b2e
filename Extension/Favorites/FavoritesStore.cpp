#include "Extension/Favorites/FavoritesStore.h"

#include "Extension/Shared/DeepLink.h"
#include "Extension/Shared/DocumentType.h"
#include "Extension/Shared/RecordFields.h"
#include "Platform/Foundation/Localization.h"

#include <array>
#include <span>
#include <utility>

namespace foliovault {

using namespace platform;

namespace {

using GroupName = std::optional<std::string>;

/// The keys of an entry, those first that make it a favourite.
enum Key : std::size_t {
    path,
    uuid,
    smartGroup,
    kindKeyCount,
    name = kindKeyCount,
    date,
    label,
    icon,
    type,
    location,
    keyCount
};
constexpr std::array<std::string_view, keyCount> keys{"Path",  "UUID", "SIUUID", "Name",    "Date",
                                                      "Label", "Icon", "Type",   "Location"};

/// Whether the entry has what makes a favourite, without making one.
bool isFavorite(const PropertyListValue& entry) {
    const RecordFields fields(entry, std::span(keys).first<kindKeyCount>());
    return fields.hasString(path) || fields.hasString(uuid) || fields.hasString(smartGroup);
}

/// Calls `visit` with what may be a favourite, and the name of its group: a group's children, or the entry itself.
template <class Visit>
void forEachChild(const PropertyListValue& entry, const std::string& untitled, Visit visit) {
    const auto children = entry["Children"];
    if (!children || !children->isArrayOfDictionaries()) {
        visit(entry, GroupName());
        return;
    }
    const auto name = entry["Name"];
    const GroupName groupName = (name ? name->string() : std::nullopt).value_or(untitled);
    children->forEachElement([&](const PropertyListValue& child) {
        visit(child, groupName);
        return true;
    });
}

} // namespace

FavoritesStore::FavoritesStore(const Library& library) : file_(library, library.paths.favoritesURL, "FavoritesStore") {}

const FavoritesStore& FavoritesStore::shared() {
    static const FavoritesStore store(Library::shared());
    return store;
}

std::vector<FavoritesItem> FavoritesStore::readFromPlist() const {
    std::vector<FavoritesItem> items;
    const std::string untitled = localized("Untitled");
    file_.forEachRecord([&](const PropertyListValue& entry) {
        forEachChild(entry, untitled, [&](const PropertyListValue& child, const GroupName& groupName) {
            if (auto item = parseChild(child, groupName, untitled)) {
                items.push_back(*std::move(item));
            }
        });
    });
    return items;
}

ListExcerpt<FavoritesItem> FavoritesStore::readExcerpt(const GroupFilter& filter) const {
    ListExcerpt<FavoritesItem> excerpt;
    const std::string untitled = localized("Untitled");
    file_.forEachRecord([&](const PropertyListValue& entry) {
        forEachChild(entry, untitled, [&](const PropertyListValue& child, const GroupName& groupName) {
            if (filter(groupName) && isFavorite(child)) {
                excerpt.add([&] { return parseChild(child, groupName, untitled); });
            }
        });
    });
    return excerpt;
}

std::vector<std::string> FavoritesStore::groupNames() const {
    return file_.convertEach([](const PropertyListValue& entry) {
        const auto name = entry["Name"];
        return name && entry["Children"] ? name->string() : std::nullopt;
    });
}

std::optional<FavoritesItem> FavoritesStore::parseChild(const PropertyListValue& entry,
                                                        const std::optional<std::string>& groupName,
                                                        const std::string& untitled) {
    const RecordFields fields(entry, std::span(keys));
    const auto favorite = [&](std::string_view kind, const std::string& identifier, std::string_view symbol,
                              std::optional<std::string> place, const std::optional<std::string>& urlString,
                              std::optional<std::string> databasePath) {
        std::string id(kind);
        if (groupName) {
            id.append(*groupName).append("/");
        }
        id += identifier;
        const auto isDatabase = databasePath ? IsDatabase::yes : IsDatabase::no;
        return FavoritesItem(std::move(id), fields.string(name).value_or(untitled), parseDate(fields.value(date)),
                             symbol, fields.integer(label).value_or(0), std::move(place), groupName, urlString,
                             fields.data(icon), isDatabase, std::move(databasePath));
    };

    if (const auto file = fields.string(path)) {
        const auto url = commandURL("open-path", "path", *file);
        return favorite("db:", *file, "cylinder.split.1x2", std::nullopt,
                        url ? std::optional(url->absoluteString()) : std::nullopt, *file);
    }
    if (const auto identifier = fields.string(uuid)) {
        return favorite("item:", *identifier, DocumentType::sfSymbol(fields.integer(type).value_or(0)),
                        fields.string(location), "x-foliovault-item://" + *identifier, std::nullopt);
    }
    if (const auto identifier = fields.string(smartGroup)) {
        return favorite("si:", *identifier, "gearshape.2", std::nullopt, "x-foliovault-smartgroup://" + *identifier,
                        std::nullopt);
    }
    return std::nullopt;
}

Date FavoritesStore::parseDate(const std::optional<PropertyListValue>& value) {
    if (!value) {
        return Date::distantPast();
    }
    if (const auto moment = value->date()) {
        return *moment;
    }
    const auto seconds = value->number();
    return seconds ? Date{*seconds} : Date::distantPast();
}

} // namespace foliovault
