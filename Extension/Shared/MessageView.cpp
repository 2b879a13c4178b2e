#include "Extension/Shared/MessageView.h"

#include "Platform/Foundation/Localization.h"
#include "Platform/Views/Stack.h"
#include "Platform/Views/Symbol.h"
#include "Platform/Views/Text.h"

namespace foliovault {

using namespace platform;

View MessageView::body() const {
    Views parts{
        platform::symbol(symbol).font(largeTitle).foreground(symbolForeground),
        text(localized(title)).font(headline).foreground(secondary),
    };
    if (explanation != nullptr) {
        parts.push_back(
            text(localized(explanation)).font(caption).foreground(tertiary).textAlignment(HorizontalAlignment::center));
    }
    return vStack({.spacing = 8}, std::move(parts));
}

} // namespace foliovault
