// The images of widgets: decoded once, scaled once for each size they are drawn in, and kept while they are in use.
//
// What is kept is bounded by its bytes, with what was longest not asked for let go first. That bytes are no image is
// remembered too. One thread at a time.
#pragma once

#include "Host/Drawing/Desaturation.h"
#include "Host/Drawing/Handles.h"
#include "Host/Drawing/ImageDecoder.h"
#include "Host/Layout/TextMeasurer.h"

#include <cstddef>
#include <list>
#include <optional>

namespace host {

/// How an image is wanted: in whole device pixels.
struct IconRequest {
    int width = 0;
    int height = 0;
    double cornerRadius = 0;
    Tone tone = Tone::color;
    friend bool operator==(const IconRequest&, const IconRequest&) = default;
};

class IconCache final : public ImageMeasurer {
  public:
    std::optional<Size> imageSize(const platform::EncodedData& data) override;

    /// The image scaled to exactly the size that is asked for. Null if it is none; good until the next call.
    cairo_surface_t* picture(const platform::EncodedData& data, const IconRequest& request);

  private:
    struct Picture {
        IconRequest request;
        SurfaceHandle surface;
    };
    struct Entry {
        platform::EncodedData data;
        std::optional<DecodedImage> image;
        /// The longest side that `image` was decoded for.
        int longestSide = 0;
        /// The last asked for is the first.
        std::list<Picture> pictures;
        std::size_t weight = 0;
    };

    Entry& entry(const platform::EncodedData& data, int longestSide);
    void decode(Entry& entry, int longestSide);

    /// The last asked for is the first.
    std::list<Entry> entries_;
    std::size_t weight_ = 0;
};

} // namespace host
