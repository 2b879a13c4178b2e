#include "Host/Drawing/Painter.h"

#include "Host/Drawing/Shapes.h"
#include "Host/Layout/Measures.h"

#include <algorithm>
#include <pango/pangocairo.h>
#include <variant>

namespace host {
namespace {

/// Of the blocks that stand for things in a placeholder.
constexpr double blockRadius = 3;
/// Of a font's size: how far a line's block reaches above and below the baseline.
constexpr double blockAscent = 0.62;
constexpr double blockDescent = 0.04;

/// An icon's corners are as round as those of the sheet in a document symbol.
constexpr double iconRadiusShare = 0.14;
constexpr double greatestIconRadius = 4;
/// Pixels of an image for one unit where it is embedded into outlines.
constexpr double embeddedDensity = 2;

Group groupOf(const LayoutItem& item) {
    return item.accented ? Group::accent : Group::plain;
}

/// What an item may touch: accents and overhangs reach beyond a text's own lines.
Rect reach(const LayoutItem& item) {
    if (!std::holds_alternative<TextItem>(item.content)) {
        return item.frame;
    }
    constexpr double overhang = 4;
    const Rect& f = item.frame;
    return {f.x - overhang, f.y - overhang, f.width + 2 * overhang, f.height + 2 * overhang};
}

} // namespace

void Painter::paint(const WidgetLayout& layout) {
    const TileBackground tile(layout.size, grid_);
    if (medium_ == Medium::pixels) {
        tile.paintPixels(cairo_, palette_, box_.corners);
    } else {
        tile.paintOutlined(cairo_, palette_, palette_.tile());
    }
    for (const LayoutItem& item : layout.items) {
        const bool sticksOut = !tile.holds(grid_.rect(reach(item)));
        if (sticksOut) {
            cairo_save(cairo_);
            tile.clip(cairo_);
        }
        paint(item);
        if (sticksOut) {
            cairo_restore(cairo_);
        }
    }
}

void Painter::paintBadge(const WidgetLayout& layout) {
    TileBackground(layout.size, grid_).paintOutlined(cairo_, palette_, palette_.badge());
    for (const LayoutItem& item : layout.items) {
        paint(item);
    }
}

void Painter::paint(const LayoutItem& item) {
    std::visit([&](const auto& content) { paint(content, item); }, item.content);
}

void Painter::paint(const TextItem& text, const LayoutItem& item) {
    const Rgba color = foreground(item);
    double top = item.frame.y;
    for (const TextLine& line : text.text.lines) {
        const double spare = item.frame.width - line.width;
        const double indent = text.alignment == platform::HorizontalAlignment::leading  ? 0
                              : text.alignment == platform::HorizontalAlignment::center ? spare / 2
                                                                                        : spare;
        paintLine(line, item.font, {item.frame.x + indent, top + text.text.baseline}, color);
        top += text.lineHeight;
    }
}

void Painter::paintLine(const TextLine& line, platform::Font font, Point origin, const Rgba& color) {
    if (isRedacted()) {
        const double size = textMeasures(font).size;
        paintBlock({origin.x, origin.y - blockAscent * size, line.width, (blockAscent + blockDescent) * size}, color);
        return;
    }
    setSource(cairo_, color);
    const double x = grid_.edge(origin.x);
    const double y = grid_.edge(origin.y);
    if (medium_ == Medium::outlines) {
        cairo_save(cairo_);
        cairo_translate(cairo_, x, y);
        cairo_scale(cairo_, grid_.scale(), grid_.scale());
        const ShapedLine& shaped = box_.typesetter.line(line.text, font);
        double left = 0;
        for (const auto& run : shaped.runs()) {
            cairo_move_to(cairo_, left, 0);
            pango_cairo_show_glyph_item(cairo_, shaped.text().c_str(), run.get());
            left += static_cast<double>(pango_glyph_string_get_width(run->glyphs)) / PANGO_SCALE;
        }
        cairo_restore(cairo_);
        return;
    }
    const Tone tone = palette_.isGray() ? Tone::gray : Tone::color;
    const TextPicture& picture = box_.texts.picture(line.text, font, grid_.scale(), tone);
    if (picture.mask) {
        cairo_mask_surface(cairo_, picture.mask.get(), x + picture.left, y + picture.top);
    }
    if (picture.colors) {
        cairo_set_source_surface(cairo_, picture.colors.get(), x + picture.left, y + picture.top);
        cairo_paint_with_alpha(cairo_, color.alpha);
    }
}

void Painter::paint(const SymbolItem& symbol, const LayoutItem& item) {
    const double side = std::min(item.frame.width, item.frame.height);
    if (isRedacted()) {
        paintBlock(item.frame, foreground(item));
        return;
    }
    setSource(cairo_, foreground(item));
    const Rect square = grid_.centered(item.frame, {side, side});
    if (medium_ == Medium::outlines) {
        cairo_save(cairo_);
        cairo_translate(cairo_, square.x, square.y);
        box_.symbols.stroke(cairo_, symbol.symbol, square.width);
        cairo_restore(cairo_);
        return;
    }
    cairo_mask_surface(cairo_, box_.symbols.mask(symbol.symbol, static_cast<int>(square.width)),
                       square.x - SymbolSet::maskMargin, square.y - SymbolSet::maskMargin);
}

void Painter::paint(const ImageItem& image, const LayoutItem& item) {
    const auto pixels = box_.icons.imageSize(image.data);
    if (!pixels) {
        return;
    }
    const double factor = std::min(item.frame.width / pixels->width, item.frame.height / pixels->height);
    const Size size{pixels->width * factor, pixels->height * factor};
    if (isRedacted()) {
        const Rect& f = item.frame;
        paintBlock({f.x + (f.width - size.width) / 2, f.y + (f.height - size.height) / 2, size.width, size.height},
                   palette_.foreground(platform::secondary, groupOf(item)));
        return;
    }
    const Rect rect = grid_.centered(item.frame, size);
    const double density = medium_ == Medium::outlines ? embeddedDensity : 1;
    const double radius =
        std::min(greatestIconRadius * grid_.scale(), iconRadiusShare * std::min(rect.width, rect.height));
    cairo_surface_t* picture = box_.icons.picture(image.data, {.width = static_cast<int>(rect.width * density),
                                                               .height = static_cast<int>(rect.height * density),
                                                               .cornerRadius = radius * density,
                                                               .tone = palette_.isGray() ? Tone::gray : Tone::color});
    if (picture == nullptr) {
        return;
    }
    cairo_save(cairo_);
    cairo_translate(cairo_, rect.x, rect.y);
    cairo_scale(cairo_, 1 / density, 1 / density);
    cairo_set_source_surface(cairo_, picture, 0, 0);
    cairo_paint(cairo_);
    cairo_restore(cairo_);
}

void Painter::paint(const CircleItem& circle, const LayoutItem& item) {
    const double side = std::min(item.frame.width, item.frame.height);
    const Rect square = grid_.centered(item.frame, {side, side});
    fillRounded(square, square.width / 2, softened(palette_.shape(circle.fill, groupOf(item))));
}

void Painter::paint(const CapsuleItem& capsule, const LayoutItem& item) {
    const Rect rect = grid_.rect(item.frame);
    fillRounded(rect, std::min(rect.width, rect.height) / 2, softened(palette_.ground(capsule.fill, groupOf(item))));
}

void Painter::paint(const DividerItem& /*divider*/, const LayoutItem& item) {
    Rect rect = grid_.rect(item.frame);
    if (item.frame.width < item.frame.height) {
        rect.width = grid_.thickness(item.frame.width);
    } else {
        rect.height = grid_.thickness(item.frame.height);
    }
    setSource(cairo_, palette_.divider());
    cairo_rectangle(cairo_, rect.x, rect.y, rect.width, rect.height);
    cairo_fill(cairo_);
}

void Painter::paintBlock(const Rect& points, Rgba color) {
    fillRounded(grid_.rect(points), blockRadius * grid_.scale(), Palette::redacted(color));
}

void Painter::fillRounded(const Rect& pixels, double radius, const Rgba& color) {
    if (color.alpha == 0 || pixels.width <= 0 || pixels.height <= 0) {
        return;
    }
    setSource(cairo_, color);
    addRoundedRect(cairo_, pixels, radius);
    cairo_fill(cairo_);
}

Rgba Painter::foreground(const LayoutItem& item) const {
    return palette_.foreground(item.foreground, groupOf(item));
}

Rgba Painter::softened(const Rgba& fill) const {
    return isRedacted() ? Palette::redacted(fill) : fill;
}

} // namespace host
