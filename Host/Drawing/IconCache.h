// The images of widgets, each decoded once.
//
// When it holds too many bytes it starts anew. That bytes are no image is remembered too. One thread at a time.
#pragma once

#include "Host/Drawing/Desaturation.h"
#include "Host/Drawing/Handles.h"
#include "Host/Drawing/ImageDecoder.h"
#include "Host/Layout/TextMeasurer.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace host {

/// How an image is wanted: in whole device pixels.
struct IconRequest {
    int width = 0;
    int height = 0;
    double cornerRadius = 0;
    Tone tone = Tone::color;
};

class IconCache final : public ImageMeasurer {
  public:
    std::optional<Size> imageSize(const platform::EncodedData& data) override;

    /// Returns the image scaled to exactly the requested size; null if it is none.
    SurfaceHandle picture(const platform::EncodedData& data, const IconRequest& request);

  private:
    struct Entry {
        platform::EncodedData data;
        std::optional<DecodedImage> image;
        /// The longest side that `image` was decoded for.
        int longestSide = 0;

        bool isEnoughFor(int side) const;
    };

    const Entry& entry(const platform::EncodedData& data, int longestSide);

    std::vector<Entry> entries_;
    std::size_t bytes_ = 0;
};

} // namespace host
