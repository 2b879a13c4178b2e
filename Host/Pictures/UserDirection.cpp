#include "Host/Pictures/UserDirection.h"

#include "Platform/Foundation/Localization.h"
#include "Platform/Foundation/WritingDirection.h"

namespace host {

Direction userDirection() {
    const auto languages = platform::preferredLanguages(platform::languageSettingsOfEnvironment());
    return platform::isRightToLeft(languages) ? Direction::rightToLeft : Direction::leftToRight;
}

} // namespace host
