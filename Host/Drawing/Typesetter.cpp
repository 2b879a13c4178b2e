#include "Host/Drawing/Typesetter.h"

#include "Host/Layout/Measures.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <pango/pangocairo.h>
#include <utility>
#include <vector>

namespace host {
namespace {

constexpr std::size_t keptLines = 512;
constexpr std::size_t keptMeasurementBytes = std::size_t{1} << 20;
/// Adding and subtracting widths must not make a text too wide for the room that was cut out for it.
constexpr double tolerance = 0.01;
constexpr const char* leftToRightMark = "\u200E";
constexpr const char* rightToLeftMark = "\u200F";

bool breaksParagraph(gunichar c) {
    return c < 0x20 || (c >= 0x7F && c < 0xA0) || c == 0x2028 || c == 0x2029;
}

/// `text` as one paragraph of valid UTF-8.
std::string asParagraph(std::string_view text) {
    std::string valid;
    if (g_utf8_validate_len(text.data(), text.size(), nullptr) != FALSE) {
        valid = text;
    } else {
        char* made = g_utf8_make_valid(text.data(), static_cast<gssize>(text.size()));
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

/// The base direction that a text takes on its own.
PangoDirection baseDirection(PangoLayout* layout) {
    return static_cast<PangoDirection>(pango_layout_get_line_readonly(layout, 0)->resolved_dir);
}

/// Of a layout of one line: the width that each character takes, in logical order.
std::vector<int> characterWidths(PangoLayout* layout) {
    std::vector<int> widths(static_cast<std::size_t>(pango_layout_get_character_count(layout)));
    const char* text = pango_layout_get_text(layout);
    for (GSList* run = pango_layout_get_line_readonly(layout, 0)->runs; run != nullptr; run = run->next) {
        auto* glyphs = static_cast<PangoGlyphItem*>(run->data);
        const auto first = static_cast<std::size_t>(g_utf8_pointer_to_offset(text, text + glyphs->item->offset));
        pango_glyph_item_get_logical_widths(glyphs, text, widths.data() + first);
    }
    return widths;
}

double layoutWidth(PangoLayout* layout) {
    int width = 0;
    pango_layout_get_size(layout, &width, nullptr);
    return static_cast<double>(width) / PANGO_SCALE;
}

} // namespace

Typesetter::Typesetter() : lines_(keptLines), measured_(keptMeasurementBytes) {}
Typesetter::~Typesetter() = default;

PangoContext* Typesetter::context() {
    if (!context_) {
        fontMap_.reset(pango_cairo_font_map_new());
        context_.reset(pango_font_map_create_context(fontMap_.get()));
        const FontOptionsHandle options(cairo_font_options_create());
        cairo_font_options_set_antialias(options.get(), CAIRO_ANTIALIAS_GRAY);
        cairo_font_options_set_hint_metrics(options.get(), CAIRO_HINT_METRICS_OFF);
        cairo_font_options_set_hint_style(options.get(), CAIRO_HINT_STYLE_SLIGHT);
        pango_cairo_context_set_font_options(context_.get(), options.get());
        pango_context_set_round_glyph_positions(context_.get(), FALSE);
    }
    return context_.get();
}

const Typesetter::Face& Typesetter::face(platform::Font font) {
    Face& face = faces_[static_cast<std::size_t>(font.style) * 2 + (font.weight ? 1 : 0)];
    if (!face.description) {
        const TextMeasures measures = textMeasures(font);
        face.description.reset(pango_font_description_new());
        pango_font_description_set_family_static(face.description.get(), "Inter, sans-serif");
        pango_font_description_set_weight(face.description.get(), static_cast<PangoWeight>(measures.weight));
        pango_font_description_set_absolute_size(face.description.get(), measures.size * PANGO_SCALE);

        const FontMetricsHandle metrics(pango_context_get_metrics(context(), face.description.get(), nullptr));
        const double ascent = static_cast<double>(pango_font_metrics_get_ascent(metrics.get())) / PANGO_SCALE;
        const double descent = static_cast<double>(pango_font_metrics_get_descent(metrics.get())) / PANGO_SCALE;
        face.baseline = (measures.lineHeight - (ascent + descent)) / 2 + ascent;
    }
    return face;
}

ObjectHandle<PangoLayout> Typesetter::shape(std::string_view text, platform::Font font) {
    const Face& known = face(font);
    ObjectHandle<PangoLayout> layout(pango_layout_new(context()));
    pango_layout_set_font_description(layout.get(), known.description.get());
    pango_layout_set_single_paragraph_mode(layout.get(), TRUE);
    pango_layout_set_text(layout.get(), text.data(), static_cast<int>(text.size()));
    return layout;
}

PangoLayout* Typesetter::line(std::string_view text, platform::Font font) {
    const TextSeek key(text, font);
    if (const auto* known = lines_.find(key)) {
        return known->get();
    }
    return lines_.insert(TextKey(key), shape(text, font)).get();
}

double Typesetter::lineWidth(std::string_view text, platform::Font font) {
    return layoutWidth(line(text, font));
}

TextLine Typesetter::measuredLine(std::string text, platform::Font font, PangoDirection direction) {
    if (baseDirection(line(text, font)) != direction) {
        text.insert(0, direction == PANGO_DIRECTION_RTL ? rightToLeftMark : leftToRightMark);
    }
    const double width = lineWidth(text, font);
    return {std::move(text), width};
}

/// As much of `text` as fits into `width` with an ellipsis after it.
TextLine Typesetter::truncated(std::string_view text, platform::Font font, double width, PangoDirection direction) {
    const ObjectHandle<PangoLayout> layout = shape(text, font);
    const std::vector<int> widths = characterWidths(layout.get());
    int count = 0;
    const PangoLogAttr* attributes = pango_layout_get_log_attrs_readonly(layout.get(), &count);
    const double room = (width + tolerance - lineWidth("…", font)) * PANGO_SCALE;

    // Where a reader sees a character end, as bytes of `text`, as far as the room goes.
    std::vector<std::size_t> ends{0};
    const char* at = text.data();
    double taken = 0;
    for (std::size_t i = 0; i < widths.size() && taken + widths[i] <= room; ++i) {
        taken += widths[i];
        at = g_utf8_next_char(at);
        if (attributes[i + 1].is_cursor_position != 0) {
            ends.push_back(static_cast<std::size_t>(at - text.data()));
        }
    }
    // Letters may take another form before an ellipsis than before their neighbour, so the line itself has the last
    // word.
    for (;; ends.pop_back()) {
        const std::string_view kept = withoutTrailingBlanks(text.substr(0, ends.back()));
        TextLine line = measuredLine(std::string(kept) + "…", font, direction);
        if (kept.empty() || line.width <= width + tolerance) {
            return line;
        }
    }
}

Typesetter::Composed Typesetter::compose(std::string_view text, platform::Font font, double width, int lineLimit) {
    // Blanks that end a text need no room, as at any other line's end.
    for (const std::string_view shown : {text, withoutTrailingBlanks(text)}) {
        if (const double whole = lineWidth(shown, font); whole <= width + tolerance) {
            return {{{std::string(shown), whole}}, true};
        }
        text = shown;
    }
    const PangoDirection direction = baseDirection(line(text, font));
    if (lineLimit == 1) {
        return {{truncated(text, font, width, direction)}, false};
    }
    const ObjectHandle<PangoLayout> layout = shape(text, font);
    pango_layout_set_wrap(layout.get(), PANGO_WRAP_WORD_CHAR);
    pango_layout_set_width(layout.get(), static_cast<int>((width + tolerance) * PANGO_SCALE));

    Composed composed;
    for (GSList* at = pango_layout_get_lines_readonly(layout.get()); at != nullptr; at = at->next) {
        const auto* line = static_cast<const PangoLayoutLine*>(at->data);
        const auto start = static_cast<std::size_t>(line->start_index);
        const bool isLastAllowed = composed.lines.size() + 1 == static_cast<std::size_t>(lineLimit);
        if (isLastAllowed && at->next != nullptr) {
            composed.lines.push_back(truncated(text.substr(start), font, width, direction));
            composed.isComplete = false;
            break;
        }
        const auto length = static_cast<std::size_t>(line->length);
        const std::string_view part = withoutTrailingBlanks(text.substr(start, length));
        composed.lines.push_back(measuredLine(std::string(part), font, direction));
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
