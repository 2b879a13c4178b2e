// The choices for a Tips widget: the newest tip, or one that changes every day.
#pragma once

#include "Platform/Foundation/Localization.h"
#include "Platform/Widgets/Intent.h"

#include <array>
#include <string>
#include <string_view>

namespace foliovault {

enum class TipsMode { latestTip, tipOfTheDay };

constexpr std::array<TipsMode, 2> allCases(TipsMode) {
    return {TipsMode::latestTip, TipsMode::tipOfTheDay};
}
/// Returns what the host remembers.
constexpr std::string_view rawValue(TipsMode mode) {
    return mode == TipsMode::latestTip ? "latestTip" : "tipOfTheDay";
}
/// Returns what the user sees, in the user's language.
inline std::string displayTitle(TipsMode mode) {
    return platform::localized(mode == TipsMode::latestTip ? "Latest Tip" : "Tip of the Day");
}
/// Returns the subtitle in the widget's header, in the user's language.
inline std::string subtitle(TipsMode mode) {
    return platform::localized(mode == TipsMode::latestTip ? "Latest" : "Tip of the Day");
}

struct TipsIntent {
    TipsMode mode = TipsMode::latestTip;

    static platform::IntentDescription<TipsIntent> description() {
        using platform::localized;
        return {.title = localized("Tips"),
                .description = localized("Shows tips from the FOLIOvault blog on the desktop."),
                .parameters = {
                    platform::enumerationParameter(&TipsIntent::mode, "mode", localized("Mode"), localized("Mode"))}};
    }
};

} // namespace foliovault
