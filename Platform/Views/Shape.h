// A filled circle, and empty space. Both take the size that is proposed.
#pragma once

#include "Platform/Views/View.h"

namespace platform {

struct Circle {
    Color fill = Color::clear;
    friend bool operator==(const Circle&, const Circle&) = default;
};

struct Clear {
    friend bool operator==(const Clear&, const Clear&) = default;
};

View circle(Color fill);
View clear();

} // namespace platform
