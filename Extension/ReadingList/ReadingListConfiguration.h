// What the user may choose for a Reading List widget: everything on the list, or what is still to be read.
#pragma once

#include "Extension/ReadingList/ReadingListItem.h"
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
std::string_view rawValue(ReadingListFilter filter);
/// Returns what the user sees, in the user's language.
std::string displayTitle(ReadingListFilter filter);

struct ReadingListIntent {
    ReadingListFilter filter = ReadingListFilter::all;

    static platform::IntentDescription<ReadingListIntent> description();
    bool includes(const ReadingListItem& item) const { return filter == ReadingListFilter::all || item.isUnread; }
};

} // namespace foliovault
