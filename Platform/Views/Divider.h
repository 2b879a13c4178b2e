// A thin line across the axis of its stack.
#pragma once

#include "Platform/Views/View.h"

namespace platform {

struct Divider {
    friend bool operator==(const Divider&, const Divider&) = default;
};

View divider();

} // namespace platform
