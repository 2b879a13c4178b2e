#include "Host/Drawing/LineBreaker.h"

#include <utility>

namespace host {
namespace {

/// Adding and subtracting widths must not make a text too wide for the room that was cut out for it.
constexpr double tolerance = 0.01;
/// Of the font's size: how much narrower a line may turn out on its own than within its text.
constexpr double greatestGain = 0.25;
constexpr std::string_view ellipsis = "…";
constexpr const char* leftToRightMark = "\u200E";
constexpr const char* rightToLeftMark = "\u200F";

/// The width that each of a line's characters takes, in logical order.
std::vector<int> characterWidths(const ShapedLine& line) {
    const char* text = line.text().data();
    std::vector<int> widths(static_cast<std::size_t>(g_utf8_strlen(text, static_cast<gssize>(line.text().size()))));
    for (const auto& run : line.runs()) {
        const auto first = static_cast<std::size_t>(g_utf8_pointer_to_offset(text, text + run->item->offset));
        pango_glyph_item_get_logical_widths(run.get(), text, widths.data() + first);
    }
    return widths;
}

std::vector<PangoLogAttr> attributesOf(std::string_view text, std::size_t count) {
    std::vector<PangoLogAttr> attributes(count + 1);
    pango_get_log_attrs(text.data(), static_cast<int>(text.size()), -1, pango_language_get_default(), attributes.data(),
                        static_cast<int>(attributes.size()));
    return attributes;
}

} // namespace

LineBreaker::LineBreaker(const ShapedLine& text, double width, double fontSize, Shape shape)
    : text_(text.text()), direction_(text.direction()), width_(width + tolerance), fontSize_(fontSize),
      shape_(std::move(shape)) {
    const char* at = text_.data();
    double advance = 0;
    for (const int characterWidth : characterWidths(text)) {
        offsets_.push_back(static_cast<std::size_t>(at - text_.data()));
        advances_.push_back(advance);
        at = g_utf8_next_char(at);
        advance += static_cast<double>(characterWidth) / PANGO_SCALE;
    }
    offsets_.push_back(text_.size());
    advances_.push_back(advance);
    attributes_ = attributesOf(text_, count());
}

LineBreaker::Line LineBreaker::next(std::size_t start) const {
    for (const Boundary boundary : {Boundary::word, Boundary::letter}) {
        if (auto found = longest(start, boundary, {})) {
            found->end = afterBlanks(found->end);
            return *std::move(found);
        }
    }
    std::size_t end = start + 1;
    while (!isBoundary(end, Boundary::letter)) {
        ++end;
    }
    return {line(start, end, {}), afterBlanks(end)};
}

LineBreaker::Line LineBreaker::last(std::size_t start) const {
    if (advances_.back() - advances_[start] <= width_ + greatestGain * fontSize_) {
        TextLine rest = line(start, count(), {});
        if (rest.width <= width_) {
            return {std::move(rest), count()};
        }
    }
    if (auto found = longest(start, Boundary::letter, ellipsis)) {
        return *std::move(found);
    }
    return {line(start, start, ellipsis), start};
}

std::optional<LineBreaker::Line> LineBreaker::longest(std::size_t start, Boundary boundary,
                                                      std::string_view ending) const {
    const double room = width_ + greatestGain * fontSize_ - (ending.empty() ? 0 : shape_(ending).width());
    std::vector<std::size_t> ends;
    for (std::size_t end = start + 1; end <= count(); ++end) {
        if (!isBoundary(end, boundary)) {
            continue;
        }
        if (advances_[withoutTrailingBlanks(start, end)] - advances_[start] > room) {
            break;
        }
        ends.push_back(end);
    }
    for (; !ends.empty(); ends.pop_back()) {
        TextLine found = line(start, withoutTrailingBlanks(start, ends.back()), ending);
        if (found.width <= width_) {
            return Line{std::move(found), ends.back()};
        }
    }
    return std::nullopt;
}

bool LineBreaker::isBoundary(std::size_t at, Boundary boundary) const {
    return at == count() ||
           (boundary == Boundary::word ? attributes_[at].is_line_break : attributes_[at].is_cursor_position) != 0;
}

std::size_t LineBreaker::withoutTrailingBlanks(std::size_t start, std::size_t end) const {
    while (end > start && attributes_[end - 1].is_white != 0) {
        --end;
    }
    return end;
}

std::size_t LineBreaker::afterBlanks(std::size_t at) const {
    while (at < count() && attributes_[at].is_white != 0) {
        ++at;
    }
    return at;
}

TextLine LineBreaker::line(std::size_t start, std::size_t end, std::string_view ending) const {
    std::string text(text_.substr(offsets_[start], offsets_[end] - offsets_[start]));
    text += ending;
    if (shape_(text).direction() != direction_) {
        text.insert(0, direction_ == PANGO_DIRECTION_RTL ? rightToLeftMark : leftToRightMark);
    }
    return {text, shape_(text).width()};
}

} // namespace host
