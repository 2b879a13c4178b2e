#include "Extension/ReadingList/ReadingListItem.h"

#include "Extension/Shared/DeepLink.h"
#include "Extension/Shared/DocumentType.h"
#include "Platform/Foundation/Clock.h"

namespace foliovault {

using namespace platform;

std::optional<std::string> ReadingListItem::sourceHost() const {
    const auto address = URL::parse(id);
    if (!address || !isWebAddress(*address)) {
        return std::nullopt;
    }
    auto host = address->host();
    if (!host || host->empty()) {
        return std::nullopt;
    }
    // Case counts: "WWW." stays. A host of "www." alone becomes empty, which is different from no host.
    constexpr std::string_view prefix = "www.";
    if (host->starts_with(prefix)) {
        host->erase(0, prefix.size());
    }
    return host;
}

std::optional<std::string> ReadingListItem::displaySubtitle() const {
    const auto host = sourceHost();
    return DocumentType::label(type) + (host ? " · " + *host : "");
}

std::string_view ReadingListItem::displayIcon() const {
    return DocumentType::sfSymbol(type);
}

std::optional<URL> ReadingListItem::displayURL() const {
    return foliovaultOpenURL(id, "readinglist");
}

std::optional<Color> ReadingListItem::dotColor() const {
    return isUnread ? std::optional(Color::blue) : std::nullopt;
}

const std::vector<ReadingListItem>& ReadingListItem::sampleItems() {
    static const Date now = SystemClock::shared().now();
    static const std::vector<ReadingListItem> items{
        {.id = "x-foliovault-item://sample1", .title = "Getting Started with FOLIOvault", .date = now, .type = 12},
        {.id = "x-foliovault-item://sample2",
         .title = "Project Budget 2025",
         .date = now.addingSeconds(-3600),
         .type = 16},
        {.id = "x-foliovault-item://sample3",
         .title = "Meeting Notes – Q1 Review",
         .isUnread = false,
         .date = now.addingSeconds(-7200),
         .type = 4},
        {.id = "x-foliovault-item://sample4",
         .title = "Smart Rules & Automation Guide",
         .date = now.addingSeconds(-86400),
         .type = 12},
        {.id = "x-foliovault-item://sample5",
         .title = "Research Notes on Machine Learning",
         .isUnread = false,
         .date = now.addingSeconds(-172800),
         .type = 124},
    };
    return items;
}

} // namespace foliovault
