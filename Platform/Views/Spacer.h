// Room that grows along the axis of the stack that holds it.
#pragma once

#include "Platform/Views/View.h"

namespace platform {

struct Spacer {
    /// Left out: the toolkit's default.
    std::optional<double> minLength;
    friend bool operator==(const Spacer&, const Spacer&) = default;
};

View spacer(std::optional<double> minLength = std::nullopt);

} // namespace platform
