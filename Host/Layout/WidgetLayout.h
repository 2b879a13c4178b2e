// A widget's picture as a flat list of things to draw, each where it stands: what layout hands to drawing.
#pragma once

#include "Host/Layout/Geometry.h"
#include "Host/Layout/TextMeasurer.h"
#include "Platform/Views/View.h"

#include <cstddef>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace host {

struct TextItem {
    MeasuredText text;
    double lineHeight = 0;
    platform::HorizontalAlignment alignment = platform::HorizontalAlignment::leading;
    /// All that the view says, of which `text` is what there is room for.
    std::string whole;
};
struct SymbolItem {
    std::string symbol;
};
struct ImageItem {
    platform::EncodedData data;
};
/// As wide as high.
struct CircleItem {
    platform::Color fill = platform::Color::clear;
};
struct CapsuleItem {
    platform::Color fill = platform::Color::clear;
};
struct DividerItem {};

struct LayoutItem {
    std::variant<TextItem, SymbolItem, ImageItem, CircleItem, CapsuleItem, DividerItem> content;
    Rect frame;
    platform::Font font;
    platform::Foreground foreground;
    /// Belongs to the accent group of modes that are not full colour.
    bool accented = false;
    /// The innermost link that holds it, as an index into `WidgetLayout::links`.
    std::optional<std::size_t> link;
};

struct LayoutLink {
    std::string url;
    /// Of the item that the link stands for, where it stands for one.
    std::optional<std::string> id;
    Rect frame;
    /// The link around this one, as an index into `WidgetLayout::links`.
    std::optional<std::size_t> outer;
};

struct WidgetLayout {
    Size size;
    /// In drawing order.
    std::vector<LayoutItem> items;
    std::vector<LayoutLink> links;
};

/// Lays `view` out in a widget of `size`: proposes it what the content margin leaves and centres it there; a column
/// that aligns its children at an edge stands at that edge itself, so that a list of short names starts where all lists
/// start. A view that takes more than is proposed sticks out evenly on both sides. Nothing is rounded. How each kind
/// of view lays out is said in Elements.h.
///
/// A text that fits is measured once, one that must be broken or cut once or twice more.
WidgetLayout layOut(const platform::View& view, Size size, TextMeasurer& texts, ImageMeasurer& images);

/// Lays `view` out on its own: as large as it is if `room` is proposed, and no larger, without a margin.
WidgetLayout layOutAlone(const platform::View& view, Size room, TextMeasurer& texts, ImageMeasurer& images);

} // namespace host
