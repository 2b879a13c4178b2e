#include "Extension/Favorites/FavoritesStore.h"

#include "Extension/Shared/DeepLink.h"
#include "Extension/Shared/DocumentType.h"
#include "Extension/Shared/ExtensionIdentity.h"
#include "Platform/Foundation/Localization.h"

#include <algorithm>
#include <array>
#include <span>
#include <utility>

namespace foliovault {

using namespace platform;

namespace {

using MaybeValue = std::optional<PropertyListValue>;

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

std::optional<std::string> stringOf(const MaybeValue& value) {
    return value ? value->string() : std::nullopt;
}
std::int64_t integerOf(const MaybeValue& value) {
    return value ? value->integer().value_or(0) : 0;
}
bool isString(const MaybeValue& value) {
    return value && value->kind() == PropertyListKind::string;
}

/// Whether the entry has what makes a favourite, without making one.
bool isFavorite(const PropertyListValue& entry) {
    std::array<MaybeValue, kindKeyCount> found;
    entry.select(std::span(keys).first<kindKeyCount>(), found);
    return isString(found[path]) || isString(found[uuid]) || isString(found[smartGroup]);
}

/// Calls `visit` with every entry that may be a favourite, in order, and the name of its group.
template <class Visit>
void forEachChild(const PropertyListValue& root, const std::string& untitled, Visit visit) {
    root.forEachElement([&](const PropertyListValue& entry) {
        const MaybeValue children = entry["Children"];
        if (!children || !children->isArrayOfDictionaries()) {
            visit(entry, std::optional<std::string>());
            return true;
        }
        const std::optional groupName = stringOf(entry["Name"]).value_or(untitled);
        children->forEachElement([&](const PropertyListValue& child) {
            visit(child, groupName);
            return true;
        });
        return true;
    });
}

/// Room for as many favourites as there are entries, as far as that is no claim that a broken file makes.
std::size_t roomFor(const PropertyListValue& root) {
    constexpr std::size_t greatestRoom = 50'000;
    std::size_t entries = 0;
    root.forEachElement([&](const PropertyListValue& entry) {
        const MaybeValue children = entry["Children"];
        entries += children ? children->arrayCount().value_or(1) : 1;
        return entries < greatestRoom;
    });
    return std::min(entries, greatestRoom);
}

} // namespace

FavoritesStore::FavoritesStore(const FOLIOvaultPaths& paths, const FileSystem& files, const Log& log)
    : file_(paths.favoritesURL, "FavoritesStore", files, log) {}

const FavoritesStore& FavoritesStore::shared() {
    static const FavoritesStore store(FOLIOvaultPaths::shared(), DiskFileSystem::shared(), extensionLog());
    return store;
}

std::optional<PropertyList> FavoritesStore::loadPlist() const {
    return file_.load();
}

std::vector<FavoritesItem> FavoritesStore::readFromPlist() const {
    std::vector<FavoritesItem> items;
    if (const auto list = loadPlist()) {
        const std::string untitled = localized("Untitled");
        items.reserve(roomFor(list->root()));
        forEachChild(list->root(), untitled,
                     [&](const PropertyListValue& child, const std::optional<std::string>& groupName) {
                         if (auto item = parseChild(child, groupName, untitled)) {
                             items.push_back(*std::move(item));
                         }
                     });
    }
    return items;
}

FavoritesExcerpt FavoritesStore::readExcerpt(const GroupFilter& filter, std::size_t cap) const {
    FavoritesExcerpt excerpt;
    excerpt.items.reserve(cap);
    if (const auto list = loadPlist()) {
        const std::string untitled = localized("Untitled");
        forEachChild(list->root(), untitled,
                     [&](const PropertyListValue& child, const std::optional<std::string>& groupName) {
                         if (!filter(groupName) || !isFavorite(child)) {
                             return;
                         }
                         ++excerpt.count;
                         if (excerpt.items.size() < cap) {
                             if (auto item = parseChild(child, groupName, untitled)) {
                                 excerpt.items.push_back(*std::move(item));
                             }
                         }
                     });
    }
    return excerpt;
}

std::vector<std::string> FavoritesStore::groupNames() const {
    std::vector<std::string> names;
    if (const auto list = loadPlist()) {
        list->root().forEachElement([&](const PropertyListValue& entry) {
            if (entry["Children"]) {
                if (auto groupName = stringOf(entry["Name"])) {
                    names.push_back(*std::move(groupName));
                }
            }
            return true;
        });
    }
    return names;
}

std::optional<FavoritesItem> FavoritesStore::parseChild(const PropertyListValue& entry,
                                                        const std::optional<std::string>& groupName,
                                                        const std::string& untitled) {
    std::array<MaybeValue, keyCount> found;
    entry.select(keys, found);

    const auto favorite = [&](std::string_view kind, const std::string& identifier, std::string_view symbol,
                              std::optional<std::string> place, const std::optional<std::string>& urlString,
                              std::optional<std::string> databasePath) {
        std::string id(kind);
        if (groupName) {
            id.append(*groupName).append("/");
        }
        id += identifier;
        const auto isDatabase = databasePath ? IsDatabase::yes : IsDatabase::no;
        return FavoritesItem(std::move(id), stringOf(found[name]).value_or(untitled), parseDate(found[date]), symbol,
                             integerOf(found[label]), std::move(place), groupName, urlString,
                             found[icon] ? found[icon]->data() : std::nullopt, isDatabase, std::move(databasePath));
    };

    if (const auto file = stringOf(found[path])) {
        const auto url = commandURL("open-path", "path", *file);
        return favorite("db:", *file, "cylinder.split.1x2", std::nullopt,
                        url ? std::optional(url->absoluteString()) : std::nullopt, *file);
    }
    if (const auto identifier = stringOf(found[uuid])) {
        return favorite("item:", *identifier, DocumentType::sfSymbol(integerOf(found[type])), stringOf(found[location]),
                        "x-foliovault-item://" + *identifier, std::nullopt);
    }
    if (const auto identifier = stringOf(found[smartGroup])) {
        return favorite("si:", *identifier, "gearshape.2", std::nullopt, "x-foliovault-smartgroup://" + *identifier,
                        std::nullopt);
    }
    return std::nullopt;
}

Date FavoritesStore::parseDate(const MaybeValue& value) {
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
