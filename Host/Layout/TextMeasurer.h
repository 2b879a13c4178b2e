// What the layout asks about content that only the drawing side can measure: texts and images.
//
// The layout is pure arithmetic; it gets these two handed in. Results must depend on the arguments alone (and the fonts
// of the machine), never on the scale that is drawn at.
#pragma once

#include "Host/Layout/Geometry.h"
#include "Platform/Foundation/EncodedData.h"
#include "Platform/Views/Style.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace host {

/// One line of a text as it is drawn: with its ellipsis if the text was cut.
struct TextLine {
    std::string text;
    double width = 0;
    friend bool operator==(const TextLine&, const TextLine&) = default;
};

/// A text with its lines and glyphs, as the measurer can draw it. Opaque to the layout.
struct ShapedText;

struct MeasuredText {
    /// At least one.
    std::vector<TextLine> lines;
    /// From the top of a line to its baseline, the line being as high as its style's line height.
    double baseline = 0;
    std::shared_ptr<const ShapedText> shaped;
};

struct TextRequest {
    std::string_view text;
    platform::Font font;
    /// Left out: lines end only where the text says so.
    std::optional<double> width;
    /// Left out: as many as it takes. At least 1.
    std::optional<int> lineLimit;
};

class TextMeasurer {
  public:
    virtual ~TextMeasurer() = default;
    /// Breaks the text into lines no wider than `width`, unless not even an ellipsis fits, and cuts the last line that
    /// `lineLimit` allows with an ellipsis if text is left over.
    virtual MeasuredText measure(const TextRequest& request) = 0;

    /// The width of an ellipsis alone. Cheap.
    virtual double ellipsisWidth(platform::Font font) = 0;
};

class ImageMeasurer {
  public:
    virtual ~ImageMeasurer() = default;
    /// The size of the image in its own pixels; nothing if the bytes are no image that can be decoded.
    virtual std::optional<Size> imageSize(const platform::EncodedData& data) = 0;
};

} // namespace host
