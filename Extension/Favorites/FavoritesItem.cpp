#include "Extension/Favorites/FavoritesItem.h"

#include "Extension/Shared/DeepLink.h"
#include "Extension/Shared/FOLIOvaultPaths.h"
#include "Platform/Foundation/Clock.h"
#include "Platform/Foundation/Localization.h"

#include <array>
#include <utility>

namespace foliovault {

using namespace platform;

namespace {

std::optional<URL> linkOf(const std::optional<std::string>& urlString) {
    const auto url = urlString ? URL::parse(*urlString) : std::nullopt;
    return url ? std::optional(taggedForWidget(*url, "favorites")) : std::nullopt;
}

} // namespace

FavoritesItem::FavoritesItem(std::string id, std::string name, Date date, std::string_view icon, std::int64_t label,
                             std::optional<std::string> location, std::optional<std::string> groupName,
                             const std::optional<std::string>& urlString, std::optional<EncodedData> iconData,
                             IsDatabase isDatabase, std::optional<std::string> databasePath)
    : id(std::move(id)), name(std::move(name)), date(date), icon(icon), label(label), location(std::move(location)),
      groupName(std::move(groupName)), url(linkOf(urlString)), iconData(std::move(iconData)), isDatabase(isDatabase),
      databasePath(std::move(databasePath)) {}

std::optional<std::string> FavoritesItem::displayDatabasePath() const {
    const std::string& home = FOLIOvaultPaths::shared().realHome;
    // The prefix counts as text, so a home /home/a also shortens /home/ab/x: that is how the application shows paths.
    if (databasePath && databasePath->starts_with(home)) {
        return "~" + databasePath->substr(home.size());
    }
    return databasePath;
}

std::optional<std::string> FavoritesItem::displaySubtitle() const {
    if (location) {
        return location;
    }
    if (isDatabase == IsDatabase::no) {
        return groupName;
    }
    auto path = displayDatabasePath();
    return path ? *std::move(path) : localized("Database");
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
    static const std::vector<FavoritesItem> items = [] {
        const Date now = SystemClock::shared().now();
        const auto none = std::nullopt;
        return std::vector<FavoritesItem>{
            {"db1", "Research", now, "cylinder.split.1x2", 0, none, "Databases", none, none, IsDatabase::yes,
             "~/Databases/Research.fvBase2"},
            {"uuid1", "Inbox", now.addingSeconds(-3600), "folder", 1, "Research > Inbox", "Work",
             "x-foliovault-item://sample1", none, IsDatabase::no, none},
            {"uuid2", "Project Notes", now.addingSeconds(-7200), "folder", 0, "Research > Projects", "Work",
             "x-foliovault-item://sample2", none, IsDatabase::no, none},
            {"uuid3", "Pending Review", now.addingSeconds(-86400), "folder.badge.gearshape", 2, none, "Work",
             "x-foliovault-item://sample3", none, IsDatabase::no, none},
            // A smart group that is opened as an item: the application has no smart group to show for a sample.
            {"si1", "Today", now.addingSeconds(-172800), "gearshape.2", 0, none, none, "x-foliovault-item://sample4",
             none, IsDatabase::no, none},
        };
    }();
    return items;
}

} // namespace foliovault
