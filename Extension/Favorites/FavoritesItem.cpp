#include "Extension/Favorites/FavoritesItem.h"

#include "Extension/Shared/DeepLink.h"
#include "Platform/Foundation/Clock.h"
#include "Platform/Foundation/Localization.h"

#include <array>

namespace foliovault {

using namespace platform;

std::optional<URL> FavoritesItem::displayURL() const {
    const auto url = urlString ? URL::parse(*urlString) : std::nullopt;
    return url ? std::optional(taggedForWidget(*url, "favorites")) : std::nullopt;
}

std::optional<std::string> FavoritesItem::displaySubtitle() const {
    if (location) {
        return location;
    }
    if (!isDatabase) {
        return groupName;
    }
    return displayDatabasePath ? displayDatabasePath : localized("Database");
}

std::optional<Color> FavoritesItem::dotColor() const {
    constexpr std::array colors{Color::red,  Color::orange, Color::yellow, Color::green,
                                Color::blue, Color::purple, Color::gray};
    if (label < 1 || label > static_cast<std::int64_t>(colors.size())) {
        return std::nullopt;
    }
    return colors[static_cast<std::size_t>(label - 1)];
}

const std::vector<FavoritesItem>& FavoritesItem::sampleItems() {
    static const Date now = SystemClock::shared().now();
    static const std::vector<FavoritesItem> items{
        {.id = "db1",
         .name = "Research",
         .date = now,
         .icon = "cylinder.split.1x2",
         .groupName = "Databases",
         .isDatabase = true,
         .displayDatabasePath = "~/Databases/Research.fvBase2"},
        {.id = "uuid1",
         .name = "Inbox",
         .date = now.addingSeconds(-3600),
         .icon = "folder",
         .label = 1,
         .location = "Research > Inbox",
         .groupName = "Work",
         .urlString = "x-foliovault-item://sample1"},
        {.id = "uuid2",
         .name = "Project Notes",
         .date = now.addingSeconds(-7200),
         .icon = "folder",
         .location = "Research > Projects",
         .groupName = "Work",
         .urlString = "x-foliovault-item://sample2"},
        {.id = "uuid3",
         .name = "Pending Review",
         .date = now.addingSeconds(-86400),
         .icon = "folder.badge.gearshape",
         .label = 2,
         .groupName = "Work",
         .urlString = "x-foliovault-item://sample3"},
        // Opened as an item, since the application has no smart group for a sample.
        {.id = "si1",
         .name = "Today",
         .date = now.addingSeconds(-172800),
         .icon = "gearshape.2",
         .urlString = "x-foliovault-item://sample4"},
    };
    return items;
}

} // namespace foliovault
