// The line above the rows: the widget's title, and a short subtitle at the trailing edge.
#pragma once

#include "Platform/Foundation/Localization.h"
#include "Platform/Views/Spacer.h"
#include "Platform/Views/Stack.h"
#include "Platform/Views/Text.h"

#include <string>

namespace foliovault {

struct WidgetHeader {
    /// The English wording, shown in the user's language.
    const char* title;
    /// Shown unchanged.
    std::string subtitle;

    platform::View body() const {
        using namespace platform;
        return hStack(
            {.alignment = VerticalAlignment::firstTextBaseline},
            {text(localized(title)).font(headline), spacer(), text(subtitle).font(caption).foreground(secondary)});
    }
};

} // namespace foliovault
