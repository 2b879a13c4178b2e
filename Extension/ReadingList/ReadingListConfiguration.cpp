#include "Extension/ReadingList/ReadingListConfiguration.h"

#include "Platform/Foundation/Localization.h"

namespace foliovault {

using namespace platform;

std::string_view rawValue(ReadingListFilter filter) {
    return filter == ReadingListFilter::all ? "all" : "unreadOnly";
}

std::string displayTitle(ReadingListFilter filter) {
    return localized(filter == ReadingListFilter::all ? "All Items" : "Unread Only");
}

IntentDescription<ReadingListIntent> ReadingListIntent::description() {
    return {.title = localized("Reading List"),
            .description = localized(
                "Shows your FOLIOvault reading list on the desktop. Filter by all items or only unread ones."),
            .parameters = {
                enumerationParameter(&ReadingListIntent::filter, "filter", localized("Filter"), localized("Filter"))}};
}

} // namespace foliovault
