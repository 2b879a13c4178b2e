#include "Host/Drawing/Painter.h"

#include "Host/Drawing/Shapes.h"
#include "Host/Layout/Measures.h"

#include <algorithm>
#include <hb-ot.h>
#include <pango/pangocairo.h>
#include <variant>

namespace host {
namespace {

/// The radius of a placeholder's blocks, in points.
constexpr double blockRadius = 3;
/// The extents of a line's block above and below the baseline, in parts of the font's size.
constexpr double blockAscent = 0.62;
constexpr double blockDescent = 0.04;

/// An icon's corners are as round as those of the sheet in a document symbol.
constexpr double iconRadiusShare = 0.14;
constexpr double maxIconRadius = 4;
/// Pixels of an image for one unit if it is embedded into a file of any size.
constexpr double embeddedDensity = 2;
/// Device pixels per point.
constexpr double minGlyphScale = 2;

Group groupOf(const LayoutItem& item) {
    return item.accented ? Group::accent : Group::plain;
}

bool hasColors(PangoFont* font) {
    hb_face_t* const face = hb_font_get_face(pango_font_get_hb_font(font));
    return hb_ot_color_has_png(face) != 0 || hb_ot_color_has_layers(face) != 0 || hb_ot_color_has_svg(face) != 0;
}

/// Returns the area that an item may touch. Accents and overhangs extend beyond a text's lines.
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
    tile.paint(cairo_, palette_, palette_.tile());
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
    TileBackground(layout.size, grid_).paint(cairo_, palette_, palette_.badge());
    for (const LayoutItem& item : layout.items) {
        paint(item);
    }
}

void Painter::paint(const LayoutItem& item) {
    std::visit([&](const auto& content) { paint(content, item); }, item.content);
}

void Painter::paint(const TextItem& text, const LayoutItem& item) {
    const Rgba color = foreground(item);
    Point origin{0, item.frame.y + text.text.baseline};
    int index = 0;
    for (const TextLine& line : text.text.lines) {
        const double spare = item.frame.width - line.width;
        const double indent = text.alignment == platform::HorizontalAlignment::leading  ? 0
                              : text.alignment == platform::HorizontalAlignment::center ? spare / 2
                                                                                        : spare;
        origin.x = item.frame.x + indent;
        if (isRedacted()) {
            const double size = textMeasures(item.font).size;
            paintBlock({origin.x, origin.y - blockAscent * size, line.width, (blockAscent + blockDescent) * size},
                       color);
        } else {
            cairo_save(cairo_);
            cairo_translate(cairo_, grid_.edge(origin.x), grid_.edge(origin.y));
            cairo_scale(cairo_, grid_.scale(), grid_.scale());
            paintLine(*pango_layout_get_line_readonly(text.text.shaped->layout.get(), index), color);
            cairo_restore(cairo_);
        }
        origin.y += text.lineHeight;
        ++index;
    }
}

void Painter::paintLine(const PangoLayoutLine& line, const Rgba& color) {
    // Some versions of cairo align glyphs to whole pixels, which makes letters uneven at small scales.
    const bool asPaths = kind_ == PictureKind::pixels && grid_.scale() < minGlyphScale;
    const char* const text = pango_layout_get_text(line.layout);
    setSource(cairo_, color);
    double x = 0;
    for (const GSList* each = line.runs; each != nullptr; each = each->next) {
        auto* const run = static_cast<PangoLayoutRun*>(each->data);
        cairo_move_to(cairo_, x, 0);
        if (hasColors(run->item->analysis.font)) {
            paintColoredRun(*run, text, color.alpha);
        } else if (asPaths) {
            pango_cairo_glyph_string_path(cairo_, run->item->analysis.font, run->glyphs);
            cairo_fill(cairo_);
        } else {
            pango_cairo_show_glyph_item(cairo_, text, run);
        }
        x += static_cast<double>(pango_glyph_string_get_width(run->glyphs)) / PANGO_SCALE;
    }
}

void Painter::paintColoredRun(PangoLayoutRun& run, const char* text, double alpha) {
    cairo_push_group(cairo_);
    pango_cairo_show_glyph_item(cairo_, text, &run);
    if (palette_.isGray() && kind_ == PictureKind::pixels) {
        desaturate(cairo_get_group_target(cairo_));
    }
    cairo_pattern_t* const group = cairo_pop_group(cairo_);
    cairo_save(cairo_);
    cairo_set_source(cairo_, group);
    cairo_paint_with_alpha(cairo_, alpha);
    cairo_restore(cairo_);
    cairo_pattern_destroy(group);
}

void Painter::paint(const SymbolItem& symbol, const LayoutItem& item) {
    const double side = std::min(item.frame.width, item.frame.height);
    if (isRedacted()) {
        paintBlock(item.frame, foreground(item));
        return;
    }
    setSource(cairo_, foreground(item));
    const Rect square = grid_.centered(item.frame, {side, side});
    if (kind_ == PictureKind::vector) {
        cairo_save(cairo_);
        cairo_translate(cairo_, square.x, square.y);
        caches_.symbols.stroke(cairo_, symbol.symbol, square.width);
        cairo_restore(cairo_);
        return;
    }
    cairo_mask_surface(cairo_, caches_.symbols.mask(symbol.symbol, static_cast<int>(square.width)),
                       square.x - SymbolSet::maskMargin, square.y - SymbolSet::maskMargin);
}

void Painter::paint(const ImageItem& image, const LayoutItem& item) {
    const auto pixels = caches_.icons.imageSize(image.data);
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
    const double density = kind_ == PictureKind::vector ? embeddedDensity : 1;
    const double radius = std::min(maxIconRadius * grid_.scale(), iconRadiusShare * std::min(rect.width, rect.height));
    const SurfaceHandle picture =
        caches_.icons.picture(image.data, {.width = static_cast<int>(rect.width * density),
                                           .height = static_cast<int>(rect.height * density),
                                           .cornerRadius = radius * density,
                                           .tone = palette_.isGray() ? Tone::gray : Tone::color});
    if (!picture) {
        return;
    }
    cairo_save(cairo_);
    cairo_translate(cairo_, rect.x, rect.y);
    cairo_scale(cairo_, 1 / density, 1 / density);
    cairo_set_source_surface(cairo_, picture.get(), 0, 0);
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
