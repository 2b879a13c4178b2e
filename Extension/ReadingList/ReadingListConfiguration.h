// The choices for a Reading List widget: all items, or the unread ones.
#pragma once

#include "Extension/ReadingList/ReadingListItem.h"
#include "Platform/Foundation/Localization.h"
#include "Platform/Widgets/Intent.h"

#include <array>
#include <string>
#include <string_view>

namespace foliovault {

enum class ReadingListFilter { all, unreadOnly };

constexpr std::array<ReadingListFilter, 2> allCases(ReadingListFilter) {
    return {ReadingListFilter::all, ReadingListFilter::unreadOnly};
}
/// Returns what the host remembers.
constexpr std::string_view rawValue(ReadingListFilter filter) {
    return filter == ReadingListFilter::all ? "all" : "unreadOnly";
}
/// Returns what the user sees, in the user's language.
inline std::string displayTitle(ReadingListFilter filter) {
    return platform::localized(filter == ReadingListFilter::all ? "All Items" : "Unread Only");
}

struct ReadingListIntent {
    ReadingListFilter filter = ReadingListFilter::all;

    static platform::IntentDescription<ReadingListIntent> description() {
        using platform::localized;
        return {.title = localized("Reading List"),
                .description = localized(
                    "Shows your FOLIOvault reading list on the desktop. Filter by all items or only unread ones."),
                .parameters = {platform::enumerationParameter(&ReadingListIntent::filter, "filter", localized("Filter"),
                                                              localized("Filter"))}};
    }
    bool includes(const ReadingListItem& item) const { return filter == ReadingListFilter::all || item.isUnread; }
};

} // namespace foliovault
