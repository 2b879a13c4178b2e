// Views in a row, downwards (`vStack`) or from leading to trailing (`hStack`).
#pragma once

#include "Platform/Views/View.h"

namespace platform {

struct VStack {
    Views children;
    HorizontalAlignment alignment = HorizontalAlignment::center;
    /// The gap between children, by default the toolkit's.
    std::optional<double> spacing;
    friend bool operator==(const VStack&, const VStack&) = default;
};

struct HStack {
    Views children;
    VerticalAlignment alignment = VerticalAlignment::center;
    std::optional<double> spacing;
    friend bool operator==(const HStack&, const HStack&) = default;
};

struct VStackOptions {
    HorizontalAlignment alignment = HorizontalAlignment::center;
    std::optional<double> spacing = std::nullopt;
};
struct HStackOptions {
    VerticalAlignment alignment = VerticalAlignment::center;
    std::optional<double> spacing = std::nullopt;
};

View vStack(VStackOptions options, Views children);
View hStack(HStackOptions options, Views children);

} // namespace platform
