#include "Extension/Tips/TipItem.h"

#include "Extension/Shared/DeepLink.h"
#include "Platform/Foundation/Clock.h"

#include <string_view>

namespace foliovault {

using namespace platform;

namespace {

std::string blogAddress(std::string_view path) {
    return std::string("https://" FOLIOVAULT_WEB_HOST).append(path);
}

} // namespace

std::optional<URL> TipItem::url() const {
    return foliovaultOpenURL(link, "tips");
}

const std::vector<TipItem>& TipItem::sampleItems() {
    static const std::vector<TipItem> items = [] {
        constexpr double day = 86400;
        const Date now = SystemClock::shared().now();
        return std::vector<TipItem>{
            {.title = "How to Use Smart Rules",
             .description =
                 "Smart rules let you automate common tasks in FOLIOvault. Set triggers and actions to organize, "
                 "tag, and move documents automatically.",
             .link = blogAddress("/blog/sample1"),
             .pubDate = now,
             .guid = "sample1"},
            {.title = "Mastering Search Operators",
             .description = "FOLIOvault supports powerful search operators including wildcards, boolean logic, and "
                            "proximity searches to find exactly what you need.",
             .link = blogAddress("/blog/sample2"),
             .pubDate = now.addingSeconds(-day),
             .guid = "sample2"},
            {.title = "Getting Started with Workspaces",
             .description = "Workspaces save and restore your window arrangement and open databases, making it easy to "
                            "switch between projects.",
             .link = blogAddress("/blog/sample3"),
             .pubDate = now.addingSeconds(-2 * day),
             .guid = "sample3"},
        };
    }();
    return items;
}

} // namespace foliovault

std::size_t std::hash<foliovault::TipItem>::operator()(const foliovault::TipItem& item) const {
    std::size_t seed = std::hash<double>{}(item.pubDate.secondsSinceReferenceDate);
    for (const std::string* text : {&item.title, &item.description, &item.link, &item.guid}) {
        // The multiplication makes the order of the fields count.
        seed = seed * 31 + std::hash<std::string>{}(*text);
    }
    return seed;
}
