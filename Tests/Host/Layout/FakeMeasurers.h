// Measurers without fonts: every character is half as wide as its font is high, and an image has its size as text.
#pragma once

#include "Host/Layout/TextMeasurer.h"

namespace host {

/// Breaks at blanks, words that are too long anywhere. A baseline lies 3 points above the lower edge of its line.
class FakeTexts final : public TextMeasurer {
  public:
    MeasuredText measure(const TextRequest& request) override;
    double ellipsisWidth(platform::Font font) override;

    int calls = 0;
};

/// Knows images whose bytes are like "40x20".
class FakeImages final : public ImageMeasurer {
  public:
    std::optional<Size> imageSize(const platform::EncodedData& data) override;
};

platform::EncodedData imageData(const char* text);

} // namespace host
