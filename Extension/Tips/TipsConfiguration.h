// What the user may choose for a Tips widget: the newest tip, or one that changes every day.
#pragma once

#include "Platform/Widgets/Intent.h"

#include <array>
#include <string>
#include <string_view>

namespace foliovault {

enum class TipsMode { latestTip, tipOfTheDay };

constexpr std::array<TipsMode, 2> allCases(TipsMode) {
    return {TipsMode::latestTip, TipsMode::tipOfTheDay};
}
/// What the host remembers.
std::string_view rawValue(TipsMode mode);
/// What the user chooses by, in the user's language.
std::string displayTitle(TipsMode mode);
/// What the widget's header says, in the user's language.
std::string subtitle(TipsMode mode);

struct TipsIntent {
    TipsMode mode = TipsMode::latestTip;

    static platform::IntentDescription<TipsIntent> description();
};

} // namespace foliovault
