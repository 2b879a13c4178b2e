#include "Extension/ReadingList/ReadingListItem.h"

#include "Extension/Shared/DeepLink.h"
#include "Extension/Shared/DocumentType.h"
#include "Platform/Foundation/Clock.h"

#include <utility>

namespace foliovault {

using namespace platform;

ReadingListItem::ReadingListItem(std::string urlString, std::string title, bool isUnread, Date date, std::int64_t type,
                                 std::optional<EncodedData> iconData)
    : id(std::move(urlString)), title(std::move(title)), isUnread(isUnread), date(date), type(type),
      iconData(std::move(iconData)), url(foliovaultOpenURL(id, "readinglist")) {}

std::string_view ReadingListItem::typeIcon() const {
    return DocumentType::sfSymbol(type);
}

std::string ReadingListItem::typeLabel() const {
    return DocumentType::label(type);
}

std::optional<std::string> ReadingListItem::sourceHost() const {
    const auto address = URL::parse(id);
    if (!address || !isWebAddress(*address)) {
        return std::nullopt;
    }
    auto host = address->host();
    if (!host || host->empty()) {
        return std::nullopt;
    }
    // As typed: "WWW." stays, and "www." alone leaves nothing of the host, which is not the same as no host.
    constexpr std::string_view prefix = "www.";
    if (host->starts_with(prefix)) {
        host->erase(0, prefix.size());
    }
    return host;
}

std::string ReadingListItem::subtitle() const {
    const auto host = sourceHost();
    return host ? typeLabel() + " · " + *host : typeLabel();
}

std::optional<Color> ReadingListItem::dotColor() const {
    return isUnread ? std::optional(Color::blue) : std::nullopt;
}

const std::vector<ReadingListItem>& ReadingListItem::sampleItems() {
    static const std::vector<ReadingListItem> items = [] {
        const Date now = SystemClock::shared().now();
        const auto none = std::nullopt;
        return std::vector<ReadingListItem>{
            {"x-foliovault-item://sample1", "Getting Started with FOLIOvault", true, now, 12, none},
            {"x-foliovault-item://sample2", "Project Budget 2025", true, now.addingSeconds(-3600), 16, none},
            {"x-foliovault-item://sample3", "Meeting Notes – Q1 Review", false, now.addingSeconds(-7200), 4, none},
            {"x-foliovault-item://sample4", "Smart Rules & Automation Guide", true, now.addingSeconds(-86400), 12,
             none},
            {"x-foliovault-item://sample5", "Research Notes on Machine Learning", false, now.addingSeconds(-172800),
             124, none},
        };
    }();
    return items;
}

} // namespace foliovault
