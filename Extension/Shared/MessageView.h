// A message instead of items: a large symbol, a title and an explanation.
#pragma once

#include "Platform/Foundation/Localization.h"
#include "Platform/Views/Stack.h"
#include "Platform/Views/Symbol.h"
#include "Platform/Views/Text.h"

#include <utility>

namespace foliovault {

struct MessageView {
    std::string_view symbol;
    platform::Foreground symbolForeground = platform::secondary;
    /// English wordings, shown in the user's language. An empty explanation takes no line.
    const char* title;
    const char* explanation = nullptr;

    platform::View body() const {
        using namespace platform;
        Views parts{
            platform::symbol(symbol).font(largeTitle).foreground(symbolForeground),
            text(localized(title)).font(headline).foreground(secondary),
        };
        if (explanation != nullptr) {
            parts.push_back(text(localized(explanation))
                                .font(caption)
                                .foreground(tertiary)
                                .textAlignment(HorizontalAlignment::center));
        }
        return vStack({.spacing = 8}, std::move(parts));
    }
};

} // namespace foliovault
