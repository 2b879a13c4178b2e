// Breaks a text that is too wide for one line, and cuts what is too long.
//
// Each line is as long as can be and is measured on its own, as it will be drawn: letters may take another form at a
// line's end than within their text. So a text breaks in the same places when it is offered its longest line's width.
#pragma once

#include "Host/Drawing/ShapedLine.h"
#include "Host/Layout/TextMeasurer.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <pango/pango.h>
#include <string>
#include <string_view>
#include <vector>

namespace host {

class LineBreaker {
  public:
    /// Shapes a line on its own; what it gives is good until it is asked again.
    using Shape = std::function<const ShapedLine&(std::string_view line)>;

    /// `text` is the whole text as one line, and outlives the breaker.
    LineBreaker(const ShapedLine& text, double width, double fontSize, Shape shape);

    struct Line {
        TextLine line;
        /// Where the next line starts, in characters.
        std::size_t end = 0;
    };

    /// The line that starts at a character: broken between words, or within one that is too wide, but at least one
    /// letter long.
    Line next(std::size_t start) const;

    /// All that is left from a character on, cut if it must be so that an ellipsis fits after it, which is alone where
    /// nothing else fits. What was cut starts at the line's end.
    Line last(std::size_t start) const;

    /// The text's length in characters.
    std::size_t count() const { return offsets_.size() - 1; }

  private:
    enum class Boundary { word, letter };

    std::optional<Line> longest(std::size_t start, Boundary boundary, std::string_view ending) const;
    bool isBoundary(std::size_t at, Boundary boundary) const;
    std::size_t withoutTrailingBlanks(std::size_t start, std::size_t end) const;
    std::size_t afterBlanks(std::size_t at) const;
    TextLine line(std::size_t start, std::size_t end, std::string_view ending) const;

    std::string_view text_;
    /// For every boundary between characters.
    std::vector<PangoLogAttr> attributes_;
    PangoDirection direction_;
    /// For the same: the bytes and the points before it.
    std::vector<std::size_t> offsets_;
    std::vector<double> advances_;
    double width_;
    double fontSize_;
    Shape shape_;
};

} // namespace host
