// The family and rendering mode in which a view is drawn.
#pragma once

#include <array>
#include <string_view>

namespace platform {

enum class WidgetFamily { small, medium, large, extraLarge, unknown };

enum class RenderingMode { fullColor, tinted, vibrant };

struct Environment {
    WidgetFamily family = WidgetFamily::medium;
    RenderingMode renderingMode = RenderingMode::fullColor;
};

/// The names of the families in the protocol, from small to large.
inline constexpr std::array<std::string_view, 4> familyNames{"small", "medium", "large", "extraLarge"};

constexpr std::string_view familyName(WidgetFamily family) {
    return family == WidgetFamily::unknown ? "unknown" : familyNames[static_cast<std::size_t>(family)];
}

constexpr WidgetFamily familyNamed(std::string_view name) {
    for (std::size_t i = 0; i < familyNames.size(); ++i) {
        if (familyNames[i] == name) {
            return static_cast<WidgetFamily>(i);
        }
    }
    return WidgetFamily::unknown;
}

/// Returns the mode of that name in the protocol; `tinted` for an unknown name.
constexpr RenderingMode renderingModeNamed(std::string_view name) {
    if (name == "fullColor") {
        return RenderingMode::fullColor;
    }
    return name == "vibrant" ? RenderingMode::vibrant : RenderingMode::tinted;
}

} // namespace platform
