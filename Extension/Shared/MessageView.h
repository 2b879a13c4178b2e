// What a widget says when it has nothing to show: a large symbol, a title, and what to do about it.
#pragma once

#include "Platform/Views/View.h"

namespace foliovault {

struct MessageView {
    std::string_view symbol;
    platform::Foreground symbolForeground = platform::secondary;
    /// English wordings, shown in the user's language. Without an explanation there is no such line.
    const char* title;
    const char* explanation = nullptr;

    platform::View body() const;
};

} // namespace foliovault
