// Text in the font and foreground that are in force. Shown as it stands, already in the user's language.
#pragma once

#include "Platform/Views/View.h"

namespace platform {

struct Text {
    std::string text;
    /// Left out: as many lines as it takes.
    std::optional<int> lineLimit;
    std::optional<HorizontalAlignment> textAlignment;
    friend bool operator==(const Text&, const Text&) = default;
};

View text(std::string text);

} // namespace platform
