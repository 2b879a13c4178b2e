// Interfaces for measuring texts and images, which the drawing side implements.
//
// Results must depend on the arguments and the machine's fonts only, never on the scale of the picture.
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

/// One line of a text as it is drawn, with the ellipsis of a text that was cut.
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
    /// From the top of a line, which is as high as its style's line height, to its baseline.
    double baseline = 0;
    std::shared_ptr<const ShapedText> shaped;
};

struct TextRequest {
    std::string_view text;
    platform::Font font;
    /// Without one, lines end only at line breaks of the text.
    std::optional<double> width;
    /// At least 1. Without one, the number is not limited.
    std::optional<int> lineLimit;
};

class TextMeasurer {
  public:
    virtual ~TextMeasurer() = default;
    /// Breaks the text into lines no wider than `width`, unless not even an ellipsis fits. If there are more lines than
    /// `lineLimit`, the last one ends in an ellipsis.
    virtual MeasuredText measure(const TextRequest& request) = 0;

    /// Returns the width of an ellipsis. Cheap.
    virtual double ellipsisWidth(platform::Font font) = 0;
};

class ImageMeasurer {
  public:
    virtual ~ImageMeasurer() = default;
    /// Returns the size of the image in its own pixels; nothing if it cannot be decoded.
    virtual std::optional<Size> imageSize(const platform::EncodedData& data) = 0;
};

} // namespace host
