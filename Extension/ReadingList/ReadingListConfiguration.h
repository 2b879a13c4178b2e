// What the user may choose for a Reading List widget: everything on the list, or what is still to be read.
#pragma once

#include "Platform/Widgets/Intent.h"

#include <array>
#include <string>
#include <string_view>

namespace foliovault {

enum class ReadingListFilter { all, unreadOnly };

constexpr std::array<ReadingListFilter, 2> allCases(ReadingListFilter) {
    return {ReadingListFilter::all, ReadingListFilter::unreadOnly};
}
/// What the host remembers.
std::string_view rawValue(ReadingListFilter filter);
/// What the user sees, in the user's language.
std::string displayTitle(ReadingListFilter filter);

struct ReadingListIntent {
    ReadingListFilter filter = ReadingListFilter::all;

    static platform::IntentDescription<ReadingListIntent> description();
};

} // namespace foliovault
