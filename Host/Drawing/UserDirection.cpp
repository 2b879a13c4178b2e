#include "Host/Drawing/UserDirection.h"

#include "Platform/Foundation/Icu.h"
#include "Platform/Foundation/Localization.h"

namespace host {

Direction userDirection() {
    const auto languages = platform::preferredLanguages(platform::languageSettingsOfEnvironment());
    const platform::Icu* icu = languages.empty() ? nullptr : platform::Icu::shared();
    const bool isRightToLeft = icu != nullptr && icu->isRightToLeft(languages.front().c_str()) != 0;
    return isRightToLeft ? Direction::rightToLeft : Direction::leftToRight;
}

} // namespace host
