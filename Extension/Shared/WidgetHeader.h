// The line above the rows: the widget's title, and a short subtitle at the trailing edge.
#pragma once

#include "Platform/Views/View.h"

#include <string>

namespace foliovault {

struct WidgetHeader {
    /// The English wording, shown in the user's language.
    const char* title;
    /// Shown as it stands.
    std::string subtitle;

    platform::View body() const;
};

} // namespace foliovault
