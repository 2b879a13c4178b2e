// Space that grows along the axis of its stack.
#pragma once

#include "Platform/Views/View.h"

namespace platform {

struct Spacer {
    /// By default the toolkit's.
    std::optional<double> minLength;
    friend bool operator==(const Spacer&, const Spacer&) = default;
};

View spacer(std::optional<double> minLength = std::nullopt);

} // namespace platform
