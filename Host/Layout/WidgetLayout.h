// A widget's layout: a flat list of items to draw, each with its frame.
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
    /// The whole text of the view; `text` has what fits.
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
    /// Whether it is in the accent group of the modes that are not full colour.
    bool accented = false;
    /// The innermost link around it, as an index into `WidgetLayout::links`.
    std::optional<std::size_t> link;
};

struct LayoutLink {
    std::string url;
    /// Names the item that the view shows; nothing if it shows none.
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

/// Lays `view` out in a widget of `size`: proposes the size inside the content margin, and centres the view there. A
/// column that aligns its children at an edge is aligned at that edge itself, so that lists of short names start where
/// all lists start. A view larger than the proposal overflows evenly on both sides. Nothing is rounded. For the rules
/// of each kind of view see Elements.h.
///
/// A text that fits is measured once, one that must be broken or cut two or three times.
WidgetLayout layOut(const platform::View& view, Size size, TextMeasurer& texts, ImageMeasurer& images);

/// Lays `view` out without a margin: as large as it is if `room` is proposed, but no larger.
WidgetLayout layOutAlone(const platform::View& view, Size room, TextMeasurer& texts, ImageMeasurer& images);

} // namespace host
