// Caches the decoded images of widgets, and which data cannot be decoded. Clears itself when it holds too many bytes. One
// thread at a time.
#pragma once

#include "Host/Drawing/Handles.h"
#include "Host/Drawing/ImageDecoder.h"
#include "Host/Layout/TextMeasurer.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace host {

enum class Tone { color, gray };

/// The form of an image, in whole device pixels.
struct IconRequest {
    int width = 0;
    int height = 0;
    double cornerRadius = 0;
    Tone tone = Tone::color;
};

class IconCache final : public ImageMeasurer {
  public:
    std::optional<Size> imageSize(const platform::EncodedData& data) override;

    /// Returns the image scaled to exactly the requested size; null if it cannot be decoded.
    SurfaceHandle picture(const platform::EncodedData& data, const IconRequest& request);

  private:
    struct Entry {
        platform::EncodedData data;
        std::optional<DecodedImage> image;
        /// The maximum that `image` was decoded with.
        int maxSide = 0;

        bool isEnoughFor(int side) const;
    };

    const Entry& entry(const platform::EncodedData& data, int maxSide);

    std::vector<Entry> entries_;
    std::size_t bytes_ = 0;
};

} // namespace host
