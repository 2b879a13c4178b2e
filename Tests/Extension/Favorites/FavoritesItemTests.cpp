#include "Extension/Favorites/FavoritesItem.h"

#include "Extension/Shared/DisplayableItem.h"
#include "Extension/Shared/FOLIOvaultPaths.h"

#include <gtest/gtest.h>

namespace foliovault {
namespace {

static_assert(DisplayableItem<FavoritesItem>);

constexpr auto none = std::nullopt;

FavoritesItem item(std::optional<std::string> location, std::optional<std::string> group, IsDatabase isDatabase,
                   std::optional<std::string> path, std::int64_t label = 0, std::optional<std::string> link = none) {
    return {"id", "name", {},         "doc",          label, std::move(location), std::move(group),
            link, none,   isDatabase, std::move(path)};
}

TEST(FavoritesItem, HasTheSubtitleThatSaysMost) {
    const std::string& home = FOLIOvaultPaths::shared().realHome;
    const std::pair<FavoritesItem, std::optional<std::string>> rows[]{
        {item("In › Box", "Work", IsDatabase::no, none), "In › Box"},
        {item(none, "Work", IsDatabase::no, none), "Work"},
        {item(none, none, IsDatabase::no, none), none},
        {item(none, "Work", IsDatabase::yes, "/elsewhere/x"), "/elsewhere/x"},
        {item(none, "Work", IsDatabase::yes, home + "/Databases/x"), "~/Databases/x"},
        {item(none, "Work", IsDatabase::yes, home + "b/x"), "~b/x"},
        {item(none, "Work", IsDatabase::yes, none), "Database"},
        {item("In › Box", "Work", IsDatabase::yes, home), "In › Box"},
    };
    for (const auto& [each, expected] : rows) {
        EXPECT_EQ(each.displaySubtitle(), expected);
    }
}

TEST(FavoritesItem, HasTheColorOfItsLabel) {
    using enum platform::Color;
    const std::pair<std::int64_t, std::optional<platform::Color>> rows[]{
        {-1, none}, {0, none}, {1, red},    {2, orange}, {3, yellow},
        {4, green}, {5, blue}, {6, purple}, {7, gray},   {8, none}};
    for (const auto& [label, color] : rows) {
        EXPECT_EQ(item(none, none, IsDatabase::no, none, label).dotColor(), color) << label;
    }
}

TEST(FavoritesItem, TagsItsLink) {
    const std::pair<std::optional<std::string>, std::optional<std::string>> rows[]{
        {"x-foliovault-item://A", "x-foliovault-item://A?widget=favorites"},
        {"x-foliovault-item://", "x-foliovault-item://?widget=favorites"},
        {"x-foliovault-item://A/B?c#d", "x-foliovault-item://A/B?c&widget=favorites#d"},
        {"x-foliovault-item://A B", none},
        {"x-foliovault-item://{A}", none},
        {"", none},
        {none, none},
    };
    for (const auto& [link, expected] : rows) {
        const auto url = item(none, none, IsDatabase::no, none, 0, link).displayURL();
        EXPECT_EQ(url ? std::optional(url->absoluteString()) : none, expected) << link.value_or("none");
    }
}

TEST(FavoritesItem, IsKnownByItsIdAlone) {
    const FavoritesItem one("same", "one", {}, "doc", 1, none, none, none, none, IsDatabase::no, none);
    const FavoritesItem two("same", "two", {}, "tag", 2, none, none, none, none, IsDatabase::yes, "/p");
    EXPECT_EQ(one, two);
    EXPECT_EQ(std::hash<FavoritesItem>{}(one), std::hash<FavoritesItem>{}(two));
    EXPECT_FALSE(one == item(none, none, IsDatabase::no, none));
}

} // namespace
} // namespace foliovault
