// Text, shown unchanged: it is already in the user's language.
#pragma once

#include "Platform/Views/View.h"

namespace platform {

struct Text {
    std::string text;
    /// By default unlimited.
    std::optional<int> lineLimit;
    std::optional<HorizontalAlignment> textAlignment;
    friend bool operator==(const Text&, const Text&) = default;
};

View text(std::string text);

} // namespace platform
