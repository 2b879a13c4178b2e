// The views with one child, which modifiers return.
#pragma once

#include "Platform/Views/View.h"

namespace platform {

struct Padding {
    View child;
    Insets insets;
    friend bool operator==(const Padding&, const Padding&) = default;
};

struct Frame {
    View child;
    FixedSize size;
    friend bool operator==(const Frame&, const Frame&) = default;
};

struct Background {
    View child;
    ShapeKind shape = ShapeKind::capsule;
    Color fill = Color::clear;
    friend bool operator==(const Background&, const Background&) = default;
};

struct Link {
    View child;
    std::string url;
    std::optional<std::string> id;
    friend bool operator==(const Link&, const Link&) = default;
};

struct Accentable {
    View child;
    friend bool operator==(const Accentable&, const Accentable&) = default;
};

} // namespace platform
