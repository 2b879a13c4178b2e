// Draws laid out widgets into pictures.
//
// A `Renderer` measures, draws and encodes. It keeps what is worth keeping between pictures (fonts, shaped texts,
// decoded icons, buffers); dropping it lets all of that go. Making one starts to read the machine's font configuration
// in the background, which is most of what a first picture takes: best made while its widget is still awaited. One
// thread at a time.
#pragma once

#include "Host/Drawing/Appearance.h"
#include "Host/Drawing/PngEncoder.h"
#include "Host/Drawing/Room.h"
#include "Host/Layout/TextMeasurer.h"
#include "Host/Layout/WidgetLayout.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

using cairo_t = struct _cairo; // NOLINT(bugprone-reserved-identifier): the name that cairo gives it

namespace host {

/// Pixels to draw on, as `PixelView` has them to look at.
struct Canvas {
    std::uint32_t* pixels = nullptr;
    std::uint32_t width = 0;
    std::uint32_t height = 0;
};

class Renderer final {
  public:
    Renderer();
    ~Renderer();
    Renderer(const Renderer&) = delete;
    Renderer& operator=(const Renderer&) = delete;

    /// What the layout of every widget that this renderer draws must be made with.
    TextMeasurer& texts();
    ImageMeasurer& images();

    /// The picture as a file of the given kind: as large as the widget, clear outside the tile's round corners.
    /// `scale`: device pixels a point, for PNG; the vector kinds are in points, and the same picture is the same file.
    /// Empty if the picture would have no pixels or more than `greatestSide` in either direction.
    std::string png(const WidgetLayout& layout, const Appearance& appearance, double scale);
    std::string svg(const WidgetLayout& layout, const Appearance& appearance);
    std::string pdf(const WidgetLayout& layout, const Appearance& appearance);
    static constexpr int greatestSide = 16'384;

    /// The pixels that `png` encodes, in `room`, for whom wants to do that elsewhere. No pixels where `png` is empty.
    PixelView pixels(const WidgetLayout& layout, const Appearance& appearance, double scale, Room<std::uint32_t>& room);

    /// The same in a vector that is just as large as the picture.
    PixelView pixels(const WidgetLayout& layout, const Appearance& appearance, double scale,
                     std::vector<std::uint32_t>& vector);

    /// Draws a badge into a picture of the caller's, over what is there: everything on an opaque capsule that is as
    /// large as the layout, with its upper left corner at `origin`, in whole device pixels.
    void drawBadge(const Canvas& canvas, Point origin, const WidgetLayout& layout, const Appearance& appearance,
                   double scale);

    /// Draws on `cairo`, in points from its origin, tile and all. `scale` says how many device pixels a point has, for
    /// edges to fall on whole pixels; it must be positive. On a surface of pixels the widget takes the place of
    /// whatever was there, and leaves it clear outside the tile's round corners; to lay it over something, draw on a
    /// group.
    void draw(cairo_t* cairo, const WidgetLayout& layout, const Appearance& appearance, double scale);

  private:
    PixelView drawn(const Canvas& canvas, const WidgetLayout& layout, const Appearance& appearance, double scale);

    struct Parts;
    std::unique_ptr<Parts> parts_;
};

} // namespace host
