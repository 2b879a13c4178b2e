#include "Host/Drawing/Typesetter.h"

#include "Host/Drawing/LineBreaker.h"
#include "Host/Layout/Measures.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <hb.h>
#include <pango/pangocairo.h>
#include <utility>
#include <vector>

namespace host {
namespace {

constexpr std::size_t keptLineBytes = std::size_t{4} << 20;
constexpr std::size_t keptMeasurementBytes = std::size_t{1} << 20;
/// Adding and subtracting widths must not make a text too wide for the room that was cut out for it.
constexpr double tolerance = 0.01;

bool breaksParagraph(gunichar c) {
    return c < 0x20 || (c >= 0x7F && c < 0xA0) || c == 0x2028 || c == 0x2029;
}

/// `text` as one paragraph of valid UTF-8.
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

std::string_view firstCharacters(const std::string& text, std::size_t count) {
    if (text.size() <= count) {
        return text;
    }
    const char* end = text.c_str();
    const char* const last = end + text.size();
    while (count-- > 0 && end != last) {
        end = g_utf8_next_char(end);
    }
    return {text.c_str(), static_cast<std::size_t>(end - text.c_str())};
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

} // namespace

Typesetter::Typesetter()
    : fontMap_(pango_cairo_font_map_new()), context_(pango_font_map_create_context(fontMap_.get())),
      lines_(keptLineBytes), measured_(keptMeasurementBytes) {
    const FontOptionsHandle options(cairo_font_options_create());
    cairo_font_options_set_antialias(options.get(), CAIRO_ANTIALIAS_GRAY);
    cairo_font_options_set_hint_metrics(options.get(), CAIRO_HINT_METRICS_OFF);
    cairo_font_options_set_hint_style(options.get(), CAIRO_HINT_STYLE_SLIGHT);
    pango_cairo_context_set_font_options(context_.get(), options.get());
    pango_context_set_round_glyph_positions(context_.get(), FALSE);
    // Said or not, it is the default; said, every text of a face finds its fonts by the same search.
    pango_context_set_language(context_.get(), pango_language_get_default());
}
Typesetter::~Typesetter() = default;

const Typesetter::Face& Typesetter::face(platform::Font font) {
    Face& face = faces_[static_cast<std::size_t>(font.style) * 2 + (font.weight ? 1 : 0)];
    if (!face.description) {
        const TextMeasures measures = textMeasures(font);
        face.description.reset(pango_font_description_new());
        pango_font_description_set_family_static(face.description.get(), "Inter, sans-serif");
        pango_font_description_set_weight(face.description.get(), static_cast<PangoWeight>(measures.weight));
        pango_font_description_set_absolute_size(face.description.get(), measures.size * PANGO_SCALE);

        // The font's own numbers; Pango's metrics would search the machine for the language's other fonts.
        const ObjectHandle<PangoFont> loaded(pango_context_load_font(context_.get(), face.description.get()));
        hb_font_extents_t extents{};
        hb_font_get_h_extents(pango_font_get_hb_font(loaded.get()), &extents);
        const double ascent = static_cast<double>(extents.ascender) / PANGO_SCALE;
        const double descent = -static_cast<double>(extents.descender) / PANGO_SCALE;
        face.baseline = (measures.lineHeight - (ascent + descent)) / 2 + ascent;
    }
    return face;
}

ShapedLine Typesetter::shape(std::string_view text, platform::Font font) {
    pango_context_set_font_description(context_.get(), face(font).description.get());
    return {context_.get(), text};
}

const ShapedLine& Typesetter::line(std::string_view text, platform::Font font) {
    const TextSeek key(text, font);
    if (const ShapedLine* known = lines_.find(key)) {
        return *known;
    }
    // A line and its glyphs take about so much.
    const std::size_t weight = 1024 + text.size() * 64;
    return lines_.insert(TextKey(key), shape(text, font), weight);
}

Typesetter::Composed Typesetter::compose(std::string_view text, platform::Font font, double width, int lineLimit) {
    // Blanks that end a text need no room, as at any other line's end.
    for (const std::string_view shown : {text, withoutTrailingBlanks(text)}) {
        if (const double whole = line(shown, font).width(); whole <= width + tolerance) {
            return {{{std::string(shown), whole}}, true};
        }
        text = shown;
    }
    const ShapedLine whole = shape(text, font);
    const LineBreaker breaker(whole, width, textMeasures(font).size,
                              [&](std::string_view part) -> const ShapedLine& { return line(part, font); });
    Composed composed;
    std::size_t start = 0;
    while (start < breaker.count() && composed.lines.size() + 1 < static_cast<std::size_t>(lineLimit)) {
        LineBreaker::Line next = breaker.next(start);
        composed.lines.push_back(std::move(next.line));
        start = next.end;
    }
    if (start < breaker.count()) {
        LineBreaker::Line last = breaker.last(start);
        composed.lines.push_back(std::move(last.line));
        composed.isComplete = last.end == breaker.count();
    }
    return composed;
}

MeasuredText Typesetter::measure(const TextRequest& request) {
    const bool isBounded = request.width && *request.width < longestLine;
    const double width = isBounded ? std::max(0.0, *request.width) : longestLine;
    // Without a width lines end only where the text says so, and a paragraph says so nowhere.
    const int lineLimit =
        isBounded ? std::clamp(request.lineLimit.value_or(greatestLineCount), 1, greatestLineCount) : 1;

    const TextSeek key(request.text, request.font, width, lineLimit);
    if (const MeasuredText* known = measured_.find(key)) {
        return *known;
    }
    const std::string text = asParagraph(request.text);
    // Shaping costs by the character, so of a long text only as much is shaped as may be seen; a first guess of narrow
    // letters is enough for nearly all.
    const double narrowLetter = textMeasures(request.font).size / 4;
    auto guess = static_cast<std::size_t>(width * lineLimit / narrowLetter) + 32;
    Composed composed;
    for (;; guess *= 4) {
        const std::string_view part = firstCharacters(text, guess);
        composed = compose(part, request.font, width, lineLimit);
        if (!composed.isComplete || part.size() == text.size()) {
            break;
        }
    }
    MeasuredText measured{std::move(composed.lines), face(request.font).baseline};
    return measured_.insert(TextKey(key), std::move(measured), request.text.size() + 256);
}

} // namespace host
