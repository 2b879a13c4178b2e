#include "Host/Drawing/ShapedLine.h"

#include <fribidi.h>

namespace host {
namespace {

/// That of the first character that has one.
PangoDirection directionOf(const std::string& text) {
    const char* const end = text.c_str() + text.size();
    for (const char* at = text.c_str(); at != end; at = g_utf8_next_char(at)) {
        const FriBidiCharType type = fribidi_get_bidi_type(g_utf8_get_char(at));
        if (FRIBIDI_IS_STRONG(type)) {
            return FRIBIDI_IS_RTL(type) ? PANGO_DIRECTION_RTL : PANGO_DIRECTION_LTR;
        }
    }
    return PANGO_DIRECTION_LTR;
}

} // namespace

ShapedLine::ShapedLine(PangoContext* context, std::string_view text) : text_(text), direction_(directionOf(text_)) {
    const auto length = static_cast<int>(text_.size());
    GList* logical = pango_itemize_with_base_dir(context, direction_, text_.data(), 0, length, nullptr, nullptr);
    GList* visual = pango_reorder_items(logical);
    g_list_free(logical);
    const auto flags =
        pango_context_get_round_glyph_positions(context) != FALSE ? PANGO_SHAPE_ROUND_POSITIONS : PANGO_SHAPE_NONE;
    for (GList* each = visual; each != nullptr; each = each->next) {
        auto* item = static_cast<PangoItem*>(each->data);
        GlyphItemHandle run(g_slice_new0(PangoGlyphItem));
        run->item = item;
        run->glyphs = pango_glyph_string_new();
        pango_shape_with_flags(text_.data() + item->offset, item->length, text_.data(), length, &item->analysis,
                               run->glyphs, flags);
        runs_.push_back(std::move(run));
    }
    g_list_free(visual);
}

double ShapedLine::width() const {
    int width = 0;
    for (const auto& run : runs_) {
        width += pango_glyph_string_get_width(run->glyphs);
    }
    return static_cast<double>(width) / PANGO_SCALE;
}

} // namespace host
