// Draws layouts into pictures.
//
// A `Renderer` measures and draws. It caches fonts, symbols and decoded icons for the next picture. The constructor
// starts to read the machine's font configuration in the background, which takes most of the time of a first picture:
// make it before the widget's response comes. One thread at a time.
#pragma once

#include "Host/Drawing/Appearance.h"
#include "Host/Drawing/PixelBuffer.h"
#include "Host/Layout/TextMeasurer.h"
#include "Host/Layout/WidgetLayout.h"

#include <memory>
#include <string>

namespace host {

struct RenderCaches;

enum class VectorFormat { svg, pdf };

class Renderer final {
  public:
    Renderer();
    ~Renderer();
    Renderer(const Renderer&) = delete;
    Renderer& operator=(const Renderer&) = delete;

    /// Every layout that this renderer draws must be made with these.
    TextMeasurer& texts();
    ImageMeasurer& images();

    /// Returns the picture: as large as the widget, transparent outside the tile's round corners. `scale` is in device
    /// pixels per point. No picture if it would have no pixels or more than `maxSide` in either direction.
    PixelBuffer pixels(const WidgetLayout& layout, const Appearance& appearance, double scale);
    static constexpr int maxSide = 16'384;

    /// Returns the picture as a file, in points; empty on failure. Equal pictures are equal files, except for the
    /// numbers in an SVG file's ids, which cairo counts in the process.
    std::string vectorFile(VectorFormat format, const WidgetLayout& layout, const Appearance& appearance);

    /// Draws a badge over a picture: everything on an opaque capsule that is as large as the layout, with its upper
    /// left corner at `origin`, in whole device pixels.
    void drawBadge(const PixelBuffer& picture, Point origin, const WidgetLayout& layout, const Appearance& appearance,
                   double scale);

  private:
    std::unique_ptr<RenderCaches> caches_;
};

} // namespace host
