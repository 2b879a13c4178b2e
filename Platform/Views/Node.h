// The content of a view, for layout, drawing, writing and reading.
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
    /// By default those of the parent.
    std::optional<Font> font;
    std::optional<Foreground> foreground;
    friend bool operator==(const Node&, const Node&) = default;
};

} // namespace platform
