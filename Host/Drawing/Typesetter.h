// Measures, breaks, cuts and shapes texts, with Pango.
//
// The font is Inter, or the machine's sans serif where Inter is missing; what it has no glyphs for comes from the
// machine's other fonts. Everything is measured in points without regard to pixels, so a text is as wide at every
// scale.
//
// A text is one paragraph: line breaks and other control characters in it count as blanks. Lines break between words,
// and inside one that is wider than a line. A line never shows blanks at a break, nor before an ellipsis. Each line
// reads the same on its own as within its text: where it would take another base direction it starts with a direction
// mark.
//
// No text is longer than a desktop can show: a line of more than `longestLine` points, or the lines after the first
// `greatestLineCount`, are cut as a line limit would. So the cost of a text is bounded, however long it is.
//
// What was shaped is kept for the next picture, within bounds. One thread at a time. Making one starts to read the
// machine's font configuration, on a thread of Pango's; the first text that is measured waits for it.
#pragma once

#include "Host/Drawing/Handles.h"
#include "Host/Drawing/LruCache.h"
#include "Host/Drawing/ShapedLine.h"
#include "Host/Drawing/TextKey.h"
#include "Host/Layout/TextMeasurer.h"

#include <array>
#include <pango/pango.h>
#include <string>
#include <string_view>
#include <vector>

namespace host {

class Typesetter final : public TextMeasurer {
  public:
    static constexpr double longestLine = 2048;
    static constexpr int greatestLineCount = 64;

    Typesetter();
    ~Typesetter() override;
    Typesetter(const Typesetter&) = delete;
    Typesetter& operator=(const Typesetter&) = delete;

    MeasuredText measure(const TextRequest& request) override;

    /// One line as `measure` gave it, ready to be drawn. Good until the next call.
    const ShapedLine& line(std::string_view text, platform::Font font);

  private:
    struct Face {
        FontDescriptionHandle description;
        double baseline = 0;
    };
    /// What of a text is shown, and whether that is all of it.
    struct Composed {
        std::vector<TextLine> lines;
        bool isComplete = true;
    };

    const Face& face(platform::Font font);
    ShapedLine shape(std::string_view text, platform::Font font);
    Composed compose(std::string_view text, platform::Font font, double width, int lineLimit);

    ObjectHandle<PangoFontMap> fontMap_;
    ObjectHandle<PangoContext> context_;
    std::array<Face, 12> faces_;
    LruCache<TextKey, ShapedLine, TextSeek, TextHash> lines_;
    LruCache<TextKey, MeasuredText, TextSeek, TextHash> measured_;
};

} // namespace host
