// What a view is made of, for those who lay out, draw, write or read it.
#pragma once

#include "Platform/Views/Divider.h"
#include "Platform/Views/Image.h"
#include "Platform/Views/Shape.h"
#include "Platform/Views/Spacer.h"
#include "Platform/Views/Stack.h"
#include "Platform/Views/Symbol.h"
#include "Platform/Views/Text.h"
#include "Platform/Views/Wrapping.h"

#include <variant>

namespace platform {

using NodeContent = std::variant<VStack, HStack, Spacer, Divider, Text, Symbol, Label, Image, Circle, Clear, Padding,
                                 Frame, Background, Link, Accentable>;

struct Node {
    NodeContent content;
    /// Left out: what is in force above.
    std::optional<Font> font;
    std::optional<Foreground> foreground;
    friend bool operator==(const Node&, const Node&) = default;
};

} // namespace platform
