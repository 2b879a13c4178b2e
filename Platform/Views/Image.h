// A picture from the bytes of an image file, resizable, its aspect ratio kept.
//
// The host draws `fallback` if the bytes are not an image.
#pragma once

#include "Platform/Foundation/EncodedData.h"
#include "Platform/Views/View.h"

namespace platform {

struct Image {
    EncodedData data;
    /// By default nothing.
    std::optional<View> fallback;
    friend bool operator==(const Image&, const Image&) = default;
};

View image(EncodedData data, View fallback);

} // namespace platform
