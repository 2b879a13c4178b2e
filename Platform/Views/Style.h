// The styles of views, with their names in the protocol: text styles, foreground levels, named colours, alignments. A
// host decides how they look.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>
#include <variant>

namespace platform {

enum class TextStyle { caption2, caption, callout, headline, title3, largeTitle };
enum class FontWeight { semibold };
enum class ForegroundLevel { primary, secondary, tertiary };
enum class Color { red, orange, yellow, green, blue, purple, gray, white, clear };
enum class HorizontalAlignment { leading, center, trailing };
enum class VerticalAlignment { top, center, bottom, firstTextBaseline };
enum class ShapeKind { capsule };

struct Font {
    TextStyle style = TextStyle::callout;
    /// By default that of the style.
    std::optional<FontWeight> weight;

    constexpr Font semibold() const { return {style, FontWeight::semibold}; }
    friend bool operator==(const Font&, const Font&) = default;
};

using Foreground = std::variant<ForegroundLevel, Color>;

inline constexpr Font caption2{TextStyle::caption2, {}};
inline constexpr Font caption{TextStyle::caption, {}};
inline constexpr Font callout{TextStyle::callout, {}};
inline constexpr Font headline{TextStyle::headline, {}};
inline constexpr Font title3{TextStyle::title3, {}};
inline constexpr Font largeTitle{TextStyle::largeTitle, {}};
inline constexpr Foreground primary{ForegroundLevel::primary};
inline constexpr Foreground secondary{ForegroundLevel::secondary};
inline constexpr Foreground tertiary{ForegroundLevel::tertiary};

/// The names of an enumeration's values in the protocol, in the order of the values.
template <class Enumeration>
inline constexpr std::array<std::string_view, 0> styleNames{};
template <>
inline constexpr std::array<std::string_view, 6> styleNames<TextStyle>{"caption2", "caption", "callout",
                                                                       "headline", "title3",  "largeTitle"};
template <>
inline constexpr std::array<std::string_view, 1> styleNames<FontWeight>{"semibold"};
template <>
inline constexpr std::array<std::string_view, 3> styleNames<ForegroundLevel>{"primary", "secondary", "tertiary"};
template <>
inline constexpr std::array<std::string_view, 9> styleNames<Color>{"red",    "orange", "yellow", "green", "blue",
                                                                   "purple", "gray",   "white",  "clear"};
template <>
inline constexpr std::array<std::string_view, 3> styleNames<HorizontalAlignment>{"leading", "center", "trailing"};
template <>
inline constexpr std::array<std::string_view, 4> styleNames<VerticalAlignment>{"top", "center", "bottom",
                                                                               "firstTextBaseline"};
template <>
inline constexpr std::array<std::string_view, 1> styleNames<ShapeKind>{"capsule"};

template <class Enumeration>
constexpr std::string_view styleName(Enumeration value) {
    return styleNames<Enumeration>[static_cast<std::size_t>(value)];
}

/// Returns the value of that name in the protocol.
template <class Enumeration>
constexpr std::optional<Enumeration> styleNamed(std::string_view name) {
    for (std::size_t i = 0; i < styleNames<Enumeration>.size(); ++i) {
        if (styleNames<Enumeration>[i] == name) {
            return static_cast<Enumeration>(i);
        }
    }
    return std::nullopt;
}

} // namespace platform
