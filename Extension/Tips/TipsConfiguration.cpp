#include "Extension/Tips/TipsConfiguration.h"

#include "Platform/Foundation/Localization.h"

namespace foliovault {

using namespace platform;

std::string_view rawValue(TipsMode mode) {
    return mode == TipsMode::latestTip ? "latestTip" : "tipOfTheDay";
}

std::string displayTitle(TipsMode mode) {
    return localized(mode == TipsMode::latestTip ? "Latest Tip" : "Tip of the Day");
}

std::string subtitle(TipsMode mode) {
    return localized(mode == TipsMode::latestTip ? "Latest" : "Tip of the Day");
}

IntentDescription<TipsIntent> TipsIntent::description() {
    return {.title = localized("Tips"),
            .description = localized("Shows tips from the FOLIOvault blog on the desktop."),
            .parameters = {enumerationParameter(&TipsIntent::mode, "mode", localized("Mode"), localized("Mode"))}};
}

} // namespace foliovault
