#include "Host/Drawing/Typesetter.h"

#include "Host/Layout/Measures.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <hb.h>
#include <pango/pangocairo.h>
#include <utility>

namespace host {
namespace {

/// For the rounding of widths, which must not cut a text that fits.
constexpr double tolerance = 0.01;
constexpr const char* ellipsis = "…";

bool breaksParagraph(gunichar c) {
    return c < 0x20 || (c >= 0x7F && c < 0xA0) || c == 0x2028 || c == 0x2029;
}

/// Returns `text` as one paragraph of valid UTF-8.
std::string asParagraph(std::string_view text) {
    std::string valid(text);
    std::replace(valid.begin(), valid.end(), '\0', ' ');
    if (g_utf8_validate_len(valid.data(), valid.size(), nullptr) == FALSE) {
        char* made = g_utf8_make_valid(valid.data(), static_cast<gssize>(valid.size()));
        valid = made;
        g_free(made);
    }
    std::string paragraph;
    paragraph.reserve(valid.size());
    for (const char* at = valid.c_str(); at != valid.c_str() + valid.size();) {
        const char* next = g_utf8_next_char(at);
        if (!breaksParagraph(g_utf8_get_char(at))) {
            paragraph.append(at, next);
        } else if (*at != '\n' || at == valid.c_str() || at[-1] != '\r') {
            paragraph += ' ';
        }
        at = next;
    }
    return paragraph;
}

std::string_view firstCharacters(std::string_view text, std::size_t count) {
    const char* const last = text.data() + text.size();
    const char* end = text.data();
    while (count-- > 0 && end != last) {
        end = g_utf8_next_char(end);
    }
    return {text.data(), static_cast<std::size_t>(end - text.data())};
}

std::string_view withoutTrailingBlanks(std::string_view text) {
    while (!text.empty()) {
        const char* last = g_utf8_find_prev_char(text.data(), text.data() + text.size());
        if (last == nullptr || g_unichar_isspace(g_utf8_get_char(last)) == FALSE) {
            break;
        }
        text = text.substr(0, static_cast<std::size_t>(last - text.data()));
    }
    return text;
}

/// In points. The extents of the layout would also load all fonts of the language for their heights.
double widthOf(const PangoLayoutLine& line) {
    int width = 0;
    for (const GSList* run = line.runs; run != nullptr; run = run->next) {
        width += pango_glyph_string_get_width(static_cast<const PangoGlyphItem*>(run->data)->glyphs);
    }
    return static_cast<double>(width) / PANGO_SCALE;
}

TextLine textLine(PangoLayout* layout, int index) {
    const PangoLayoutLine& line = *pango_layout_get_line_readonly(layout, index);
    const std::string_view text(pango_layout_get_text(layout) + line.start_index,
                                static_cast<std::size_t>(line.length));
    return {std::string(withoutTrailingBlanks(text)), widthOf(line)};
}

/// Returns the end of the last line's text before its ellipsis, in bytes from the text's start.
int shownEnd(PangoLayout* layout) {
    const PangoLayoutLine& line = *pango_layout_get_line_readonly(layout, pango_layout_get_line_count(layout) - 1);
    int end = line.start_index + line.length;
    for (const GSList* run = line.runs; run != nullptr; run = run->next) {
        const PangoItem& item = *static_cast<const PangoGlyphItem*>(run->data)->item;
        if ((item.analysis.flags & PANGO_ANALYSIS_FLAG_IS_ELLIPSIS) != 0) {
            end = item.offset;
        }
    }
    const char* const start = pango_layout_get_text(layout) + line.start_index;
    const std::string_view shown(start, static_cast<std::size_t>(end - line.start_index));
    return line.start_index + static_cast<int>(withoutTrailingBlanks(shown).size());
}

/// Writes the ellipsis into the text, since Pango's own is as wide as the remaining room, and may follow a blank.
void writeEllipsis(PangoLayout* layout) {
    while (pango_layout_is_ellipsized(layout) != FALSE) {
        const std::string_view text = pango_layout_get_text(layout);
        const std::string closed = std::string(text.substr(0, static_cast<std::size_t>(shownEnd(layout)))) + ellipsis;
        if (closed == text) {
            break;
        }
        pango_layout_set_text(layout, closed.c_str(), static_cast<int>(closed.size()));
    }
}

} // namespace

Typesetter::Typesetter()
    : fontMap_(pango_cairo_font_map_new()), context_(pango_font_map_create_context(fontMap_.get())),
      attributes_(pango_attr_list_new()) {
    const FontOptionsHandle options(cairo_font_options_create());
    cairo_font_options_set_antialias(options.get(), CAIRO_ANTIALIAS_GRAY);
    cairo_font_options_set_hint_metrics(options.get(), CAIRO_HINT_METRICS_OFF);
    cairo_font_options_set_hint_style(options.get(), CAIRO_HINT_STYLE_SLIGHT);
    pango_cairo_context_set_font_options(context_.get(), options.get());
    pango_context_set_round_glyph_positions(context_.get(), FALSE);
    // Setting it explicitly makes Pango use one font set for all texts.
    pango_context_set_language(context_.get(), pango_language_get_default());
    pango_attr_list_insert(attributes_.get(), pango_attr_insert_hyphens_new(FALSE));
}

const Typesetter::Face& Typesetter::face(platform::Font font) {
    Face& face = faces_[static_cast<std::size_t>(font.style) * 2 + (font.weight ? 1 : 0)];
    if (!face.description) {
        const TextMeasures measures = textMeasures(font);
        face.description.reset(pango_font_description_new());
        pango_font_description_set_family_static(face.description.get(), "Inter, sans-serif");
        pango_font_description_set_weight(face.description.get(), static_cast<PangoWeight>(measures.weight));
        pango_font_description_set_absolute_size(face.description.get(), measures.size * PANGO_SCALE);

        // The font's own metrics; Pango's would search the machine for other fonts of the language.
        const ObjectHandle<PangoFont> loaded(pango_context_load_font(context_.get(), face.description.get()));
        hb_font_extents_t extents{};
        hb_font_get_h_extents(pango_font_get_hb_font(loaded.get()), &extents);
        const double ascent = static_cast<double>(extents.ascender) / PANGO_SCALE;
        const double descent = -static_cast<double>(extents.descender) / PANGO_SCALE;
        face.baseline = (measures.lineHeight - (ascent + descent)) / 2 + ascent;
        face.ellipsisWidth = measure({.text = ellipsis, .font = font}).lines.front().width;
    }
    return face;
}

double Typesetter::ellipsisWidth(platform::Font font) {
    return face(font).ellipsisWidth;
}

MeasuredText Typesetter::measure(const TextRequest& request) {
    const bool isBounded = request.width && *request.width < maxLineWidth;
    const double width = isBounded ? std::max(0.0, *request.width) : maxLineWidth;
    // Without a width a paragraph is one line.
    const int lineLimit = isBounded ? std::clamp(request.lineLimit.value_or(maxLineCount), 1, maxLineCount) : 1;
    const Face& used = face(request.font);

    auto shaped = std::make_shared<ShapedText>();
    shaped->layout.reset(pango_layout_new(context_.get()));
    PangoLayout* const layout = shaped->layout.get();
    pango_layout_set_font_description(layout, used.description.get());
    pango_layout_set_attributes(layout, attributes_.get());
    pango_layout_set_wrap(layout, PANGO_WRAP_WORD_CHAR);
    pango_layout_set_ellipsize(layout, PANGO_ELLIPSIZE_END);
    pango_layout_set_width(layout, static_cast<int>((width + tolerance) * PANGO_SCALE));
    // A negative height counts the lines of each paragraph.
    pango_layout_set_height(layout, -lineLimit);

    const std::string paragraph = asParagraph(request.text);
    const std::string_view text = withoutTrailingBlanks(paragraph);
    // Only so much of a long text is shaped as may be visible, since shaping costs by the character. The first guess
    // assumes narrow letters, and is enough for nearly all texts.
    const double narrowLetter = textMeasures(request.font).size / 4;
    auto count = static_cast<std::size_t>(width * lineLimit / narrowLetter) + 32;
    for (;; count *= 4) {
        const std::string_view part = firstCharacters(text, count);
        pango_layout_set_text(layout, part.data(), static_cast<int>(part.size()));
        if (part.size() == text.size() || pango_layout_is_ellipsized(layout) != FALSE) {
            break;
        }
    }
    writeEllipsis(layout);
    MeasuredText measured{.baseline = used.baseline, .shaped = std::move(shaped)};
    for (int i = 0; i < pango_layout_get_line_count(layout); ++i) {
        measured.lines.push_back(textLine(layout, i));
    }
    return measured;
}

} // namespace host
